// The modal loop shared by dialogs and property sheets.
#include "modalloop.h"

#include "kelfw/fwapp.h"

HWND AfxGetModalOwner(HWND hWndParent)
{
    HWND hWnd = hWndParent;
    if (hWnd == nullptr)
        hWnd = ::GetActiveWindow();
    if (hWnd == nullptr)
    {
        CWinApp* pApp = AfxGetApp();
        if (pApp != nullptr && pApp->m_pMainWnd != nullptr)
            hWnd = pApp->m_pMainWnd->GetSafeHwnd();
    }
    if (hWnd == nullptr)
        return nullptr;
    // Only top-level windows own dialogs.
    return ::GetAncestor(hWnd, GA_ROOT);
}

CModalOwner::CModalOwner(HWND hWndParent) : m_hWnd(AfxGetModalOwner(hWndParent)), m_bEnable(false)
{
    if (m_hWnd != nullptr && ::IsWindowEnabled(m_hWnd))
    {
        ::EnableWindow(m_hWnd, FALSE);
        m_bEnable = true;
    }
}

void CModalOwner::Release(HWND hWndModal)
{
    if (m_bEnable)
        ::EnableWindow(m_hWnd, TRUE);
    m_bEnable = false;
    if (m_hWnd != nullptr && hWndModal != nullptr && ::GetActiveWindow() == hWndModal)
        ::SetActiveWindow(m_hWnd);
}

int AfxRunModalLoop(HWND hWnd, bool bShowOnIdle, BOOL (*pfnContinue)(void*), void* pContext)
{
    if ((::GetWindowLongPtrA(hWnd, GWL_STYLE) & WS_VISIBLE) != 0)
        bShowOnIdle = false;
    MSG msg;
    for (;;)
    {
        if (!pfnContinue(pContext))
            return 0;
        // Nothing could end the loop once its window is gone; leave instead of waiting forever.
        if (!::IsWindow(hWnd))
            return -1;
        // Idle: show the window the first time the queue is empty, then wait.
        while (!::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE))
        {
            if (bShowOnIdle)
            {
                ::ShowWindow(hWnd, SW_SHOWNORMAL);
                ::UpdateWindow(hWnd);
                bShowOnIdle = false;
            }
            AfxDeleteTempMaps();
            if (!pfnContinue(pContext))
                return 0;
            ::WaitMessage();
        }
        do
        {
            if (!AfxPumpMessage())
                return -1;
            if (!pfnContinue(pContext))
                return 0;
            if (!::IsWindow(hWnd))
                return -1;
        } while (::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE));
    }
}
