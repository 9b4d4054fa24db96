// The gallery's unit settings service.
#include "galleryunits.h"

#include <atomic>

namespace
{
CGalleryUnitSettings g_unitSettings;
// Read by the parser, possibly on a worker thread of the library.
std::atomic<int> g_lengthUnit{eKelUnitMillimetre};
std::atomic<int> g_inputMode{0};
}

int CGalleryUnitSettings::GetLengthUnit()
{
    return g_lengthUnit.load();
}

int CGalleryUnitSettings::GetInputMode()
{
    return g_inputMode.load();
}

CGalleryUnitSettings* GetGalleryUnitSettings()
{
    return &g_unitSettings;
}

void SetGalleryUnits(int lengthUnit, int inputMode)
{
    g_lengthUnit = lengthUnit;
    g_inputMode = inputMode;
}
