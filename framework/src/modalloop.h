// The modal loop shared by dialogs and property sheets.
#pragma once
#include "kelfw/fwdefs.h"

// The window a modal window is to disable: the top of the given parent, else the active
// window of the thread, else the application's main window.
HWND AfxGetModalOwner(HWND hWndParent);

// Pumps messages through pre-translation until pfnContinue answers FALSE. Shows hWnd when
// the queue first runs empty if bShowOnIdle. Returns -1 when WM_QUIT ended it or hWnd was
// destroyed under it (with its owner, say), else 0.
int AfxRunModalLoop(HWND hWnd, bool bShowOnIdle, BOOL (*pfnContinue)(void*), void* pContext);
