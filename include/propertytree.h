// KelWinCtrl property tree: a two-column tree of rows with values bound to the caller's
// variables, switch boxes, lock and deletion marks.
//
// Classes and types in this header:
//   CKelPropertyTreeItem_Identifier   the kind of a row, readable without run-time type info
//   CKelPropertyTreeItem              one row: tree links, flags, switch box, the value protocol
//   CKelPropertyTreeItemDataExType    base of the host's data attached to a row
//   CKelPropertyTreeItemAll           a snapshot list of rows
//   CKelPropertyTreeList              the surface that fills the tree's client area
//   CKelPropertyTree                  the window: owns the rows, talks to the parent
//   PropertyTreeNotify                the record of every WM_NOTIFY the tree sends
//
//     CKelPropertyTree tree;
//     tree.Create(WS_CHILD | WS_VISIBLE | PTS_NOTIFY, CRect(0, 0, 300, 200), pDialog, 1000);
//     CKelPropertyTreeItem* pGroup = tree.InsertItem(new CKelPropertyTreeItem());
//     pGroup->SetLabelText("Walls");
//     tree.SetPopulated(1);
//
// The tree owns every row inserted into it and deletes them with itself.
#pragma once
#include "kelwinctrl.h"

#include <vector>

class CK_AttribSet;
class CKelPropertyTree;
class CKelPropertyTreeItemEdit;

// Style bit of the tree window: the parent wants notifications.
#define PTS_NOTIFY 0x0002

// Notification codes, sent as WM_NOTIFY with a PropertyTreeNotify.
#define PTN_ITEM_INSERTED 46151
#define PTN_ITEM_DELETING 46152
#define PTN_ITEM_CHANGED 46154
#define PTN_SELECTION_CHANGED 46156
#define PTN_ITEM_EXPANDING 46157
#define PTN_COLUMN_RESIZING 46158
#define PTN_ITEM_CLICKED 46159
#define PTN_ITEM_ACTIVATING 46160
#define PTN_SWITCH_CHANGED 46161
#define PTN_CONTEXT_MENU 46163
#define PTN_POINT_ACTIVATED 46164
#define PTN_CHECK_TOGGLED 46165
#define PTN_KEY_ESCAPE 46166
#define PTN_KEY_RETURN 46167
#define PTN_SPECIAL_BUTTON 46168
#define PTN_COMMIT_NOTIFY 46169   // not delivered: commits the row with notification
#define PTN_COMMIT_SILENT 46170   // not delivered: commits the row without notification
#define PTN_ITEMS_UPDATED 46171   // asked for by UpdatedItems, never delivered
#define PTN_LOCKED_CLICK 46172
#define PTN_LOCKED_DOUBLE_CLICK 46173
#define PTN_DROP 46174
#define PTN_KEY_DELETE 46175
#define PTN_KEY_INSERT 46176
#define PTN_FOCUS_GAINED 46178
#define PTN_DOUBLE_CLICK 46179
#define PTN_FIRST 46151
#define PTN_LAST 46179

// Sent to the parent with wParam 0 and lParam a CExternalOMData*.
#define WM_PT_EXCHANGE_OM 46180

// Hit test answers.
#define PTHT_NOT_POPULATED (-2)
#define PTHT_NOWHERE 1
#define PTHT_LABEL 50
#define PTHT_COLUMN 51
#define PTHT_EXPAND 52
#define PTHT_ATTRIBUTE 53
#define PTHT_CHECKBOX 54
#define PTHT_POINTBOX 55
#define PTHT_SWITCHBOX 56
#define PTHT_SPECIAL_BUTTON 57

// Res IDs that mark structure rows.
#define PT_RESID_HEADER 100000
#define PT_RESID_GROUP_ROOT 100001
#define PT_RESID_LAYER 100002
#define PT_RESID_MACRO 100003
#define PT_RESID_PLAIN_A 100004
#define PT_RESID_PLAIN_B 100005
#define PT_RESID_ANY (-123456)

// Status flag bits of a row.
#define PTIS_SELECTED 0x0001
#define PTIS_EXPANDED 0x0002
#define PTIS_CHECKBOX 0x0004
#define PTIS_CHECKED 0x0008
#define PTIS_ACTIVATED 0x0010
#define PTIS_READONLY 0x0020
#define PTIS_DATEBOX 0x0080
#define PTIS_READONLY2 0x0100
#define PTIS_DELETE_FORBIDDEN 0x0200

// Indices of the tree's internal image list.
#define PT_IMAGE_SWITCH_OFF 0
#define PT_IMAGE_SWITCH_ON 1
#define PT_IMAGE_DELETED 2
#define PT_IMAGE_LOCKED_SWITCH_OFF 3
#define PT_IMAGE_LOCKED_SWITCH_ON 4

enum ITEM_TYPE_IDENTIFIER
{
    ITEM_TYPE_BASE = 1,
    ITEM_TYPE_CHECK = 2,
    ITEM_TYPE_COMBO = 3,
    ITEM_TYPE_EDIT = 4,
    ITEM_TYPE_POINT = 5,
    ITEM_TYPE_STATIC = 6,
    ITEM_TYPE_LINE_COLOR = 7,
    ITEM_TYPE_LINE_TYPE = 8,
    ITEM_TYPE_LINE_WIDTH = 9,
    ITEM_TYPE_HATCH = 10,
    ITEM_TYPE_PATTERN = 11,
    ITEM_TYPE_FILLING = 12,
    ITEM_TYPE_FACE_STYLE = 13,
    ITEM_TYPE_DISPLAY_TYPE = 14
};

enum KelPropertyTreeItemSwitchMethod
{
    KPTISM_PROGRAM = 0,   // set by a call of the host
    KPTISM_CLICK = 1,     // a click on the box, or SetVisible
    KPTISM_ALL = 2        // SetSwitchStatusForAll
};

enum KEL_PROPERTY_TREEITEMALL_FLAG
{
    KPTIA_ALL = 0,
    KPTIA_SELECTED = 1
};

enum KEL_ML_TREE_USED_AT_MODULE_ID
{
    KEL_ML_TREE_MODULE_0 = 0,
    KEL_ML_TREE_MODULE_1 = 1,
    KEL_ML_TREE_MODULE_2 = 2,
    KEL_ML_TREE_MODULE_3 = 3,
    KEL_ML_TREE_MODULE_4 = 4,
    KEL_ML_TREE_MODULE_5 = 5,
    KEL_ML_TREE_MODULE_6 = 6,
    KEL_ML_TREE_MODULE_7 = 7
};

enum ITEM_DELETE
{
    ITEM_DELETE_MARK = 0,
    ITEM_DELETE_UNMARK = 1,
    ITEM_DELETE_TOGGLE = 2
};

enum KelPropertyReplaceFlag
{
    KPRF_DELETE = 0,    // the replaced row is deleted
    KPRF_DETACH = 1,    // the replaced row is handed to the caller
    KPRF_KEEP = 2       // the tree keeps it until DeleteAllItems
};

enum NEARBY_ITEM_SEARCH_DIRECTION
{
    NEARBY_PREV_NEXT_PARENT = 0,
    NEARBY_NEXT = 1,
    NEARBY_PREV_PARENT = 2
};

enum KelPropertyValidItemSearchType_e
{
    KPVIST_CHILDREN = 0,
    KPVIST_SIBLINGS = 1
};

enum KelPropertyTreeExpandCollapseCommand_e
{
    KPTEC_EXPAND = 0,
    KPTEC_COLLAPSE = 1
};

// Host data attached to a row; the row deletes it when told it owns it.
class KELWINCTRL_API CKelPropertyTreeItemDataExType
{
public:
    virtual ~CKelPropertyTreeItemDataExType() = default;
};

// Every notification of the tree.
struct PropertyTreeNotify
{
    NMHDR hdr;
    class CKelPropertyTreeItem* pItem;
};

// The host's record exchanged with WM_PT_EXCHANGE_OM.
struct CExternalOMData
{
    DWORD dwOptions;              // bit value 2: rows may be deleted
    CK_AttribSet* pAttribSet;     // the host's attributes of the edited elements
    int nExternalFunction;        // non-zero: the row under the request is edited by the host
    int nReserved;
    int nRequestedResID;
};

// A row's name in a saved expanded state.
struct EXPANDED_ITEMS
{
    CString strLabel;
    unsigned nResID = 0;
};

class KELWINCTRL_API CKelPropertyTreeItem_Identifier
{
public:
    CKelPropertyTreeItem_Identifier() = default;
    void SetIdentifier(ITEM_TYPE_IDENTIFIER id) { m_eIdentifier = id; }
    ITEM_TYPE_IDENTIFIER& GetIdentifier() { return m_eIdentifier; }
    CKelPropertyTreeItem_Identifier& operator=(const CKelPropertyTreeItem_Identifier& other)
    {
        m_eIdentifier = other.m_eIdentifier;
        return *this;
    }
    CKelPropertyTreeItem_Identifier(const CKelPropertyTreeItem_Identifier& other) = default;

private:
    ITEM_TYPE_IDENTIFIER m_eIdentifier = ITEM_TYPE_BASE;
};

class KELWINCTRL_API CKelPropertyTreeItem : public CKelPropertyTreeItem_Identifier
{
public:
    CKelPropertyTreeItem(int showSpecialButton = 0, unsigned specialButtonMessageID = 0,
                         const char* specialButtonText = nullptr);
    // Member by member: the owned blocks end up shared, so a copy is a snapshot only.
    CKelPropertyTreeItem(const CKelPropertyTreeItem& other);
    CKelPropertyTreeItem& operator=(const CKelPropertyTreeItem& other);

    // Overridables, in this order
    virtual ~CKelPropertyTreeItem();
    virtual void* GetTypeIndependentItemValue();
    virtual void DrawAttribute(CDC* pDC, const RECT& rc);
    virtual long GetHeight();
    virtual LONG_PTR GetItemValue();
    virtual void SetItemValue(LONG_PTR value);
    virtual void SetItemValue(void* pValue);
    virtual void OnMove();
    virtual void OnRefresh();
    virtual void OnCommit(int& notify);
    virtual void OnCancel();
    virtual void OnActivate();
    virtual void OnUndo();
    virtual void SetAdditionalTextInfo(const char* text);

    // Status flags
    int IsExpanded() const { return (m_dwStatus & PTIS_EXPANDED) != 0; }
    int IsSelected() const { return (m_dwStatus & PTIS_SELECTED) != 0; }
    int IsReadOnly() const { return (m_dwStatus & PTIS_READONLY) != 0; }
    int IsActivated() const { return (m_dwStatus & PTIS_ACTIVATED) != 0; }
    int IsCheckBox() const { return (m_dwStatus & PTIS_CHECKBOX) != 0; }
    int IsDateBox() const { return (m_dwStatus & PTIS_DATEBOX) != 0; }
    DWORD GetStatusFlags() const { return m_dwStatus; }
    void Select_SetStatus(int select);
    void Expand(int expand = 1);
    void ExpandRecursive(int expand = 1);
    void ExpandDeep(bool expand);
    void ReadOnly(int readOnly = 1);
    void ReadOnly(int readOnly, int second);
    int IsReadOnly2() const { return (m_dwStatus & PTIS_READONLY2) != 0; }
    void SetCheckBox(int checkBox);
    void SetDateBox(int dateBox);
    void ForbidDelete(int forbid = 1);
    int IsDeleteForbidden() const { return (m_dwStatus & PTIS_DELETE_FORBIDDEN) != 0; }

    // Label, ids, owner
    void SetLabelText(const char* text) { m_strLabel = text; }
    const CString& GetLabelText() const { return m_strLabel; }
    void SetCtrlID(unsigned id) { m_nCtrlID = id; }
    unsigned GetCtrlID() const { return m_nCtrlID; }
    void SetKelPropertyOwner(CKelPropertyTree* pTree) { m_pOwner = pTree; }
    CKelPropertyTree* GetItemOwner() const { return m_pOwner; }
    void SetResID(int id) { m_nResID = id; }
    int& GetResID() { return m_nResID; }
    void SetSpecialResID(unsigned id) { m_nSpecialResID = id; }
    unsigned& GetSpecialResID() { return m_nSpecialResID; }

    // Tree links
    CKelPropertyTreeItem* GetParent() const { return m_pParent; }
    void SetParent(CKelPropertyTreeItem* p) { m_pParent = p; }
    CKelPropertyTreeItem* GetSibling() const { return m_pSibling; }
    void SetSibling(CKelPropertyTreeItem* p) { m_pSibling = p; }
    CKelPropertyTreeItem* GetChild() const { return m_pChild; }
    void SetChild(CKelPropertyTreeItem* p) { m_pChild = p; }
    CKelPropertyTreeItem* GetNextVisible() const { return m_pNextVisible; }
    void SetNextVisible(CKelPropertyTreeItem* p) { m_pNextVisible = p; }
    CKelPropertyTreeItem* GetSibling(unsigned resID) const;
    CKelPropertyTreeItem* GetPrevSibling(int filter = -1) const;
    int IsItemBehindOf(const CKelPropertyTreeItem* pOther) const;
    int IsRootLevel() const;
    int GetLevel() const;
    int GetPositionIdx() const;
    int GetChildCount() const;
    long GetTotalHeight();

    // Geometry written by painting
    const POINT& GetLocation() const { return m_ptLocation; }
    void SetLocation(const POINT& pt) { m_ptLocation = pt; }
    const RECT& GetAttributeRect() const { return m_rcAttribute; }
    void SetAttributeRect(const RECT& rc) { m_rcAttribute = rc; }
    void OffsetItemRect(int dx, int dy) { OffsetRect(&m_rcAttribute, dx, dy); }
    const RECT& GetRectExpandBox() const { return m_rcExpand; }
    void SetRectExpandBox(const RECT& rc) { m_rcExpand = rc; }
    const RECT& GetSwitchBoxRect() const { return m_rcSwitchBox; }
    void SetSwitchBoxRect(const RECT& rc) { m_rcSwitchBox = rc; }
    const RECT& GetLabelHighlightRect() const { return m_rcLabelHighlight; }
    void SetLabelHighlightRect(const RECT& rc) { m_rcLabelHighlight = rc; }
    RECT* GetCheckBoxRectPtr() const { return m_pCheckBoxRect; }
    RECT* GetSpecialButtonRectPtr() const { return m_pSpecialButtonRect; }
    POINT GetIconPoint() const { return m_ptIcon; }
    void GetIconPoint(POINT& pt) const { pt = m_ptIcon; }
    void SetIconPoint(const POINT& pt) { m_ptIcon = pt; }
    int GetLabelHorizOffset() const { return m_nLabelHorizOffset; }
    void SetLabelHorizOffset(int x) { m_nLabelHorizOffset = x; }
    int IsRowDisabled() const { return m_nRowDisabled; }
    void SetRowDisabled(int d) { m_nRowDisabled = d; }

    // Hit tests, in tree coordinates
    int HitSwitchBox(const POINT& pt) const;
    int HitExpand(const POINT& pt) const;
    int HitCheckBox(const POINT& pt) const;
    int HitSpecialButton(const POINT& pt) const;
    int HitPointBox(const POINT& pt) const;

    // Marks
    void Lock(int locked = 1, int keepPlainLook = 0);
    int IsLocked() const { return m_nLocked; }
    int IsLockKeepingPlainLook() const { return m_nLockKeepsPlainLook; }
    void DeleteItem(int mark, int wholeLayer);
    int IsDeleted() const { return m_nDeleted; }
    void NoExpandBox(int no = 1) { m_nNoExpandBox = no; }
    int IsNoExpandBox() const { return m_nNoExpandBox; }
    void SetIconNr(int nr) { m_nIconNr = nr; }
    int GetIconNr() const { return m_nIconNr; }
    HICON GetIconHandle() const;

    // Special button
    void ShowSpecialButton(int show);
    int IsSpecialButtonVisible() const { return m_nShowSpecialButton; }
    unsigned GetSpecialButtonMessageID() const { return m_nSpecialButtonMessageID; }
    const char* GetSpecialButtonText() const { return m_pszSpecialButtonText; }
    void SetSpecialButtonPressedStatus(int pressed) { m_nSpecialButtonPressed = pressed; }
    int IsSpecialButtonPressed() const { return m_nSpecialButtonPressed; }
    void SetSpecialButtonManualDepress(int on) { m_nSpecialButtonManualDepress = on; }
    int IsSpecialButtonManualDepressActive() const { return m_nSpecialButtonManualDepress; }
    void SetSpecialButtonIcon(int icon) { m_nSpecialButtonIcon = icon; }
    int GetSpecialButtonIcon() const { return m_nSpecialButtonIcon; }
    CRect GetSpecialButtonDimension() const;

    // Host grouping and data
    void SetJoinIdx(int i) { m_nJoinIdx = i; }
    int GetJoinIdx() const { return m_nJoinIdx; }
    void SetGroupIdx(int i) { m_nGroupIdx = i; }
    int GetGroupIdx() const { return m_nGroupIdx; }
    void SetDragFlags(unsigned f) { m_nDragFlags = f; }
    unsigned GetDragFlags() const { return m_nDragFlags; }
    void SetItemEditableManuallyForExternalFunction(int on) { m_nEditableManuallyForExternal = on; }
    int IsItemEditableManuallyForExternalFunction() const { return m_nEditableManuallyForExternal; }
    void DisableSeparatorLine(int disable = 1) { m_nSeparatorLineDisabled = disable; }
    int IsSeparatorLineDisabled() const { return m_nSeparatorLineDisabled; }
    void SetItemDataEx(CKelPropertyTreeItemDataExType* pData, int owns = 0);
    CKelPropertyTreeItemDataExType* GetItemDataEx() const { return m_pItemDataEx; }
    void SetLabelLimitText(unsigned n) { m_nLabelLimitText = n; }
    unsigned GetLabelLimitText() const { return m_nLabelLimitText; }
    void SetValidatingMsgBoxTextID(int id) { m_nValidatingMsgBoxTextID = id; }
    int GetValidatingMsgBoxTextID() const { return m_nValidatingMsgBoxTextID; }
    void SetItemDataExchange(void* pVariable) { m_pBoundVariable = pVariable; }
    void* GetBoundVariable() const { return m_pBoundVariable; }

    // Switch box
    void SetItemSwitching(int on, int locked = 0);
    int IsItemSwitching() const { return m_pSwitchingImageList != nullptr; }
    int IsItemSwitchBoxEnabled() const { return IsItemSwitching() && !m_nSwitchLocked; }
    int IsItemSwitchLocked() const { return m_nSwitchLocked; }
    int IsItemSwitchStatusTurnedOn() const { return m_nSwitchStatus != 0; }
    void SetItemSwitchStatus(int on, int noNotify = 0, KelPropertyTreeItemSwitchMethod method = KPTISM_PROGRAM);
    unsigned long GetItemSwitchStatus() const { return m_nSwitchStatus; }
    KelPropertyTreeItemSwitchMethod GetLastSwitchMethod() const { return m_eLastSwitchMethod; }
    CImageList* GetSwitchingImageList() const { return m_pSwitchingImageList; }
    int IsSwitchableCheckHidden() const { return m_nSwitchableCheckHidden; }
    void SetSwitchableCheckHidden(int hidden) { m_nSwitchableCheckHidden = hidden; }
    void SetAutoCheckSubItems(bool on) { m_bAutoCheckSubItems = on; }
    bool IsAutoCheckSubItems() const { return m_bAutoCheckSubItems; }
    void CheckupAutoCheckSubItems();
    void OverwriteDisableRowOnGlobalUncheckedSwitchingStatus(bool on) { m_bEnabledEvenGloballyUnchecked = on; }
    bool IsItemEnabledEvenGlobalUncheckedSwitchingStatusIsDisabled() const { return m_bEnabledEvenGloballyUnchecked; }
    void SetVisible(const bool& visible);
    void SetVisible_Internal(const bool& visible) { m_bVisible = visible; }
    bool IsVisible() const { return m_bVisible; }
    bool IsAutoVisible() const { return m_bAutoVisible; }
    void SetAutoVisible(bool on) { m_bAutoVisible = on; }

    // Interaction flags
    void LockActivation(bool lock = true) { m_bLockActivation = lock; }
    bool IsLockedActivation() const { return m_bLockActivation; }
    void LockDotVLine(bool lock = true) { m_bLockDotVLine = lock; }
    bool IsLockedDotVLine() const { return m_bLockDotVLine; }
    void AllowDragAndDropForThisItem(bool allow = true) { m_bAllowDragAndDrop = allow; }
    bool IsAllowedDragAndDropForThisItem() const { return m_bAllowDragAndDrop; }
    void SetBoldFont(bool bold = true) { m_bBoldFont = bold; }
    bool IsBoldFont() const { return m_bBoldFont; }
    void SetDragAndDropHitPoint(const POINT& pt) { m_ptDragAndDropHit = pt; }
    POINT GetDragAndDropHitPoint() const { return m_ptDragAndDropHit; }
    void SetAutoExpandOnDragAndDrop(bool on) { m_bAutoExpandOnDragAndDrop = on; }
    bool IsDragAndDropAutoExpandTurnedOn() const { return m_bAutoExpandOnDragAndDrop; }
    void SetParentFlagForDrawing(bool on) { m_bParentFlagForDrawing = on; }
    bool DrawAsParent() const { return m_pChild != nullptr || m_bParentFlagForDrawing; }

    // Queries
    COLORREF GetTextColor() const;
    bool IsItemReadyForColumnSeparator() const;

    // Selection, activation and the value protocol
    int Select(int select = 1);
    void Activate();
    void Activate(const CPoint& pt);
    void CommitChanges(int notify = 1);
    void CancelChanges();
    void Undo();
    int IsCommitted() const { return m_nCommitted; }
    void SendNotify4This(unsigned code);
    // Opens an editor of the label over the label's highlight (selected rows as last painted).
    void EditLabel(const CString& text, unsigned limit);
    // The in-place editor of the label while one is open (it is an edit row).
    CKelPropertyTreeItem* GetLabelEditor() const { return m_pLabelEdit; }

    // Painting: draws this row and, when expanded, the rows below it into pDC; client is the
    // drawing area, x the indent and y the row's top in tree coordinates. Appends each painted
    // row to the tree's visible list and writes the rectangles hit testing reads. Answers the
    // height used.
    long DrawItem(CDC* pDC, const RECT& client, long x, long y);

protected:
    // Replaces the check box rectangle (check rows own theirs).
    void SetCheckBoxRectPtr(RECT* p) { m_pCheckBoxRect = p; }
    // The switch steps shared by SetItemSwitchStatus, SetVisible and the bulk switch.
    void ApplySwitchStatus(int on, KelPropertyTreeItemSwitchMethod method, bool notify, bool withChildren = true);
    friend class CKelPropertyTree;

private:
    void FreeOwned();

    CKelPropertyTreeItem* m_pLabelEdit = nullptr;   // owned label editor (an edit row)
    int m_nRowDisabled = 0;
    char* m_pszSpecialButtonText = nullptr;
    int m_nSpecialButtonPressed = 0;
    unsigned m_nSpecialButtonMessageID = 0;
    DWORD m_dwStatus = 0;
    DWORD m_dwPrevStatus = 0;
    RECT* m_pSpecialButtonRect = nullptr;
    RECT* m_pCheckBoxRect = nullptr;
    RECT* m_pPointBoxRect = nullptr;
    RECT m_rcLabelHighlight = {0, 0, 0, 0};
    void* m_pBoundVariable = nullptr;
    CKelPropertyTree* m_pOwner = nullptr;
    CString m_strLabel;
    POINT m_ptLocation = {0, 0};
    RECT m_rcAttribute = {0, 0, 0, 0};
    unsigned m_nCtrlID = 0;
    int m_nSeparatorLineDisabled = 0;
    int m_nSpecialButtonManualDepress = 0;
    int m_nSpecialButtonIcon = -1;
    int m_nLockKeepsPlainLook = 0;
    POINT m_ptIcon = {0, 0};
    int m_nEditableManuallyForExternal = 0;
    unsigned m_nDragFlags = 0;
    int m_nGroupIdx = -1;
    int m_nJoinIdx = -1;
    int m_nShowSpecialButton = 0;
    unsigned long m_nSwitchStatus = 0;
    RECT m_rcSwitchBox = {0, 0, 0, 0};
    int m_nSwitchLocked = 0;
    CImageList* m_pSwitchingImageList = nullptr;
    int m_nResID = 0;
    unsigned m_nSpecialResID = 0;
    int m_nLocked = 0;
    int m_nDeleted = 0;
    int m_nIconNr = 0;
    int m_nNoExpandBox = 0;
    int m_nCommitted = 0;
    RECT m_rcExpand = {0, 0, 0, 0};
    CKelPropertyTreeItem* m_pParent = nullptr;
    CKelPropertyTreeItem* m_pSibling = nullptr;
    CKelPropertyTreeItem* m_pChild = nullptr;
    CKelPropertyTreeItem* m_pNextVisible = nullptr;
    CKelPropertyTreeItemDataExType* m_pItemDataEx = nullptr;
    int m_nOwnsItemDataEx = 0;
    unsigned m_nLabelLimitText = 0;
    int m_nSwitchableCheckHidden = 0;
    bool m_bAutoCheckSubItems = false;
    KelPropertyTreeItemSwitchMethod m_eLastSwitchMethod = KPTISM_PROGRAM;
    bool m_bEnabledEvenGloballyUnchecked = false;
    int m_nLabelHorizOffset = 0;
    int m_nValidatingMsgBoxTextID = 0;
    bool m_bLockDotVLine = false;
    bool m_bLockActivation = false;
    bool m_bVisible = true;
    bool m_bAutoVisible = false;
    bool m_bAllowDragAndDrop = false;
    bool m_bBoldFont = false;
    POINT m_ptDragAndDropHit = {0, 0};
    bool m_bAutoExpandOnDragAndDrop = true;
    bool m_bParentFlagForDrawing = false;
};

// A snapshot list of rows, taken so that an operation can go over rows that change.
class KELWINCTRL_API CKelPropertyTreeItemAll
{
public:
    CKelPropertyTreeItemAll(int resIDFilter = PT_RESID_ANY, KEL_PROPERTY_TREEITEMALL_FLAG flag = KPTIA_ALL);
    CKelPropertyTreeItemAll(CKelPropertyTreeItem* pStart, int resIDFilter = PT_RESID_ANY,
                            KEL_PROPERTY_TREEITEMALL_FLAG flag = KPTIA_ALL);
    CKelPropertyTreeItemAll(const CKelPropertyTreeItemAll& other);
    CKelPropertyTreeItemAll& operator=(const CKelPropertyTreeItemAll& other);
    CKelPropertyTreeItemAll& operator+=(const CKelPropertyTreeItemAll& other);

    // Adds the chain of siblings from pStart, children before each row, that pass the filter.
    void Populate(CKelPropertyTreeItem* pStart);
    CKelPropertyTreeItem* GetFirst();
    CKelPropertyTreeItem* GetNext();
    CKelPropertyTreeItem* GetLast();
    CKelPropertyTreeItem* GetActual();
    int Size() const { return static_cast<int>(m_items.size()); }
    void Add(CKelPropertyTreeItem* pItem);
    void Remove(CKelPropertyTreeItem* pItem);
    void Clear();
    int FindTreeItem(const CKelPropertyTreeItem* pItem) const;
    CKelPropertyTreeItem* FindTreeItemByLabelText(const char* text) const;
    void SetFlag(KEL_PROPERTY_TREEITEMALL_FLAG flag) { m_eFlag = flag; }

private:
    int m_nResIDFilter;
    std::vector<CKelPropertyTreeItem*> m_items;
    size_t m_nActual;   // index of the current row; the list's size when past the end
    KEL_PROPERTY_TREEITEMALL_FLAG m_eFlag;
};

// The surface that fills the tree's client area: paints the rows through a back buffer, owns
// the scroll bars and turns mouse and keyboard into selection, expansion, activation, column
// dragging and drag and drop. In-place controls are its children.
class KELWINCTRL_API CKelPropertyTreeList : public CWnd
{
public:
    // Timers of a drag: scrolling near the edges, and expanding the row held over.
    enum
    {
        AUTOSCROLL_TIMER = 1111,
        DRAG_EXPAND_TIMER = 1112
    };

    CKelPropertyTreeList() = default;
    ~CKelPropertyTreeList() override;

    BOOL Create(CKelPropertyTree* pTree, const RECT& rect, UINT nID);
    void SetTree(CKelPropertyTree* pTree) { m_pTree = pTree; }
    CKelPropertyTree* GetTree() const { return m_pTree; }
    // Scroll ranges from the rows' total height and the value column's width.
    void UpdateResize();
    // Drops the focus when the focused row is no longer on the visible list.
    void CheckVisibleFocus();
    void EditLabel(CKelPropertyTreeItem* pItem = nullptr);   // null: the focused row
    void PostUpgradeTheScrollBars() { m_bScrollBarsDirty = 1; }
    // Everything a scroll bar holds (SIF_ALL); false when the bar has no information.
    bool ReadScrollInfo(int bar, SCROLLINFO& si);
    int AreScrollBarsDirty() const { return m_bScrollBarsDirty; }
    int IsFocusOnTreeList() const { return m_nHasFocus; }

    // Drag and drop of rows
    bool Prepare2GetDestinationItem(CKelPropertyTreeItem* pItem);
    void ReleaseDestinationItem();
    void DragDropDestinationSelect(CKelPropertyTreeItem* pItem);
    void DragEnd();
    void FinishDragAndDrop(const CPoint& point);
    // Sets the drag cursor for the row under the mouse; false when it refuses the drop.
    bool EvaluateCursorStyle(CKelPropertyTreeItem* pItem);
    int IsDestinationMode() const { return m_nDestinationMode; }
    int IsDragCaptured() const { return m_nDragCaptured; }
    CKelPropertyTreeItem* GetSourceItem() const { return m_pSourceItem; }
    CKelPropertyTreeItem* GetDestinationItem() const { return m_pDestinationItem; }
    int GetAutoscrollDirection() const { return m_nAutoscrollDirection; }
    int IsAutoscrollRunning() const { return m_nAutoscrollRunning; }

    // Interaction state
    int IsColumnDragging() const { return m_nColumnDragging; }
    int GetColumnDragX() const { return m_nColumnDragX; }
    CKelPropertyTreeItem* GetPressedButtonItem() const { return m_pPressedButtonItem; }
    int GetMouseButton() const { return m_nMouseButton; }
    bool IsLabelClickStartedDrag() const { return m_bLabelClickStartedDrag; }
    bool WasRowSelectedBeforePress() const { return m_bRowWasSelectedBeforePress; }
    // The cursors: 0 no-drop, 1 drop, 2 drop as sibling, 3 arrow, 4 arrow over a switch box,
    // 5 the column separator's size cursor.
    HCURSOR GetCursorHandle(int which) const;
    // The back buffer (it only grows) and its size.
    CBitmap* GetBackBuffer() { return &m_backBuffer; }
    CSize GetBackBufferSize() const { return CSize(m_nBackBufferWidth, m_nBackBufferHeight); }
    // Paints the client area into pDC through the back buffer, copying the area rcCopy.
    void PaintTo(CDC* pDC, const RECT& rcCopy);

protected:
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnPaint();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint pos);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    DECLARE_MESSAGE_MAP()

private:
    void OnButtonDown(int button, UINT nFlags, CPoint point);
    void OnButtonUp(int button, UINT nFlags, CPoint point);
    bool PressSpecialButton(CKelPropertyTreeItem* pItem);
    bool IsRowOrLayerLocked(CKelPropertyTreeItem* pItem);
    bool ToggleExpanded(CKelPropertyTreeItem* pItem);
    void SetExpanded(CKelPropertyTreeItem* pItem, int expand);
    void InvertColumnBand(int x);
    void EndDestinationMode();
    void ScrollVertBy(long delta);
    void EnsureBackBuffer(int cx, int cy);
    void LoadCursors();

    CKelPropertyTree* m_pTree = nullptr;
    CBitmap m_backBuffer;
    int m_nBackBufferWidth = 0;
    int m_nBackBufferHeight = 0;
    int m_nColumnDragX = 0;
    int m_nColumnDragging = 0;
    int m_nDestinationMode = 0;
    CKelPropertyTreeItem* m_pPressedButtonItem = nullptr;
    int m_nAutoscrollRunning = 0;
    int m_nAutoscrollDirection = 0;
    int m_nHasFocus = 0;
    int m_nMouseButton = 0;
    int m_nDragCaptured = 0;
    bool m_bLabelClickStartedDrag = false;
    bool m_bRowWasSelectedBeforePress = false;
    bool m_bPressedFromExternal = false;   // the button went down by a click on a host-edited value
    CKelPropertyTreeItem* m_pSourceItem = nullptr;
    HCURSOR m_hCursors[6] = {};
    CKelPropertyTreeItem* m_pDestinationItem = nullptr;
    unsigned char m_bScrollBarsDirty = 1;
};

typedef int (*KelPropertyTreeEnumProc)(CKelPropertyTree* pTree, CKelPropertyTreeItem* pItem, LPARAM lParam);
typedef int (*KelPropertyTreeExternalMessageBox)(int textID, char* text);

class KELWINCTRL_API CKelPropertyTree : public CWnd
{
public:
    CKelPropertyTree();
    ~CKelPropertyTree() override;

    // Overridables, in this order
    virtual void SetSwitchStatusForAll(int on);
    // Whether a row may be a drop target; a host subclass may refuse.
    virtual bool EvaluateDragAndDrop(CKelPropertyTreeItem* pItem);
    BOOL PreTranslateMessage(MSG* pMsg) override;

    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                KEL_ML_TREE_USED_AT_MODULE_ID module = KEL_ML_TREE_MODULE_0);

    // Notifications and the host exchange
    LRESULT SendNotify(unsigned code, CKelPropertyTreeItem* pItem = nullptr);
    int GetOMFlag();
    CExternalOMData* ExchangeExternalOMData(unsigned resID);
    CExternalOMData* GetExternalOMData() const { return m_pExternalData; }

    // Rows
    CKelPropertyTreeItem* InsertItem(CKelPropertyTreeItem* pItem, CKelPropertyTreeItem* pParent = nullptr);
    void Delete(CKelPropertyTreeItem* pItem);
    void DeleteItem(CKelPropertyTreeItem* pItem);
    void DeleteAllItems();
    void DeleteItems(std::vector<CKelPropertyTreeItem*>& items);
    void DeleteMarked();
    void GetItemsMarkedToDelete(std::vector<CKelPropertyTreeItem*>& items);
    void OnDeleteItem(CKelPropertyTreeItem* pItem, ITEM_DELETE mode);
    void ReplaceItem(CKelPropertyTreeItem* pOld, CKelPropertyTreeItem* pNew);
    void ReplaceItems(CKelPropertyTreeItem* pItem, CKelPropertyTreeItem* pOther, KelPropertyReplaceFlag flag);
    void ChangeParent(CKelPropertyTreeItem* pItem, CKelPropertyTreeItem* pNewParent);
    void MoveItem(CKelPropertyTreeItem* pSource, CKelPropertyTreeItem* pDestination, int before);
    CKelPropertyTreeItem* GetFirstSibling(CKelPropertyTreeItem* pItem);
    CKelPropertyTreeItem* GetLastSibling(CKelPropertyTreeItem* pItem);
    CKelPropertyTreeItem* GetNearbyItem(CKelPropertyTreeItem* pItem, NEARBY_ITEM_SEARCH_DIRECTION direction);
    CKelPropertyTreeItem* GetRootItem() { return &m_root; }

    // Enumeration and refresh
    int EnumItems(CKelPropertyTreeItem* pItem, KelPropertyTreeEnumProc proc, LPARAM lParam, int recursive);
    static int EnumSelectAll(CKelPropertyTree* pTree, CKelPropertyTreeItem* pItem, LPARAM lParam);
    static int EnumRefreshAll(CKelPropertyTree* pTree, CKelPropertyTreeItem* pItem, LPARAM lParam);
    static int EnumMoveAll(CKelPropertyTree* pTree, CKelPropertyTreeItem* pItem, LPARAM lParam);
    void RefreshItems(CKelPropertyTreeItem* pItem = nullptr);
    void UpdateMoveAllItems();
    void UpdatedItems();

    // Finding
    CKelPropertyTreeItem* FindItem(const POINT& pt);
    CKelPropertyTreeItem* FindItem(unsigned ctrlID);
    int HitTest(const POINT& pt);
    CKelPropertyTreeItem* GetFirstItemByResID(const unsigned& id, CKelPropertyTreeItem* pStart = nullptr);
    CKelPropertyTreeItem* GetFirstItemBySpecialResID(const unsigned& id);
    CKelPropertyTreeItem* GetFirstVisibleItemByResID(const unsigned& id);
    CKelPropertyTreeItem* GetLayerLevel(CKelPropertyTreeItem* pItem);
    CKelPropertyTreeItem* GetMacroDefinitionLevel(CKelPropertyTreeItem* pItem);
    CKelPropertyTreeItem* GetFirstItemByResID_KeepingTreeConnection(CKelPropertyTreeItem* pItem, int id);
    CKelPropertyTreeItem* GetRootOfItem(CKelPropertyTreeItem* pItem);
    void SetActiveGroupRootItem(CKelPropertyTreeItem* pItem);
    CKelPropertyTreeItem* GetActiveGroupRootItem() const { return m_pActiveGroupRoot; }
    void GetAllItemWithID(std::vector<CKelPropertyTreeItem*>& items, int id, CKelPropertyTreeItem* pStart, int flag);
    static void ExcludeItemFromList(std::vector<CKelPropertyTreeItem*>& items, CKelPropertyTreeItem* pItem);
    static void ExcludeDuplicateItems(const std::vector<CKelPropertyTreeItem*>& list,
                                      std::vector<CKelPropertyTreeItem*>& other);
    int IsLockedWithSubItems(CKelPropertyTreeItem* pItem, int wide);
    void CopyItemValues(std::vector<CKelPropertyTreeItem*>& sources, std::vector<CKelPropertyTreeItem*>& destinations);

    // Selection and focus
    int SelectItems_Validate_Sub(CKelPropertyTreeItem* pItem, int select);
    int SelectItems(CKelPropertyTreeItem* pItem, int select);
    void SelectItem(CKelPropertyTreeItem* pItem);
    void SelectItemWithItemNotify(CKelPropertyTreeItem* pItem);
    void MultipleSelect(CKelPropertyTreeItem* pItem, int select);
    CKelPropertyTreeItem* GetFocusedItem() const { return m_pFocus; }
    void SetFocusedItem(CKelPropertyTreeItem* pItem);
    void FocusFirst();
    void FocusLast();
    void FocusPrev();
    void FocusNext();
    int IsEnabled4Selection(CKelPropertyTreeItem* pItem) const;
    CKelPropertyTreeItem* GetItemValidForSelection(CKelPropertyTreeItem* pItem, KelPropertyValidItemSearchType_e type);
    void AddItem2AvoidSelection(CKelPropertyTreeItem* pItem);
    void DisableSelection4Item(CKelPropertyTreeItem* pItem);
    void EnableSelection4Item(CKelPropertyTreeItem* pItem);
    void EnsureVisible(CKelPropertyTreeItem* pItem);
    // The sideways part of EnsureVisible: scrolls right until the widest value ends inside client.
    void EnsureVisibleSideways(const CRect& client);
    void SimulateContextMenuClick(CKelPropertyTreeItem* pItem);
    int IsThePointAtTheUpperPartOfTheItem(CKelPropertyTreeItem* pItem, const POINT& pt);
    // True when the row is on the visible list of the last paint.
    bool IsItemOnVisibleList(const CKelPropertyTreeItem* pItem) const;

    // Expanded state
    void GetExpandedItems(std::vector<EXPANDED_ITEMS>& items);
    void ExpandAll(const std::vector<EXPANDED_ITEMS>& items);
    void ExpandOne(const EXPANDED_ITEMS& item);
    void ExpandAll(KelPropertyTreeExpandCollapseCommand_e command, CKelPropertyTreeItem* pItem = nullptr);

    // Switches in bulk
    void SetTreeItemsSwitchable(int enable, int disableRow = 1);
    void SetSwitchStatusForAll_Sub(CKelPropertyTreeItem* pItem, int on);

    // Column and origin
    void SetColumn(long x);
    long GetColumn() const { return m_ptOrigin.x; }
    const POINT& GetOrigin() const { return m_ptOrigin; }
    void SetOriginOffset(long y) { m_ptOrigin.y = y; }
    void SetOriginOffsetX(long x);
    long GetOriginOffsetHorz() const { return m_nOriginHorz; }
    void SetOriginOffsetHorz(long x) { m_nOriginHorz = x; }

    // Icons
    void AddIcons(const int* ids, int count);
    void AddIcons_NA(const int* ids, int count);
    int GetImageListNrByIconNr(int nr) const;
    CImageList* GetIconImageList() { return &m_iconImages; }
    CImageList* GetInternalImageList() { return &m_internalImages; }

    // Special button width, shared by all trees
    void GetSpecialButtonProperties(bool& visible, CRect& rect);
    void PostResearchSpecialButtonProperties() { m_bResearchSpecialButton = true; }
    bool IsResearchSpecialButtonPending() const { return m_bResearchSpecialButton; }

    // Fonts shared by all live trees
    static CFont* GetNormalFont();
    static CFont* GetBoldFont();
    static CFont* GetThinNormalFont();
    static int GetLiveTreeCount();

    // Accessors
    CKelPropertyTreeList* GetCtrlParent() { return &m_list; }
    CKelPropertyTreeItem* GetVisibleList() const { return m_pVisibleList; }
    void SetVisibleList(CKelPropertyTreeItem* pItem) { m_pVisibleList = pItem; m_pVisibleTail = nullptr; }
    void ClearVisibleList() { m_pVisibleList = nullptr; m_pVisibleTail = nullptr; }
    // Puts a painted row at the end of the visible list.
    void AppendToVisibleList(CKelPropertyTreeItem* pItem);
    void DisableInput(int disable = 1) { m_nInputDisabled = disable; }
    int IsDisableInput() const { return m_nInputDisabled; }
    void NoMessagesOut(int no = 1) { m_nNoMessagesOut = no; }
    int IsSingleSelection() const { return 1; }
    int IsSwitchableTreeItems() const { return m_pSwitchImageList != nullptr; }
    CImageList* GetTreeItemSwitchImageList() const { return m_pSwitchImageList; }
    int IsSelectedAll() const { return m_nSelectedAll; }
    void SetPopulated(int populated = 1) { m_nPopulated = populated; }
    int IsPopulated() const { return m_nPopulated; }
    void LockAllItemsToEdit(int lock = 1) { m_nLockedToEdit = lock; }
    int IsLockedToEdit() const { return m_nLockedToEdit; }
    void SetItemLastActivated(CKelPropertyTreeItem* pItem) { m_pLastActivated = pItem; }
    CKelPropertyTreeItem* GetItemLastActivated() const { return m_pLastActivated; }
    void LockDragDrop(int lock = 1) { m_nDragDropLocked = lock; }
    int IsLockedDragDrop() const { return m_nDragDropLocked; }
    void SetFirstLockedItemResID(int id) { m_nFirstLockedResID = id; }
    int GetFirstLockedItemResID() const { return m_nFirstLockedResID; }
    int IsDisablingRowOnUncheckedSwitchingStatus() const { return m_nDisableRowOnUnchecked; }
    void SetSwitchByLabel(int on = 1) { m_nSwitchByLabel = on; }
    int IsSwitchingByLabel() const { return m_pSwitchImageList ? m_nSwitchByLabel : 0; }
    KEL_ML_TREE_USED_AT_MODULE_ID GetUsedModuleID() const { return m_eModule; }
    void EnableLabelEdit(int enable = 1) { m_nLabelEditEnabled = enable; }
    int IsEnabledLabelEdit() const { return m_nLabelEditEnabled; }
    void SetDrawingFlag(int bit) { m_dwDrawingFlags |= 1ul << bit; }
    int GetDrawingFlag(int bit) const { return (m_dwDrawingFlags >> bit) & 1ul; }
    void AllowAllItemDelete(bool allow = true) { m_bAllItemDeleteAllowed = allow; }
    bool IsAllowedAllItemDelete() const { return m_bAllItemDeleteAllowed; }
    void SetMultipleSelection(bool on = true) { m_bMultipleSelection = on; }
    bool IsMultipleSelection() const { return m_bMultipleSelection; }
    CWnd* GetParent() const { return m_pParentWnd; }
    int IsPressedCtrl() const;
    int IsPressedShift() const;
    int IsPressedControlledVK() const { return IsPressedCtrl() || IsPressedShift(); }
    void SetThreeStateCheckBox(bool on = true) { m_bThreeStateCheckBox = on; }
    bool IsEnabledThreeStateCheckBox() const { return m_bThreeStateCheckBox; }
    int GetSeparatorMaxHorizPos() const { return m_nSeparatorMaxHorizPos; }
    void SetSeparatorMaxHorizPos(int x) { m_nSeparatorMaxHorizPos = x; }
    void SetExternalMessageBox(KelPropertyTreeExternalMessageBox pfn) { m_pfnExternalMessageBox = pfn; }
    KelPropertyTreeExternalMessageBox GetExternalMessageBox() const { return m_pfnExternalMessageBox; }
    void SetSplitterMinCol(unsigned x) { m_nSplitterMinCol = x; }
    unsigned GetSplitterMinCol() const { return m_nSplitterMinCol; }
    void DisableColumnSeparatorLine(bool disable = true) { m_bColumnSeparatorLineDisabled = disable; }
    bool IsDisabledColumnSeparatorLine() const { return m_bColumnSeparatorLineDisabled; }
    void SetJoiningCheckItemResID(int id) { m_nJoiningCheckItemResID = id; }
    int GetJoiningCheckItemResID() const { return m_nJoiningCheckItemResID; }
    void SetInfoColMaxVisibleWidth(int w) { if (w > m_nInfoColMaxVisibleWidth) m_nInfoColMaxVisibleWidth = w; }
    void ResetInfoColMaxVisibleWidth() { m_nInfoColMaxVisibleWidth = 0; }
    int GetInfoColMaxVisibleWidth() const { return m_nInfoColMaxVisibleWidth; }
    const std::vector<CKelPropertyTreeItem*>& GetReplacedItems() const { return m_replacedItems; }

protected:
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg LRESULT OnSysColorChange(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    static void InitGlobalResources();
    static void SubstituteInChildren(CKelPropertyTreeItem* parent, CKelPropertyTreeItem* pOld,
                                     CKelPropertyTreeItem* pNew);
    void SubstituteInLinks(CKelPropertyTreeItem* pOld, CKelPropertyTreeItem* pNew);
    static void FreeGlobalResources();
    void LoadInternalImages();
    CKelPropertyTreeItem* FindByCtrlID(CKelPropertyTreeItem* pItem, unsigned id);
    CKelPropertyTreeItem* FindByResID(CKelPropertyTreeItem* pItem, unsigned id, bool special, bool withSiblings);
    CKelPropertyTreeItem* FindLevel(CKelPropertyTreeItem* pItem, int id);
    void Unlink(CKelPropertyTreeItem* pItem);
    void RemoveFromVisibleList(CKelPropertyTreeItem* pItem);
    void ClearAllSelection();
    void SelectSiblingsFrom(CKelPropertyTreeItem* pFrom, CKelPropertyTreeItem* pTo);
    void FocusMove(CKelPropertyTreeItem* pTarget, NEARBY_ITEM_SEARCH_DIRECTION skip);
    void ExpandOne_Sub(CKelPropertyTreeItem* pChain, const EXPANDED_ITEMS& item);
    void CollectExpanded(CKelPropertyTreeItem* pItem, std::vector<EXPANDED_ITEMS>& items);
    void ExpandCollapseChain(CKelPropertyTreeItem* pItem, bool expand);
    void CollectMarked(CKelPropertyTreeItem* pChain, std::vector<CKelPropertyTreeItem*>& items);
    void CopyValuesSub(CKelPropertyTreeItem* pSource, CKelPropertyTreeItem* pDestination);
    void DestroyItem(CKelPropertyTreeItem* pItem);
    bool IsAncestorOf(const CKelPropertyTreeItem* pAncestor, const CKelPropertyTreeItem* pItem) const;

    CImageList m_internalImages;
    std::vector<CKelPropertyTreeItem*> m_itemsToAvoidSelection;
    CKelPropertyTreeList m_list;
    CKelPropertyTreeItem m_root;
    CKelPropertyTreeItem* m_pVisibleList = nullptr;
    CKelPropertyTreeItem* m_pVisibleTail = nullptr;   // last row appended by painting, null when unknown
    CKelPropertyTreeItem* m_pFocus = nullptr;
    POINT m_ptOrigin = {190, 0};
    long m_nOriginHorz = 0;
    unsigned m_nNextCtrlID = 1;
    int m_nInputDisabled = 0;
    int m_nSelectedAll = 1;
    std::vector<int> m_iconNumbers;
    CImageList m_iconImages;
    int m_nDisableRowOnUnchecked = 1;
    int m_nFirstLockedResID = -1;
    KEL_ML_TREE_USED_AT_MODULE_ID m_eModule = KEL_ML_TREE_MODULE_0;
    CWnd* m_pParentWnd = nullptr;
    CExternalOMData* m_pExternalData = nullptr;
    int m_nDragDropLocked = 0;
    CKelPropertyTreeItem* m_pActiveGroupRoot = nullptr;
    CKelPropertyTreeItem* m_pLastActivated = nullptr;
    int m_nLockedToEdit = 0;
    int m_nPopulated = 0;
    CImageList* m_pSwitchImageList = nullptr;
    int m_nInfoColMaxVisibleWidth = 0;
    int m_nNoMessagesOut = 0;
    std::vector<CKelPropertyTreeItem*> m_selectionDisabledItems;
    int m_nSwitchByLabel = 0;
    int m_nLabelEditEnabled = 0;
    unsigned long m_dwDrawingFlags = 0;
    bool m_bAllItemDeleteAllowed = false;
    bool m_bMultipleSelection = false;
    unsigned m_nPressedKeys = 0;
    bool m_bThreeStateCheckBox = false;
    bool m_bResearchSpecialButton = false;
    int m_nSeparatorMaxHorizPos = 0;
    KelPropertyTreeExternalMessageBox m_pfnExternalMessageBox = nullptr;
    std::vector<CKelPropertyTreeItem*> m_replacedItems;
    unsigned m_nSplitterMinCol = 160;
    bool m_bColumnSeparatorLineDisabled = false;
    int m_nJoiningCheckItemResID = -1;

    static CKelPropertyTreeItem* s_pFound;
};

// ---- The edit row ----

// A row for a text or a number that is its own single-line edit control: while inactive the
// row paints its value as text; activated, the edit is laid over the value column; at commit
// it hides again. Typing is checked as it happens (numbers), the value is checked against a
// range and a partner row before it is taken, and it reaches the caller's variable only at
// commit. The same class edits the label of any row (CKelPropertyTreeItem::EditLabel).
//
//     double width = 2.5;
//     CKelPropertyTreeItemEdit* pRow = new CKelPropertyTreeItemEdit();
//     tree.InsertItem(pRow, pGroup);
//     pRow->SetValueFormat(CKelPropertyTreeItemEdit::VALUE_FORMAT_DOUBLE);
//     pRow->SetMinMax(0.0, 10.0);
//     pRow->SetItemDataExchange(&width);
//     pRow->UpdateData();   // the value takes 2.500000 from the variable
class KELWINCTRL_API CKelPropertyTreeItemEdit : public CEdit, public CKelPropertyTreeItem
{
public:
    enum ValueFormat
    {
        VALUE_FORMAT_TEXT = 0,        // bound to a CString
        VALUE_FORMAT_INTEGER = 1,     // bound to an int
        VALUE_FORMAT_DOUBLE = 2,      // bound to a double
        VALUE_FORMAT_DATE = 3,        // date text in a CString; a click opens the date dialog
        VALUE_FORMAT_STD_STRING = 4   // bound to a std::string
    };
    // Partner conditions of JoinConditionWith.
    enum
    {
        JOIN_GREATER = 2,   // this value must be greater than the partner's
        JOIN_LESS = 4,      // this value must be less than the partner's
        JOIN_EQUAL = 8      // equality allowed; alone: the values must be equal
    };

    CKelPropertyTreeItemEdit();
    // The row part is copied member by member (see CKelPropertyTreeItem); the copy has no
    // window of its own until it is activated.
    CKelPropertyTreeItemEdit(const CKelPropertyTreeItemEdit& other);
    CKelPropertyTreeItemEdit& operator=(const CKelPropertyTreeItemEdit& other);
    ~CKelPropertyTreeItemEdit() override;

    // Overridables, in this order. committed non-zero reads the stored value, 0 the
    // window's text.
    virtual CString GetItemText(int committed = 1);
    virtual void GetItemText(CString& text, int committed = 1);
    virtual void GetItemValue(double& value, int committed = 1);
    virtual void GetItemValue(int& value, int committed = 1);
    virtual void SetItemValue(CString value);
    virtual void SetItemValue(double value);
    virtual void SetItemValue(int value);
    virtual void AddItemValue(const char* text);
    using CKelPropertyTreeItem::GetItemValue;
    using CKelPropertyTreeItem::SetItemValue;
    // Both bases have these names; on a row they mean the row's.
    using CKelPropertyTreeItem::GetParent;
    using CKelPropertyTreeItem::Undo;

    // Row overridables
    void* GetTypeIndependentItemValue() override;   // the value, a CString*
    void DrawAttribute(CDC* pDC, const RECT& rc) override;
    void SetItemValue(void* pValue) override;       // takes a CString*
    void OnMove() override;
    void OnRefresh() override;
    void OnCommit(int& notify) override;
    void OnCancel() override;
    void OnActivate() override;
    void OnUndo() override;
    void SetAdditionalTextInfo(const char* text) override;

    // Settings
    void SetAsPassword(int password = 1) { m_nPassword = password; }
    int IsPassword() const { return m_nPassword; }
    void SetValueFormat(ValueFormat format);
    ValueFormat GetValueFormat() const { return m_eValueFormat; }
    void SetEditBoxSizeAutoAdapt(bool on = true) { m_bEditBoxSizeAutoAdapt = on; }
    bool IsEditBoxSizeAutoAdapt() const { return m_bEditBoxSizeAutoAdapt; }
    // Ignored unless min is below max.
    void SetMinMax(double min, double max);
    int HasMinMax() const { return m_nHasMinMax; }
    double GetMin() const { return m_dMin; }
    double GetMax() const { return m_dMax; }
    // Flags JOIN_*; both GREATER and LESS, or a null partner, are ignored.
    void JoinConditionWith(CKelPropertyTreeItemEdit* pOther, unsigned flags);
    CKelPropertyTreeItemEdit* GetJoinedEdit() const { return m_pJoinedEdit; }
    unsigned GetJoinFlags() const { return m_nJoinFlags; }
    void SetItemLabelOwner(CKelPropertyTreeItem* pOwner) { m_pLabelOwner = pOwner; }
    CKelPropertyTreeItem* GetItemLabelOwner() const { return m_pLabelOwner; }
    // Longest text in the text formats.
    void SetLimitText(unsigned limit);
    unsigned GetLimitText() const { return m_nLimitText; }
    const CString& GetAdditionalTextInfo() const { return m_strAdditionalTextInfo; }
    // Sets the value and, with a window, its text.
    void SetWindowTextA(const char* text);
    unsigned GetLastChar() const { return m_nLastChar; }

    // Validation and the variable
    // Syntax of the window's text while typing: numbers in the number formats.
    int IsValid();
    // The check before a commit: range, then the partner's value.
    int IsValid2Confirm();
    // Tells the host's external message box the range that was left.
    void ErrorMessage_MinMax();
    // The value from the bound variable.
    void UpdateData();
    // The bound variable from the value.
    void DoItemDataExchange();
    // Widens the label editor with its text, within the list.
    void AdaptEditBoxSize();

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnKillfocus();
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    // The number a text stands for, commas read as points.
    static double NumberOf(const CString& text);
    void SetWindowTextOnly(const char* text);
    void RestoreText(const CString& text);
    CKelPropertyTreeList* GetList() const;
    CString DisplayText() const;

    CString m_strValue;
    CString m_strUndoValue;
    ValueFormat m_eValueFormat = VALUE_FORMAT_TEXT;
    int m_nPassword = 0;
    int m_nHasMinMax = 0;
    CKelPropertyTreeItemEdit* m_pJoinedEdit = nullptr;
    unsigned m_nJoinFlags = 0;
    double m_dMax = 1.0;
    double m_dMin = 0.0;
    CKelPropertyTreeItem* m_pLabelOwner = nullptr;
    CString m_strAdditionalTextInfo;
    unsigned m_nLimitText = 32767;
    bool m_bEditBoxSizeAutoAdapt = false;
    unsigned m_nLastChar = 0;
    // Not part of the value: the window is going away, or the host's message is up.
    bool m_bDestroying = false;
    bool m_bInMessage = false;
};
