// The host's entries, null until the host hands them in through KelWinCtrlInic.
#include "hostentries.h"

PFN_KEL_GETCOLORRGB pfnGetColorRgb = nullptr;
PFN_KEL_DRAWEFLINE pfnDrawEfline = nullptr;
PFN_KEL_DRAWSURFACE pfnDrawSurface = nullptr;
PFN_KEL_GETMASSTABTEXT pfnGetMasstabText = nullptr;
PFN_KEL_SELECTLAYER pfnSelectLayer = nullptr;
PFN_KEL_EDITSURFACE pfnEditSurfaceAlt = nullptr;
PFN_KEL_EDITSURFACE pfnEditSurface = nullptr;
PFN_KEL_QUERYSERVICE pfnQueryService = nullptr;
PFN_KEL_RELEASESERVICE pfnReleaseService = nullptr;
PFN_KEL_ISMASKEFNABORTED pfnIsMaskeFnAborted = nullptr;
PFN_KEL_GETMAINWINDOW pfnGetMainWindow = nullptr;
PFN_KEL_GETMAINWINDOW pfnGetEmbeddedMainWindow = nullptr;
PFN_KEL_SETLENGTHFORMAT pfnSetLengthFormat = nullptr;
PFN_KEL_DRAWTRANSPARENTBITMAP pfnDrawTransparentBitmap = nullptr;
PFN_KEL_EDITBITMAPPATH pfnEditBitmapPath = nullptr;
