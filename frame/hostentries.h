// The host's entries: fifteen module-wide variables filled by KelWinCtrlInic.
//
// Each variable carries the name of its field in KelWinCtrlInitRecord. All are null while the
// library is loaded and before the host has called KelWinCtrlInic; they are never cleared and
// live as long as the process. Code of the library calls an entry straight through its
// variable: a host supplies every entry its dialogs use, so no call site checks for null.
//
//     uint32_t rgb = pfnGetColorRgb(&colorNumber);
//
// Threads: the variables are written on the user-interface thread before any control exists
// and only read afterwards, so they need no lock. Every entry is called on the user-interface
// thread. The host selection calls also run these entries on a worker thread of the library:
//   7 pfnEditSurfaceAlt, 8 pfnEditSurface, 9 pfnQueryService, 10 pfnReleaseService,
//   12 pfnGetMainWindow, 13 pfnGetEmbeddedMainWindow, 16 pfnEditBitmapPath.
// The remaining entries are called on the user-interface thread alone.
//
// The variables are exported so that a program linked to the library can see what was taken.
#pragma once
#include "kelwinctrl.h"

extern KELWINCTRL_API PFN_KEL_GETCOLORRGB pfnGetColorRgb;                     // word 2
extern KELWINCTRL_API PFN_KEL_DRAWEFLINE pfnDrawEfline;                       // word 3
extern KELWINCTRL_API PFN_KEL_DRAWSURFACE pfnDrawSurface;                     // word 4
extern KELWINCTRL_API PFN_KEL_GETMASSTABTEXT pfnGetMasstabText;               // word 5
extern KELWINCTRL_API PFN_KEL_SELECTLAYER pfnSelectLayer;                     // word 6
extern KELWINCTRL_API PFN_KEL_EDITSURFACE pfnEditSurfaceAlt;                  // word 7, also worker thread
extern KELWINCTRL_API PFN_KEL_EDITSURFACE pfnEditSurface;                     // word 8, also worker thread
extern KELWINCTRL_API PFN_KEL_QUERYSERVICE pfnQueryService;                   // word 9, also worker thread
extern KELWINCTRL_API PFN_KEL_RELEASESERVICE pfnReleaseService;               // word 10, also worker thread
extern KELWINCTRL_API PFN_KEL_ISMASKEFNABORTED pfnIsMaskeFnAborted;           // word 11
extern KELWINCTRL_API PFN_KEL_GETMAINWINDOW pfnGetMainWindow;                 // word 12, also worker thread
extern KELWINCTRL_API PFN_KEL_GETMAINWINDOW pfnGetEmbeddedMainWindow;         // word 13, also worker thread
extern KELWINCTRL_API PFN_KEL_SETLENGTHFORMAT pfnSetLengthFormat;             // word 14
extern KELWINCTRL_API PFN_KEL_DRAWTRANSPARENTBITMAP pfnDrawTransparentBitmap; // word 15
extern KELWINCTRL_API PFN_KEL_EDITBITMAPPATH pfnEditBitmapPath;               // word 16, also worker thread
