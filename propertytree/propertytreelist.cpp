// The surface inside the property tree: creation, the back buffer's size, scroll ranges and
// scrolling, focus and the visible focus.
#include "propertytree.h"

#include "../frame/resource.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(CKelPropertyTreeList, CWnd)
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_MESSAGE(WM_PRINTCLIENT, &CKelPropertyTreeList::OnPrintClient)
    ON_WM_ERASEBKGND()
    ON_WM_SETCURSOR()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_MOUSEWHEEL()
    ON_WM_KEYDOWN()
    ON_WM_GETDLGCODE()
    ON_WM_CONTEXTMENU()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONUP()
    ON_WM_RBUTTONDBLCLK()
    ON_WM_KILLFOCUS()
    ON_WM_SETFOCUS()
    ON_WM_VSCROLL()
    ON_WM_HSCROLL()
    ON_WM_TIMER()
END_MESSAGE_MAP()

CKelPropertyTreeList::~CKelPropertyTreeList()
{
    if (m_hWnd && ::IsWindow(m_hWnd))
        DestroyWindow();
}

BOOL CKelPropertyTreeList::Create(CKelPropertyTree* pTree, const RECT& rect, UINT nID)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    m_pTree = pTree;
    LoadCursors();
    LPCTSTR cls = AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW));
    return CreateEx(0, cls, "", WS_CHILD | WS_VISIBLE | WS_VSCROLL, rect, pTree, nID);
}

// Cursors of the library's own resources are shared handles: nothing to free.
void CKelPropertyTreeList::LoadCursors()
{
    HINSTANCE module = AfxGetResourceHandle();
    m_hCursors[0] = ::LoadCursor(module, MAKEINTRESOURCE(IDC_PT_NODROP));
    m_hCursors[1] = ::LoadCursor(module, MAKEINTRESOURCE(IDC_PT_DROP));
    m_hCursors[2] = ::LoadCursor(module, MAKEINTRESOURCE(IDC_PT_DROP_SIBLING));
    m_hCursors[3] = ::LoadCursor(nullptr, IDC_ARROW);
    m_hCursors[4] = ::LoadCursor(nullptr, IDC_ARROW);
    m_hCursors[5] = ::LoadCursor(nullptr, IDC_SIZEWE);
    for (int i = 0; i < 3; ++i)
        if (!m_hCursors[i])
            m_hCursors[i] = ::LoadCursor(nullptr, i == 0 ? IDC_NO : IDC_ARROW);
}

HCURSOR CKelPropertyTreeList::GetCursorHandle(int which) const
{
    return which >= 0 && which < 6 ? m_hCursors[which] : nullptr;
}

void CKelPropertyTreeList::EnsureBackBuffer(int cx, int cy)
{
    if (cx <= m_nBackBufferWidth && cy <= m_nBackBufferHeight && m_backBuffer.GetSafeHandle())
        return;
    const int width = std::max(cx, m_nBackBufferWidth);
    const int height = std::max(cy, m_nBackBufferHeight);
    if (width <= 0 || height <= 0)
        return;
    CClientDC screen(nullptr);
    CBitmap grown;
    if (!grown.CreateCompatibleBitmap(&screen, width, height))
        return;
    m_backBuffer.DeleteObject();
    m_backBuffer.Attach(grown.Detach());
    m_nBackBufferWidth = width;
    m_nBackBufferHeight = height;
}

void CKelPropertyTreeList::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    EnsureBackBuffer(cx, cy);
    if (!m_pTree)
        return;
    Invalidate();
    UpdateWindow();
    m_bScrollBarsDirty = 1;
    m_pTree->UpdateMoveAllItems();
}

bool CKelPropertyTreeList::ReadScrollInfo(int bar, SCROLLINFO& si)
{
    si = SCROLLINFO{};
    si.cbSize = sizeof(si);
    si.fMask = SIF_ALL;
    return GetScrollInfo(bar, &si) != FALSE;
}

void CKelPropertyTreeList::UpdateResize()
{
    if (!m_pTree || !m_hWnd)
        return;
    CRect client;
    GetClientRect(&client);

    // Vertical: the root's own row height plus every top-level row with its open children.
    long total = m_pTree->GetRootItem()->GetHeight();
    for (CKelPropertyTreeItem* p = m_pTree->GetRootItem()->GetChild(); p; p = p->GetSibling())
        total += p->GetTotalHeight();
    SCROLLINFO si = {};
    si.cbSize = sizeof(si);
    si.fMask = SIF_RANGE | SIF_PAGE;
    si.nMin = 0;
    si.nMax = static_cast<int>(total);
    si.nPage = static_cast<UINT>(client.Height() + 1);
    SetScrollInfo(SB_VERT, &si, TRUE);
    if (static_cast<long>(si.nPage) > si.nMax)
    {
        m_pTree->SetOriginOffset(0);
        SetScrollPos(SB_VERT, 0, TRUE);
    }
    else
    {
        // A range that shrank under the position pulls the position back with it.
        const long maxPos = si.nMax - static_cast<long>(si.nPage) + 1;
        if (m_pTree->GetOrigin().y > maxPos)
        {
            m_pTree->SetOriginOffset(std::max(0L, maxPos));
            SetScrollPos(SB_VERT, static_cast<int>(m_pTree->GetOrigin().y), TRUE);
        }
    }

    // Horizontal: the widest value beyond what the value column shows, and room for the
    // special buttons.
    bool special = false;
    CRect button;
    m_pTree->GetSpecialButtonProperties(special, button);
    const int extra = special ? 2 * button.Width() : 0;
    const int unused = m_pTree->GetUsedModuleID() == KEL_ML_TREE_MODULE_3
                           ? 0
                           : client.Width() + 1 - static_cast<int>(m_pTree->GetOriginOffsetHorz()) -
                                 static_cast<int>(m_pTree->GetColumn());
    SCROLLINFO old;
    const bool hadInfo = ReadScrollInfo(SB_HORZ, old);
    SCROLLINFO sh = {};
    sh.cbSize = sizeof(sh);
    sh.fMask = SIF_RANGE | SIF_PAGE;
    sh.nMin = 0;
    sh.nMax = m_pTree->GetInfoColMaxVisibleWidth() - unused + extra + client.Width() + 1;
    // A bar with a position keeps a larger old range, so that it never jumps under the user.
    if (hadInfo && old.nPos > 0 && old.nMax > sh.nMax)
        sh.nMax = old.nMax;
    sh.nPage = static_cast<UINT>(client.Width() + 1);
    SetScrollInfo(SB_HORZ, &sh, TRUE);
}

void CKelPropertyTreeList::CheckVisibleFocus()
{
    if (!m_pTree)
        return;
    CKelPropertyTreeItem* focus = m_pTree->GetFocusedItem();
    if (!focus || m_pTree->IsItemOnVisibleList(focus))
        return;
    focus->Select_SetStatus(0);
    m_pTree->SetFocusedItem(nullptr);
    m_pTree->SendNotify(PTN_SELECTION_CHANGED, nullptr);
    if (m_hWnd)
        Invalidate();
}

// Moves the rows by delta pixels within the vertical range, and the live controls with them.
void CKelPropertyTreeList::ScrollVertBy(long delta)
{
    if (!m_pTree)
        return;
    SCROLLINFO si;
    ReadScrollInfo(SB_VERT, si);
    const long maxPos = std::max(static_cast<long>(si.nMin), si.nMax - static_cast<long>(si.nPage) + 1);
    long pos = m_pTree->GetOrigin().y + delta;
    pos = std::min(std::max(pos, static_cast<long>(si.nMin)), maxPos);
    if (pos == m_pTree->GetOrigin().y)
        return;
    m_pTree->SetOriginOffset(pos);
    SetScrollPos(SB_VERT, static_cast<int>(pos), TRUE);
    Invalidate();
    m_pTree->UpdateMoveAllItems();
}

void CKelPropertyTreeList::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar*)
{
    if (!m_pTree)
        return;
    SetFocus();
    CRect client;
    GetClientRect(&client);
    SCROLLINFO si;
    ReadScrollInfo(SB_VERT, si);
    const long page = client.Height() + 1;
    const long pos = m_pTree->GetOrigin().y;
    switch (nSBCode)
    {
    case SB_LINEUP:
        ScrollVertBy(-21);
        break;
    case SB_LINEDOWN:
        ScrollVertBy(21);
        break;
    case SB_PAGEUP:
        ScrollVertBy(-page);
        break;
    case SB_PAGEDOWN:
        ScrollVertBy(page);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        // The message carries 16 bits of the position; longer ranges read the track position.
        ScrollVertBy((nSBCode == SB_THUMBPOSITION && si.nMax <= 0xFFFF ? static_cast<long>(nPos) : si.nTrackPos) - pos);
        break;
    case SB_TOP:
        ScrollVertBy(si.nMin - pos);
        break;
    case SB_BOTTOM:
        ScrollVertBy(si.nMax - pos);
        break;
    default:
        break;
    }
}

void CKelPropertyTreeList::OnHScroll(UINT nSBCode, UINT, CScrollBar*)
{
    if (!m_pTree)
        return;
    SetFocus();
    SCROLLINFO si;
    ReadScrollInfo(SB_HORZ, si);
    const long limit = std::max(0L, si.nMax - static_cast<long>(si.nPage) + 1);
    const long pos = si.nPos;
    long diff = 0;
    switch (nSBCode)
    {
    case SB_LINERIGHT:
    case SB_PAGERIGHT:
        diff = std::min(nSBCode == SB_LINERIGHT ? 5L : 15L, limit - pos);
        break;
    case SB_LINELEFT:
    case SB_PAGELEFT:
        diff = -std::min(nSBCode == SB_LINELEFT ? 5L : 15L, pos);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        diff = si.nTrackPos - pos;
        break;
    default:
        return;
    }
    const long newPos = pos + diff;
    if (diff == 0 || newPos > limit || newPos < 0)
        return;
    // The column gives way by as much as the values move in.
    m_pTree->SetOriginOffsetX(m_pTree->GetColumn() - diff);
    m_pTree->SetOriginOffsetHorz(newPos);
    SetScrollPos(SB_HORZ, static_cast<int>(newPos), TRUE);
    Invalidate();
    m_pTree->UpdateMoveAllItems();
}

BOOL CKelPropertyTreeList::OnMouseWheel(UINT, short zDelta, CPoint)
{
    if (!m_pTree)
        return TRUE;
    CRect client;
    GetClientRect(&client);
    SCROLLINFO si;
    ReadScrollInfo(SB_VERT, si);
    if (si.nMax - si.nMin < client.Height())
        return TRUE;
    SetFocus();
    // One line per message, whatever the size of the notch.
    OnVScroll(zDelta > 0 ? SB_LINEUP : SB_LINEDOWN, 0, nullptr);
    return TRUE;
}

void CKelPropertyTreeList::OnSetFocus(CWnd* pOldWnd)
{
    CWnd::OnSetFocus(pOldWnd);
    if (m_pTree)
        m_pTree->SendNotify(PTN_FOCUS_GAINED, nullptr);
    m_nHasFocus = 1;
}

void CKelPropertyTreeList::OnKillFocus(CWnd* pNewWnd)
{
    CWnd::OnKillFocus(pNewWnd);
    m_nHasFocus = 0;
    Invalidate();
}

UINT CKelPropertyTreeList::OnGetDlgCode()
{
    return DLGC_WANTCHARS | DLGC_WANTALLKEYS | DLGC_WANTARROWS;
}
