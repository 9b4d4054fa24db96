// The property tree window: owns the rows, the image lists and the shared fonts, and is the
// one place that talks to the parent window.
#include "propertytree.h"

#include "ck_attrib.h"
#include "kx_bitmapcontainer.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace
{
CFont* s_pNormalFont = nullptr;
CFont* s_pBoldFont = nullptr;
CFont* s_pThinFont = nullptr;
int s_nLiveTrees = 0;

// The special button size researched last, shared by every tree.
bool s_bSpecialButtonVisible = false;
CRect s_rcSpecialButton(0, 0, 0, 0);

// Codes the parent may receive; PTN_ITEMS_UPDATED and 46177 lie in the range but are kept back.
bool IsDeliveredCode(unsigned code)
{
    return code >= PTN_FIRST && code <= PTN_LAST && code != PTN_ITEMS_UPDATED && code != 46177;
}

int CALLBACK FindFamilyProc(const LOGFONT*, const TEXTMETRIC*, DWORD, LPARAM lParam)
{
    *reinterpret_cast<bool*>(lParam) = true;
    return 0;
}

bool FontFamilyExists(HDC dc, const char* face)
{
    LOGFONT lf = {};
    lf.lfCharSet = DEFAULT_CHARSET;
    lstrcpynA(lf.lfFaceName, face, LF_FACESIZE);
    bool found = false;
    EnumFontFamiliesExA(dc, &lf, &FindFamilyProc, reinterpret_cast<LPARAM>(&found), 0);
    return found;
}
}

CKelPropertyTreeItem* CKelPropertyTree::s_pFound = nullptr;

BEGIN_MESSAGE_MAP(CKelPropertyTree, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_ENABLE()
    ON_MESSAGE(WM_SYSCOLORCHANGE, &CKelPropertyTree::OnSysColorChange)
END_MESSAGE_MAP()

CKelPropertyTree::CKelPropertyTree()
{
    if (s_nLiveTrees++ == 0)
        InitGlobalResources();
    m_root.Expand(1);
    m_root.SetKelPropertyOwner(this);
    m_list.SetTree(this);
    LoadInternalImages();
}

CKelPropertyTree::~CKelPropertyTree()
{
    // Rows go with the tree whatever the parent would answer to their deletion.
    m_nNoMessagesOut = 1;
    SetTreeItemsSwitchable(0, m_nDisableRowOnUnchecked);
    DeleteAllItems();
    if (m_hWnd)
        DestroyWindow();
    if (--s_nLiveTrees == 0)
        FreeGlobalResources();
    delete m_pExternalData;
    m_pExternalData = nullptr;
}

// ---- shared fonts ----

void CKelPropertyTree::InitGlobalResources()
{
    NONCLIENTMETRICSA ncm = {};
    ncm.cbSize = sizeof(ncm);
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(ncm), &ncm, 0);
    LOGFONT lf = {};
    lf.lfHeight = ncm.lfMenuFont.lfHeight;
    lf.lfWeight = ncm.lfMenuFont.lfWeight;
    lf.lfItalic = ncm.lfMenuFont.lfItalic;
    lstrcpynA(lf.lfFaceName, ncm.lfMenuFont.lfFaceName, LF_FACESIZE);
    HDC screen = ::GetDC(nullptr);
    lf.lfCharSet = static_cast<BYTE>(GetTextCharset(screen));
    // Western menu fonts are replaced by a face that every such system has.
    if (ncm.lfMenuFont.lfCharSet <= 2)
        lstrcpynA(lf.lfFaceName, FontFamilyExists(screen, "Tahoma") ? "Tahoma" : "MS Sans Serif", LF_FACESIZE);
    ::ReleaseDC(nullptr, screen);

    s_pNormalFont = new CFont;
    s_pNormalFont->CreateFontIndirect(&lf);
    lf.lfWeight = FW_BOLD;
    s_pBoldFont = new CFont;
    s_pBoldFont->CreateFontIndirect(&lf);
    lf.lfWeight = 200;
    s_pThinFont = new CFont;
    s_pThinFont->CreateFontIndirect(&lf);
}

void CKelPropertyTree::FreeGlobalResources()
{
    delete s_pNormalFont;
    delete s_pBoldFont;
    delete s_pThinFont;
    s_pNormalFont = s_pBoldFont = s_pThinFont = nullptr;
}

CFont* CKelPropertyTree::GetNormalFont()
{
    return s_pNormalFont;
}

CFont* CKelPropertyTree::GetBoldFont()
{
    return s_pBoldFont;
}

CFont* CKelPropertyTree::GetThinNormalFont()
{
    return s_pThinFont;
}

int CKelPropertyTree::GetLiveTreeCount()
{
    return s_nLiveTrees;
}

// Switch off, on, deleted mark, locked off, locked on: the order of the PT_IMAGE_ indices.
void CKelPropertyTree::LoadInternalImages()
{
    static const int kIds[] = {KX_BMP_SWITCH_OFF, KX_BMP_SWITCH_ON, KX_BMP_DELETED_MARK, KX_BMP_LOCKED_SWITCH_OFF,
                               KX_BMP_LOCKED_SWITCH_ON};
    m_internalImages.Create(16, 16, ILC_COLOR32 | ILC_MASK, 5, 2);
    for (int id : kIds)
    {
        HICON icon = KX_BitmapContainer::instance().getGDIIcon(id, KX_BMPSIZE_16, 1);
        if (!icon)
            continue;
        m_internalImages.Add(icon);
        DestroyIcon(icon);
    }
}

// ---- window ----

BOOL CKelPropertyTree::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                              KEL_ML_TREE_USED_AT_MODULE_ID module)
{
    if (!pParentWnd)
        return 0;
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    m_eModule = module;
    m_pParentWnd = pParentWnd;
    if ((module == KEL_ML_TREE_MODULE_1 || module == KEL_ML_TREE_MODULE_4) && !m_pExternalData)
        m_pExternalData = new CExternalOMData{};
    LPCTSTR cls = AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW, ::LoadCursor(nullptr, IDC_ARROW));
    return CreateEx(0, cls, "", dwStyle, rect, pParentWnd, nID);
}

int CKelPropertyTree::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    if (!m_iconImages.GetSafeHandle())
        m_iconImages.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 2);
    CRect client;
    GetClientRect(&client);
    if (!m_list.Create(this, client, 100))
        return -1;
    return 0;
}

void CKelPropertyTree::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (m_list.m_hWnd)
        m_list.MoveWindow(0, 0, cx, cy);
}

void CKelPropertyTree::OnEnable(BOOL bEnable)
{
    CWnd::OnEnable(bEnable);
    Invalidate();
    if (m_list.m_hWnd)
        m_list.Invalidate();
}

LRESULT CKelPropertyTree::OnSysColorChange(WPARAM, LPARAM)
{
    Invalidate();
    if (m_list.m_hWnd)
        m_list.Invalidate();
    return 0;
}

BOOL CKelPropertyTree::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->message == WM_KEYDOWN)
    {
        if (GetKeyState(VK_CONTROL) < 0)
            m_nPressedKeys |= 2;
        if (GetKeyState(VK_SHIFT) < 0)
            m_nPressedKeys |= 4;
    }
    else if (pMsg->message == WM_KEYUP)
        m_nPressedKeys = 0;
    return CWnd::PreTranslateMessage(pMsg);
}

int CKelPropertyTree::IsPressedCtrl() const
{
    if (m_eModule == KEL_ML_TREE_MODULE_5)
        return GetAsyncKeyState(VK_CONTROL) < 0;
    return (m_nPressedKeys & 2) != 0;
}

int CKelPropertyTree::IsPressedShift() const
{
    if (m_eModule == KEL_ML_TREE_MODULE_5)
        return GetAsyncKeyState(VK_SHIFT) < 0;
    return (m_nPressedKeys & 4) != 0;
}

bool CKelPropertyTree::EvaluateDragAndDrop(CKelPropertyTreeItem*)
{
    return true;
}

// ---- host messages ----

LRESULT CKelPropertyTree::SendNotify(unsigned code, CKelPropertyTreeItem* pItem)
{
    if (m_nNoMessagesOut || !m_hWnd || !::IsWindow(m_hWnd) || !(GetStyle() & PTS_NOTIFY) || !IsDeliveredCode(code))
        return 0;
    // The two commit codes are orders to the row, not news for the parent.
    if (code == PTN_COMMIT_NOTIFY || code == PTN_COMMIT_SILENT)
    {
        if (pItem)
            pItem->CommitChanges(code == PTN_COMMIT_NOTIFY ? 1 : 0);
        return 0;
    }
    HWND parent = m_pParentWnd ? m_pParentWnd->GetSafeHwnd() : nullptr;
    if (!parent)
        return 0;
    PropertyTreeNotify nm = {};
    nm.hdr.hwndFrom = m_hWnd;
    nm.hdr.idFrom = reinterpret_cast<UINT_PTR>(::GetMenu(m_hWnd));
    nm.hdr.code = code;
    nm.pItem = pItem;
    return ::SendMessage(parent, WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
}

int CKelPropertyTree::GetOMFlag()
{
    HWND parent = m_pParentWnd ? m_pParentWnd->GetSafeHwnd() : nullptr;
    if (!m_pExternalData || !parent)
        return 0;
    m_pExternalData->nRequestedResID = 0;
    ::SendMessage(parent, WM_PT_EXCHANGE_OM, 0, reinterpret_cast<LPARAM>(m_pExternalData));
    return static_cast<int>(m_pExternalData->dwOptions);
}

CExternalOMData* CKelPropertyTree::ExchangeExternalOMData(unsigned resID)
{
    HWND parent = m_pParentWnd ? m_pParentWnd->GetSafeHwnd() : nullptr;
    if (!m_pExternalData || !parent)
        return nullptr;
    m_pExternalData->nRequestedResID = static_cast<int>(resID);
    ::SendMessage(parent, WM_PT_EXCHANGE_OM, 0, reinterpret_cast<LPARAM>(m_pExternalData));
    return m_pExternalData;
}

// ---- insertion and removal ----

CKelPropertyTreeItem* CKelPropertyTree::InsertItem(CKelPropertyTreeItem* pItem, CKelPropertyTreeItem* pParent)
{
    if (!pItem)
        return nullptr;
    if (!pParent)
        pParent = &m_root;
    pItem->SetSibling(nullptr);
    if (!pParent->GetChild())
        pParent->SetChild(pItem);
    else
    {
        CKelPropertyTreeItem* last = pParent->GetChild();
        while (last->GetSibling())
            last = last->GetSibling();
        last->SetSibling(pItem);
    }
    pItem->SetParent(pParent);
    pItem->SetKelPropertyOwner(this);
    pItem->SetCtrlID(m_nNextCtrlID++);
    SendNotify(PTN_ITEM_INSERTED, pItem);
    pParent->CheckupAutoCheckSubItems();
    UpdatedItems();
    m_bResearchSpecialButton = true;
    return pItem;
}

void CKelPropertyTree::Unlink(CKelPropertyTreeItem* pItem)
{
    CKelPropertyTreeItem* parent = pItem->GetParent();
    if (!parent)
        return;
    SubstituteInChildren(parent, pItem, pItem->GetSibling());
    pItem->SetSibling(nullptr);
}

void CKelPropertyTree::AppendToVisibleList(CKelPropertyTreeItem* pItem)
{
    pItem->SetNextVisible(nullptr);
    if (!m_pVisibleList)
        m_pVisibleList = pItem;
    else
    {
        // The tail is forgotten whenever the list changes other than by painting.
        if (!m_pVisibleTail)
            for (m_pVisibleTail = m_pVisibleList; m_pVisibleTail->GetNextVisible();
                 m_pVisibleTail = m_pVisibleTail->GetNextVisible())
            {
            }
        m_pVisibleTail->SetNextVisible(pItem);
    }
    m_pVisibleTail = pItem;
}

void CKelPropertyTree::RemoveFromVisibleList(CKelPropertyTreeItem* pItem)
{
    m_pVisibleTail = nullptr;
    if (m_pVisibleList == pItem)
        m_pVisibleList = pItem->GetNextVisible();
    else
        for (CKelPropertyTreeItem* p = m_pVisibleList; p; p = p->GetNextVisible())
            if (p->GetNextVisible() == pItem)
            {
                p->SetNextVisible(pItem->GetNextVisible());
                break;
            }
    pItem->SetNextVisible(nullptr);
}

bool CKelPropertyTree::IsItemOnVisibleList(const CKelPropertyTreeItem* pItem) const
{
    for (CKelPropertyTreeItem* p = m_pVisibleList; p; p = p->GetNextVisible())
        if (p == pItem)
            return true;
    return false;
}

// Forgets every pointer the tree keeps to the row, then destroys it.
void CKelPropertyTree::DestroyItem(CKelPropertyTreeItem* pItem)
{
    if (m_pFocus == pItem)
    {
        m_pFocus = nullptr;
        if (m_hWnd)
            Invalidate();
    }
    if (m_pLastActivated == pItem)
        m_pLastActivated = nullptr;
    if (m_pActiveGroupRoot == pItem)
        m_pActiveGroupRoot = nullptr;
    ExcludeItemFromList(m_itemsToAvoidSelection, pItem);
    ExcludeItemFromList(m_selectionDisabledItems, pItem);
    delete pItem;
}

void CKelPropertyTree::Delete(CKelPropertyTreeItem* pItem)
{
    m_bResearchSpecialButton = true;
    if (!pItem || pItem == &m_root)
    {
        for (CKelPropertyTreeItem* c = m_root.GetChild(); c;)
        {
            CKelPropertyTreeItem* next = c->GetSibling();
            DeleteItem(c);
            c = next;
        }
        return;
    }
    if (SendNotify(PTN_ITEM_DELETING, pItem) != 0)
        return;
    for (CKelPropertyTreeItem* c = pItem->GetChild(); c;)
    {
        CKelPropertyTreeItem* next = c->GetSibling();
        DeleteItem(c);
        c = next;
    }
    // A row whose child the parent window kept stays, so that the child keeps its place.
    if (pItem->GetChild())
        return;
    Unlink(pItem);
    RemoveFromVisibleList(pItem);
    DestroyItem(pItem);
}

void CKelPropertyTree::DeleteItem(CKelPropertyTreeItem* pItem)
{
    Delete(pItem);
    UpdatedItems();
}

void CKelPropertyTree::DeleteAllItems()
{
    Delete(nullptr);
    for (CKelPropertyTreeItem* p : m_replacedItems)
        delete p;
    m_replacedItems.clear();
    if (m_nPopulated && m_hWnd)
        Invalidate();
    m_nNextCtrlID = 1;
}

void CKelPropertyTree::DeleteItems(std::vector<CKelPropertyTreeItem*>& items)
{
    for (CKelPropertyTreeItem* p : items)
    {
        Delete(p);
        if (m_hWnd)
            Invalidate();
    }
}

void CKelPropertyTree::CollectMarked(CKelPropertyTreeItem* pChain, std::vector<CKelPropertyTreeItem*>& items)
{
    for (CKelPropertyTreeItem* p = pChain; p; p = p->GetSibling())
    {
        CollectMarked(p->GetChild(), items);
        if (p->IsDeleted())
            items.push_back(p);
    }
}

void CKelPropertyTree::GetItemsMarkedToDelete(std::vector<CKelPropertyTreeItem*>& items)
{
    items.clear();
    CollectMarked(m_root.GetChild(), items);
}

void CKelPropertyTree::DeleteMarked()
{
    std::vector<CKelPropertyTreeItem*> marked;
    GetItemsMarkedToDelete(marked);
    for (CKelPropertyTreeItem* p : marked)
        Delete(p);
    UpdatedItems();
}

void CKelPropertyTree::OnDeleteItem(CKelPropertyTreeItem* pItem, ITEM_DELETE mode)
{
    if (!pItem)
        return;
    int value = mode == ITEM_DELETE_MARK ? 1 : mode == ITEM_DELETE_UNMARK ? 0 : !pItem->IsDeleted();
    pItem->DeleteItem(value, 1);
    pItem->ReadOnly(pItem->IsDeleted());
    if (m_pExternalData && m_pExternalData->pAttribSet)
    {
        CK_AttribSet& set = *m_pExternalData->pAttribSet;
        if (pItem->GetResID() == PT_RESID_LAYER)
        {
            for (int i = 0; i < set.GetCount(); ++i)
                set.GetAt(i).m_nDeleted = value;
        }
        else if (CK_Attrib* attrib = set.Find(pItem->GetResID()))
            attrib->m_nDeleted = !value;
    }
    if (m_hWnd)
    {
        Invalidate();
        UpdateWindow();
    }
}

// ---- replacing and moving ----

// Puts pNew where pOld stands in the parent's chain of children.
void CKelPropertyTree::SubstituteInChildren(CKelPropertyTreeItem* parent, CKelPropertyTreeItem* pOld,
                                            CKelPropertyTreeItem* pNew)
{
    if (parent->GetChild() == pOld)
    {
        parent->SetChild(pNew);
        return;
    }
    for (CKelPropertyTreeItem* p = parent->GetChild(); p; p = p->GetSibling())
        if (p->GetSibling() == pOld)
        {
            p->SetSibling(pNew);
            return;
        }
}

// Puts pNew where pOld stands in its parent's chain of children and on the visible list.
void CKelPropertyTree::SubstituteInLinks(CKelPropertyTreeItem* pOld, CKelPropertyTreeItem* pNew)
{
    if (CKelPropertyTreeItem* parent = pOld->GetParent())
        SubstituteInChildren(parent, pOld, pNew);
    m_pVisibleTail = nullptr;
    if (m_pVisibleList == pOld)
        m_pVisibleList = pNew;
    else
        for (CKelPropertyTreeItem* p = m_pVisibleList; p; p = p->GetNextVisible())
            if (p->GetNextVisible() == pOld)
            {
                p->SetNextVisible(pNew);
                break;
            }
}

void CKelPropertyTree::ReplaceItem(CKelPropertyTreeItem* pOld, CKelPropertyTreeItem* pNew)
{
    if (!pOld || !pNew || pOld == pNew)
        return;
    CKelPropertyTreeItem* parent = pOld->GetParent();
    pNew->SetSibling(pOld->GetSibling());
    SubstituteInLinks(pOld, pNew);
    if (IsItemOnVisibleList(pNew))
        pNew->SetNextVisible(pOld->GetNextVisible());
    pNew->SetParent(parent);
    pNew->SetKelPropertyOwner(this);
    if (m_pFocus == pOld)
        m_pFocus = pNew;
    if (m_pLastActivated == pOld)
        m_pLastActivated = pNew;
    UpdatedItems();
}

void CKelPropertyTree::ReplaceItems(CKelPropertyTreeItem* pItem, CKelPropertyTreeItem* pOther,
                                    KelPropertyReplaceFlag flag)
{
    if (!pItem || !pOther || pItem == pOther)
        return;
    Unlink(pOther);
    RemoveFromVisibleList(pOther);
    CKelPropertyTreeItem* parent = pItem->GetParent();
    SubstituteInLinks(pItem, pOther);
    pOther->SetParent(parent);
    pOther->SetSibling(pItem->GetSibling());
    pOther->SetChild(pItem->GetChild());
    pOther->SetNextVisible(pItem->GetNextVisible());
    pOther->SetKelPropertyOwner(this);
    // The children now hang below the replacement.
    for (CKelPropertyTreeItem* c = pOther->GetChild(); c; c = c->GetSibling())
        c->SetParent(pOther);
    pItem->SetParent(nullptr);
    pItem->SetSibling(nullptr);
    pItem->SetChild(nullptr);
    pItem->SetNextVisible(nullptr);
    if (m_pFocus == pItem)
        m_pFocus = pOther;
    if (m_pLastActivated == pItem)
        m_pLastActivated = nullptr;
    switch (flag)
    {
    case KPRF_DELETE:
        DestroyItem(pItem);
        UpdatedItems();
        break;
    case KPRF_KEEP:
        m_replacedItems.push_back(pItem);
        break;
    case KPRF_DETACH:
        break;
    }
}

void CKelPropertyTree::ChangeParent(CKelPropertyTreeItem* pItem, CKelPropertyTreeItem* pNewParent)
{
    // A row cannot go below itself: that would cut its subtree off the tree.
    if (!pItem || !pNewParent || pItem->GetParent() == pNewParent || pItem == pNewParent ||
        IsAncestorOf(pItem, pNewParent))
        return;
    Unlink(pItem);
    pItem->SetSibling(nullptr);
    if (!pNewParent->GetChild())
        pNewParent->SetChild(pItem);
    else
        GetLastSibling(pNewParent->GetChild())->SetSibling(pItem);
    pItem->SetParent(pNewParent);
    pNewParent->Expand(1);
    pNewParent->CheckupAutoCheckSubItems();
}

void CKelPropertyTree::MoveItem(CKelPropertyTreeItem* pSource, CKelPropertyTreeItem* pDestination, int before)
{
    if (!pSource || !pDestination || pSource == pDestination || pSource->GetParent() != pDestination->GetParent())
        return;
    if (!before && pDestination->GetSibling() == pSource)
        return;
    if (pSource->GetSibling() == pDestination)
        before = 0;
    else if (pDestination->GetSibling() == pSource)
        before = 1;
    const unsigned flags = pDestination->GetDragFlags();
    if (flags & (4 | 8))
    {
        bool allowed;
        if (before)
        {
            allowed = (flags & 4) && !(flags & 8);
            before = 0;
        }
        else
            allowed = (flags & 8) && !(flags & 4);
        if (!allowed)
        {
            MessageBeep(MB_ICONEXCLAMATION);
            return;
        }
    }
    if ((before && pSource->GetSibling() == pDestination) || (!before && pDestination->GetSibling() == pSource))
    {
        MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    Unlink(pSource);
    CKelPropertyTreeItem* parent = pDestination->GetParent();
    if (before)
    {
        pSource->SetSibling(pDestination);
        SubstituteInChildren(parent, pDestination, pSource);
    }
    else
    {
        pSource->SetSibling(pDestination->GetSibling());
        pDestination->SetSibling(pSource);
    }
    pSource->SetParent(parent);
    UpdatedItems();
}

CKelPropertyTreeItem* CKelPropertyTree::GetFirstSibling(CKelPropertyTreeItem* pItem)
{
    if (!pItem)
        return nullptr;
    return pItem->GetParent() ? pItem->GetParent()->GetChild() : pItem;
}

CKelPropertyTreeItem* CKelPropertyTree::GetLastSibling(CKelPropertyTreeItem* pItem)
{
    if (!pItem)
        return nullptr;
    CKelPropertyTreeItem* p = pItem;
    while (p->GetSibling())
        p = p->GetSibling();
    return p;
}

// The root is not a row: a search that would end on it ends with none.
CKelPropertyTreeItem* CKelPropertyTree::GetNearbyItem(CKelPropertyTreeItem* pItem,
                                                      NEARBY_ITEM_SEARCH_DIRECTION direction)
{
    if (!pItem)
        return nullptr;
    CKelPropertyTreeItem* parent = pItem->GetParent() == &m_root ? nullptr : pItem->GetParent();
    switch (direction)
    {
    case NEARBY_PREV_NEXT_PARENT:
        if (CKelPropertyTreeItem* p = pItem->GetPrevSibling())
            return p;
        if (pItem->GetSibling())
            return pItem->GetSibling();
        return parent;
    case NEARBY_NEXT:
        return pItem->GetSibling();
    case NEARBY_PREV_PARENT:
        if (CKelPropertyTreeItem* p = pItem->GetPrevSibling())
            return p;
        return parent;
    }
    return nullptr;
}

// ---- enumeration and refresh ----

int CKelPropertyTree::EnumItems(CKelPropertyTreeItem* pItem, KelPropertyTreeEnumProc proc, LPARAM lParam,
                                int recursive)
{
    if (!pItem || !proc)
        return 0;
    if (pItem != &m_root && !proc(this, pItem, lParam))
        return 0;
    if (recursive)
        for (CKelPropertyTreeItem* c = pItem->GetChild(); c;)
        {
            CKelPropertyTreeItem* next = c->GetSibling();
            if (!EnumItems(c, proc, lParam, recursive))
                return 0;
            c = next;
        }
    return 1;
}

int CKelPropertyTree::EnumSelectAll(CKelPropertyTree*, CKelPropertyTreeItem* pItem, LPARAM lParam)
{
    pItem->Select_SetStatus(static_cast<int>(lParam));
    return 1;
}

int CKelPropertyTree::EnumRefreshAll(CKelPropertyTree*, CKelPropertyTreeItem* pItem, LPARAM)
{
    pItem->OnRefresh();
    return 1;
}

int CKelPropertyTree::EnumMoveAll(CKelPropertyTree*, CKelPropertyTreeItem* pItem, LPARAM)
{
    pItem->OnMove();
    return 1;
}

void CKelPropertyTree::RefreshItems(CKelPropertyTreeItem* pItem)
{
    EnumItems(pItem ? pItem : &m_root, &EnumRefreshAll, 0, 1);
    UpdatedItems();
}

void CKelPropertyTree::UpdateMoveAllItems()
{
    EnumItems(&m_root, &EnumMoveAll, 0, 1);
}

void CKelPropertyTree::UpdatedItems()
{
    if (!m_hWnd || !::IsWindow(m_hWnd) || !m_nPopulated)
        return;
    Invalidate();
    if (m_list.m_hWnd)
    {
        m_list.UpdateResize();
        m_list.Invalidate();
    }
}

// ---- finding ----

CKelPropertyTreeItem* CKelPropertyTree::FindItem(const POINT& pt)
{
    const long y = pt.y + m_ptOrigin.y;
    for (CKelPropertyTreeItem* p = m_pVisibleList; p; p = p->GetNextVisible())
    {
        const long top = p->GetLocation().y;
        if (y >= top && y < top + p->GetHeight())
            return p;
    }
    return nullptr;
}

CKelPropertyTreeItem* CKelPropertyTree::FindByCtrlID(CKelPropertyTreeItem* pItem, unsigned id)
{
    for (CKelPropertyTreeItem* p = pItem; p; p = p->GetSibling())
    {
        if (p->GetCtrlID() == id)
            return p;
        if (CKelPropertyTreeItem* found = FindByCtrlID(p->GetChild(), id))
            return found;
    }
    return nullptr;
}

CKelPropertyTreeItem* CKelPropertyTree::FindItem(unsigned ctrlID)
{
    s_pFound = FindByCtrlID(m_root.GetChild(), ctrlID);
    return s_pFound;
}

int CKelPropertyTree::HitTest(const POINT& pt)
{
    if (!m_nPopulated)
        return PTHT_NOT_POPULATED;
    CKelPropertyTreeItem* item = FindItem(pt);
    if (!item)
        return PTHT_NOWHERE;
    const long column = m_ptOrigin.x;
    if (!item->IsRootLevel() && std::labs(pt.x - column) <= 1)
        return PTHT_COLUMN;
    const POINT tree = {pt.x + m_nOriginHorz, pt.y + m_ptOrigin.y};
    if (item->GetSpecialButtonRectPtr() && item->HitSpecialButton(tree))
        return PTHT_SPECIAL_BUTTON;
    if (pt.x > column + 1)
        return PTHT_ATTRIBUTE;
    // The expand box is written in screen x and tree y.
    const POINT expand = {pt.x, pt.y + m_ptOrigin.y};
    if (item->HitExpand(expand))
        return PTHT_EXPAND;
    if (item->HitCheckBox(tree))
        return PTHT_CHECKBOX;
    if (item->HitPointBox(tree))
        return PTHT_POINTBOX;
    if (item->HitSwitchBox(tree))
        return PTHT_SWITCHBOX;
    return PTHT_LABEL;
}

CKelPropertyTreeItem* CKelPropertyTree::FindByResID(CKelPropertyTreeItem* pItem, unsigned id, bool special,
                                                    bool withSiblings)
{
    for (CKelPropertyTreeItem* p = pItem; p; p = withSiblings ? p->GetSibling() : nullptr)
    {
        const unsigned value = special ? p->GetSpecialResID() : static_cast<unsigned>(p->GetResID());
        if (value == id)
            return p;
        if (CKelPropertyTreeItem* found = FindByResID(p->GetChild(), id, special, true))
            return found;
    }
    return nullptr;
}

CKelPropertyTreeItem* CKelPropertyTree::GetFirstItemByResID(const unsigned& id, CKelPropertyTreeItem* pStart)
{
    if (pStart)
        return FindByResID(pStart, id, false, true);
    if (m_pActiveGroupRoot)
        return FindByResID(m_pActiveGroupRoot, id, false, false);
    return FindByResID(m_root.GetChild(), id, false, true);
}

CKelPropertyTreeItem* CKelPropertyTree::GetFirstItemBySpecialResID(const unsigned& id)
{
    return FindByResID(m_root.GetChild(), id, true, true);
}

CKelPropertyTreeItem* CKelPropertyTree::GetFirstVisibleItemByResID(const unsigned& id)
{
    for (CKelPropertyTreeItem* p = m_pVisibleList; p; p = p->GetNextVisible())
        if (static_cast<unsigned>(p->GetResID()) == id)
            return p;
    return nullptr;
}

// The row itself and its ancestors, then down the chain of first children.
CKelPropertyTreeItem* CKelPropertyTree::FindLevel(CKelPropertyTreeItem* pItem, int id)
{
    if (!pItem)
        return nullptr;
    for (CKelPropertyTreeItem* p = pItem; p && p != &m_root; p = p->GetParent())
        if (p->GetResID() == id)
            return p;
    for (CKelPropertyTreeItem* p = pItem->GetChild(); p; p = p->GetChild())
        if (p->GetResID() == id)
            return p;
    return nullptr;
}

CKelPropertyTreeItem* CKelPropertyTree::GetLayerLevel(CKelPropertyTreeItem* pItem)
{
    return FindLevel(pItem, PT_RESID_LAYER);
}

CKelPropertyTreeItem* CKelPropertyTree::GetMacroDefinitionLevel(CKelPropertyTreeItem* pItem)
{
    return FindLevel(pItem, PT_RESID_MACRO);
}

CKelPropertyTreeItem* CKelPropertyTree::GetFirstItemByResID_KeepingTreeConnection(CKelPropertyTreeItem* pItem, int id)
{
    return FindLevel(pItem, id);
}

CKelPropertyTreeItem* CKelPropertyTree::GetRootOfItem(CKelPropertyTreeItem* pItem)
{
    for (CKelPropertyTreeItem* p = pItem; p && p != &m_root; p = p->GetParent())
        if (p->GetResID() == PT_RESID_GROUP_ROOT)
            return p;
    return nullptr;
}

void CKelPropertyTree::SetActiveGroupRootItem(CKelPropertyTreeItem* pItem)
{
    m_pActiveGroupRoot = GetRootOfItem(pItem);
}

void CKelPropertyTree::GetAllItemWithID(std::vector<CKelPropertyTreeItem*>& items, int id,
                                        CKelPropertyTreeItem* pStart, int flag)
{
    if (flag != 0)
        return;
    for (CKelPropertyTreeItem* p = pStart; p; p = p->GetSibling())
        if (p->GetResID() == id)
            items.push_back(p);
}

void CKelPropertyTree::ExcludeItemFromList(std::vector<CKelPropertyTreeItem*>& items, CKelPropertyTreeItem* pItem)
{
    auto it = std::find(items.begin(), items.end(), pItem);
    if (it != items.end())
        items.erase(it);
}

void CKelPropertyTree::ExcludeDuplicateItems(const std::vector<CKelPropertyTreeItem*>& list,
                                             std::vector<CKelPropertyTreeItem*>& other)
{
    for (CKelPropertyTreeItem* p : list)
        other.erase(std::remove(other.begin(), other.end(), p), other.end());
}

int CKelPropertyTree::IsLockedWithSubItems(CKelPropertyTreeItem* pItem, int wide)
{
    if (!pItem)
        return 0;
    if (!wide)
        return pItem->IsLocked() ? 1 : 0;
    if (GetLayerLevel(pItem) == pItem || GetMacroDefinitionLevel(pItem) == pItem)
        return 0;
    CKelPropertyTreeItem* layer = GetLayerLevel(pItem);
    return layer && layer->IsLocked() ? 1 : 0;
}

// ---- copying values between parallel layer rows ----

void CKelPropertyTree::CopyValuesSub(CKelPropertyTreeItem* pSource, CKelPropertyTreeItem* pDestination)
{
    const bool layers = pSource->GetResID() == PT_RESID_LAYER && pDestination->GetResID() == PT_RESID_LAYER;
    for (CKelPropertyTreeItem *s = pSource->GetChild(), *d = pDestination->GetChild(); s && d;
         s = s->GetSibling(), d = d->GetSibling())
    {
        if (!layers)
        {
            CopyValuesSub(s, d);
            continue;
        }
        const int kind = s->GetIdentifier();
        if (kind >= ITEM_TYPE_CHECK && kind <= ITEM_TYPE_POINT)
            d->SetItemValue(s->GetTypeIndependentItemValue());
        else if (kind >= ITEM_TYPE_STATIC && kind <= ITEM_TYPE_FACE_STYLE)
            d->SetItemValue(s->GetItemValue());
    }
}

void CKelPropertyTree::CopyItemValues(std::vector<CKelPropertyTreeItem*>& sources,
                                      std::vector<CKelPropertyTreeItem*>& destinations)
{
    if (sources.size() != destinations.size())
        return;
    for (size_t i = 0; i < sources.size(); ++i)
        if (sources[i] && destinations[i])
            CopyValuesSub(sources[i], destinations[i]);
}

// ---- selection ----

int CKelPropertyTree::SelectItems_Validate_Sub(CKelPropertyTreeItem* pItem, int select)
{
    if (pItem && select && pItem->IsItemSwitching() && pItem->GetItemSwitchStatus() == 0 &&
        m_nDisableRowOnUnchecked && !pItem->IsItemEnabledEvenGlobalUncheckedSwitchingStatusIsDisabled())
        return 0;
    return 1;
}

int CKelPropertyTree::SelectItems(CKelPropertyTreeItem* pItem, int select)
{
    CKelPropertyTreeItem* item = pItem ? pItem : &m_root;
    if (!SelectItems_Validate_Sub(item, select))
        return 0;
    if (!pItem)
        EnumItems(&m_root, &EnumSelectAll, select, 1);
    else
        pItem->Select_SetStatus(select);
    return 1;
}

void CKelPropertyTree::ClearAllSelection()
{
    EnumItems(&m_root, &EnumSelectAll, 0, 1);
}

void CKelPropertyTree::SelectItem(CKelPropertyTreeItem* pItem)
{
    ClearAllSelection();
    m_pFocus = nullptr;
    if (m_hWnd)
        Invalidate();
    if (pItem && SelectItems_Validate_Sub(pItem, 1))
        pItem->Select_SetStatus(1);
    SendNotify(PTN_SELECTION_CHANGED, nullptr);
    if (m_hWnd)
        Invalidate();
}

void CKelPropertyTree::SelectItemWithItemNotify(CKelPropertyTreeItem* pItem)
{
    ClearAllSelection();
    m_pFocus = nullptr;
    if (m_hWnd)
        Invalidate();
    if (pItem && SelectItems_Validate_Sub(pItem, 1))
        pItem->Select_SetStatus(1);
    SendNotify(PTN_SELECTION_CHANGED, pItem ? pItem : &m_root);
    if (m_hWnd)
        Invalidate();
}

void CKelPropertyTree::SelectSiblingsFrom(CKelPropertyTreeItem* pFrom, CKelPropertyTreeItem* pTo)
{
    for (CKelPropertyTreeItem* p = pFrom; p; p = p->GetSibling())
    {
        p->Select_SetStatus(1);
        if (p == pTo)
            break;
    }
}

bool CKelPropertyTree::IsAncestorOf(const CKelPropertyTreeItem* pAncestor, const CKelPropertyTreeItem* pItem) const
{
    for (const CKelPropertyTreeItem* p = pItem ? pItem->GetParent() : nullptr; p; p = p->GetParent())
        if (p == pAncestor)
            return true;
    return false;
}

namespace
{
// Rows of one level in the order of the tree, depth first.
void CollectLevel(CKelPropertyTreeItem* pChain, int level, std::vector<CKelPropertyTreeItem*>& rows)
{
    for (CKelPropertyTreeItem* p = pChain; p; p = p->GetSibling())
    {
        if (p->GetLevel() == level)
            rows.push_back(p);
        else if (p->GetLevel() < level)
            CollectLevel(p->GetChild(), level, rows);
    }
}
}

void CKelPropertyTree::MultipleSelect(CKelPropertyTreeItem* pItem, int select)
{
    if (!m_bMultipleSelection || !pItem)
        return;
    if (IsPressedShift())
    {
        CKelPropertyTreeItem* anchor = m_pFocus;
        if (!anchor)
            return;
        ClearAllSelection();
        if (anchor->GetLevel() != pItem->GetLevel())
        {
            SelectSiblingsFrom(anchor, nullptr);
        }
        else if (anchor->GetParent() == pItem->GetParent())
        {
            CKelPropertyTreeItem* first = pItem->IsItemBehindOf(anchor) ? pItem : anchor;
            CKelPropertyTreeItem* last = first == anchor ? pItem : anchor;
            SelectSiblingsFrom(first, last);
        }
        else
        {
            // The parents' order in the tree decides which of the two rows comes first.
            CKelPropertyTreeItem* pa = anchor->GetParent();
            CKelPropertyTreeItem* pb = pItem->GetParent();
            std::vector<CKelPropertyTreeItem*> parents;
            CollectLevel(m_root.GetChild(), pa->GetLevel(), parents);
            auto ia = std::find(parents.begin(), parents.end(), pa);
            auto ib = std::find(parents.begin(), parents.end(), pb);
            const bool anchorFirst = ia < ib;
            CKelPropertyTreeItem* first = anchorFirst ? anchor : pItem;
            CKelPropertyTreeItem* last = anchorFirst ? pItem : anchor;
            auto from = anchorFirst ? ia : ib;
            auto to = anchorFirst ? ib : ia;
            SelectSiblingsFrom(first, nullptr);
            for (auto it = from + 1; it < to; ++it)
                SelectSiblingsFrom((*it)->GetChild(), nullptr);
            SelectSiblingsFrom(last->GetParent()->GetChild(), last);
        }
        return;
    }
    if (IsPressedCtrl())
    {
        SetFocusedItem(pItem);
        SelectItems(pItem, !pItem->IsSelected());
        return;
    }
    ClearAllSelection();
    SelectItems(pItem, select);
    SetFocusedItem(pItem);
}

// ---- focus ----

int CKelPropertyTree::IsEnabled4Selection(CKelPropertyTreeItem* pItem) const
{
    return std::find(m_itemsToAvoidSelection.begin(), m_itemsToAvoidSelection.end(), pItem) ==
           m_itemsToAvoidSelection.end();
}

void CKelPropertyTree::SetFocusedItem(CKelPropertyTreeItem* pItem)
{
    if (!pItem)
        m_pFocus = nullptr;
    else
    {
        CKelPropertyTreeItem* p = pItem;
        while (p && !IsEnabled4Selection(p))
            p = p->GetNextVisible();
        if (p)
        {
            m_pFocus = p;
            EnsureVisible(p);
        }
    }
    if (m_hWnd)
        Invalidate();
}

CKelPropertyTreeItem* CKelPropertyTree::GetItemValidForSelection(CKelPropertyTreeItem* pItem,
                                                                 KelPropertyValidItemSearchType_e type)
{
    if (!pItem)
        return nullptr;
    if (IsEnabled4Selection(pItem))
        return pItem;
    if (type == KPVIST_CHILDREN)
        return GetItemValidForSelection(pItem->GetChild(), type);
    if (type == KPVIST_SIBLINGS)
        return GetItemValidForSelection(pItem->GetSibling(), type);
    return nullptr;
}

void CKelPropertyTree::AddItem2AvoidSelection(CKelPropertyTreeItem* pItem)
{
    if (pItem && IsEnabled4Selection(pItem))
        m_itemsToAvoidSelection.push_back(pItem);
}

void CKelPropertyTree::DisableSelection4Item(CKelPropertyTreeItem* pItem)
{
    if (pItem && std::find(m_selectionDisabledItems.begin(), m_selectionDisabledItems.end(), pItem) ==
                     m_selectionDisabledItems.end())
        m_selectionDisabledItems.push_back(pItem);
}

void CKelPropertyTree::EnableSelection4Item(CKelPropertyTreeItem* pItem)
{
    ExcludeItemFromList(m_selectionDisabledItems, pItem);
}

// A keyboard move: focus the target, then skip rows that a switch makes unusable.
void CKelPropertyTree::FocusMove(CKelPropertyTreeItem* pTarget, NEARBY_ITEM_SEARCH_DIRECTION skip)
{
    if (!pTarget)
        return;
    CKelPropertyTreeItem* old = m_pFocus;
    SetFocusedItem(pTarget);
    ClearAllSelection();
    CKelPropertyTreeItem* row = m_pFocus;
    // Sibling skips can come back to a row already refused (previous, then next again): the
    // chain is used up then, and the search goes on with the parent.
    std::set<CKelPropertyTreeItem*> seen;
    while (row && !SelectItems_Validate_Sub(row, 1))
    {
        seen.insert(row);
        CKelPropertyTreeItem* next = GetNearbyItem(row, skip);
        if (next && seen.count(next))
        {
            next = row->GetParent() == &m_root ? nullptr : row->GetParent();
            if (next && seen.count(next))
                next = nullptr;
        }
        row = next;
    }
    m_pFocus = row;
    if (row)
    {
        if (m_bMultipleSelection)
            MultipleSelect(row, 1);
        else
            SelectItems(row, 1);
    }
    if (m_pFocus != old)
        SendNotify(PTN_SELECTION_CHANGED, m_pFocus);
}

void CKelPropertyTree::FocusFirst()
{
    FocusMove(m_pVisibleList, NEARBY_PREV_NEXT_PARENT);
}

void CKelPropertyTree::FocusLast()
{
    CKelPropertyTreeItem* last = m_pVisibleList;
    while (last && last->GetNextVisible())
        last = last->GetNextVisible();
    FocusMove(last, NEARBY_PREV_NEXT_PARENT);
}

void CKelPropertyTree::FocusPrev()
{
    CKelPropertyTreeItem* target = nullptr;
    if (!m_pFocus)
    {
        target = m_pVisibleList;
        while (target && target->GetNextVisible())
            target = target->GetNextVisible();
    }
    else
        for (CKelPropertyTreeItem* p = m_pVisibleList; p; p = p->GetNextVisible())
            if (p->GetNextVisible() == m_pFocus)
            {
                target = p;
                break;
            }
    FocusMove(target, NEARBY_PREV_PARENT);
}

void CKelPropertyTree::FocusNext()
{
    CKelPropertyTreeItem* target = m_pFocus ? m_pFocus->GetNextVisible() : m_pVisibleList;
    FocusMove(target, NEARBY_NEXT);
}

void CKelPropertyTree::EnsureVisible(CKelPropertyTreeItem* pItem)
{
    if (!pItem || !m_hWnd || !::IsWindow(m_hWnd) || !m_list.m_hWnd)
        return;
    if (!IsItemOnVisibleList(pItem))
    {
        for (CKelPropertyTreeItem* p = pItem->GetParent(); p; p = p->GetParent())
            p->Expand(1);
        UpdatedItems();
        m_list.UpdateWindow();
    }
    CRect client;
    m_list.GetClientRect(&client);
    const long top = m_ptOrigin.y;
    const long bottom = m_ptOrigin.y + client.Height() - pItem->GetHeight();
    const long y = pItem->GetLocation().y;
    if (y < top || y > bottom)
    {
        m_list.SetFocus();
        long pos = y < top ? y : y + pItem->GetHeight() - client.Height();
        SCROLLINFO si;
        if (m_list.ReadScrollInfo(SB_VERT, si))
        {
            const long maxPos = si.nMax - static_cast<long>(si.nPage) + 1;
            pos = std::min(pos, maxPos);
            pos = std::max(pos, static_cast<long>(si.nMin));
        }
        pos = std::max(pos, 0L);
        const long delta = m_ptOrigin.y - pos;
        m_ptOrigin.y = pos;
        m_list.SetScrollPos(SB_VERT, static_cast<int>(pos));
        pItem->OffsetItemRect(0, static_cast<int>(delta));
    }
    EnsureVisibleSideways(client);
}

// Sideways: the value column, as wide as the widest value of the last paint, is to end inside
// the client area. When it runs past the right edge the horizontal scroll position moves by
// the shortfall, within the scroll limit, and the column moves left by as much, no further
// than the splitter minimum: the label side gives way to the values.
void CKelPropertyTree::EnsureVisibleSideways(const CRect& client)
{
    const long valueRight = m_ptOrigin.x + 5 + m_nInfoColMaxVisibleWidth;
    const long need = valueRight - client.right;
    if (need <= 0)
        return;
    SCROLLINFO si;
    if (!m_list.ReadScrollInfo(SB_HORZ, si))
        return;
    const long limit = std::max(0L, static_cast<long>(si.nMax) - static_cast<long>(si.nPage) + 1);
    const long pos = si.nPos;
    const long target = std::min(pos + need, limit);
    const long diff = target - pos;
    if (diff <= 0)
        return;
    m_ptOrigin.x = std::max(m_ptOrigin.x - diff, static_cast<long>(m_nSplitterMinCol) - m_nOriginHorz);
    m_nOriginHorz = target;
    m_list.SetScrollPos(SB_HORZ, static_cast<int>(target));
    m_list.Invalidate();
    UpdateMoveAllItems();
}

void CKelPropertyTree::SimulateContextMenuClick(CKelPropertyTreeItem* pItem)
{
    CKelPropertyTreeItem* item = pItem ? pItem : m_pFocus;
    if (item)
        SendNotify(PTN_CONTEXT_MENU, item);
}

int CKelPropertyTree::IsThePointAtTheUpperPartOfTheItem(CKelPropertyTreeItem* pItem, const POINT& pt)
{
    if (!pItem)
        return 0;
    return pItem->GetLocation().y + pItem->GetHeight() / 2 > pt.y + m_ptOrigin.y ? 1 : 0;
}

// ---- expanded state ----

void CKelPropertyTree::CollectExpanded(CKelPropertyTreeItem* pItem, std::vector<EXPANDED_ITEMS>& items)
{
    if (pItem->IsExpanded())
    {
        EXPANDED_ITEMS entry;
        entry.strLabel = pItem->GetLabelText();
        entry.nResID = static_cast<unsigned>(pItem->GetResID());
        items.push_back(entry);
    }
    for (CKelPropertyTreeItem* c = pItem->GetChild(); c; c = c->GetSibling())
        CollectExpanded(c, items);
}

void CKelPropertyTree::GetExpandedItems(std::vector<EXPANDED_ITEMS>& items)
{
    CollectExpanded(&m_root, items);
}

// In each chain the first row of that name is expanded and the chain's walk ends there.
void CKelPropertyTree::ExpandOne_Sub(CKelPropertyTreeItem* pChain, const EXPANDED_ITEMS& item)
{
    for (CKelPropertyTreeItem* p = pChain; p; p = p->GetSibling())
    {
        if (static_cast<unsigned>(p->GetResID()) == item.nResID && p->GetLabelText() == item.strLabel)
        {
            p->Expand(1);
            return;
        }
        ExpandOne_Sub(p->GetChild(), item);
    }
}

void CKelPropertyTree::ExpandAll(const std::vector<EXPANDED_ITEMS>& items)
{
    for (const EXPANDED_ITEMS& entry : items)
        ExpandOne_Sub(&m_root, entry);
}

void CKelPropertyTree::ExpandOne(const EXPANDED_ITEMS& item)
{
    ExpandOne_Sub(&m_root, item);
}

void CKelPropertyTree::ExpandCollapseChain(CKelPropertyTreeItem* pItem, bool expand)
{
    for (CKelPropertyTreeItem* p = pItem; p; p = p->GetSibling())
    {
        if (expand)
        {
            if (p->GetChild())
                p->Expand(1);
            ExpandCollapseChain(p->GetChild(), expand);
        }
        else
        {
            ExpandCollapseChain(p->GetChild(), expand);
            if (p->GetChild())
                p->Expand(0);
        }
    }
}

void CKelPropertyTree::ExpandAll(KelPropertyTreeExpandCollapseCommand_e command, CKelPropertyTreeItem* pItem)
{
    CKelPropertyTreeItem* start = !pItem || pItem == &m_root ? m_root.GetChild() : pItem;
    if (!start)
        return;
    const bool expand = command == KPTEC_EXPAND;
    CKelPropertyTreeItem* oldFocus = m_pFocus;
    ExpandCollapseChain(start, expand);
    if (m_hWnd)
    {
        UpdatedItems();
        Invalidate();
        if (m_list.m_hWnd)
            m_list.UpdateWindow();
    }
    if (expand)
    {
        if (m_list.m_hWnd)
            m_list.CheckVisibleFocus();
        return;
    }
    for (CKelPropertyTreeItem* p = oldFocus; p && p != &m_root; p = p->GetParent())
        if (IsItemOnVisibleList(p) && IsEnabled4Selection(p))
        {
            SelectItem(p);
            return;
        }
    SelectItem(GetItemValidForSelection(start, KPVIST_CHILDREN));
}

// ---- switches in bulk ----

void CKelPropertyTree::SetTreeItemsSwitchable(int enable, int disableRow)
{
    m_pSwitchImageList = enable ? &m_internalImages : nullptr;
    m_nDisableRowOnUnchecked = disableRow;
}

void CKelPropertyTree::SetSwitchStatusForAll(int on)
{
    if (!m_pSwitchImageList)
        return;
    m_nSelectedAll = on;
    SetSwitchStatusForAll_Sub(m_root.GetChild(), on);
    if (CExternalOMData* data = ExchangeExternalOMData(0))
        if (data->pAttribSet)
            for (int i = 0; i < data->pAttribSet->GetCount(); ++i)
            {
                CK_Attrib& attrib = data->pAttribSet->GetAt(i);
                attrib.m_nSwitched = on;
                if (!on)
                    attrib.m_nDeleted = 1;
            }
}

// Each row of the chain and, below it, its children: every row is switched once.
void CKelPropertyTree::SetSwitchStatusForAll_Sub(CKelPropertyTreeItem* pItem, int on)
{
    for (CKelPropertyTreeItem* p = pItem; p; p = p->GetSibling())
    {
        if (!on)
            p->Select_SetStatus(0);
        if (p->IsItemSwitching() && !p->IsSwitchableCheckHidden() && !p->IsItemSwitchLocked() &&
            p->GetItemOwner())
            p->ApplySwitchStatus(on, KPTISM_ALL, true, false);
        if (!on)
            p->DeleteItem(0, 1);
        SetSwitchStatusForAll_Sub(p->GetChild(), on);
    }
}

// ---- column ----

void CKelPropertyTree::SetColumn(long x)
{
    x = std::max(x, 16L);
    CRect client(0, 0, 0, 0);
    if (m_hWnd)
        GetClientRect(&client);
    if (!client.IsRectEmpty() && x >= client.Width() - 16)
        x = client.Width() - 16;
    m_ptOrigin.x = x;
}

void CKelPropertyTree::SetOriginOffsetX(long x)
{
    m_ptOrigin.x = std::max(x, static_cast<long>(m_nSplitterMinCol) - m_nOriginHorz);
}

// ---- icons ----

void CKelPropertyTree::AddIcons(const int* ids, int count)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (m_iconImages.GetSafeHandle())
        m_iconImages.Remove(-1);
    m_iconNumbers.clear();
    if (!ids || !m_iconImages.GetSafeHandle())
        return;
    for (int i = 0; i < count; ++i)
    {
        HICON icon = static_cast<HICON>(
            ::LoadImage(AfxGetResourceHandle(), MAKEINTRESOURCE(ids[i]), IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR));
        if (!icon)
            continue;
        if (m_iconImages.Add(icon) >= 0)
            m_iconNumbers.push_back(ids[i]);
        DestroyIcon(icon);
    }
}

void CKelPropertyTree::AddIcons_NA(const int* ids, int count)
{
    if (m_iconImages.GetSafeHandle())
        m_iconImages.Remove(-1);
    m_iconNumbers.clear();
    if (!ids || !m_iconImages.GetSafeHandle())
        return;
    for (int i = 0; i < count; ++i)
    {
        HICON icon = KX_BitmapContainer::instance().getGDIIcon(ids[i], KX_BMPSIZE_16, 1);
        if (!icon)
            continue;
        if (m_iconImages.Add(icon) >= 0)
            m_iconNumbers.push_back(ids[i]);
        DestroyIcon(icon);
    }
}

int CKelPropertyTree::GetImageListNrByIconNr(int nr) const
{
    for (size_t i = 0; i < m_iconNumbers.size(); ++i)
        if (m_iconNumbers[i] == nr)
            return static_cast<int>(i);
    return -1;
}

// ---- special button ----

void CKelPropertyTree::GetSpecialButtonProperties(bool& visible, CRect& rect)
{
    if (m_bResearchSpecialButton)
    {
        CKelPropertyTreeItem* found = nullptr;
        // Only the first row of each chain is entered on the way down.
        for (CKelPropertyTreeItem* chain = m_root.GetChild(); chain && !found; chain = chain->GetChild())
            for (CKelPropertyTreeItem* p = chain; p; p = p->GetSibling())
                if (p->IsSpecialButtonVisible())
                {
                    found = p;
                    break;
                }
        s_bSpecialButtonVisible = found != nullptr;
        s_rcSpecialButton.SetRectEmpty();
        if (found)
        {
            s_rcSpecialButton = found->GetSpecialButtonDimension();
            if (s_rcSpecialButton.IsRectEmpty())
                s_rcSpecialButton.SetRect(0, 0, 16, 16);
        }
        m_bResearchSpecialButton = false;
    }
    visible = s_bSpecialButtonVisible;
    rect = s_rcSpecialButton;
}
