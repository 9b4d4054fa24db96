// One row of a property tree: links, flags, switch box, marks and the value protocol.
#include "propertytree.h"

#include <cstring>
#include <vector>

namespace
{
char* CopyText(const char* text)
{
    if (!text)
        return nullptr;
    size_t n = std::strlen(text) + 1;
    char* copy = new char[n];
    std::memcpy(copy, text, n);
    return copy;
}

bool IsRectEmptyPtr(const RECT* rc)
{
    return !rc;
}
}

CKelPropertyTreeItem::CKelPropertyTreeItem(int showSpecialButton, unsigned specialButtonMessageID,
                                           const char* specialButtonText)
    : m_pszSpecialButtonText(CopyText(specialButtonText)),
      m_nSpecialButtonMessageID(specialButtonMessageID),
      m_nShowSpecialButton(showSpecialButton)
{
    if (showSpecialButton)
        m_pSpecialButtonRect = new RECT{0, 0, 0, 0};
}

// Member by member, pointers as they stand: the copy shares the source's owned blocks.
CKelPropertyTreeItem::CKelPropertyTreeItem(const CKelPropertyTreeItem& other) = default;
CKelPropertyTreeItem& CKelPropertyTreeItem::operator=(const CKelPropertyTreeItem& other) = default;

CKelPropertyTreeItem::~CKelPropertyTreeItem()
{
    FreeOwned();
}

void CKelPropertyTreeItem::FreeOwned()
{
    delete m_pSpecialButtonRect;
    m_pSpecialButtonRect = nullptr;
    delete[] m_pszSpecialButtonText;
    m_pszSpecialButtonText = nullptr;
    if (m_nOwnsItemDataEx)
        delete m_pItemDataEx;
    m_pItemDataEx = nullptr;
    delete m_pLabelEdit;
    m_pLabelEdit = nullptr;
}

// ---- overridables: a base row has no value ----

void* CKelPropertyTreeItem::GetTypeIndependentItemValue()
{
    return nullptr;
}

void CKelPropertyTreeItem::DrawAttribute(CDC*, const RECT&) {}

long CKelPropertyTreeItem::GetHeight()
{
    return 20;
}

LONG_PTR CKelPropertyTreeItem::GetItemValue()
{
    return 0;
}

void CKelPropertyTreeItem::SetItemValue(LONG_PTR) {}
void CKelPropertyTreeItem::SetItemValue(void*) {}
void CKelPropertyTreeItem::OnMove() {}
void CKelPropertyTreeItem::OnRefresh() {}
void CKelPropertyTreeItem::OnCommit(int&) {}
void CKelPropertyTreeItem::OnCancel() {}

// A base row has nothing to edit, so it never stays active.
void CKelPropertyTreeItem::OnActivate()
{
    m_dwStatus &= ~PTIS_ACTIVATED;
    if (m_pOwner && m_pOwner->GetItemLastActivated() == this)
        m_pOwner->SetItemLastActivated(nullptr);
}

void CKelPropertyTreeItem::OnUndo() {}
void CKelPropertyTreeItem::SetAdditionalTextInfo(const char*) {}

// ---- flags ----

void CKelPropertyTreeItem::Select_SetStatus(int select)
{
    if (select)
        m_dwStatus |= PTIS_SELECTED;
    else
        m_dwStatus &= ~PTIS_SELECTED;
}

void CKelPropertyTreeItem::Expand(int expand)
{
    if (expand)
        m_dwStatus |= PTIS_EXPANDED;
    else
        m_dwStatus &= ~PTIS_EXPANDED;
}

// This row and its ancestors below the top-level row, highest first; on a top-level row the
// root and the row.
void CKelPropertyTreeItem::ExpandRecursive(int expand)
{
    std::vector<CKelPropertyTreeItem*> chain;
    chain.push_back(this);
    for (CKelPropertyTreeItem* p = m_pParent; p && !p->IsRootLevel(); p = p->m_pParent)
        chain.push_back(p);
    for (auto it = chain.rbegin(); it != chain.rend(); ++it)
        (*it)->Expand(expand);
}

// The first-child descendants are always expanded, whatever the argument.
void CKelPropertyTreeItem::ExpandDeep(bool expand)
{
    Expand(expand ? 1 : 0);
    for (CKelPropertyTreeItem* p = m_pChild; p; p = p->m_pChild)
        p->Expand(1);
}

void CKelPropertyTreeItem::ReadOnly(int readOnly)
{
    if (readOnly)
        m_dwStatus |= PTIS_READONLY;
    else
        m_dwStatus &= ~PTIS_READONLY;
}

void CKelPropertyTreeItem::ReadOnly(int readOnly, int second)
{
    ReadOnly(readOnly);
    if (second == 0)
        m_dwStatus &= ~PTIS_READONLY2;
    else if (second == 1)
        m_dwStatus |= PTIS_READONLY2;
    if (m_nResID == PT_RESID_LAYER)
    {
        int firstLocked = m_pOwner ? m_pOwner->GetFirstLockedItemResID() : -1;
        for (CKelPropertyTreeItem* c = m_pChild; c; c = c->m_pSibling)
            if (c->m_nResID != firstLocked)
                c->ReadOnly(readOnly);
    }
}

void CKelPropertyTreeItem::SetCheckBox(int checkBox)
{
    if (checkBox)
        m_dwStatus |= PTIS_CHECKBOX;
    else
        m_dwStatus &= ~PTIS_CHECKBOX;
}

void CKelPropertyTreeItem::SetDateBox(int dateBox)
{
    if (dateBox)
        m_dwStatus |= PTIS_DATEBOX;
    else
        m_dwStatus &= ~PTIS_DATEBOX;
}

void CKelPropertyTreeItem::ForbidDelete(int forbid)
{
    if (forbid)
        m_dwStatus |= PTIS_DELETE_FORBIDDEN;
    else
        m_dwStatus &= ~PTIS_DELETE_FORBIDDEN;
}

// ---- links ----

CKelPropertyTreeItem* CKelPropertyTreeItem::GetSibling(unsigned resID) const
{
    for (CKelPropertyTreeItem* p = m_pSibling; p; p = p->m_pSibling)
        if (static_cast<unsigned>(p->m_nResID) == resID)
            return p;
    return nullptr;
}

CKelPropertyTreeItem* CKelPropertyTreeItem::GetPrevSibling(int filter) const
{
    if (!m_pParent)
        return nullptr;
    CKelPropertyTreeItem* prev = nullptr;
    for (CKelPropertyTreeItem* p = m_pParent->m_pChild; p && p != this; p = p->m_pSibling)
    {
        if (filter != -1 && p->m_nResID != filter)
            break;
        prev = p;
    }
    return prev;
}

int CKelPropertyTreeItem::IsItemBehindOf(const CKelPropertyTreeItem* pOther) const
{
    if (!m_pParent)
        return 1;
    for (CKelPropertyTreeItem* p = m_pParent->m_pChild; p && p != this; p = p->m_pSibling)
        if (p == pOther)
            return 0;
    return 1;
}

int CKelPropertyTreeItem::IsRootLevel() const
{
    if (!m_pParent)
        return 0;
    if (m_pOwner)
        return m_pParent == m_pOwner->GetRootItem();
    return m_pParent->m_pParent == nullptr;
}

int CKelPropertyTreeItem::GetLevel() const
{
    int ancestors = 0;
    for (CKelPropertyTreeItem* p = m_pParent; p; p = p->m_pParent)
        ++ancestors;
    return ancestors - 1;
}

int CKelPropertyTreeItem::GetPositionIdx() const
{
    if (!m_pParent || !m_pParent->m_pChild)
        return -1;
    int index = 0;
    for (CKelPropertyTreeItem* p = m_pParent->m_pChild; p; p = p->m_pSibling, ++index)
        if (p == this)
            return index;
    return -1;
}

int CKelPropertyTreeItem::GetChildCount() const
{
    int count = 0;
    for (CKelPropertyTreeItem* p = m_pChild; p; p = p->m_pSibling)
        ++count;
    return count;
}

long CKelPropertyTreeItem::GetTotalHeight()
{
    long total = GetHeight();
    if (IsExpanded())
        for (CKelPropertyTreeItem* p = m_pChild; p; p = p->m_pSibling)
            total += p->GetTotalHeight();
    return total;
}

// ---- hit tests ----

int CKelPropertyTreeItem::HitSwitchBox(const POINT& pt) const
{
    return PtInRect(&m_rcSwitchBox, pt) ? 1 : 0;
}

int CKelPropertyTreeItem::HitExpand(const POINT& pt) const
{
    return PtInRect(&m_rcExpand, pt) ? 1 : 0;
}

int CKelPropertyTreeItem::HitCheckBox(const POINT& pt) const
{
    return !IsRectEmptyPtr(m_pCheckBoxRect) && PtInRect(m_pCheckBoxRect, pt) ? 1 : 0;
}

int CKelPropertyTreeItem::HitSpecialButton(const POINT& pt) const
{
    return !IsRectEmptyPtr(m_pSpecialButtonRect) && PtInRect(m_pSpecialButtonRect, pt) ? 1 : 0;
}

int CKelPropertyTreeItem::HitPointBox(const POINT& pt) const
{
    return !IsRectEmptyPtr(m_pPointBoxRect) && PtInRect(m_pPointBoxRect, pt) ? 1 : 0;
}

// ---- marks ----

void CKelPropertyTreeItem::Lock(int locked, int keepPlainLook)
{
    m_nLocked = locked;
    m_nLockKeepsPlainLook = keepPlainLook;
}

void CKelPropertyTreeItem::DeleteItem(int mark, int wholeLayer)
{
    CKelPropertyTreeItem* target = this;
    if (wholeLayer)
        target = m_pOwner ? m_pOwner->GetLayerLevel(this) : nullptr;
    // Without a layer level only the lock is skipped; the mark still goes on.
    if (target)
    {
        target->m_nLocked = mark;
        target->m_nLockKeepsPlainLook = 0;
    }
    m_nDeleted = mark;
    if (m_nResID == PT_RESID_LAYER)
    {
        int firstLocked = m_pOwner ? m_pOwner->GetFirstLockedItemResID() : -1;
        for (CKelPropertyTreeItem* c = m_pChild; c; c = c->m_pSibling)
            if (c->m_nResID != firstLocked)
                c->DeleteItem(mark, 1);
    }
}

HICON CKelPropertyTreeItem::GetIconHandle() const
{
    if (!m_pOwner || m_nIconNr <= 0)
        return nullptr;
    int index = m_pOwner->GetImageListNrByIconNr(m_nIconNr);
    if (index < 0)
        return nullptr;
    return ImageList_GetIcon(m_pOwner->GetIconImageList()->GetSafeHandle(), index, ILD_NORMAL);
}

// ---- special button ----

void CKelPropertyTreeItem::ShowSpecialButton(int show)
{
    m_nShowSpecialButton = show;
    // The button starts over with an empty rectangle until it is painted again.
    delete m_pSpecialButtonRect;
    m_pSpecialButtonRect = new RECT{0, 0, 0, 0};
    if (m_pOwner)
        m_pOwner->PostResearchSpecialButtonProperties();
}

CRect CKelPropertyTreeItem::GetSpecialButtonDimension() const
{
    if (!m_nShowSpecialButton || !m_pSpecialButtonRect)
        return CRect(0, 0, 0, 0);
    return CRect(*m_pSpecialButtonRect);
}

void CKelPropertyTreeItem::SetItemDataEx(CKelPropertyTreeItemDataExType* pData, int owns)
{
    if (m_nOwnsItemDataEx && m_pItemDataEx != pData)
        delete m_pItemDataEx;
    m_pItemDataEx = pData;
    m_nOwnsItemDataEx = owns;
}

// ---- queries ----

COLORREF CKelPropertyTreeItem::GetTextColor() const
{
    if (IsReadOnly() && m_pOwner && m_pOwner->GetDrawingFlag(1))
        return GetSysColor(COLOR_GRAYTEXT);
    return GetSysColor(COLOR_WINDOWTEXT);
}

// Header and macro rows keep their separator; group roots, layers and plain rows do not.
bool CKelPropertyTreeItem::IsItemReadyForColumnSeparator() const
{
    if (m_pOwner && m_pOwner->IsDisabledColumnSeparatorLine())
        return false;
    if (IsRootLevel())
        return false;
    switch (m_nResID)
    {
    case PT_RESID_GROUP_ROOT:
    case PT_RESID_LAYER:
    case PT_RESID_PLAIN_A:
    case PT_RESID_PLAIN_B:
        return false;
    default:
        return true;
    }
}

// ---- switch box ----

void CKelPropertyTreeItem::SetItemSwitching(int on, int locked)
{
    if (!m_pOwner || !m_pOwner->GetTreeItemSwitchImageList())
        return;
    m_pSwitchingImageList = on ? m_pOwner->GetTreeItemSwitchImageList() : nullptr;
    m_nSwitchLocked = locked;
}

void CKelPropertyTreeItem::ApplySwitchStatus(int on, KelPropertyTreeItemSwitchMethod method, bool notify,
                                             bool withChildren)
{
    m_eLastSwitchMethod = method;
    m_nSwitchStatus = on ? 1 : 0;
    if (notify && m_pOwner->IsPopulated())
        m_pOwner->SendNotify(PTN_SWITCH_CHANGED, this);
    if (m_bAutoCheckSubItems && withChildren)
        m_pOwner->SetSwitchStatusForAll_Sub(m_pChild, static_cast<int>(m_nSwitchStatus));
    if (m_pParent)
        m_pParent->CheckupAutoCheckSubItems();
    if (m_bAutoVisible)
        m_bVisible = m_nSwitchStatus != 0;
    if (m_pParent)
        m_pParent->CheckupAutoCheckSubItems();
}

void CKelPropertyTreeItem::SetItemSwitchStatus(int on, int noNotify, KelPropertyTreeItemSwitchMethod method)
{
    if (!IsItemSwitching() || m_nSwitchableCheckHidden || (m_nSwitchLocked && method != KPTISM_PROGRAM) ||
        !m_pOwner)
        return;
    ApplySwitchStatus(on, method, noNotify == 0);
}

void CKelPropertyTreeItem::SetVisible(const bool& visible)
{
    m_bVisible = visible;
    if (IsItemSwitching() && !m_nSwitchableCheckHidden && !m_nSwitchLocked && m_pOwner)
        ApplySwitchStatus(visible ? 1 : 0, KPTISM_CLICK, false);
}

// A parent's switch follows its switching children: on if one is on, mixed (with three
// states) when some are on and some off; the rule climbs while parents follow their children.
void CKelPropertyTreeItem::CheckupAutoCheckSubItems()
{
    if (!m_bAutoCheckSubItems)
        return;
    const bool threeState = m_pOwner && m_pOwner->IsEnabledThreeStateCheckBox();
    for (CKelPropertyTreeItem* item = this; item;)
    {
        bool seenOn = false, seenOff = false;
        unsigned long status = 0;
        bool decided = false;
        for (CKelPropertyTreeItem* c = item->m_pChild; c; c = c->m_pSibling)
        {
            if (!c->IsItemSwitching() || c->m_nSwitchableCheckHidden)
                continue;
            if (c->m_nSwitchStatus != 0)
                seenOn = true;
            else
                seenOff = true;
            if (threeState && seenOn && seenOff)
            {
                status = 2;
                decided = true;
                break;
            }
            if (!threeState && seenOn)
            {
                status = 1;
                decided = true;
                break;
            }
        }
        if (!decided)
            status = seenOn ? 1 : 0;
        item->m_nSwitchStatus = status;
        CKelPropertyTreeItem* parent = item->m_pParent;
        item = parent && parent->m_bAutoCheckSubItems ? parent : nullptr;
    }
}

// ---- selection and the value protocol ----

int CKelPropertyTreeItem::Select(int select)
{
    if (m_pOwner && !m_pOwner->SelectItems_Validate_Sub(this, select))
        return 0;
    if (m_pOwner)
        m_pOwner->MultipleSelect(this, select);
    return 1;
}

void CKelPropertyTreeItem::Activate()
{
    if (m_pOwner)
        m_pOwner->SetItemLastActivated(this);
    m_dwStatus |= PTIS_ACTIVATED;
    m_nCommitted = 0;
    if (m_bAutoVisible)
        SetVisible(true);
    OnActivate();
}

void CKelPropertyTreeItem::Activate(const CPoint& pt)
{
    if (IsCheckBox() && HitCheckBox(pt))
        Activate();
}

// Safe to call from both the Enter key and the loss of focus that follows it: only the
// first call of an activation commits.
void CKelPropertyTreeItem::CommitChanges(int notify)
{
    m_dwStatus &= ~PTIS_ACTIVATED;
    if (m_pOwner && m_pOwner->GetItemLastActivated() == this)
        m_pOwner->SetItemLastActivated(nullptr);
    if (m_nCommitted)
        return;
    m_nCommitted = 1;
    OnCommit(notify);
    if (m_pOwner)
    {
        m_pOwner->GetCtrlParent()->PostUpgradeTheScrollBars();
        if (notify)
            m_pOwner->SendNotify(PTN_ITEM_CHANGED, this);
        m_pOwner->EnumItems(this, &CKelPropertyTree::EnumRefreshAll, 0, 1);
        m_pOwner->UpdatedItems();
    }
    delete m_pLabelEdit;
    m_pLabelEdit = nullptr;
}

void CKelPropertyTreeItem::CancelChanges()
{
    m_dwStatus &= ~PTIS_ACTIVATED;
    if (m_pOwner && m_pOwner->GetItemLastActivated() == this)
        m_pOwner->SetItemLastActivated(nullptr);
    OnCancel();
}

void CKelPropertyTreeItem::Undo()
{
    OnUndo();
}

void CKelPropertyTreeItem::SendNotify4This(unsigned code)
{
    if (m_pOwner)
        m_pOwner->SendNotify(code, this);
}
