// The row model: links, flags, switch propagation, marks and the value protocol, on trees
// without windows.
#include <gtest/gtest.h>

#include "pttest.h"

using pttest::CountedItem;
using pttest::ValueItem;

namespace
{
struct ItemTest : ::testing::Test
{
    CKelPropertyTree tree;
    void SetUp() override { CountedItem::Reset(); }
    CountedItem* Add(const char* label, CKelPropertyTreeItem* parent = nullptr, int resID = 0)
    {
        return static_cast<CountedItem*>(tree.InsertItem(new CountedItem(label, resID), parent));
    }
};

class OwnedData : public CKelPropertyTreeItemDataExType
{
public:
    explicit OwnedData(int* counter) : m_counter(counter) {}
    ~OwnedData() override { ++*m_counter; }
    int* m_counter;
};
}

TEST(ItemIdentifier, DefaultIsBaseAndCopiesByAssignment)
{
    CKelPropertyTreeItem_Identifier a, b;
    EXPECT_EQ(ITEM_TYPE_BASE, a.GetIdentifier());
    b.SetIdentifier(ITEM_TYPE_EDIT);
    a = b;
    EXPECT_EQ(ITEM_TYPE_EDIT, a.GetIdentifier());
    a.GetIdentifier() = ITEM_TYPE_HATCH;   // the reference reaches the field
    EXPECT_EQ(ITEM_TYPE_HATCH, a.GetIdentifier());
}

TEST(ItemBase, NewItemHasNoFlagsAndBaseOverridablesAnswerNothing)
{
    CKelPropertyTreeItem item;
    EXPECT_EQ(0u, item.GetStatusFlags());
    EXPECT_EQ(20, item.GetHeight());
    EXPECT_EQ(0, item.GetItemValue());
    EXPECT_EQ(nullptr, item.GetTypeIndependentItemValue());
    EXPECT_EQ(-1, item.GetSpecialButtonIcon());
    EXPECT_EQ(-1, item.GetGroupIdx());
    EXPECT_EQ(-1, item.GetJoinIdx());
    EXPECT_TRUE(item.IsVisible());
    EXPECT_TRUE(item.IsDragAndDropAutoExpandTurnedOn());
    EXPECT_EQ(nullptr, item.GetSpecialButtonRectPtr());
    EXPECT_EQ(-1, item.GetLevel());   // no ancestors at all
}

TEST(ItemBase, SpecialButtonConstructorAllocatesEmptyRectAndCopiesText)
{
    char text[] = "...";
    CKelPropertyTreeItem item(1, 4711, text);
    text[0] = 'x';
    ASSERT_NE(nullptr, item.GetSpecialButtonRectPtr());
    EXPECT_TRUE(IsRectEmpty(item.GetSpecialButtonRectPtr()));
    EXPECT_STREQ("...", item.GetSpecialButtonText());
    EXPECT_EQ(4711u, item.GetSpecialButtonMessageID());
    EXPECT_EQ(1, item.IsSpecialButtonVisible());
    EXPECT_TRUE(item.GetSpecialButtonDimension().IsRectEmpty());
}

TEST_F(ItemTest, ShowSpecialButtonGivesANewEmptyRectAndAsksForResearch)
{
    CKelPropertyTreeItem* row = Add("row");
    bool visible = true;
    CRect rc;
    tree.GetSpecialButtonProperties(visible, rc);
    EXPECT_FALSE(visible);
    EXPECT_FALSE(tree.IsResearchSpecialButtonPending());
    row->ShowSpecialButton(1);
    EXPECT_TRUE(tree.IsResearchSpecialButtonPending());
    ASSERT_NE(nullptr, row->GetSpecialButtonRectPtr());
    tree.GetSpecialButtonProperties(visible, rc);
    EXPECT_TRUE(visible);
    EXPECT_EQ(CRect(0, 0, 16, 16), rc);   // an empty button counts as 16 by 16
}

TEST_F(ItemTest, CopyIsAMemberByMemberSnapshot)
{
    CKelPropertyTreeItem source(1, 7, "go");
    source.SetLabelText("label");
    source.SetResID(42);
    source.Expand(1);
    CKelPropertyTreeItem copy(source);
    EXPECT_EQ(CString("label"), copy.GetLabelText());
    EXPECT_EQ(42, copy.GetResID());
    EXPECT_TRUE(copy.IsExpanded());
    // The owned blocks are shared, as stated: the copy points at the source's text.
    EXPECT_EQ(source.GetSpecialButtonText(), copy.GetSpecialButtonText());
    EXPECT_EQ(source.GetSpecialButtonRectPtr(), copy.GetSpecialButtonRectPtr());
    CKelPropertyTreeItem assigned;
    assigned = source;
    EXPECT_EQ(source.GetSpecialButtonRectPtr(), assigned.GetSpecialButtonRectPtr());
    // Neither snapshot may be destroyed beside the live source: detach them by hand.
    new (&copy) CKelPropertyTreeItem();
    new (&assigned) CKelPropertyTreeItem();
}

TEST(ItemBase, OwnedItemDataExIsDeletedWithTheRowOnly)
{
    int deleted = 0;
    OwnedData notOwned(&deleted);
    {
        CKelPropertyTreeItem a, b;
        a.SetItemDataEx(new OwnedData(&deleted), 1);
        b.SetItemDataEx(&notOwned, 0);
    }
    EXPECT_EQ(1, deleted);
}

TEST_F(ItemTest, LevelsPositionsAndCounts)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* b = Add("b", top);
    CKelPropertyTreeItem* aa = Add("aa", a);
    EXPECT_EQ(-1, tree.GetRootItem()->GetLevel());
    EXPECT_EQ(0, top->GetLevel());
    EXPECT_EQ(1, a->GetLevel());
    EXPECT_EQ(2, aa->GetLevel());
    EXPECT_TRUE(top->IsRootLevel());
    EXPECT_FALSE(a->IsRootLevel());
    EXPECT_EQ(0, a->GetPositionIdx());
    EXPECT_EQ(1, b->GetPositionIdx());
    EXPECT_EQ(2, top->GetChildCount());
    EXPECT_EQ(-1, tree.GetRootItem()->GetPositionIdx());
    // Collapsed rows count their own height only.
    EXPECT_EQ(20, top->GetTotalHeight());
    top->Expand(1);
    EXPECT_EQ(60, top->GetTotalHeight());
    a->Expand(1);
    EXPECT_EQ(80, top->GetTotalHeight());
}

TEST_F(ItemTest, GetSiblingByResIDSearchesBehindOnly)
{
    CKelPropertyTreeItem* a = Add("a", nullptr, 5);
    CKelPropertyTreeItem* b = Add("b", nullptr, 6);
    CKelPropertyTreeItem* c = Add("c", nullptr, 5);
    EXPECT_EQ(c, a->GetSibling(5u));
    EXPECT_EQ(c, b->GetSibling(5u));
    EXPECT_EQ(nullptr, c->GetSibling(5u));
}

TEST_F(ItemTest, GetPrevSiblingOfFirstChildIsNull)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    EXPECT_EQ(nullptr, a->GetPrevSibling(-1));
    EXPECT_EQ(a, b->GetPrevSibling(-1));
}

TEST_F(ItemTest, GetPrevSiblingWithFilterStopsAtFirstDifferentResID)
{
    CKelPropertyTreeItem* a = Add("a", nullptr, 7);
    CKelPropertyTreeItem* b = Add("b", nullptr, 7);
    CKelPropertyTreeItem* c = Add("c", nullptr, 8);
    CKelPropertyTreeItem* d = Add("d", nullptr, 7);
    EXPECT_EQ(b, c->GetPrevSibling(7));
    EXPECT_EQ(b, d->GetPrevSibling(7));   // the walk stopped at c, b was the last passed
    EXPECT_EQ(nullptr, d->GetPrevSibling(9));
    EXPECT_EQ(nullptr, a->GetPrevSibling(7));
}

TEST_F(ItemTest, IsItemBehindOfAnswersOneWithoutParent)
{
    CKelPropertyTreeItem lone;
    CKelPropertyTreeItem other;
    EXPECT_EQ(1, lone.IsItemBehindOf(&other));
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    EXPECT_EQ(0, b->IsItemBehindOf(a));
    EXPECT_EQ(1, a->IsItemBehindOf(b));
}

TEST_F(ItemTest, ExpandDeepFalseCollapsesOnlyTheItemAndExpandsFirstChildren)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* b = Add("b", top);
    CKelPropertyTreeItem* aa = Add("aa", a);
    Add("aaa", aa);
    top->Expand(1);
    top->ExpandDeep(false);
    EXPECT_FALSE(top->IsExpanded());
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_TRUE(aa->IsExpanded());
    EXPECT_TRUE(aa->GetChild()->IsExpanded());
    EXPECT_FALSE(b->IsExpanded());   // not on the first-child chain
}

TEST_F(ItemTest, ExpandRecursiveLeavesTheTopLevelAncestorAlone)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* aa = Add("aa", a);
    aa->ExpandRecursive(1);
    EXPECT_TRUE(aa->IsExpanded());
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_FALSE(top->IsExpanded());
    // On a top-level row it changes the root and the row.
    top->ExpandRecursive(0);
    EXPECT_FALSE(tree.GetRootItem()->IsExpanded());
    EXPECT_FALSE(top->IsExpanded());
    top->ExpandRecursive(1);
    EXPECT_TRUE(tree.GetRootItem()->IsExpanded());
    EXPECT_TRUE(top->IsExpanded());
}

TEST_F(ItemTest, ColumnSeparatorNeverOnTopLevelRows)
{
    const int ids[] = {0, PT_RESID_HEADER, PT_RESID_GROUP_ROOT, PT_RESID_LAYER, PT_RESID_MACRO, PT_RESID_PLAIN_A,
                       PT_RESID_PLAIN_B, 17};
    for (int id : ids)
        EXPECT_FALSE(Add("top", nullptr, id)->IsItemReadyForColumnSeparator()) << id;
}

TEST_F(ItemTest, ColumnSeparatorKeptByHeaderAndMacroRowsOnly)
{
    CKelPropertyTreeItem* top = Add("top");
    EXPECT_TRUE(Add("h", top, PT_RESID_HEADER)->IsItemReadyForColumnSeparator());
    EXPECT_TRUE(Add("m", top, PT_RESID_MACRO)->IsItemReadyForColumnSeparator());
    EXPECT_TRUE(Add("v", top, 17)->IsItemReadyForColumnSeparator());
    EXPECT_FALSE(Add("g", top, PT_RESID_GROUP_ROOT)->IsItemReadyForColumnSeparator());
    EXPECT_FALSE(Add("l", top, PT_RESID_LAYER)->IsItemReadyForColumnSeparator());
    EXPECT_FALSE(Add("a", top, PT_RESID_PLAIN_A)->IsItemReadyForColumnSeparator());
    EXPECT_FALSE(Add("b", top, PT_RESID_PLAIN_B)->IsItemReadyForColumnSeparator());
    CKelPropertyTreeItem* v = Add("v2", top, 18);
    tree.DisableColumnSeparatorLine(true);
    EXPECT_FALSE(v->IsItemReadyForColumnSeparator());
}

TEST_F(ItemTest, DeletionMarkClearsLockKeepPlainLook)
{
    CKelPropertyTreeItem* row = Add("row", nullptr, 5);
    row->Lock(1, 1);
    EXPECT_EQ(1, row->IsLockKeepingPlainLook());
    row->DeleteItem(1, 0);
    EXPECT_EQ(1, row->IsDeleted());
    EXPECT_EQ(1, row->IsLocked());
    EXPECT_EQ(0, row->IsLockKeepingPlainLook());
    row->DeleteItem(0, 0);
    EXPECT_EQ(0, row->IsDeleted());
    EXPECT_EQ(0, row->IsLocked());
}

TEST_F(ItemTest, DeletionMarkOnLayerCoversChildrenExceptFirstLockedResID)
{
    tree.SetFirstLockedItemResID(3);
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* layer = Add("layer", top, PT_RESID_LAYER);
    CKelPropertyTreeItem* colour = Add("colour", layer, 1);
    CKelPropertyTreeItem* name = Add("name", layer, 3);
    layer->DeleteItem(1, 0);
    EXPECT_EQ(1, layer->IsDeleted());
    EXPECT_EQ(1, colour->IsDeleted());
    EXPECT_EQ(0, name->IsDeleted());
    // The children are marked with the whole layer: the layer row takes the lock.
    EXPECT_EQ(1, layer->IsLocked());
    EXPECT_EQ(0, colour->IsLocked());
}

TEST_F(ItemTest, WholeLayerMarkWithoutLayerLevelMarksButDoesNotLock)
{
    CKelPropertyTreeItem* row = Add("row", nullptr, 9);
    row->DeleteItem(1, 1);
    EXPECT_EQ(1, row->IsDeleted());
    EXPECT_EQ(0, row->IsLocked());
}

TEST_F(ItemTest, SecondReadOnlyMarkAndLayerChildren)
{
    tree.SetFirstLockedItemResID(3);
    CKelPropertyTreeItem* layer = Add("layer", nullptr, PT_RESID_LAYER);
    CKelPropertyTreeItem* colour = Add("colour", layer, 1);
    CKelPropertyTreeItem* name = Add("name", layer, 3);
    layer->ReadOnly(1, 1);
    EXPECT_TRUE(layer->IsReadOnly());
    EXPECT_TRUE(layer->IsReadOnly2());
    EXPECT_TRUE(colour->IsReadOnly());
    EXPECT_FALSE(name->IsReadOnly());
    layer->ReadOnly(1, 5);   // other values leave the second mark
    EXPECT_TRUE(layer->IsReadOnly2());
    layer->ReadOnly(0, 0);
    EXPECT_FALSE(layer->IsReadOnly2());
    EXPECT_FALSE(colour->IsReadOnly());
}

TEST_F(ItemTest, TextColourGreyOnlyForReadOnlyWithDrawingFlagOne)
{
    CKelPropertyTreeItem* row = Add("row");
    row->ReadOnly(1);
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), row->GetTextColor());
    tree.SetDrawingFlag(1);
    EXPECT_EQ(GetSysColor(COLOR_GRAYTEXT), row->GetTextColor());
    row->ReadOnly(0);
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), row->GetTextColor());
}

TEST_F(ItemTest, HitTestsAnswerForWrittenRectanglesAndZeroWithoutThem)
{
    CKelPropertyTreeItem* row = Add("row");
    POINT inside = {5, 5};
    EXPECT_EQ(0, row->HitSwitchBox(inside));
    EXPECT_EQ(0, row->HitCheckBox(inside));
    EXPECT_EQ(0, row->HitSpecialButton(inside));
    EXPECT_EQ(0, row->HitPointBox(inside));
    row->SetSwitchBoxRect(CRect(0, 0, 10, 10));
    row->SetRectExpandBox(CRect(0, 0, 8, 8));
    EXPECT_EQ(1, row->HitSwitchBox(inside));
    EXPECT_EQ(1, row->HitExpand(inside));
    POINT outside = {12, 5};
    EXPECT_EQ(0, row->HitSwitchBox(outside));
    row->ShowSpecialButton(1);
    *row->GetSpecialButtonRectPtr() = CRect(10, 0, 26, 16);
    EXPECT_EQ(1, row->HitSpecialButton(outside));
    row->SetAttributeRect(CRect(0, 0, 10, 10));
    row->OffsetItemRect(3, 4);
    EXPECT_EQ(CRect(3, 4, 13, 14), CRect(row->GetAttributeRect()));
}

// ---- switch boxes ----

namespace
{
struct SwitchTest : ItemTest
{
    void SetUp() override
    {
        ItemTest::SetUp();
        tree.SetTreeItemsSwitchable(1, 1);
    }
    CKelPropertyTreeItem* AddSwitching(const char* label, CKelPropertyTreeItem* parent = nullptr, int on = 1)
    {
        CKelPropertyTreeItem* row = Add(label, parent);
        row->SetItemSwitching(1, 0);
        row->SetItemSwitchStatus(on, 1);
        return row;
    }
};
}

TEST_F(ItemTest, SetItemSwitchingNeedsTheTreeList)
{
    CKelPropertyTreeItem* row = Add("row");
    row->SetItemSwitching(1, 0);
    EXPECT_FALSE(row->IsItemSwitching());
    tree.SetTreeItemsSwitchable(1, 1);
    row->SetItemSwitching(1, 1);
    EXPECT_TRUE(row->IsItemSwitching());
    EXPECT_EQ(tree.GetInternalImageList(), row->GetSwitchingImageList());
    EXPECT_FALSE(row->IsItemSwitchBoxEnabled());   // switch-locked
    row->SetItemSwitching(0, 0);
    EXPECT_FALSE(row->IsItemSwitching());
}

TEST_F(SwitchTest, StatusChangesOnlyOnUsableSwitches)
{
    CKelPropertyTreeItem* row = AddSwitching("row", nullptr, 0);
    row->SetItemSwitchStatus(1, 1, KPTISM_CLICK);
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    EXPECT_EQ(KPTISM_CLICK, row->GetLastSwitchMethod());
    row->SetItemSwitching(1, 1);   // locked: only the program may switch
    row->SetItemSwitchStatus(0, 1, KPTISM_CLICK);
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    row->SetItemSwitchStatus(0, 1, KPTISM_PROGRAM);
    EXPECT_EQ(0u, row->GetItemSwitchStatus());
    row->SetItemSwitching(1, 0);
    row->SetSwitchableCheckHidden(1);
    row->SetItemSwitchStatus(1, 1);
    EXPECT_EQ(0u, row->GetItemSwitchStatus());
    CKelPropertyTreeItem plain;   // not switching
    plain.SetItemSwitchStatus(1, 1);
    EXPECT_EQ(0u, plain.GetItemSwitchStatus());
}

TEST_F(SwitchTest, ParentFollowsChildrenTwoStateOneOnOneOffShowsOn)
{
    CKelPropertyTreeItem* parent = AddSwitching("parent", nullptr, 0);
    parent->SetAutoCheckSubItems(true);
    AddSwitching("on", parent, 1);
    AddSwitching("off", parent, 0);
    parent->CheckupAutoCheckSubItems();
    EXPECT_EQ(1u, parent->GetItemSwitchStatus());
}

TEST_F(SwitchTest, ParentFollowsChildrenThreeStateShowsMixedAndCountsAsOn)
{
    tree.SetThreeStateCheckBox(true);
    CKelPropertyTreeItem* parent = AddSwitching("parent", nullptr, 0);
    parent->SetAutoCheckSubItems(true);
    AddSwitching("on", parent, 1);
    AddSwitching("off", parent, 0);
    EXPECT_EQ(2u, parent->GetItemSwitchStatus());   // recomputed as the children changed
    EXPECT_TRUE(parent->IsItemSwitchStatusTurnedOn());
}

TEST_F(SwitchTest, ParentWithoutSwitchingChildrenIsOff)
{
    CKelPropertyTreeItem* parent = AddSwitching("parent", nullptr, 1);
    parent->SetAutoCheckSubItems(true);
    Add("plain", parent);   // not switching: ignored
    parent->CheckupAutoCheckSubItems();
    EXPECT_EQ(0u, parent->GetItemSwitchStatus());
}

TEST_F(SwitchTest, HiddenChildrenAreIgnoredAndRuleClimbsWhileParentsFollow)
{
    tree.SetThreeStateCheckBox(true);
    CKelPropertyTreeItem* top = AddSwitching("top", nullptr, 0);
    top->SetAutoCheckSubItems(true);
    CKelPropertyTreeItem* mid = AddSwitching("mid", top, 0);
    mid->SetAutoCheckSubItems(true);
    CKelPropertyTreeItem* hidden = AddSwitching("hidden", mid, 0);
    hidden->SetSwitchableCheckHidden(1);
    AddSwitching("leaf", mid, 1);
    EXPECT_EQ(1u, mid->GetItemSwitchStatus());
    EXPECT_EQ(1u, top->GetItemSwitchStatus());
}

TEST_F(SwitchTest, ParentSwitchDrivesItsChildren)
{
    CKelPropertyTreeItem* parent = AddSwitching("parent", nullptr, 1);
    parent->SetAutoCheckSubItems(true);
    CKelPropertyTreeItem* a = AddSwitching("a", parent, 1);
    CKelPropertyTreeItem* b = AddSwitching("b", parent, 1);
    a->Select_SetStatus(1);
    parent->SetItemSwitchStatus(0, 1, KPTISM_CLICK);
    EXPECT_EQ(0u, a->GetItemSwitchStatus());
    EXPECT_EQ(0u, b->GetItemSwitchStatus());
    EXPECT_EQ(KPTISM_ALL, a->GetLastSwitchMethod());
    EXPECT_FALSE(a->IsSelected());   // switched off rows lose their selection
    EXPECT_EQ(0u, parent->GetItemSwitchStatus());
}

TEST_F(SwitchTest, AutoVisibleFollowsTheSwitchAndSetVisibleSwitches)
{
    CKelPropertyTreeItem* row = AddSwitching("row", nullptr, 1);
    row->SetAutoVisible(true);
    row->SetItemSwitchStatus(0, 1);
    EXPECT_FALSE(row->IsVisible());
    row->SetVisible(true);
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    EXPECT_EQ(KPTISM_CLICK, row->GetLastSwitchMethod());
    row->SetVisible_Internal(false);
    EXPECT_EQ(1u, row->GetItemSwitchStatus());
    EXPECT_FALSE(row->IsVisible());
}

TEST_F(SwitchTest, SelectRefusesARowDisabledByItsSwitch)
{
    tree.SetMultipleSelection(true);
    CKelPropertyTreeItem* row = AddSwitching("row", nullptr, 0);
    EXPECT_EQ(0, row->Select(1));
    EXPECT_FALSE(row->IsSelected());
    EXPECT_EQ(1, row->Select(0));   // deselecting is never refused
    row->OverwriteDisableRowOnGlobalUncheckedSwitchingStatus(true);
    EXPECT_EQ(1, row->Select(1));
    EXPECT_TRUE(row->IsSelected());
    CKelPropertyTreeItem* other = AddSwitching("other", nullptr, 0);
    tree.SetTreeItemsSwitchable(1, 0);   // rows are no longer disabled by switches
    EXPECT_EQ(1, other->Select(1));
}

TEST_F(ItemTest, SelectInSingleModeChangesNoFlag)
{
    CKelPropertyTreeItem* row = Add("row");
    EXPECT_EQ(1, row->Select(1));
    EXPECT_FALSE(row->IsSelected());
}

// ---- the value protocol ----

TEST_F(ItemTest, ActivateMarksTheRowAndTheTree)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    row->Activate();
    EXPECT_TRUE(row->IsActivated());
    EXPECT_EQ(row, tree.GetItemLastActivated());
    EXPECT_EQ(0, row->IsCommitted());
    ASSERT_EQ(1u, row->calls.size());
    EXPECT_EQ("OnActivate", row->calls[0]);
}

TEST_F(ItemTest, BaseRowNeverStaysActive)
{
    CKelPropertyTreeItem* row = Add("base");
    row->Activate();
    EXPECT_FALSE(row->IsActivated());
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
}

TEST_F(ItemTest, ActivateWithPointNeedsCheckBoxAndHit)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    row->Activate(CPoint(3, 3));
    EXPECT_FALSE(row->IsActivated());   // no check box flag
    row->SetCheckBox(1);
    row->Activate(CPoint(3, 3));
    EXPECT_FALSE(row->IsActivated());   // no check box rectangle: no hit
}

TEST_F(ItemTest, SecondCommitIsANoOpAndVariableIsWrittenOnlyAtCommit)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    LONG_PTR variable = 0;
    row->SetItemDataExchange(&variable);
    row->Activate();
    row->Type(12);
    EXPECT_EQ(0, variable);
    row->CommitChanges(1);
    EXPECT_EQ(12, variable);
    EXPECT_EQ(1, row->IsCommitted());
    EXPECT_FALSE(row->IsActivated());
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
    row->Type(99);
    row->CommitChanges(1);   // the focus loss after Enter
    EXPECT_EQ(12, variable);
    int commits = 0, refreshes = 0;
    for (const std::string& c : row->calls)
    {
        commits += c == "OnCommit";
        refreshes += c == "OnRefresh";
    }
    EXPECT_EQ(1, commits);
    EXPECT_EQ(1, refreshes);
}

TEST_F(ItemTest, CommitRefreshesTheWholeSubtree)
{
    ValueItem* parent = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("p")));
    ValueItem* child = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("c"), parent));
    ValueItem* grandchild = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("g"), child));
    ValueItem* other = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("o")));
    parent->Activate();
    parent->CommitChanges(0);
    EXPECT_EQ("OnRefresh", child->calls.back());
    EXPECT_EQ("OnRefresh", grandchild->calls.back());
    EXPECT_TRUE(other->calls.empty());
}

TEST_F(ItemTest, CancelDoesNotCommitAndUndoRestores)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    LONG_PTR variable = 0;
    row->SetItemDataExchange(&variable);
    row->Activate();
    row->Type(5);
    row->CancelChanges();
    EXPECT_FALSE(row->IsActivated());
    EXPECT_EQ(0, row->IsCommitted());
    EXPECT_EQ(0, variable);
    EXPECT_EQ("OnCancel", row->calls.back());
    row->Activate();
    row->Type(7);
    row->CommitChanges(1);
    EXPECT_EQ(7, row->m_value);
    row->Undo();
    EXPECT_EQ(0, row->m_value);
    EXPECT_EQ("OnUndo", row->calls.back());
}

// ---- snapshot lists ----

TEST_F(ItemTest, SnapshotListHasChildrenBeforeTheirRowAndFilters)
{
    CKelPropertyTreeItem* a = Add("a", nullptr, 1);
    CKelPropertyTreeItem* a1 = Add("a1", a, 2);
    CKelPropertyTreeItem* b = Add("b", nullptr, 2);
    CKelPropertyTreeItemAll all(tree.GetRootItem()->GetChild());
    ASSERT_EQ(3, all.Size());
    EXPECT_EQ(a1, all.GetFirst());
    EXPECT_EQ(a, all.GetNext());
    EXPECT_EQ(b, all.GetNext());
    EXPECT_EQ(nullptr, all.GetNext());
    EXPECT_EQ(b, all.GetLast());
    EXPECT_EQ(b, all.GetActual());
    CKelPropertyTreeItemAll twos(tree.GetRootItem()->GetChild(), 2);
    EXPECT_EQ(2, twos.Size());
    EXPECT_EQ(-1, twos.FindTreeItem(a));
    a->Select_SetStatus(1);
    CKelPropertyTreeItemAll selected(tree.GetRootItem()->GetChild(), PT_RESID_ANY, KPTIA_SELECTED);
    ASSERT_EQ(1, selected.Size());
    EXPECT_EQ(a, selected.GetFirst());
}

TEST_F(ItemTest, SnapshotListEditing)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItemAll list;
    EXPECT_EQ(nullptr, list.GetFirst());
    EXPECT_EQ(nullptr, list.GetLast());
    list.Add(a);
    list.Add(b);
    EXPECT_EQ(1, list.FindTreeItem(b));
    EXPECT_EQ(b, list.FindTreeItemByLabelText("b"));
    EXPECT_EQ(nullptr, list.FindTreeItemByLabelText("B"));   // case matters
    EXPECT_EQ(nullptr, list.FindTreeItemByLabelText(""));
    CKelPropertyTreeItemAll copy(list);
    copy += list;
    EXPECT_EQ(4, copy.Size());
    list.Remove(a);
    EXPECT_EQ(1, list.Size());
    EXPECT_EQ(b, list.GetFirst());
    list.Clear();
    EXPECT_EQ(0, list.Size());
}
