// The tree window: finding rows, selection and focus, the expanded state, switches in bulk,
// the column, icons and small rules.
#include <gtest/gtest.h>

#include "ck_attrib.h"
#include "kx_bitmapcontainer.h"
#include "pttest.h"
#include "testsupport.h"
#include "treewindowfixture.h"

using pttest::CountedItem;
using pttest::LayoutRows;
using pttest::RecordingParent;
using pttest::TreeWindowTest;
using pttest::ValueItem;

// ---- finding ----

TEST_F(TreeWindowTest, FindItemByPointReachesPaintedRowsOnly)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("b");
    EXPECT_EQ(nullptr, tree.FindItem(CPoint(5, 5)));   // nothing painted yet
    LayoutRows(tree);
    EXPECT_EQ(a, tree.FindItem(CPoint(5, 5)));
    EXPECT_EQ(b, tree.FindItem(CPoint(5, 25)));   // a is collapsed: a1 is not on the list
    EXPECT_EQ(nullptr, tree.FindItem(CPoint(5, 45)));
    a->Expand(1);
    LayoutRows(tree);
    EXPECT_EQ(a1, tree.FindItem(CPoint(5, 25)));
    tree.SetOriginOffset(20);   // scrolled by one row
    EXPECT_EQ(a1, tree.FindItem(CPoint(5, 5)));
}

TEST_F(TreeWindowTest, FindItemByControlNumberSearchesTheWholeTree)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    EXPECT_EQ(a1, tree.FindItem(2u));
    EXPECT_EQ(nullptr, tree.FindItem(77u));
    a1->SetCtrlID(77);
    EXPECT_EQ(a1, tree.FindItem(77u));
}

TEST_F(TreeWindowTest, HitTestOrder)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* row = Add("row", top);
    top->Expand(1);
    EXPECT_EQ(PTHT_NOT_POPULATED, tree.HitTest(CPoint(5, 5)));
    tree.SetPopulated(1);
    LayoutRows(tree);
    EXPECT_EQ(PTHT_NOWHERE, tree.HitTest(CPoint(5, 100)));
    const long column = tree.GetColumn();
    EXPECT_EQ(PTHT_COLUMN, tree.HitTest(CPoint(column + 1, 25)));
    EXPECT_EQ(PTHT_LABEL, tree.HitTest(CPoint(column + 1, 5)));   // top-level rows have no column
    EXPECT_EQ(PTHT_ATTRIBUTE, tree.HitTest(CPoint(column + 2, 25)));
    row->SetRectExpandBox(CRect(4, 24, 12, 32));
    row->SetSwitchBoxRect(CRect(20, 21, 38, 39));
    EXPECT_EQ(PTHT_EXPAND, tree.HitTest(CPoint(6, 26)));
    EXPECT_EQ(PTHT_SWITCHBOX, tree.HitTest(CPoint(25, 26)));
    EXPECT_EQ(PTHT_LABEL, tree.HitTest(CPoint(60, 26)));
    row->ShowSpecialButton(1);
    *row->GetSpecialButtonRectPtr() = CRect(250, 22, 266, 38);
    EXPECT_EQ(PTHT_SPECIAL_BUTTON, tree.HitTest(CPoint(252, 25)));
    tree.SetOriginOffsetHorz(10);   // the button lies in tree coordinates
    EXPECT_EQ(PTHT_SPECIAL_BUTTON, tree.HitTest(CPoint(242, 25)));
}

TEST_F(TreeWindowTest, ResIDSearchesAndActiveGroupRoot)
{
    CKelPropertyTreeItem* g1 = Add("g1", nullptr, PT_RESID_GROUP_ROOT);
    CKelPropertyTreeItem* g1x = Add("x", g1, 5);
    CKelPropertyTreeItem* g2 = Add("g2", nullptr, PT_RESID_GROUP_ROOT);
    CKelPropertyTreeItem* g2y = Add("y", g2, 6);
    g2y->SetSpecialResID(900);
    EXPECT_EQ(g1x, tree.GetFirstItemByResID(5u));
    EXPECT_EQ(g2y, tree.GetFirstItemByResID(6u));
    EXPECT_EQ(g2y, tree.GetFirstItemBySpecialResID(900u));
    EXPECT_EQ(g2, tree.GetRootOfItem(g2y));
    tree.SetActiveGroupRootItem(g1x);
    EXPECT_EQ(g1, tree.GetActiveGroupRootItem());
    // With an active group root, rows outside the group are not found.
    EXPECT_EQ(nullptr, tree.GetFirstItemByResID(6u));
    EXPECT_EQ(g1x, tree.GetFirstItemByResID(5u));
    // An explicit start walks on over the next siblings.
    EXPECT_EQ(g2y, tree.GetFirstItemByResID(6u, g1));
    LayoutRows(tree);
    EXPECT_EQ(g1, tree.GetFirstVisibleItemByResID(static_cast<unsigned>(PT_RESID_GROUP_ROOT)));
    EXPECT_EQ(nullptr, tree.GetFirstVisibleItemByResID(5u));   // g1 is collapsed
}

TEST_F(TreeWindowTest, LayerAndMacroLevelsAndLocksWithSubItems)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* layer = Add("layer", top, PT_RESID_LAYER);
    CKelPropertyTreeItem* macro = Add("macro", layer, PT_RESID_MACRO);
    CKelPropertyTreeItem* value = Add("value", macro, 1);
    EXPECT_EQ(layer, tree.GetLayerLevel(value));
    EXPECT_EQ(macro, tree.GetMacroDefinitionLevel(value));
    EXPECT_EQ(layer, tree.GetLayerLevel(top));   // down the chain of first children
    EXPECT_EQ(macro, tree.GetFirstItemByResID_KeepingTreeConnection(top, PT_RESID_MACRO));
    EXPECT_EQ(0, tree.IsLockedWithSubItems(nullptr, 1));
    layer->Lock(1);
    EXPECT_EQ(0, tree.IsLockedWithSubItems(value, 0));
    EXPECT_EQ(1, tree.IsLockedWithSubItems(value, 1));
    EXPECT_EQ(0, tree.IsLockedWithSubItems(layer, 1));   // its own layer level
    EXPECT_EQ(0, tree.IsLockedWithSubItems(macro, 1));
    EXPECT_EQ(1, tree.IsLockedWithSubItems(layer, 0));
}

TEST_F(TreeWindowTest, ListHelpers)
{
    CKelPropertyTreeItem* a = Add("a", nullptr, 3);
    CKelPropertyTreeItem* b = Add("b", nullptr, 4);
    CKelPropertyTreeItem* c = Add("c", nullptr, 3);
    std::vector<CKelPropertyTreeItem*> found;
    tree.GetAllItemWithID(found, 3, a, 1);
    EXPECT_TRUE(found.empty());
    tree.GetAllItemWithID(found, 3, a, 0);
    std::vector<CKelPropertyTreeItem*> expected = {a, c};
    EXPECT_EQ(expected, found);
    CKelPropertyTree::ExcludeItemFromList(found, a);
    EXPECT_EQ(std::vector<CKelPropertyTreeItem*>{c}, found);
    std::vector<CKelPropertyTreeItem*> other = {a, b, c};
    CKelPropertyTree::ExcludeDuplicateItems(found, other);
    expected = {a, b};
    EXPECT_EQ(expected, other);
}

TEST_F(TreeWindowTest, CopyItemValuesBetweenLayers)
{
    CKelPropertyTreeItem* s = Add("s", nullptr, PT_RESID_LAYER);
    ValueItem* sv = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v", 1), s));
    ValueItem* sw = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("w", 2), s));
    CKelPropertyTreeItem* d = Add("d", nullptr, PT_RESID_LAYER);
    ValueItem* dv = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v", 1), d));
    ValueItem* dw = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("w", 2), d));
    sv->SetIdentifier(ITEM_TYPE_EDIT);
    sv->m_value = 11;
    sw->SetIdentifier(ITEM_TYPE_STATIC);
    sw->m_value = 22;
    std::vector<CKelPropertyTreeItem*> sources = {s}, destinations = {d}, two = {d, d};
    tree.CopyItemValues(sources, two);   // sizes differ: nothing
    EXPECT_EQ(0, dv->m_value);
    tree.CopyItemValues(sources, destinations);
    EXPECT_EQ(11, dv->m_value);
    EXPECT_EQ(22, dw->m_value);
    sv->SetIdentifier(ITEM_TYPE_DISPLAY_TYPE);   // not copied
    sv->m_value = 33;
    tree.CopyItemValues(sources, destinations);
    EXPECT_EQ(11, dv->m_value);
}

// ---- selection and focus ----

TEST_F(TreeWindowTest, SelectItemNotifiesWithNullAndSelectItemWithItemNotifyWithTheRow)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    a->Select_SetStatus(1);
    Clear();
    tree.SelectItem(b);
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
    ExpectCodes({PTN_SELECTION_CHANGED});
    EXPECT_EQ(nullptr, parent.items[0]);
    Clear();
    tree.SelectItemWithItemNotify(a);
    EXPECT_TRUE(a->IsSelected());
    EXPECT_EQ(a, parent.items[0]);
    Clear();
    tree.SelectItemWithItemNotify(nullptr);
    EXPECT_FALSE(a->IsSelected());
    EXPECT_EQ(tree.GetRootItem(), parent.items[0]);
}

TEST_F(TreeWindowTest, SelectItemsOnNullSelectsTheWholeTree)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    EXPECT_EQ(1, tree.SelectItems(nullptr, 1));
    EXPECT_TRUE(a->IsSelected());
    EXPECT_TRUE(a1->IsSelected());
    EXPECT_EQ(1, tree.SelectItems(a1, 0));
    EXPECT_FALSE(a1->IsSelected());
    EXPECT_TRUE(a->IsSelected());
}

TEST_F(TreeWindowTest, MultipleSelectWithMultipleSelectionOffLeavesEveryFlag)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    a->Select_SetStatus(1);
    tree.MultipleSelect(b, 1);
    EXPECT_TRUE(a->IsSelected());
    EXPECT_FALSE(b->IsSelected());
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
}

namespace
{
// Presses or releases Ctrl and Shift in the thread's key state, then lets the tree see a key.
void PressKeys(CKelPropertyTree& tree, bool ctrl, bool shift)
{
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_CONTROL] = ctrl ? 0x80 : 0;
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    SetKeyboardState(keys);
    MSG up = {tree.m_hWnd, WM_KEYUP, 'A', 0, 0, {0, 0}};
    tree.PreTranslateMessage(&up);
    MSG down = {tree.m_hWnd, WM_KEYDOWN, 'A', 0, 0, {0, 0}};
    tree.PreTranslateMessage(&down);
}
}

TEST_F(TreeWindowTest, PreTranslateMessageRecordsCtrlAndShift)
{
    PressKeys(tree, true, false);
    EXPECT_TRUE(tree.IsPressedCtrl());
    EXPECT_FALSE(tree.IsPressedShift());
    PressKeys(tree, false, true);
    EXPECT_TRUE(tree.IsPressedShift());
    EXPECT_FALSE(tree.IsPressedCtrl());
    MSG up = {tree.m_hWnd, WM_KEYUP, 'A', 0, 0, {0, 0}};
    tree.PreTranslateMessage(&up);
    EXPECT_FALSE(tree.IsPressedControlledVK());
    PressKeys(tree, false, false);
}

TEST_F(TreeWindowTest, MultipleSelectPlainCtrlAndShift)
{
    tree.SetMultipleSelection(true);
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* b = Add("b", top);
    CKelPropertyTreeItem* c = Add("c", top);
    CKelPropertyTreeItem* d = Add("d", top);
    top->Expand(1);
    LayoutRows(tree);
    PressKeys(tree, false, false);
    tree.MultipleSelect(b, 1);
    EXPECT_TRUE(b->IsSelected());
    EXPECT_EQ(b, tree.GetFocusedItem());
    PressKeys(tree, true, false);
    tree.MultipleSelect(d, 1);
    EXPECT_TRUE(b->IsSelected());
    EXPECT_TRUE(d->IsSelected());
    tree.MultipleSelect(d, 1);   // Ctrl toggles, whatever select says
    EXPECT_FALSE(d->IsSelected());
    tree.MultipleSelect(b, 1);   // b toggles off, the focus moves to b
    EXPECT_FALSE(b->IsSelected());
    EXPECT_EQ(b, tree.GetFocusedItem());
    PressKeys(tree, false, true);
    tree.MultipleSelect(d, 1);
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    EXPECT_TRUE(c->IsSelected());
    EXPECT_TRUE(d->IsSelected());
    EXPECT_EQ(b, tree.GetFocusedItem());   // the anchor stays focused
    tree.MultipleSelect(top, 1);   // another level: the anchor and the siblings behind it
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    EXPECT_TRUE(d->IsSelected());
    EXPECT_FALSE(top->IsSelected());
    PressKeys(tree, false, false);
}

TEST_F(TreeWindowTest, ShiftSelectionAcrossParents)
{
    tree.SetMultipleSelection(true);
    CKelPropertyTreeItem* p1 = Add("p1");
    CKelPropertyTreeItem* a = Add("a", p1);
    CKelPropertyTreeItem* b = Add("b", p1);
    CKelPropertyTreeItem* p2 = Add("p2");
    CKelPropertyTreeItem* m = Add("m", p2);
    CKelPropertyTreeItem* p3 = Add("p3");
    CKelPropertyTreeItem* x = Add("x", p3);
    CKelPropertyTreeItem* y = Add("y", p3);
    CKelPropertyTreeItem* z = Add("z", p3);
    p1->Expand(1);
    p2->Expand(1);
    p3->Expand(1);
    LayoutRows(tree);
    PressKeys(tree, false, false);
    tree.MultipleSelect(y, 1);
    PressKeys(tree, false, true);
    tree.MultipleSelect(b, 1);   // b comes first: b to the end of p1, all of p2, p3 up to y
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    EXPECT_TRUE(m->IsSelected());
    EXPECT_TRUE(x->IsSelected());
    EXPECT_TRUE(y->IsSelected());
    EXPECT_FALSE(z->IsSelected());
    PressKeys(tree, false, false);
}

TEST_F(TreeWindowTest, SetFocusedItemSkipsRowsToAvoid)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* c = Add("c");
    LayoutRows(tree);
    tree.AddItem2AvoidSelection(a);
    tree.AddItem2AvoidSelection(b);
    EXPECT_FALSE(tree.IsEnabled4Selection(a));
    tree.SetFocusedItem(a);
    EXPECT_EQ(c, tree.GetFocusedItem());
    tree.AddItem2AvoidSelection(c);
    tree.SetFocusedItem(a);   // none allowed: nothing changes
    EXPECT_EQ(c, tree.GetFocusedItem());
    tree.SetFocusedItem(nullptr);
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
    // Selection-disabled rows are only a list; selection ignores it.
    CKelPropertyTreeItem* d = Add("d");
    tree.DisableSelection4Item(d);
    EXPECT_TRUE(tree.IsEnabled4Selection(d));
    tree.EnableSelection4Item(d);
}

TEST_F(TreeWindowTest, GetItemValidForSelectionSearchesChildrenOrSiblings)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("b");
    tree.AddItem2AvoidSelection(a);
    EXPECT_EQ(a1, tree.GetItemValidForSelection(a, KPVIST_CHILDREN));
    EXPECT_EQ(b, tree.GetItemValidForSelection(a, KPVIST_SIBLINGS));
    EXPECT_EQ(nullptr, tree.GetItemValidForSelection(a, static_cast<KelPropertyValidItemSearchType_e>(5)));
    EXPECT_EQ(b, tree.GetItemValidForSelection(b, KPVIST_CHILDREN));
}

TEST_F(TreeWindowTest, KeyboardMovesSelectAndNotifyTheNewFocus)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* c = Add("c");
    LayoutRows(tree);
    Clear();
    tree.FocusNext();   // no focus: the first row
    EXPECT_EQ(a, tree.GetFocusedItem());
    EXPECT_TRUE(a->IsSelected());
    tree.FocusNext();
    EXPECT_EQ(b, tree.GetFocusedItem());
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    tree.FocusLast();
    EXPECT_EQ(c, tree.GetFocusedItem());
    tree.FocusPrev();
    EXPECT_EQ(b, tree.GetFocusedItem());
    tree.FocusFirst();
    EXPECT_EQ(a, tree.GetFocusedItem());
    tree.FocusFirst();   // unchanged focus: no notification
    ExpectCodes({PTN_SELECTION_CHANGED, PTN_SELECTION_CHANGED, PTN_SELECTION_CHANGED, PTN_SELECTION_CHANGED,
                 PTN_SELECTION_CHANGED});
    std::vector<CKelPropertyTreeItem*> focus = {a, b, c, b, a};
    EXPECT_EQ(focus, parent.items);
}

TEST_F(TreeWindowTest, KeyboardMovesSkipRowsDisabledBySwitchByDirection)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* b = Add("b", top);
    CKelPropertyTreeItem* c = Add("c", top);
    top->Expand(1);
    for (CKelPropertyTreeItem* r : {a, b, c})
    {
        r->SetItemSwitching(1, 0);
        r->SetItemSwitchStatus(1, 1);
    }
    b->SetItemSwitchStatus(0, 1);
    LayoutRows(tree);
    tree.SelectItems(a, 1);
    tree.SetFocusedItem(a);
    tree.FocusNext();   // b refused: next sibling only
    EXPECT_EQ(c, tree.GetFocusedItem());
    EXPECT_TRUE(c->IsSelected());
    tree.FocusPrev();   // b refused: previous sibling
    EXPECT_EQ(a, tree.GetFocusedItem());
    c->SetItemSwitchStatus(0, 1);
    tree.FocusNext();   // b refused, c refused, nothing behind: no focus
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
    a->SetItemSwitchStatus(0, 1);
    tree.FocusFirst();   // top passes
    EXPECT_EQ(top, tree.GetFocusedItem());
    tree.FocusLast();   // c, b, a refused, a's next sibling was seen: the parent
    EXPECT_EQ(top, tree.GetFocusedItem());
}

TEST_F(TreeWindowTest, CheckVisibleFocusDropsAHiddenFocus)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    top->Expand(1);
    LayoutRows(tree);
    tree.SetFocusedItem(a);
    a->Select_SetStatus(1);
    top->Expand(0);
    LayoutRows(tree);
    Clear();
    tree.GetCtrlParent()->CheckVisibleFocus();
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
    EXPECT_FALSE(a->IsSelected());
    ExpectCodes({PTN_SELECTION_CHANGED});
}

TEST_F(TreeWindowTest, ListFocusSendsFocusGained)
{
    Clear();
    tree.GetCtrlParent()->SetFocus();
    EXPECT_EQ(1, tree.GetCtrlParent()->IsFocusOnTreeList());
    ExpectCodes({PTN_FOCUS_GAINED});
    EXPECT_EQ(nullptr, parent.items[0]);
    parent.SetFocus();
    EXPECT_EQ(0, tree.GetCtrlParent()->IsFocusOnTreeList());
}

TEST_F(TreeWindowTest, ContextMenuSimulationUsesTheFocusForNull)
{
    CKelPropertyTreeItem* a = Add("a");
    LayoutRows(tree);
    Clear();
    tree.SimulateContextMenuClick(nullptr);
    EXPECT_TRUE(parent.codes.empty());
    tree.SetFocusedItem(a);
    tree.SimulateContextMenuClick(nullptr);
    ExpectCodes({PTN_CONTEXT_MENU});
    EXPECT_EQ(a, parent.items[0]);
}

TEST_F(TreeWindowTest, UpperPartOfARow)
{
    Add("a");
    CKelPropertyTreeItem* b = Add("b");
    LayoutRows(tree);
    EXPECT_EQ(1, tree.IsThePointAtTheUpperPartOfTheItem(b, CPoint(0, 25)));
    EXPECT_EQ(0, tree.IsThePointAtTheUpperPartOfTheItem(b, CPoint(0, 35)));
}

TEST_F(TreeWindowTest, EnsureVisibleScrollsARowBelowTheClientIntoView)
{
    tree.SetPopulated(1);
    std::vector<CKelPropertyTreeItem*> rows;
    for (int i = 0; i < 30; ++i)
        rows.push_back(Add("row"));
    LayoutRows(tree);
    tree.GetCtrlParent()->UpdateResize();
    CRect client;
    tree.GetCtrlParent()->GetClientRect(&client);
    CKelPropertyTreeItem* target = rows[20];   // top at 400
    target->SetAttributeRect(CRect(0, 400, 10, 420));
    tree.EnsureVisible(target);
    const long expected = 420 - client.Height();
    EXPECT_EQ(expected, tree.GetOrigin().y);
    EXPECT_EQ(400 - expected, target->GetAttributeRect().top);
    EXPECT_EQ(expected, tree.GetCtrlParent()->GetScrollPos(SB_VERT));
    tree.EnsureVisible(rows[0]);
    EXPECT_EQ(0, tree.GetOrigin().y);
}

// ---- expanded state ----

TEST_F(TreeWindowTest, ExpandedStateIsSavedByNameAndRestoredOnARebuiltTree)
{
    CKelPropertyTreeItem* a = Add("walls", nullptr, 1);
    Add("colour", a, 2);
    CKelPropertyTreeItem* b = Add("doors", nullptr, 1);
    CKelPropertyTreeItem* b1 = Add("frame", b, 3);
    Add("x", b1, 4);
    a->Expand(1);
    b1->Expand(1);
    std::vector<EXPANDED_ITEMS> saved;
    tree.GetExpandedItems(saved);
    ASSERT_EQ(3u, saved.size());
    EXPECT_EQ(CString(""), saved[0].strLabel);   // the root comes first
    EXPECT_EQ(0u, saved[0].nResID);
    EXPECT_EQ(CString("walls"), saved[1].strLabel);
    EXPECT_EQ(CString("frame"), saved[2].strLabel);
    tree.DeleteAllItems();
    CKelPropertyTreeItem* a2 = Add("walls", nullptr, 1);
    Add("colour", a2, 2);
    CKelPropertyTreeItem* b2 = Add("doors", nullptr, 1);
    CKelPropertyTreeItem* b21 = Add("frame", b2, 3);
    Add("x", b21, 4);
    tree.ExpandAll(saved);
    EXPECT_TRUE(a2->IsExpanded());
    EXPECT_FALSE(b2->IsExpanded());
    EXPECT_TRUE(b21->IsExpanded());
}

TEST_F(TreeWindowTest, RestoringTheRootEntryChangesNothingVisible)
{
    CKelPropertyTreeItem* a = Add("", nullptr, 0);
    Add("child", a);
    std::vector<EXPANDED_ITEMS> saved(1);   // the root's entry: empty label, res ID 0
    tree.ExpandAll(saved);
    EXPECT_FALSE(a->IsExpanded());   // the root matched first and ended its chain
    EXPECT_TRUE(tree.GetRootItem()->IsExpanded());
}

TEST_F(TreeWindowTest, RestoreExpandsOnlyTheFirstOfTwoEqualRowsInAChain)
{
    CKelPropertyTreeItem* first = Add("same", nullptr, 8);
    Add("c", first);
    CKelPropertyTreeItem* second = Add("same", nullptr, 8);
    Add("c", second);
    EXPANDED_ITEMS entry;
    entry.strLabel = "same";
    entry.nResID = 8;
    tree.ExpandOne(entry);
    EXPECT_TRUE(first->IsExpanded());
    EXPECT_FALSE(second->IsExpanded());
    CKelPropertyTreeItem* third = Add("SAME", nullptr, 8);   // labels are case-sensitive
    Add("c", third);
    entry.strLabel = "SAME";
    tree.ExpandOne(entry);
    EXPECT_TRUE(third->IsExpanded());
}

TEST_F(TreeWindowTest, ExpandAllCommandExpandsAndCollapsesFromTheStart)
{
    tree.SetPopulated(1);
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    Add("a11", a1);
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* leaf = Add("leaf");
    Add("b1", b);
    tree.ExpandAll(KPTEC_EXPAND, nullptr);
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_TRUE(a1->IsExpanded());
    EXPECT_TRUE(b->IsExpanded());
    EXPECT_FALSE(leaf->IsExpanded());   // no children
    LayoutRows(tree);
    tree.SetFocusedItem(a1);
    Clear();
    tree.ExpandAll(KPTEC_COLLAPSE, a);
    EXPECT_FALSE(a->IsExpanded());
    EXPECT_FALSE(a1->IsExpanded());
    EXPECT_FALSE(b->IsExpanded());   // b stands in the chain of a
    // The collapse paints at once: a1 left the visible list, so its nearest ancestor that
    // is still painted takes the selection.
    EXPECT_FALSE(tree.IsItemOnVisibleList(a1));
    EXPECT_FALSE(a1->IsSelected());
    EXPECT_TRUE(a->IsSelected());
    ExpectCodes({PTN_SELECTION_CHANGED});
}

// ---- switches in bulk ----

TEST_F(TreeWindowTest, SetSwitchStatusForAllSwitchesEachRowOnceAndTellsTheHost)
{
    CKelPropertyTree moduleTree;
    ASSERT_TRUE(moduleTree.Create(WS_CHILD | PTS_NOTIFY, CRect(0, 0, 100, 100), &parent, 55, KEL_ML_TREE_MODULE_1));
    CK_AttribSet attribs;
    ASSERT_TRUE(GetAttrsByLayer(2, attribs));
    parent.attribSet = &attribs;
    moduleTree.SetTreeItemsSwitchable(1, 1);
    moduleTree.SetPopulated(1);
    CKelPropertyTreeItem* top = moduleTree.InsertItem(new CountedItem("top"));
    CKelPropertyTreeItem* a = moduleTree.InsertItem(new CountedItem("a"), top);
    CKelPropertyTreeItem* b = moduleTree.InsertItem(new CountedItem("b"), top);
    for (CKelPropertyTreeItem* r : {top, a, b})
    {
        r->SetItemSwitching(1, 0);
        r->SetItemSwitchStatus(1, 1);
    }
    top->SetAutoCheckSubItems(true);
    a->Select_SetStatus(1);
    a->DeleteItem(1, 0);
    Clear();
    moduleTree.SetSwitchStatusForAll(0);
    EXPECT_EQ(0, moduleTree.IsSelectedAll());
    ExpectCodes({PTN_SWITCH_CHANGED, PTN_SWITCH_CHANGED, PTN_SWITCH_CHANGED});
    std::vector<CKelPropertyTreeItem*> order = {top, a, b};
    EXPECT_EQ(order, parent.items);
    EXPECT_EQ(0u, a->GetItemSwitchStatus());
    EXPECT_EQ(KPTISM_ALL, b->GetLastSwitchMethod());
    EXPECT_FALSE(a->IsSelected());
    EXPECT_EQ(0, a->IsDeleted());   // switched off rows are unmarked
    EXPECT_EQ(0, parent.lastRequestedResID);
    for (int i = 0; i < attribs.GetCount(); ++i)
    {
        EXPECT_EQ(0, attribs.GetAt(i).m_nSwitched);
        EXPECT_EQ(1, attribs.GetAt(i).m_nDeleted);
    }
    moduleTree.SetSwitchStatusForAll(1);
    EXPECT_EQ(1u, a->GetItemSwitchStatus());
    EXPECT_EQ(1, attribs.GetAt(0).m_nSwitched);
    moduleTree.DestroyWindow();
}

TEST_F(TreeWindowTest, SetSwitchStatusForAllNeedsTheSwitchList)
{
    CKelPropertyTreeItem* a = Add("a");
    tree.SetSwitchStatusForAll(0);
    EXPECT_EQ(1, tree.IsSelectedAll());
    EXPECT_EQ(0u, a->GetItemSwitchStatus());
}

TEST_F(TreeWindowTest, OnDeleteItemMarksRowsAndTheHostAttributes)
{
    CKelPropertyTree moduleTree;
    ASSERT_TRUE(moduleTree.Create(WS_CHILD | PTS_NOTIFY, CRect(0, 0, 100, 100), &parent, 56, KEL_ML_TREE_MODULE_4));
    CK_AttribSet attribs;
    ASSERT_TRUE(GetAttrsByLayer(1, attribs));
    moduleTree.GetExternalOMData()->pAttribSet = &attribs;
    CKelPropertyTreeItem* layer = moduleTree.InsertItem(new CountedItem("layer", PT_RESID_LAYER));
    CKelPropertyTreeItem* colour = moduleTree.InsertItem(new CountedItem("colour", KX_ATTR_COLOUR), layer);
    moduleTree.OnDeleteItem(colour, ITEM_DELETE_MARK);
    EXPECT_EQ(1, colour->IsDeleted());
    EXPECT_TRUE(colour->IsReadOnly());
    EXPECT_EQ(1, layer->IsLocked());   // the lock goes to the layer level
    EXPECT_EQ(0, attribs.Find(KX_ATTR_COLOUR)->m_nDeleted);   // negated
    moduleTree.OnDeleteItem(colour, ITEM_DELETE_TOGGLE);
    EXPECT_EQ(0, colour->IsDeleted());
    EXPECT_FALSE(colour->IsReadOnly());
    EXPECT_EQ(1, attribs.Find(KX_ATTR_COLOUR)->m_nDeleted);
    moduleTree.OnDeleteItem(layer, ITEM_DELETE_MARK);
    EXPECT_EQ(1, colour->IsDeleted());
    for (int i = 0; i < attribs.GetCount(); ++i)
        EXPECT_EQ(1, attribs.GetAt(i).m_nDeleted);
    moduleTree.OnDeleteItem(layer, ITEM_DELETE_UNMARK);
    EXPECT_EQ(0, layer->IsDeleted());
    EXPECT_EQ(0, attribs.GetAt(0).m_nDeleted);
    moduleTree.DestroyWindow();
}

// ---- column, icons and small rules ----

TEST_F(TreeWindowTest, SetColumnKeepsSixteenPixelsOnBothSides)
{
    tree.SetColumn(5);
    EXPECT_EQ(16, tree.GetColumn());
    CRect client;
    tree.GetClientRect(&client);
    tree.SetColumn(client.Width());
    EXPECT_EQ(client.Width() - 16, tree.GetColumn());
    tree.SetColumn(120);
    EXPECT_EQ(120, tree.GetColumn());
    tree.SetOriginOffsetHorz(30);
    tree.SetOriginOffsetX(10);
    EXPECT_EQ(130, tree.GetColumn());   // splitter minimum 160 less the horizontal origin
}

TEST(TreeDefaults, OriginAndFields)
{
    CKelPropertyTree tree;
    EXPECT_EQ(190, tree.GetOrigin().x);
    EXPECT_EQ(0, tree.GetOrigin().y);
    EXPECT_EQ(1, tree.IsSingleSelection());
    EXPECT_EQ(1, tree.IsSelectedAll());
    EXPECT_EQ(160u, tree.GetSplitterMinCol());
    EXPECT_EQ(-1, tree.GetFirstLockedItemResID());
    EXPECT_EQ(-1, tree.GetJoiningCheckItemResID());
    EXPECT_EQ(1, tree.IsDisablingRowOnUncheckedSwitchingStatus());
    EXPECT_EQ(0, tree.IsPopulated());
    tree.SetSwitchByLabel(1);
    EXPECT_EQ(0, tree.IsSwitchingByLabel());   // no switch list
    tree.SetTreeItemsSwitchable(1, 0);
    EXPECT_EQ(1, tree.IsSwitchingByLabel());
    EXPECT_EQ(0, tree.IsDisablingRowOnUncheckedSwitchingStatus());
    tree.SetDrawingFlag(2);
    EXPECT_EQ(1, tree.GetDrawingFlag(2));
    EXPECT_EQ(0, tree.GetDrawingFlag(1));
    tree.SetInfoColMaxVisibleWidth(40);
    tree.SetInfoColMaxVisibleWidth(30);
    EXPECT_EQ(40, tree.GetInfoColMaxVisibleWidth());
    tree.ResetInfoColMaxVisibleWidth();
    EXPECT_EQ(0, tree.GetInfoColMaxVisibleWidth());
    EXPECT_TRUE(tree.EvaluateDragAndDrop(nullptr));
}

TEST_F(TreeWindowTest, IconsFromTheHostContainerAreNumbered)
{
    const int ids[] = {KX_BMP_SWITCH_ON, 12345, KX_BMP_DELETED_MARK};
    tree.AddIcons_NA(ids, 3);
    EXPECT_EQ(2, tree.GetIconImageList()->GetImageCount());   // 12345 is not in the container
    EXPECT_EQ(0, tree.GetImageListNrByIconNr(KX_BMP_SWITCH_ON));
    EXPECT_EQ(1, tree.GetImageListNrByIconNr(KX_BMP_DELETED_MARK));
    EXPECT_EQ(-1, tree.GetImageListNrByIconNr(12345));
    CKelPropertyTreeItem* row = Add("row");
    row->SetIconNr(KX_BMP_DELETED_MARK);
    HICON icon = row->GetIconHandle();
    EXPECT_NE(nullptr, icon);
    DestroyIcon(icon);
    tree.AddIcons(ids, 3);   // none of them is an icon resource of the library
    EXPECT_EQ(0, tree.GetIconImageList()->GetImageCount());
    EXPECT_EQ(-1, tree.GetImageListNrByIconNr(KX_BMP_SWITCH_ON));
}

TEST_F(TreeWindowTest, SpecialButtonResearchEntersOnlyFirstRowsChildren)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* b1 = Add("b1", b);
    b1->ShowSpecialButton(1);
    bool visible = true;
    CRect rc;
    tree.GetSpecialButtonProperties(visible, rc);
    EXPECT_FALSE(visible);   // b's children are not entered
    Add("a1", a)->ShowSpecialButton(1);
    *a->GetChild()->GetSpecialButtonRectPtr() = CRect(0, 0, 20, 18);
    tree.GetSpecialButtonProperties(visible, rc);
    EXPECT_TRUE(visible);
    EXPECT_EQ(CRect(0, 0, 20, 18), rc);
}

TEST_F(TreeWindowTest, EnumItemsStopsAtAZeroAnswer)
{
    Add("a");
    Add("b");
    Add("c");
    static int calls;
    calls = 0;
    auto stopAtSecond = [](CKelPropertyTree*, CKelPropertyTreeItem*, LPARAM) -> int { return ++calls < 2; };
    EXPECT_EQ(0, tree.EnumItems(tree.GetRootItem(), stopAtSecond, 0, 1));
    EXPECT_EQ(2, calls);
    EXPECT_EQ(0, tree.EnumItems(nullptr, stopAtSecond, 0, 1));
    EXPECT_EQ(0, tree.EnumItems(tree.GetRootItem(), nullptr, 0, 1));
}

TEST_F(TreeWindowTest, UpdateResizeRangeAndPositionReturnsToZeroWhenAllFits)
{
    tree.SetPopulated(1);
    for (int i = 0; i < 3; ++i)
        Add("row");
    CKelPropertyTreeList* list = tree.GetCtrlParent();
    list->UpdateResize();
    SCROLLINFO si = {};
    si.cbSize = sizeof(si);
    si.fMask = SIF_ALL;
    ASSERT_TRUE(list->GetScrollInfo(SB_VERT, &si));
    EXPECT_EQ(80, si.nMax);   // the root's 20 and three rows
    tree.SetOriginOffset(40);
    list->UpdateResize();
    EXPECT_EQ(0, tree.GetOrigin().y);
}

TEST_F(TreeWindowTest, RefreshAndMovePassesReachEveryRowOrTheSubtree)
{
    ValueItem* a = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("a")));
    ValueItem* a1 = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("a1"), a));
    ValueItem* b = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("b")));
    tree.RefreshItems(a);
    EXPECT_EQ(std::vector<std::string>{"OnRefresh"}, a->calls);
    EXPECT_EQ(std::vector<std::string>{"OnRefresh"}, a1->calls);
    EXPECT_TRUE(b->calls.empty());
    tree.RefreshItems();
    EXPECT_EQ(2u, a->calls.size());
    EXPECT_EQ(std::vector<std::string>{"OnRefresh"}, b->calls);
    tree.UpdateMoveAllItems();
    EXPECT_EQ("OnMove", a->calls.back());
    EXPECT_EQ("OnMove", a1->calls.back());
    EXPECT_EQ("OnMove", b->calls.back());
    // A resize of the list moves every live in-place control too.
    b->calls.clear();
    tree.MoveWindow(0, 0, 260, 150);
    EXPECT_EQ(std::vector<std::string>{"OnMove"}, b->calls);
}

TEST_F(TreeWindowTest, ItemSelectInMultipleModeGoesThroughMultipleSelect)
{
    tree.SetMultipleSelection(true);
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    LayoutRows(tree);
    EXPECT_EQ(1, a->Select(1));
    EXPECT_TRUE(a->IsSelected());
    EXPECT_EQ(a, tree.GetFocusedItem());
    EXPECT_EQ(1, b->Select(1));   // without Ctrl or Shift the selection moves
    EXPECT_FALSE(a->IsSelected());
    EXPECT_TRUE(b->IsSelected());
    EXPECT_EQ(b, tree.GetFocusedItem());
}

TEST_F(TreeWindowTest, GroupRootIsTheNearestAncestorOrNone)
{
    CKelPropertyTreeItem* g = Add("g", nullptr, PT_RESID_GROUP_ROOT);
    CKelPropertyTreeItem* inner = Add("inner", g, PT_RESID_GROUP_ROOT);
    CKelPropertyTreeItem* row = Add("row", inner, 4);
    CKelPropertyTreeItem* outside = Add("outside", nullptr, 4);
    EXPECT_EQ(inner, tree.GetRootOfItem(row));
    EXPECT_EQ(g, tree.GetRootOfItem(g));
    EXPECT_EQ(nullptr, tree.GetRootOfItem(outside));
    tree.SetActiveGroupRootItem(row);
    EXPECT_EQ(inner, tree.GetActiveGroupRootItem());
    tree.SetActiveGroupRootItem(nullptr);
    EXPECT_EQ(nullptr, tree.GetActiveGroupRootItem());
    EXPECT_EQ(row, tree.GetFirstItemByResID(4u));
}
