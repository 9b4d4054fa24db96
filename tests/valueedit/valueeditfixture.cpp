// Helpers of the value field tests.
#include "valueeditfixture.h"

namespace kel_ve_test
{
CRecordingFrame::~CRecordingFrame()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

bool CRecordingFrame::CreateFrame(const char* title)
{
    if (!CreateEx(0, nullptr, title, WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 20, 20, 420, 260, nullptr,
                  nullptr))
        return false;
    SetForegroundWindow();
    SetActiveWindow();
    kel_test::PumpPending();
    return true;
}

std::vector<NotifySeen> CRecordingFrame::EndLabelEdits() const
{
    std::vector<NotifySeen> result;
    for (const NotifySeen& seen : notifies)
        if (seen.code == LVN_ENDLABELEDITA)
            result.push_back(seen);
    return result;
}

LRESULT CRecordingFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND && lParam != 0)
        commandCodes.push_back(HIWORD(wParam));
    if (message == WM_NOTIFY && lParam != 0)
    {
        const NMHDR* pHdr = reinterpret_cast<const NMHDR*>(lParam);
        NotifySeen seen;
        seen.wParam = wParam;
        seen.hwndFrom = pHdr->hwndFrom;
        seen.idFrom = pHdr->idFrom;
        seen.code = pHdr->code;
        if (pHdr->code == LVN_ENDLABELEDITA)
        {
            const NMLVDISPINFOA* pInfo = reinterpret_cast<const NMLVDISPINFOA*>(lParam);
            seen.mask = pInfo->item.mask;
            seen.iItem = pInfo->item.iItem;
            seen.iSubItem = pInfo->item.iSubItem;
            seen.textIsNull = pInfo->item.pszText == nullptr;
            if (pInfo->item.pszText != nullptr)
                seen.text = pInfo->item.pszText;
            seen.cchTextMax = pInfo->item.cchTextMax;
            seen.lParam = pInfo->item.lParam;
        }
        notifies.push_back(seen);
        if (seen.code == LVN_ENDLABELEDITA && onEndLabelEdit != nullptr)
            onEndLabelEdit(this, seen);
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

bool SetClipboardText(HWND owner, const char* text)
{
    if (!::OpenClipboard(owner))
        return false;
    ::EmptyClipboard();
    size_t size = strlen(text) + 1;
    HGLOBAL hMem = ::GlobalAlloc(GMEM_MOVEABLE, size);
    memcpy(::GlobalLock(hMem), text, size);
    ::GlobalUnlock(hMem);
    bool ok = ::SetClipboardData(CF_TEXT, hMem) != nullptr;
    ::CloseClipboard();
    return ok;
}

std::string GetClipboardText(HWND owner)
{
    std::string text;
    if (!::OpenClipboard(owner))
        return text;
    if (HANDLE hData = ::GetClipboardData(CF_TEXT))
    {
        if (const char* p = static_cast<const char*>(::GlobalLock(hData)))
        {
            text = p;
            ::GlobalUnlock(hData);
        }
    }
    ::CloseClipboard();
    return text;
}

std::pair<int, int> Selection(const CEdit& edit)
{
    int start = -1, end = -1;
    edit.GetSel(start, end);
    return {start, end};
}

ClientRender::ClientRender(HWND hWnd)
{
    RECT rc = {};
    ::GetClientRect(hWnd, &rc);
    m_cx = rc.right;
    m_cy = rc.bottom;
    HDC hdcScreen = ::GetDC(nullptr);
    m_hdc = ::CreateCompatibleDC(hdcScreen);
    m_hbm = ::CreateCompatibleBitmap(hdcScreen, m_cx, m_cy);
    ::ReleaseDC(nullptr, hdcScreen);
    m_old = ::SelectObject(m_hdc, m_hbm);
    // Fill with a colour no test uses, so that unpainted pixels show.
    HBRUSH hbr = ::CreateSolidBrush(RGB(1, 2, 3));
    ::FillRect(m_hdc, &rc, hbr);
    ::DeleteObject(hbr);
    ::SendMessageA(hWnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_hdc), PRF_CLIENT | PRF_ERASEBKGND);
}

ClientRender::~ClientRender()
{
    ::SelectObject(m_hdc, m_old);
    ::DeleteObject(m_hbm);
    ::DeleteDC(m_hdc);
}

int ClientRender::Count(COLORREF color) const
{
    int n = 0;
    for (int y = 0; y < m_cy; ++y)
        for (int x = 0; x < m_cx; ++x)
            if (::GetPixel(m_hdc, x, y) == color)
                ++n;
    return n;
}
}
