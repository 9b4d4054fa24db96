// KelWinCtrlInic: the host hands the library its entries.
#include "hostentries.h"

namespace
{
// A null word keeps what an earlier call stored, so a host may add or replace entries later.
template <typename Entry>
void TakeEntry(Entry& variable, Entry word)
{
    if (word != nullptr)
        variable = word;
}
}

uint32_t __cdecl KelWinCtrlInic(const KelWinCtrlInitRecord* record)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());

    // A record of another size or version may come from a host built against another layout.
    // The user decides; after a Yes the record is read as if it had the current layout, and
    // nothing else is checked, which is the risk the box names.
    if (record->cbSize != sizeof(KelWinCtrlInitRecord) || record->dwVersion != KELWINCTRL_RECORD_VERSION)
    {
        if (::MessageBoxA(nullptr, "Wrong dll version!\n\nContinue? (May crash)", "KelWinCtrl",
                          MB_YESNO | MB_DEFBUTTON2 | MB_ICONERROR) == IDNO)
            return 0;
    }

    // Words 2 to 16 in order. cbSize does not bound the reading, and the reserved last word
    // is never touched.
    TakeEntry(::pfnGetColorRgb, record->pfnGetColorRgb);
    TakeEntry(::pfnDrawEfline, record->pfnDrawEfline);
    TakeEntry(::pfnDrawSurface, record->pfnDrawSurface);
    TakeEntry(::pfnGetMasstabText, record->pfnGetMasstabText);
    TakeEntry(::pfnSelectLayer, record->pfnSelectLayer);
    TakeEntry(::pfnEditSurfaceAlt, record->pfnEditSurfaceAlt);
    TakeEntry(::pfnEditSurface, record->pfnEditSurface);
    TakeEntry(::pfnQueryService, record->pfnQueryService);
    TakeEntry(::pfnReleaseService, record->pfnReleaseService);
    TakeEntry(::pfnIsMaskeFnAborted, record->pfnIsMaskeFnAborted);
    TakeEntry(::pfnGetMainWindow, record->pfnGetMainWindow);
    TakeEntry(::pfnGetEmbeddedMainWindow, record->pfnGetEmbeddedMainWindow);
    TakeEntry(::pfnSetLengthFormat, record->pfnSetLengthFormat);
    TakeEntry(::pfnDrawTransparentBitmap, record->pfnDrawTransparentBitmap);
    TakeEntry(::pfnEditBitmapPath, record->pfnEditBitmapPath);
    return 1;
}
