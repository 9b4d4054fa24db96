// CKelValueEditEx: background and text colours, and the colour answer to the parent's request.
#include "valueedit.h"

void CKelValueEditEx::SetBackgroundColor(uint32_t color)
{
    m_brBackground.DeleteObject();
    m_brBackground.CreateSolidBrush(static_cast<COLORREF>(color));
    if (::IsWindow(m_hWnd))
        Invalidate(TRUE);
}

uint32_t CKelValueEditEx::GetBackgroundColor() const
{
    if (m_brBackground.GetSafeHandle() != nullptr)
    {
        LOGBRUSH lb = {};
        m_brBackground.GetLogBrush(&lb);
        return lb.lbColor;
    }
    // Read the colour the control paints with now, and keep it: from here on the control
    // answers colour requests with a brush of its own.
    CClientDC dc(const_cast<CKelValueEditEx*>(this));
    COLORREF color = dc.GetBkColor();
    m_brBackground.CreateSolidBrush(color);
    return color;
}

void CKelValueEditEx::SetTextColor(uint32_t color)
{
    m_crText = color;
    m_uColorFlags |= 1u;
    if (::IsWindow(m_hWnd))
        Invalidate(TRUE);
}

uint32_t CKelValueEditEx::GetTextColor() const
{
    if ((m_uColorFlags & 1u) == 0)
    {
        CClientDC dc(const_cast<CKelValueEditEx*>(this));
        m_crText = dc.GetTextColor();
        m_uColorFlags |= 1u;
    }
    return m_crText;
}

BOOL CKelValueEditEx::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    bool bColourRequest = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORSTATIC;
    if (!bColourRequest || (m_brBackground.GetSafeHandle() == nullptr && (m_uColorFlags & 1u) == 0))
        return CKelValueEdit::OnChildNotify(message, wParam, lParam, pResult);

    HDC hDC = reinterpret_cast<HDC>(wParam);
    // A stored black (0) is not applied: the device context keeps its own text colour then.
    if (m_crText != 0)
        ::SetTextColor(hDC, m_crText);
    ::SetBkColor(hDC, GetBackgroundColor());
    if (pResult != nullptr)
        *pResult = reinterpret_cast<LRESULT>(static_cast<HBRUSH>(m_brBackground));
    return TRUE;
}
