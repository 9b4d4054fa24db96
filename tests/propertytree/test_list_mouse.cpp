// Mouse input of the list surface: real button, move and double click messages at the
// rectangles painting wrote, and the parent's notifications in order.
#include "ptlist.h"

using pttest::CountedItem;
using pttest::EditingItem;
using pttest::ListFixture;
using pttest::PaintedValueItem;
using pttest::ValueItem;

namespace
{
class ButtonItem : public CountedItem
{
public:
    explicit ButtonItem(const char* label) : CountedItem(label) { ShowSpecialButton(1); }
};

struct MouseTest : ListFixture
{
    CKelPropertyTreeItem* top = nullptr;
    void SetUp() override
    {
        ListFixture::SetUp();
        top = Add("Top");
        top->Expand(1);
    }
    // The codes without PTN_FOCUS_GAINED, which depends on where the focus was.
    std::vector<unsigned> CodesBesidesFocus() const
    {
        std::vector<unsigned> v;
        for (unsigned c : parent.codes)
            if (c != PTN_FOCUS_GAINED)
                v.push_back(c);
        return v;
    }
    void ExpectCodesBesidesFocus(const std::vector<unsigned>& expected) const
    {
        EXPECT_EQ(expected, CodesBesidesFocus())
            << "expected: " << pttest::Codes(expected) << "\nseen:     " << pttest::Codes(CodesBesidesFocus());
    }
};
}

TEST_F(MouseTest, ALabelClickSelectsFocusesAndTellsSelectionThenClick)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Paint();
    Clear();
    Click(LabelPoint(a));
    ExpectCodesBesidesFocus({PTN_SELECTION_CHANGED, PTN_ITEM_CLICKED});
    EXPECT_EQ(a, tree.GetFocusedItem());
    EXPECT_TRUE(a->IsSelected());
    EXPECT_EQ(a, parent.items.back());
    // The same row again: no selection change.
    Clear();
    Click(LabelPoint(a));
    ExpectCodesBesidesFocus({PTN_ITEM_CLICKED});
}

TEST_F(MouseTest, AClickOnAnotherRowWhileAnEditIsActiveCommitsItAndSelectsNothing)
{
    EditingItem* e1 = static_cast<EditingItem*>(tree.InsertItem(new EditingItem("e1"), top));
    EditingItem* e2 = static_cast<EditingItem*>(tree.InsertItem(new EditingItem("e2"), top));
    Paint();
    ASSERT_TRUE(FocusList()) << "the desktop would not give the list the focus";
    bool held = kel_test::RunHoldingForeground(parent.m_hWnd, [&] {
        Click(ValuePoint(e1));
    });
    ASSERT_TRUE(held) << "the window lost the foreground";
    ASSERT_EQ(e1->edit.m_hWnd, ::GetFocus()) << "the edit did not get the focus";
    ASSERT_TRUE(e1->IsActivated());
    e1->Type(42);
    Clear();
    e1->calls.clear();
    Click(LabelPoint(e2));
    // The press took the focus: the edit committed inside it, and the press ended there.
    EXPECT_FALSE(e1->IsActivated());
    EXPECT_EQ(42, e1->m_value);
    ASSERT_FALSE(parent.codes.empty());
    EXPECT_EQ(PTN_ITEM_CHANGED, parent.codes.front());
    EXPECT_EQ(e1, parent.items.front());
    ExpectCodesBesidesFocus({PTN_ITEM_CHANGED});
    EXPECT_FALSE(e2->IsSelected());
    EXPECT_EQ(e1, tree.GetFocusedItem());
    // Only a second click selects.
    Clear();
    Click(LabelPoint(e2));
    ExpectCodesBesidesFocus({PTN_SELECTION_CHANGED, PTN_ITEM_CLICKED});
    EXPECT_TRUE(e2->IsSelected());
}

TEST_F(MouseTest, AClickOnAStaticRowWhileAnEditIsActiveGoesOnAtOnce)
{
    EditingItem* e1 = static_cast<EditingItem*>(tree.InsertItem(new EditingItem("e1"), top));
    CKelPropertyTreeItem* info = Add("info", top);
    info->SetIdentifier(ITEM_TYPE_STATIC);
    Paint();
    ASSERT_TRUE(FocusList()) << "the desktop would not give the list the focus";
    bool held = kel_test::RunHoldingForeground(parent.m_hWnd, [&] { Click(ValuePoint(e1)); });
    ASSERT_TRUE(held) << "the window lost the foreground";
    ASSERT_EQ(e1->edit.m_hWnd, ::GetFocus()) << "the edit did not get the focus";
    Clear();
    Click(LabelPoint(info));
    EXPECT_FALSE(e1->IsActivated());
    EXPECT_TRUE(info->IsSelected());
    EXPECT_EQ(info, tree.GetFocusedItem());
    ExpectCodesBesidesFocus({PTN_SELECTION_CHANGED, PTN_ITEM_CLICKED});
}

TEST_F(MouseTest, AValueClickAsksTheParentThenActivates)
{
    ValueItem* v = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v"), top));
    Paint();
    Clear();
    Click(ValuePoint(v));
    ExpectCodesBesidesFocus({PTN_SELECTION_CHANGED, PTN_ITEM_ACTIVATING, PTN_ITEM_CLICKED});
    EXPECT_EQ(std::vector<std::string>{"OnActivate"}, v->calls);
    EXPECT_EQ(v, tree.GetItemLastActivated());
}

TEST_F(MouseTest, ActivationIsStoppedByTheParentByReadOnlyAndByTheEditLock)
{
    ValueItem* v = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v"), top));
    Paint();
    parent.refuse.insert(PTN_ITEM_ACTIVATING);
    Click(ValuePoint(v));
    EXPECT_TRUE(v->calls.empty());
    parent.refuse.clear();
    v->ReadOnly(1);
    Click(ValuePoint(v));
    EXPECT_TRUE(v->calls.empty());
    v->ReadOnly(0);
    tree.LockAllItemsToEdit(1);
    Clear();
    Click(ValuePoint(v));
    EXPECT_TRUE(v->calls.empty());
    ExpectCodesBesidesFocus({PTN_ITEM_CLICKED});   // beeps, no activation question
    tree.LockAllItemsToEdit(0);
    v->LockActivation(true);
    Click(ValuePoint(v));
    EXPECT_TRUE(v->calls.empty());
}

TEST_F(MouseTest, AValueClickOnALockedRowOrUnderALockedLayerOnlyTellsTheParent)
{
    CKelPropertyTreeItem* layer = Add("layer", top, PT_RESID_LAYER);
    ValueItem* under = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("under"), layer));
    ValueItem* own = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("own"), top));
    layer->Expand(1);
    layer->Lock(1);
    own->Lock(1);
    Paint();
    Clear();
    Click(ValuePoint(under));
    Click(ValuePoint(own));
    ExpectCodes({PTN_LOCKED_CLICK, PTN_LOCKED_CLICK});
    EXPECT_EQ(under, parent.items[0]);
    EXPECT_EQ(own, parent.items[1]);
    EXPECT_TRUE(under->calls.empty());
    EXPECT_TRUE(own->calls.empty());
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
}

TEST_F(MouseTest, TheExpandBoxTogglesAndThePaintFollowsAtOnce)
{
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* a1 = Add("a1", a);
    Paint();
    ASSERT_FALSE(tree.IsItemOnVisibleList(a1));
    Clear();
    Click(ExpandPoint(a));
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_TRUE(tree.IsItemOnVisibleList(a1));
    ExpectCodesBesidesFocus({PTN_ITEM_EXPANDING});
    EXPECT_EQ(a, parent.items.back());
    // Refused, nothing toggles.
    parent.refuse.insert(PTN_ITEM_EXPANDING);
    Press(ExpandPoint(a));
    Release(ExpandPoint(a));
    EXPECT_TRUE(a->IsExpanded());
}

TEST_F(MouseTest, CollapsingTheFocusedRowsParentDropsTheFocus)
{
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* a1 = Add("a1", a);
    a->Expand(1);
    Paint();
    Click(LabelPoint(a1));
    ASSERT_EQ(a1, tree.GetFocusedItem());
    Clear();
    Click(ExpandPoint(a));
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
    EXPECT_FALSE(a1->IsSelected());
    ExpectCodesBesidesFocus({PTN_ITEM_EXPANDING, PTN_SELECTION_CHANGED});
    EXPECT_EQ(nullptr, parent.items.back());
}

TEST_F(MouseTest, ARightPressOnASelectedRowInMultipleSelectionKeepsTheSelection)
{
    tree.SetMultipleSelection(true);
    CKelPropertyTreeItem* r1 = Add("r1", top);
    CKelPropertyTreeItem* r2 = Add("r2", top);
    CKelPropertyTreeItem* r3 = Add("r3", top);
    Paint();
    tree.SelectItems(r1, 1);
    tree.SelectItems(r2, 1);
    Send(WM_RBUTTONDOWN, MK_RBUTTON, LabelPoint(r2));
    Send(WM_RBUTTONUP, 0, LabelPoint(r2));
    EXPECT_TRUE(r1->IsSelected());
    EXPECT_TRUE(r2->IsSelected());
    // On an unselected row the press selects it alone.
    Send(WM_RBUTTONDOWN, MK_RBUTTON, LabelPoint(r3));
    Send(WM_RBUTTONUP, 0, LabelPoint(r3));
    EXPECT_FALSE(r1->IsSelected());
    EXPECT_FALSE(r2->IsSelected());
    EXPECT_TRUE(r3->IsSelected());
}

TEST_F(MouseTest, SpecialButtonReleasedOnItNotifiesOverAnotherRowNothingOverNoRowStaysPressed)
{
    CKelPropertyTreeItem* b = tree.InsertItem(new ButtonItem("b"), top);
    CKelPropertyTreeItem* other = Add("other", top);
    b->SetItemEditableManuallyForExternalFunction(1);
    Paint();
    const CPoint on = SpecialButtonPoint(b);
    ASSERT_EQ(PTHT_SPECIAL_BUTTON, tree.HitTest(on));

    Clear();
    Press(on);
    EXPECT_TRUE(b->IsSpecialButtonPressed());
    EXPECT_EQ(b, list->GetPressedButtonItem());
    EXPECT_EQ(list->m_hWnd, ::GetCapture());
    Release(on);
    ExpectCodesBesidesFocus({PTN_SELECTION_CHANGED, PTN_SPECIAL_BUTTON});
    EXPECT_FALSE(b->IsSpecialButtonPressed());
    EXPECT_EQ(nullptr, ::GetCapture());

    // Moved off the button and released over another row: nothing.
    Clear();
    Press(on);
    Send(WM_MOUSEMOVE, MK_LBUTTON, LabelPoint(other));
    EXPECT_FALSE(b->IsSpecialButtonPressed());
    Release(LabelPoint(other));
    ExpectCodesBesidesFocus({});
    EXPECT_EQ(nullptr, list->GetPressedButtonItem());

    // Released over no row: the button stays pressed and the mouse stays held.
    Press(on);
    const CPoint below(on.x, static_cast<int>(Top(other) + 60));
    ASSERT_EQ(nullptr, tree.FindItem(below));
    Release(below);
    EXPECT_TRUE(b->IsSpecialButtonPressed());
    EXPECT_EQ(b, list->GetPressedButtonItem());
    EXPECT_EQ(list->m_hWnd, ::GetCapture());
    Clear();
    Release(on);
    ExpectCodesBesidesFocus({PTN_SPECIAL_BUTTON});
}

TEST_F(MouseTest, AManualDepressButtonStaysDownAfterTheRelease)
{
    CKelPropertyTreeItem* b = tree.InsertItem(new ButtonItem("b"), top);
    b->SetItemEditableManuallyForExternalFunction(1);
    b->SetSpecialButtonManualDepress(1);
    Paint();
    Click(SpecialButtonPoint(b));
    EXPECT_TRUE(b->IsSpecialButtonPressed());
}

TEST_F(MouseTest, APressOnADisabledRowsSwitchTogglesItAndAPressElsewhereDoesNothing)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* row = Add("row", top);
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(0, 1);
    Paint();
    ASSERT_TRUE(row->IsRowDisabled());
    Clear();
    Click(LabelPoint(row));
    Click(ValuePoint(row));
    ExpectCodesBesidesFocus({});
    EXPECT_FALSE(row->IsSelected());
    EXPECT_EQ(0u, row->GetItemSwitchStatus());
    ASSERT_EQ(PTHT_SWITCHBOX, tree.HitTest(SwitchPoint(row)));
    Click(SwitchPoint(row));
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    EXPECT_EQ(KPTISM_CLICK, row->GetLastSwitchMethod());
    ExpectCodesBesidesFocus({PTN_SWITCH_CHANGED, PTN_SELECTION_CHANGED});
    EXPECT_EQ(row, tree.GetFocusedItem());
}

TEST_F(MouseTest, SwitchingARowOffSelectsItsParentInstead)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* group = Add("group", top);
    CKelPropertyTreeItem* row = Add("row", group);
    group->Expand(1);
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(1, 1);
    Paint();
    Clear();
    Click(SwitchPoint(row));
    EXPECT_EQ(0u, row->GetItemSwitchStatus());
    EXPECT_EQ(group, tree.GetFocusedItem());
    EXPECT_TRUE(group->IsSelected());
    ExpectCodesBesidesFocus({PTN_SWITCH_CHANGED, PTN_SELECTION_CHANGED});
}

TEST_F(MouseTest, TheRightButtonDoesNotWorkASwitch)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* row = Add("row", top);
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(1, 1);
    Paint();
    Send(WM_RBUTTONDOWN, MK_RBUTTON, SwitchPoint(row));
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
}

TEST_F(MouseTest, ALabelClickTogglesTheSwitchOutsideTheKeepingModules)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* row = Add("row", top);
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(1, 1);
    Paint();
    Clear();
    Click(LabelPoint(row));
    EXPECT_EQ(0u, row->GetItemSwitchStatus());
}

namespace
{
struct KeepingModuleTest : MouseTest
{
    KEL_ML_TREE_USED_AT_MODULE_ID Module() const override { return KEL_ML_TREE_MODULE_6; }
};
}

TEST_F(KeepingModuleTest, ALabelClickLeavesTheSwitchUnlessSwitchByLabelIsSet)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* row = Add("row", top);
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(1, 1);
    Paint();
    Click(LabelPoint(row));
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    tree.SetSwitchByLabel(1);
    Paint();
    Click(LabelPoint(row));
    EXPECT_EQ(0u, row->GetItemSwitchStatus());
}

TEST_F(MouseTest, TheColumnSeparatorDragsWithinItsLimits)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Paint();
    const int y = static_cast<int>(Top(a) + 10);
    ASSERT_EQ(PTHT_COLUMN, tree.HitTest(CPoint(190, y)));
    Clear();
    Press(CPoint(190, y));
    ExpectCodesBesidesFocus({PTN_COLUMN_RESIZING});
    EXPECT_TRUE(list->IsColumnDragging());
    EXPECT_EQ(list->m_hWnd, ::GetCapture());
    Send(WM_MOUSEMOVE, MK_LBUTTON, CPoint(220, y));
    EXPECT_EQ(220, list->GetColumnDragX());
    Send(WM_MOUSEMOVE, MK_LBUTTON, CPoint(20, y));   // left of the minimum: the band stays
    EXPECT_EQ(220, list->GetColumnDragX());
    Release(CPoint(220, y));
    EXPECT_FALSE(list->IsColumnDragging());
    EXPECT_EQ(nullptr, ::GetCapture());
    EXPECT_EQ(220, C());
    // Released left of the splitter minimum, the column stops at it.
    Press(CPoint(220, y));
    Release(CPoint(30, y));
    EXPECT_EQ(160, C());
    // Released right of the separator maximum, it stops there, or 16 pixels before the
    // tree's right edge where the column itself stops.
    Paint();
    CRect treeClient;
    tree.GetClientRect(&treeClient);
    Press(CPoint(160, y));
    Release(CPoint(5000, y));
    EXPECT_EQ(std::min<long>(tree.GetSeparatorMaxHorizPos(), treeClient.Width() - 16), C());
    // A special button in the tree keeps the separator its width plus 7 from the right.
    tree.InsertItem(new ButtonItem("b"), top)->SetItemEditableManuallyForExternalFunction(1);
    tree.MoveWindow(0, 0, 600, 240);
    Paint();
    const long maxX = tree.GetSeparatorMaxHorizPos();
    EXPECT_EQ(Inner().right - 23, maxX);
    Press(CPoint(static_cast<int>(C()), y));
    Release(CPoint(590, y));
    EXPECT_EQ(maxX, C());
}

TEST_F(MouseTest, TheParentCanRefuseAColumnDrag)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Paint();
    parent.refuse.insert(PTN_COLUMN_RESIZING);
    Press(CPoint(190, static_cast<int>(Top(a) + 10)));
    EXPECT_FALSE(list->IsColumnDragging());
    Release(CPoint(250, static_cast<int>(Top(a) + 10)));
    EXPECT_EQ(190, C());
}

TEST_F(MouseTest, DoubleClickTellsTheParentAndTogglesARowWithChildren)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Add("a1", a);
    CKelPropertyTreeItem* leaf = Add("leaf", top);
    Paint();
    Clear();
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, LabelPoint(a));
    ExpectCodesBesidesFocus({PTN_DOUBLE_CLICK, PTN_SELECTION_CHANGED, PTN_ITEM_EXPANDING});
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_EQ(a, tree.GetFocusedItem());
    Clear();
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, LabelPoint(leaf));
    ExpectCodesBesidesFocus({PTN_DOUBLE_CLICK});
    // On the value of a row below the top level the double click stops after telling.
    Paint();
    Clear();
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, ValuePoint(a));
    ExpectCodesBesidesFocus({PTN_DOUBLE_CLICK});
    EXPECT_TRUE(a->IsExpanded());
}

TEST_F(MouseTest, DoubleClickOnALockedRowOnlyTellsTheParent)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Add("a1", a);
    a->Lock(1);
    Paint();
    Clear();
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, LabelPoint(a));
    ExpectCodes({PTN_LOCKED_DOUBLE_CLICK});
    EXPECT_FALSE(a->IsExpanded());
}

TEST_F(MouseTest, RightDoubleClickGoesToTheTreesParent)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Paint();
    Send(WM_RBUTTONDBLCLK, MK_RBUTTON, LabelPoint(a));
    EXPECT_EQ(1, parent.rightDoubleClicks);
}

TEST_F(MouseTest, ContextMenuNamesTheRowUnderThePointOrNone)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* off = Add("off", top);
    off->SetItemSwitching(1);
    off->SetItemSwitchStatus(0, 1);
    Paint();
    auto menu = [&](CPoint client) {
        CPoint screen = client;
        list->ClientToScreen(&screen);
        list->SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list->m_hWnd), MAKELPARAM(screen.x, screen.y));
    };
    Clear();
    menu(LabelPoint(a));
    menu(LabelPoint(off));   // a row refused by the selection test stays silent
    menu(CPoint(50, static_cast<int>(Top(off) + 80)));
    ExpectCodes({PTN_CONTEXT_MENU, PTN_CONTEXT_MENU});
    EXPECT_EQ(a, parent.items[0]);
    EXPECT_EQ(nullptr, parent.items[1]);
}

namespace
{
struct ExternalModuleTest : MouseTest
{
    KEL_ML_TREE_USED_AT_MODULE_ID Module() const override { return KEL_ML_TREE_MODULE_1; }
};
}

TEST_F(ExternalModuleTest, AValueTheHostEditsPressesTheButtonInsteadOfOpeningAControl)
{
    ValueItem* v = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v", 77), top));
    Paint();
    parent.externalFunction = 1;
    Clear();
    Press(ValuePoint(v));
    EXPECT_EQ(77, parent.lastRequestedResID);
    EXPECT_TRUE(v->calls.empty());
    EXPECT_TRUE(v->IsSpecialButtonPressed());
    EXPECT_EQ(list->m_hWnd, ::GetCapture());
    Release(ValuePoint(v));
    ExpectCodesBesidesFocus({PTN_SELECTION_CHANGED, PTN_ITEM_ACTIVATING, PTN_ITEM_CLICKED, PTN_SPECIAL_BUTTON});
    // Editable by hand for the external function: the row activates as usual.
    v->SetItemEditableManuallyForExternalFunction(1);
    Click(ValuePoint(v));
    EXPECT_EQ(std::vector<std::string>{"OnActivate"}, v->calls);
}

TEST_F(MouseTest, LosingTheMouseToAnotherWindowEndsAColumnDragWithoutMovingTheColumn)
{
    CKelPropertyTreeItem* a = Add("a", top);
    Paint();
    const int y = static_cast<int>(Top(a) + 10);
    Press(CPoint(190, y));
    Send(WM_MOUSEMOVE, MK_LBUTTON, CPoint(230, y));
    ASSERT_TRUE(list->IsColumnDragging());
    ::SetCapture(parent.m_hWnd);
    EXPECT_FALSE(list->IsColumnDragging());
    ::ReleaseCapture();
    Release(CPoint(230, y));
    EXPECT_EQ(190, C());
}

TEST_F(MouseTest, AfterScrollingThePressFindsTheExpandBoxWherePaintingPutIt)
{
    tree.MoveWindow(0, 0, 360, 200);
    for (int i = 0; i < 20; ++i)
        Add("filler", top);
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* a1 = Add("a1", a);
    Paint();
    list->SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 250), 0);
    ASSERT_EQ(250, V());
    Paint();
    const CPoint box = ExpandPoint(a);
    ASSERT_GT(box.y, 0);
    ASSERT_LT(box.y, Client().bottom);
    EXPECT_EQ(PTHT_EXPAND, tree.HitTest(box));
    Click(box);
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_TRUE(tree.IsItemOnVisibleList(a1));
}

TEST_F(MouseTest, InMultipleSelectionASwitchClickSwitchesEverySelectedRowLikeTheClickedOne)
{
    tree.SetTreeItemsSwitchable(1, 0);
    tree.SetMultipleSelection(true);
    CKelPropertyTreeItem* r1 = Add("r1", top);
    CKelPropertyTreeItem* r2 = Add("r2", top);
    CKelPropertyTreeItem* r3 = Add("r3", top);
    for (CKelPropertyTreeItem* r : {r1, r2, r3})
    {
        r->SetItemSwitching(1);
        r->SetItemSwitchStatus(1, 1);
    }
    Paint();
    tree.SelectItems(r1, 1);
    tree.SelectItems(r2, 1);
    Clear();
    Click(SwitchPoint(r2));
    EXPECT_EQ(0u, r1->GetItemSwitchStatus());
    EXPECT_EQ(0u, r2->GetItemSwitchStatus());
    EXPECT_EQ(1u, r3->GetItemSwitchStatus());
    // Each switched row tells the parent, and the click itself is not told.
    std::vector<unsigned> switches;
    for (unsigned c : CodesBesidesFocus())
        if (c == PTN_SWITCH_CHANGED)
            switches.push_back(c);
    EXPECT_EQ(2u, switches.size());
    for (unsigned c : CodesBesidesFocus())
        EXPECT_NE(PTN_ITEM_CLICKED, c);
    // A row outside the selection switches alone.
    Click(SwitchPoint(r3));
    EXPECT_EQ(0u, r3->GetItemSwitchStatus());
    EXPECT_EQ(0u, r1->GetItemSwitchStatus());
}

TEST_F(MouseTest, AClickOnASwitchLockedBoxChangesNothingButStillTellsTheParent)
{
    tree.SetTreeItemsSwitchable(1, 0);
    CKelPropertyTreeItem* row = Add("row", top);
    row->SetItemSwitching(1, 1);
    row->SetItemSwitchStatus(1, 1, KPTISM_PROGRAM);
    Paint();
    Clear();
    Click(SwitchPoint(row));
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    ExpectCodesBesidesFocus({PTN_SWITCH_CHANGED, PTN_SELECTION_CHANGED, PTN_ITEM_CLICKED});
}
