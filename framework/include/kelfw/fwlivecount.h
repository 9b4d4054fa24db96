// Live counts of the handles the framework's owners hold: GDI objects, device contexts,
// image lists and windows. Leak tests compare them before and after (the system's own
// GUI resource counter answers 0 under Wine).
#pragma once
#include "fwdefs.h"

enum AfxLiveKind
{
    afxLiveGdiObjects = 0,   // pens, brushes, fonts, bitmaps, regions created by an owner
    afxLiveDCs,              // device contexts created or fetched by an owner
    afxLiveImageLists,       // image lists created by CImageList
    afxLiveWindows,          // windows attached to a CWnd in the permanent handle map
    afxLiveKindCount
};

// Current count of one kind, process-wide.
KELFW_API long AfxGetLiveCount(AfxLiveKind kind);
// Called by the owners when they take (+1) or give back (-1) a handle.
KELFW_API void AfxAdjustLiveCount(AfxLiveKind kind, long delta);
