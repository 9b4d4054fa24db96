// Keyboard input of the list surface: each key of the table by a real WM_KEYDOWN, with the
// parent's notifications in order.
#include "ptlist.h"

using pttest::CountedItem;
using pttest::ListFixture;

namespace
{
struct KeysTest : ListFixture
{
    CKelPropertyTreeItem* top = nullptr;
    CKelPropertyTreeItem* a = nullptr;
    CKelPropertyTreeItem* a1 = nullptr;
    CKelPropertyTreeItem* b = nullptr;
    void SetUp() override
    {
        ListFixture::SetUp();
        top = Add("Top");
        a = Add("a", top);
        a1 = Add("a1", a);
        b = Add("b", top);
        top->Expand(1);
        Paint();
        Clear();
    }
};

struct HostDeleteTest : KeysTest
{
    KEL_ML_TREE_USED_AT_MODULE_ID Module() const override { return KEL_ML_TREE_MODULE_1; }
};
}

TEST_F(KeysTest, ReturnEscapeAndInsertTellTheParent)
{
    tree.SelectItems(a, 1);
    tree.SetFocusedItem(a);
    Clear();
    Key(VK_RETURN);
    Key(VK_ESCAPE);
    Key(VK_INSERT);
    ExpectCodes({PTN_KEY_RETURN, PTN_KEY_ESCAPE, PTN_KEY_INSERT});
    EXPECT_EQ(nullptr, parent.items[0]);
    EXPECT_EQ(nullptr, parent.items[1]);
    EXPECT_EQ(a, parent.items[2]);
}

TEST_F(KeysTest, HomeEndUpAndDownMoveTheFocusAndSelectTheRow)
{
    Key(VK_HOME);
    EXPECT_EQ(top, tree.GetFocusedItem());
    Key(VK_DOWN);
    EXPECT_EQ(a, tree.GetFocusedItem());
    EXPECT_TRUE(a->IsSelected());
    Key(VK_END);
    EXPECT_EQ(b, tree.GetFocusedItem());
    Key(VK_UP);
    EXPECT_EQ(a, tree.GetFocusedItem());
    ExpectCodes({PTN_SELECTION_CHANGED, PTN_SELECTION_CHANGED, PTN_SELECTION_CHANGED, PTN_SELECTION_CHANGED});
}

TEST_F(KeysTest, RightExpandsACollapsedRowAndLeftCollapsesIt)
{
    tree.SetFocusedItem(a);
    Clear();
    Key(VK_RIGHT);
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_TRUE(tree.IsItemOnVisibleList(a1));   // painted at once
    EXPECT_EQ(a, tree.GetFocusedItem());
    ExpectCodes({PTN_ITEM_EXPANDING});
    // Expanded already: Right moves on.
    Clear();
    Key(VK_RIGHT);
    EXPECT_EQ(a1, tree.GetFocusedItem());
    // A row without children: Left moves back.
    Key(VK_LEFT);
    EXPECT_EQ(a, tree.GetFocusedItem());
    Clear();
    Key(VK_LEFT);
    EXPECT_FALSE(a->IsExpanded());
    EXPECT_EQ(a, tree.GetFocusedItem());
    ExpectCodes({PTN_ITEM_EXPANDING});
}

TEST_F(KeysTest, ARefusedExpansionMovesTheFocusInstead)
{
    a->Expand(1);
    Paint();
    tree.SetFocusedItem(a);
    parent.refuse.insert(PTN_ITEM_EXPANDING);
    Key(VK_LEFT);
    EXPECT_TRUE(a->IsExpanded());
    EXPECT_EQ(top, tree.GetFocusedItem());
    tree.SetFocusedItem(a);
    a->Expand(0);
    Paint();
    Key(VK_RIGHT);
    EXPECT_FALSE(a->IsExpanded());
    EXPECT_EQ(b, tree.GetFocusedItem());
}

TEST_F(KeysTest, AddAndSubtractExpandAndCollapseTheFocus)
{
    tree.SetFocusedItem(a);
    Key(VK_ADD);
    EXPECT_TRUE(a->IsExpanded());
    Key(VK_SUBTRACT);
    EXPECT_FALSE(a->IsExpanded());
    tree.SetFocusedItem(b);   // no children: nothing
    Key(VK_ADD);
    EXPECT_FALSE(b->IsExpanded());
}

TEST_F(KeysTest, DeleteOnARowSwitchedOffSendsNothingUnlessAllDeleteIsAllowed)
{
    tree.SetFocusedItem(b);
    Clear();
    Key(VK_DELETE);
    ExpectCodes({});
    tree.AllowAllItemDelete(true);
    Key(VK_DELETE);
    ExpectCodes({PTN_KEY_DELETE});
    EXPECT_EQ(b, parent.items.back());
}

TEST_F(HostDeleteTest, DeleteNeedsTheHostsFlagASwitchedOnRowAndNoForbiddingMark)
{
    tree.SetTreeItemsSwitchable(1, 1);
    b->SetItemSwitching(1);
    b->SetItemSwitchStatus(1, 1);
    tree.SetFocusedItem(b);
    Clear();
    parent.omOptions = 0;
    Key(VK_DELETE);
    ExpectCodes({});
    parent.omOptions = 2;
    Key(VK_DELETE);
    ExpectCodes({PTN_KEY_DELETE});
    Clear();
    b->ForbidDelete(1);
    Key(VK_DELETE);
    b->ForbidDelete(0);
    b->SetResID(5);
    tree.SetFirstLockedItemResID(5);
    Key(VK_DELETE);
    b->SetItemSwitchStatus(0, 1);
    tree.SetFirstLockedItemResID(-1);
    Key(VK_DELETE);
    ExpectCodes({});
    EXPECT_GT(parent.exchanges, 0);
}

TEST_F(KeysTest, KeysAreIgnoredWhileInputOrTheTreeIsDisabled)
{
    tree.SetFocusedItem(a);
    Clear();
    tree.DisableInput(1);
    Key(VK_RETURN);
    Key(VK_DOWN);
    EXPECT_EQ(a, tree.GetFocusedItem());
    tree.DisableInput(0);
    tree.EnableWindow(FALSE);
    Key(VK_RETURN);
    Key(VK_DOWN);
    tree.EnableWindow(TRUE);
    ExpectCodes({});
    EXPECT_EQ(a, tree.GetFocusedItem());
}

TEST_F(KeysTest, TheListGainingTheFocusTellsTheParent)
{
    ::SetFocus(parent.m_hWnd);
    kel_test::PumpPending();
    Clear();
    ASSERT_TRUE(FocusList()) << "the desktop would not give the list the focus";
    ASSERT_FALSE(parent.codes.empty());
    EXPECT_EQ(PTN_FOCUS_GAINED, parent.codes.back());
    EXPECT_EQ(nullptr, parent.items.back());
    EXPECT_TRUE(list->IsFocusOnTreeList());
    ::SetFocus(parent.m_hWnd);
    kel_test::PumpPending();
    EXPECT_FALSE(list->IsFocusOnTreeList());
}
