// The modal loop shared by dialogs and property sheets.
#pragma once
#include "kelfw/fwdefs.h"

// The window a modal window is to disable: the top of the given parent, else the active
// window of the thread, else the application's main window.
HWND AfxGetModalOwner(HWND hWndParent);

// The owner of a modal window for as long as that window runs: disabled on construction if
// it was enabled, enabled again by Release, which also hands activation back to it.
class CModalOwner
{
public:
    explicit CModalOwner(HWND hWndParent);
    CModalOwner(const CModalOwner&) = delete;
    CModalOwner& operator=(const CModalOwner&) = delete;
    HWND Get() const { return m_hWnd; }
    // Call before the modal window is destroyed, so that the owner gets the activation.
    void Release(HWND hWndModal);

private:
    HWND m_hWnd;
    bool m_bEnable;
};

// Pumps messages through pre-translation until pfnContinue answers FALSE. Shows hWnd when
// the queue first runs empty if bShowOnIdle. Returns -1 when WM_QUIT ended it or hWnd was
// destroyed under it (with its owner, say), else 0.
int AfxRunModalLoop(HWND hWnd, bool bShowOnIdle, BOOL (*pfnContinue)(void*), void* pContext);
