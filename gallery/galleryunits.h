// The gallery's unit settings, the host service through which the expression parser reads
// the length unit and the input mode. The "Value fields" page changes them; every
// conversion after that sees the new units.
//
//     SetGalleryUnits(eKelUnitInch, eInputModeFeetInchFraction);
#pragma once
#include <unitservice.h>

class CGalleryUnitSettings final : public IKelUnitSettings
{
public:
    int GetLengthUnit() override;
    int GetInputMode() override;
};

// The object GalleryQueryService hands out for KELHOSTKIT_SERVICE_UNIT_SETTINGS.
CGalleryUnitSettings* GetGalleryUnitSettings();
// Sets what the service answers from now on.
void SetGalleryUnits(int lengthUnit, int inputMode);
