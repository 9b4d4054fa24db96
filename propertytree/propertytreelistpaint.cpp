// Painting of the list surface: every paint draws the whole open tree into the back buffer
// and copies the part asked for, so that no state change flickers.
#include "propertytree.h"

void CKelPropertyTreeList::PaintTo(CDC* pDC, const RECT& rcCopy)
{
    if (!m_pTree || !pDC)
        return;
    CRect client;
    GetClientRect(&client);
    EnsureBackBuffer(client.Width(), client.Height());
    if (!m_backBuffer.GetSafeHandle())
        return;

    // Painting rebuilds the visible list and the widest value
    m_pTree->ResetInfoColMaxVisibleWidth();
    m_pTree->ClearVisibleList();

    // The back buffer in a memory context
    CDC memory;
    if (!memory.CreateCompatibleDC(pDC))
        return;
    {
        CSelectObjectScope keepBitmap(memory, m_backBuffer);
        CSelectObjectScope keepFont(&memory, CKelPropertyTree::GetNormalFont());
        memory.SetBkColor(GetSysColor(COLOR_WINDOW));

        // The frame, the window colour inside it and the strip left of the rows
        memory.FillSolidRect(&client, GetSysColor(COLOR_BTNFACE));
        CRect inner = client;
        inner.DeflateRect(2, 2);
        memory.FillSolidRect(&inner, GetSysColor(COLOR_WINDOW));
        const long strip = 16 - m_pTree->GetOriginOffsetHorz();
        if (strip > 0)
            memory.FillSolidRect(0, 0, static_cast<int>(strip), client.Height(), GetSysColor(COLOR_BTNFACE));
        CRect edge = client;
        memory.DrawEdge(&edge, BDR_SUNKENOUTER, BF_RECT);

        // The rows, clipped to the inside of the frame
        memory.IntersectClipRect(&inner);
        long y = 0;
        for (CKelPropertyTreeItem* p = m_pTree->GetRootItem()->GetChild(); p; p = p->GetSibling())
            y += p->DrawItem(&memory, inner, 0, y);

        // The part asked for goes to the screen
        memory.SelectClipRgn(nullptr);
        pDC->BitBlt(rcCopy.left, rcCopy.top, rcCopy.right - rcCopy.left, rcCopy.bottom - rcCopy.top, &memory,
                    rcCopy.left, rcCopy.top, SRCCOPY);
        // The memory context gets its own objects back with the scopes
    }

    // Scroll ranges follow what was painted
    if (m_bScrollBarsDirty)
    {
        m_bScrollBarsDirty = 0;
        UpdateResize();
    }
}

void CKelPropertyTreeList::OnPaint()
{
    CPaintDC dc(this);
    if (!m_pTree || !m_pTree->IsPopulated())
        return;
    CRect clip;
    dc.GetClipBox(&clip);
    PaintTo(&dc, clip);
}

// Renders the client area into the context of the message, for printing and snapshots.
LRESULT CKelPropertyTreeList::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (!m_pTree || !m_pTree->IsPopulated() || !wParam)
        return 0;
    CDC* pDC = CDC::FromHandle(reinterpret_cast<HDC>(wParam));
    CRect client;
    GetClientRect(&client);
    PaintTo(pDC, client);
    return 0;
}

// A populated tree's paint covers every pixel.
BOOL CKelPropertyTreeList::OnEraseBkgnd(CDC* pDC)
{
    if (m_pTree && m_pTree->IsPopulated())
        return TRUE;
    return CWnd::OnEraseBkgnd(pDC);
}
