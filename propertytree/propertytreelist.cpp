// The surface inside the property tree: scroll ranges, keyboard focus and the visible focus.
// Painting, mouse and keyboard handling of the rows grow here with the row painter.
#include "propertytree.h"

BEGIN_MESSAGE_MAP(CKelPropertyTreeList, CWnd)
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

BOOL CKelPropertyTreeList::Create(CKelPropertyTree* pTree, const RECT& rect, UINT nID)
{
    m_pTree = pTree;
    LPCTSTR cls = AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW));
    return CreateEx(0, cls, "", WS_CHILD | WS_VISIBLE | WS_VSCROLL, rect, pTree, nID);
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
    SCROLLINFO sh = {};
    sh.cbSize = sizeof(sh);
    sh.fMask = SIF_RANGE | SIF_PAGE;
    sh.nMin = 0;
    sh.nMax = m_pTree->GetInfoColMaxVisibleWidth() - unused + extra + client.Width() + 1;
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

void CKelPropertyTreeList::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (!m_pTree)
        return;
    Invalidate();
    UpdateResize();
    m_bScrollBarsDirty = 1;
    m_pTree->UpdateMoveAllItems();
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
