// CHostColourStrip: swatches of the host's colour table, painted through its colour entry.
#include "colourstrip.h"

BEGIN_MESSAGE_MAP(CHostColourStrip, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

namespace
{
// The host gives 0x00RRGGBB; GDI wants red in the low byte.
COLORREF HostToColorref(uint32_t rgb)
{
    return RGB((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

// Black or white, whichever reads better on the swatch.
COLORREF LabelColourOn(COLORREF background)
{
    int luma = (GetRValue(background) * 299 + GetGValue(background) * 587 + GetBValue(background) * 114) / 1000;
    return luma >= 128 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}
}

void CHostColourStrip::SetColourSource(PFN_KEL_GETCOLORRGB pfnGetColorRgb, int nFirst, int nLast)
{
    m_pfnGetColorRgb = pfnGetColorRgb;
    m_nFirst = nFirst;
    m_nLast = nLast;
    if (m_hWnd != nullptr)
        Invalidate();
}

CRect CHostColourStrip::GetSwatchRect(int nColour) const
{
    int nCount = m_nLast - m_nFirst + 1;
    if (m_hWnd == nullptr || nCount <= 0 || nColour < m_nFirst || nColour > m_nLast)
        return CRect(0, 0, 0, 0);
    CRect client;
    GetClientRect(&client);
    // Equal cells over the whole width; the remainder goes to the last cell.
    int nIndex = nColour - m_nFirst;
    int nCellWidth = client.Width() / nCount;
    int left = client.left + nIndex * nCellWidth;
    int right = nIndex == nCount - 1 ? client.right : left + nCellWidth;
    return CRect(left, client.top, right - 2, client.bottom);
}

BOOL CHostColourStrip::OnEraseBkgnd(CDC*)
{
    // OnPaint covers every pixel.
    return TRUE;
}

void CHostColourStrip::OnPaint()
{
    CPaintDC dc(this);
    Draw(dc);
}

void CHostColourStrip::Draw(CDC& dc)
{
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(&client, ::GetSysColor(COLOR_3DFACE));
    if (m_pfnGetColorRgb == nullptr)
        return;

    CFont* pFont = GetParent() != nullptr ? GetParent()->GetFont() : nullptr;
    CSelectObjectScope keepFont(&dc, pFont);
    int nOldMode = dc.SetBkMode(TRANSPARENT);
    COLORREF crOldText = dc.GetTextColor();
    CBrush frame(::GetSysColor(COLOR_WINDOWTEXT));

    for (int n = m_nFirst; n <= m_nLast; ++n)
    {
        int32_t number = n;
        COLORREF swatch = HostToColorref(m_pfnGetColorRgb(&number));
        CRect cell = GetSwatchRect(n);
        dc.FillSolidRect(&cell, swatch);
        dc.FrameRect(&cell, &frame);
        CString label;
        label.Format("%d", n);
        dc.SetTextColor(LabelColourOn(swatch));
        dc.DrawText(label, &cell, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }

    dc.SetTextColor(crOldText);
    dc.SetBkMode(nOldMode);
}
