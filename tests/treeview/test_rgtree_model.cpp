// The tree engine's model: insertion, deletion, sorting, expansion, selection and the
// visible-order arithmetic, each checked on a real engine window.
#include "treefixture.h"

#include <string.h>

#include <string>
#include <vector>

using kel_tree_test::TreeTest;

namespace
{
class RGTreeModelF : public TreeTest
{
protected:
    std::vector<HTREEITEM> Flat(HTREEITEM under, int count, const char* prefix = "A")
    {
        std::vector<HTREEITEM> items;
        char text[32];
        for (int i = 0; i < count; ++i)
        {
            wsprintfA(text, "%s%05d", prefix, i);
            items.push_back(Insert(under, TVI_LAST, text));
        }
        return items;
    }
    void Expand(HTREEITEM item, UINT action = TVE_EXPAND)
    {
        Send(TVM_EXPAND, action, reinterpret_cast<LPARAM>(item));
    }
    void Select(HTREEITEM item, UINT code = TVGN_CARET)
    {
        Send(TVM_SELECTITEM, code, reinterpret_cast<LPARAM>(item));
    }
    void Delete(HTREEITEM item) { Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(item)); }
    // TVM_GETITEMRECT takes the item in the first word of the rectangle.
    static RECT RectRequest(HTREEITEM item)
    {
        RECT rc = {};
        memcpy(&rc, &item, sizeof(item));
        return rc;
    }
    std::string Text(HTREEITEM item)
    {
        char buffer[64] = {};
        TVITEMA tvi = {};
        tvi.mask = TVIF_TEXT;
        tvi.hItem = item;
        tvi.pszText = buffer;
        tvi.cchTextMax = sizeof(buffer);
        Send(TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&tvi));
        return buffer;
    }
};
} // namespace

TEST_F(RGTreeModelF, CreationStartsWithDefaultIndentAndRedrawOn)
{
    MakeTree();
    EXPECT_EQ(W()->hwnd, tree);
    EXPECT_EQ(W()->indent, 19u);
    EXPECT_EQ(W()->buttonSize, 9u);
    EXPECT_EQ(W()->buttonOffset, 5u);
    EXPECT_EQ(W()->glyphArm, 2u);
    EXPECT_EQ(W()->redrawEnabled, 1);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 0);
    EXPECT_EQ(Send(TVM_GETINDENT, 0, 0), 19);
    EXPECT_NE(W()->editWindow, nullptr);
    EXPECT_EQ(GetWindowLongPtrA(tree, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(&RGTreeWndProc));
}

TEST_F(RGTreeModelF, InsertIntoEmptyTreeMakesItFirstVisible)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(Next(TVGN_FIRSTVISIBLE, nullptr), a);
    EXPECT_EQ(W()->firstVisibleIndex, 0);
    EXPECT_EQ(W()->visibleCount, 1);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 1);
    EXPECT_EQ(Text(a), "a");
}

TEST_F(RGTreeModelF, InsertUnderCollapsedParentChangesOnlyTotalCount)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    Flat(TVI_ROOT, 30);
    Select(Next(TVGN_NEXT, Next(TVGN_NEXT, p)), TVGN_FIRSTVISIBLE);
    const int visibleBefore = W()->visibleCount;
    const int indexBefore = W()->firstVisibleIndex;
    RGTreeItem* firstBefore = W()->firstVisible;
    ASSERT_NE(Insert(p, TVI_LAST, "child"), nullptr);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 32);
    EXPECT_EQ(W()->visibleCount, visibleBefore);
    EXPECT_EQ(W()->firstVisibleIndex, indexBefore);
    EXPECT_EQ(W()->firstVisible, firstBefore);
}

TEST_F(RGTreeModelF, InsertAboveTopRowRaisesIndexAndKeepsTopItem)
{
    MakeTree();
    std::vector<HTREEITEM> items = Flat(TVI_ROOT, 50);
    Select(items[20], TVGN_FIRSTVISIBLE);
    ASSERT_EQ(W()->firstVisibleIndex, 20);
    Insert(TVI_ROOT, TVI_FIRST, "new first");
    EXPECT_EQ(W()->firstVisible, I(items[20]));
    EXPECT_EQ(W()->firstVisibleIndex, 21);
    Insert(TVI_ROOT, items[5], "after five");
    EXPECT_EQ(W()->firstVisibleIndex, 22);
    // Below the top row nothing moves.
    Insert(TVI_ROOT, items[30], "after thirty");
    EXPECT_EQ(W()->firstVisibleIndex, 22);
    EXPECT_EQ(W()->visibleCount, 53);
}

TEST_F(RGTreeModelF, SortAsInsertPlaceGivesZeroAndNoItem)
{
    MakeTree();
    Insert(TVI_ROOT, TVI_LAST, "a");
    state.clear();
    EXPECT_EQ(Insert(TVI_ROOT, TVI_SORT, "b"), nullptr);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 1);
    EXPECT_EQ(W()->visibleCount, 1);
    EXPECT_TRUE(state.deleted.empty());
}

TEST_F(RGTreeModelF, InsertAfterSiblingOfAnotherParentFails)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    HTREEITEM b = Insert(TVI_ROOT, TVI_LAST, "b");
    HTREEITEM a1 = Insert(a, TVI_LAST, "a1");
    state.clear();
    EXPECT_EQ(Insert(b, a1, "x"), nullptr);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 3);
    EXPECT_TRUE(state.deleted.empty());
    // TVI_FIRST, a sibling and the last child land where asked.
    HTREEITEM first = Insert(TVI_ROOT, TVI_FIRST, "first");
    HTREEITEM mid = Insert(nullptr, a, "mid");
    HTREEITEM last = Insert(TVI_ROOT, b, "last");
    EXPECT_EQ(Next(TVGN_ROOT, nullptr), first);
    EXPECT_EQ(Next(TVGN_NEXT, first), a);
    EXPECT_EQ(Next(TVGN_NEXT, a), mid);
    EXPECT_EQ(Next(TVGN_NEXT, mid), b);
    EXPECT_EQ(Next(TVGN_NEXT, b), last);
    EXPECT_EQ(Next(TVGN_NEXT, last), nullptr);
    EXPECT_EQ(W()->store.root.lastChild, I(last));
}

TEST_F(RGTreeModelF, SetItemReturnsZeroAlsoOnSuccess)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "old");
    TVITEMA tvi = {};
    tvi.mask = TVIF_TEXT | TVIF_PARAM;
    tvi.hItem = a;
    tvi.pszText = const_cast<char*>("new label");
    tvi.lParam = 99;
    EXPECT_EQ(Send(TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&tvi)), 0);
    EXPECT_EQ(Text(a), "new label");
    EXPECT_EQ(I(a)->data.lParam, 99);
    EXPECT_EQ(I(a)->data.textLength, 9u);
}

TEST_F(RGTreeModelF, SetItemExpandedSendsNoItemExpanding)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    Insert(p, TVI_LAST, "c1");
    Insert(p, TVI_LAST, "c2");
    state.clear();
    TVITEMA tvi = {};
    tvi.mask = TVIF_STATE;
    tvi.hItem = p;
    tvi.state = TVIS_EXPANDED | TVIS_BOLD;
    tvi.stateMask = TVIS_EXPANDED | TVIS_BOLD;
    EXPECT_EQ(Send(TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&tvi)), 0);
    EXPECT_EQ(state.count(TVN_ITEMEXPANDINGA), 0u);
    EXPECT_EQ(state.count(TVN_ITEMEXPANDEDA), 0u);
    EXPECT_EQ(State(p) & (TVIS_EXPANDED | TVIS_BOLD), static_cast<UINT>(TVIS_EXPANDED | TVIS_BOLD));
    EXPECT_EQ(W()->visibleCount, 3);
}

TEST_F(RGTreeModelF, ExpandOfChildlessItemFlipsFlagWithoutRows)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    EXPECT_EQ(Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(a)), 1);
    EXPECT_TRUE(State(a) & TVIS_EXPANDED);
    EXPECT_EQ(W()->visibleCount, 1);
    EXPECT_EQ(Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(a)), 0);
    EXPECT_EQ(Send(TVM_EXPAND, TVE_TOGGLE, reinterpret_cast<LPARAM>(a)), 1);
    EXPECT_FALSE(State(a) & TVIS_EXPANDED);
    // An action outside 1 to 3 changes nothing.
    EXPECT_EQ(Send(TVM_EXPAND, 0, reinterpret_cast<LPARAM>(a)), 0);
    EXPECT_EQ(Send(TVM_EXPAND, 4, reinterpret_cast<LPARAM>(a)), 0);
}

TEST_F(RGTreeModelF, ExpandAndCollapseKeepRowCountAndTopIndex)
{
    MakeTree();
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, 40);
    Flat(top[2], 5, "B");
    Flat(top[30], 7, "C");
    Select(top[10], TVGN_FIRSTVISIBLE);
    // Above the window: the index moves with the new rows, the top item stays.
    Expand(top[2]);
    EXPECT_EQ(W()->visibleCount, 45);
    EXPECT_EQ(W()->firstVisible, I(top[10]));
    EXPECT_EQ(W()->firstVisibleIndex, 15);
    // Collapsing a row above the window brings that row to the top.
    Expand(top[2], TVE_COLLAPSE);
    EXPECT_EQ(W()->visibleCount, 40);
    EXPECT_EQ(W()->firstVisible, I(top[2]));
    EXPECT_EQ(W()->firstVisibleIndex, 2);
    Expand(top[30]);
    EXPECT_EQ(W()->visibleCount, 47);
    EXPECT_EQ(RGTreeGetVisibleIndex(W(), W()->firstVisible), W()->firstVisibleIndex);
}

TEST_F(RGTreeModelF, ExpandScrollsLeastToShowNewRows)
{
    MakeTree();
    const int rows = Rows();
    ASSERT_GT(rows, 5);
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, rows + 10);
    Flat(top[rows - 2], 3, "B");
    // The item is the row before last: the last of three new rows lands on the bottom row.
    Expand(top[rows - 2]);
    EXPECT_EQ(W()->firstVisibleIndex, 2);
    EXPECT_EQ(W()->firstVisible, I(top[2]));
    // More new rows than fit: the item becomes the top row.
    Flat(top[rows + 5], rows + 2, "C");
    Expand(top[rows + 5]);
    EXPECT_EQ(W()->firstVisible, I(top[rows + 5]));
    EXPECT_EQ(W()->firstVisibleIndex, rows + 5 + 3);
}

TEST_F(RGTreeModelF, CollapseOfSelectedAncestorMovesSelectionToIt)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    HTREEITEM g = Insert(c, TVI_LAST, "g");
    Expand(p);
    Expand(c);
    Select(g);
    ASSERT_EQ(Next(TVGN_CARET, nullptr), g);
    Expand(p, TVE_COLLAPSE);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), p);
    EXPECT_TRUE(State(p) & TVIS_SELECTED);
    EXPECT_FALSE(State(g) & TVIS_SELECTED);
    EXPECT_EQ(W()->visibleCount, 1);
}

TEST_F(RGTreeModelF, CollapseWithVetoedSelectionLeavesNoSelectedItem)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    Expand(p);
    Select(c);
    state.clear();
    state.vetoSelChanging = true;
    // The notifying path, as the mouse and keyboard take it.
    EXPECT_TRUE(RGTreeExpandItem(W(), TVE_COLLAPSE, I(p), true));
    EXPECT_EQ(Next(TVGN_CARET, nullptr), nullptr);
    EXPECT_FALSE(State(c) & TVIS_SELECTED);
    EXPECT_FALSE(State(p) & TVIS_SELECTED);
    EXPECT_FALSE(State(p) & TVIS_EXPANDED);
    ASSERT_EQ(state.notifications.size(), 3u);
    EXPECT_EQ(state.notifications[0].code, static_cast<UINT>(TVN_ITEMEXPANDINGA));
    EXPECT_EQ(state.notifications[1].code, static_cast<UINT>(TVN_SELCHANGINGA));
    EXPECT_EQ(state.notifications[1].oldItem, c);
    EXPECT_EQ(state.notifications[1].newItem, p);
    EXPECT_EQ(state.notifications[2].code, static_cast<UINT>(TVN_ITEMEXPANDEDA));
}

TEST_F(RGTreeModelF, CollapseOfAncestorThatIsNoRowKeepsSelection)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    HTREEITEM g = Insert(c, TVI_LAST, "g");
    // A vetoed expansion leaves the new selection hidden inside collapsed ancestors.
    state.vetoExpanding = true;
    Select(g);
    ASSERT_EQ(Next(TVGN_CARET, nullptr), g);
    ASSERT_FALSE(State(p) & TVIS_EXPANDED);
    Expand(c);
    Expand(c, TVE_COLLAPSE); // c is no row: the selection stays where it is
    EXPECT_EQ(Next(TVGN_CARET, nullptr), g);
    EXPECT_TRUE(State(g) & TVIS_SELECTED);
    EXPECT_EQ(W()->visibleCount, 1);
}

TEST_F(RGTreeModelF, FirstVisibleOfHiddenItemWithVetoedExpansionChangesNothing)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    Select(a);
    state.vetoExpanding = true;
    state.clear();
    EXPECT_EQ(Send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(c)), 1);
    EXPECT_EQ(W()->firstVisible, I(a));
    EXPECT_EQ(Next(TVGN_CARET, nullptr), a);
    EXPECT_EQ(state.count(TVN_SELCHANGINGA), 0u);
    EXPECT_EQ(state.count(TVN_ITEMEXPANDINGA), 1u);
    EXPECT_EQ(Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(c)), 0);
}

TEST_F(RGTreeModelF, DeletingLastItemLeavesNoFirstVisible)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    Delete(a);
    EXPECT_EQ(Next(TVGN_FIRSTVISIBLE, nullptr), nullptr);
    EXPECT_EQ(W()->visibleCount, 0);
    EXPECT_EQ(W()->firstVisibleIndex, 0);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 0);
    ASSERT_EQ(state.deleted.size(), 1u);
    EXPECT_EQ(state.deleted[0], a);
}

TEST_F(RGTreeModelF, DeletingSelectedItemSelectsNextSibling)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM a = Insert(p, TVI_LAST, "a");
    HTREEITEM b = Insert(p, TVI_LAST, "b");
    Select(a);
    state.clear();
    Delete(a);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), b);
    EXPECT_TRUE(State(b) & TVIS_SELECTED);
    ASSERT_EQ(state.notifications.size(), 3u);
    EXPECT_EQ(state.notifications[0].code, static_cast<UINT>(TVN_SELCHANGINGA));
    EXPECT_EQ(state.notifications[1].code, static_cast<UINT>(TVN_SELCHANGEDA));
    EXPECT_EQ(state.notifications[1].newItem, b);
    EXPECT_EQ(state.notifications[2].code, static_cast<UINT>(TVN_DELETEITEMA));
}

TEST_F(RGTreeModelF, DeletingSelectedLastChildSelectsParent)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    Insert(p, TVI_LAST, "a");
    HTREEITEM b = Insert(p, TVI_LAST, "b");
    Select(b);
    Delete(b);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), p);
}

TEST_F(RGTreeModelF, DeletingSelectedLastTopLevelItemSelectsPreviousSibling)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    HTREEITEM b = Insert(TVI_ROOT, TVI_LAST, "b");
    Select(b);
    Delete(b);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), a);
    EXPECT_TRUE(State(a) & TVIS_SELECTED);
}

TEST_F(RGTreeModelF, DeletingAncestorOfSelectedVetoedLeavesNoSelection)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    HTREEITEM q = Insert(TVI_ROOT, TVI_LAST, "q");
    Select(c);
    state.vetoSelChanging = true;
    state.clear();
    Delete(p);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), nullptr);
    EXPECT_FALSE(State(q) & TVIS_SELECTED);
    EXPECT_EQ(state.count(TVN_SELCHANGEDA), 0u);
    // Children go first.
    ASSERT_EQ(state.deleted.size(), 2u);
    EXPECT_EQ(state.deleted[0], c);
    EXPECT_EQ(state.deleted[1], p);
}

TEST_F(RGTreeModelF, DeleteRemovesChildrenDepthFirstInSiblingOrder)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM a = Insert(p, TVI_LAST, "a");
    HTREEITEM a1 = Insert(a, TVI_LAST, "a1");
    HTREEITEM a2 = Insert(a, TVI_LAST, "a2");
    HTREEITEM b = Insert(p, TVI_LAST, "b");
    HTREEITEM q = Insert(TVI_ROOT, TVI_LAST, "q");
    state.clear();
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    std::vector<HTREEITEM> expected = {a1, a2, a, b, p, q};
    EXPECT_EQ(state.deleted, expected);
    EXPECT_EQ(Send(TVM_GETCOUNT, 0, 0), 0);
    EXPECT_EQ(W()->store.root.childCount, 0);
    EXPECT_EQ(W()->firstVisible, nullptr);
}

TEST_F(RGTreeModelF, DeleteAllTellsSelChangedOnlyToParentThatAnswered)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    Select(a);
    state.clear();
    Send(TVM_DELETEITEM, 0, 0);
    EXPECT_EQ(state.count(TVN_SELCHANGINGA), 1u);
    EXPECT_EQ(state.count(TVN_SELCHANGEDA), 0u);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), nullptr);

    a = Insert(TVI_ROOT, TVI_LAST, "a");
    state.vetoSelChanging = false;
    Select(a);
    state.vetoSelChanging = true;
    state.clear();
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    EXPECT_EQ(state.count(TVN_SELCHANGINGA), 1u);
    EXPECT_EQ(state.count(TVN_SELCHANGEDA), 1u);
}

TEST_F(RGTreeModelF, DeletingTopRowMovesItToNextSiblingAndClosesGap)
{
    MakeTree();
    const int rows = Rows();
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, rows + 7);
    Select(top[5], TVGN_FIRSTVISIBLE);
    Delete(top[5]);
    EXPECT_EQ(W()->firstVisible, I(top[6]));
    EXPECT_EQ(W()->firstVisibleIndex, 5);
    // Deleting rows until a gap would open under the last row pulls the window up.
    Delete(top[rows + 6]);
    EXPECT_EQ(W()->firstVisible, I(top[6]));
    Delete(top[rows + 5]);
    EXPECT_EQ(W()->firstVisible, I(top[4]));
    EXPECT_EQ(W()->firstVisibleIndex, 4);
    EXPECT_EQ(W()->firstVisibleIndex + rows, W()->visibleCount);
    EXPECT_EQ(RGTreeGetVisibleIndex(W(), W()->firstVisible), W()->firstVisibleIndex);
}

TEST_F(RGTreeModelF, VisibleIndexFarBelowWindowWithMoreThan1000Rows)
{
    MakeTree();
    Send(WM_SETREDRAW, FALSE, 0);
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, 2000);
    Send(WM_SETREDRAW, TRUE, 0);
    const int rows = Rows();
    Select(top[500], TVGN_FIRSTVISIBLE);
    ASSERT_EQ(W()->firstVisibleIndex, 500);
    HTREEITEM below = top[500 + 3 * rows];
    EXPECT_EQ(RGTreeGetVisibleIndex(W(), I(below)), 500 + 3 * rows);
    // Near the window the local walk finds it both ways.
    EXPECT_EQ(RGTreeGetVisibleIndex(W(), I(top[502])), 502);
    EXPECT_EQ(RGTreeGetVisibleIndex(W(), I(top[499])), 499);
    EXPECT_EQ(RGTreeGetVisibleIndex(W(), I(top[3])), 3);
    RECT rc = RectRequest(below);
    ASSERT_EQ(Send(TVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&rc)), 1);
    const int h = static_cast<int>(Send(TVM_GETITEMHEIGHT, 0, 0));
    EXPECT_EQ(rc.top, 3 * rows * h);
    EXPECT_EQ(rc.bottom, rc.top + h);
}

TEST_F(RGTreeModelF, ItemRectOfItemThatIsNoRowGivesZero)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    RECT rc = RectRequest(c);
    EXPECT_EQ(Send(TVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&rc)), 0);
    rc = RectRequest(p);
    EXPECT_EQ(Send(TVM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&rc)), 1);
    EXPECT_EQ(rc.top, 0);
    EXPECT_GT(rc.right, rc.left + 4); // a measured label plus its margin
}

TEST_F(RGTreeModelF, SortingRootScrollsToTop)
{
    MakeTree();
    const char* labels[] = {"delta", "Alpha", "charlie", "bravo", "echo", "Foxtrot"};
    std::vector<HTREEITEM> items;
    for (int round = 0; round < 10; ++round)
        for (const char* label : labels)
            items.push_back(Insert(TVI_ROOT, TVI_LAST, label));
    Select(items[30], TVGN_FIRSTVISIBLE);
    ASSERT_EQ(W()->firstVisibleIndex, 30);
    EXPECT_EQ(Send(TVM_SORTCHILDREN, 0, reinterpret_cast<LPARAM>(TVI_ROOT)), 1);
    EXPECT_EQ(W()->firstVisibleIndex, 0);
    EXPECT_EQ(W()->firstVisible, W()->store.root.firstChild);
    std::string previous;
    int count = 0;
    for (HTREEITEM it = Next(TVGN_ROOT, nullptr); it; it = Next(TVGN_NEXT, it), ++count)
    {
        std::string text = Text(it);
        EXPECT_LE(_stricmp(previous.c_str(), text.c_str()), 0);
        previous = text;
    }
    EXPECT_EQ(count, 60);
    EXPECT_EQ(Text(Next(TVGN_ROOT, nullptr)), "Alpha");
}

TEST_F(RGTreeModelF, SortingLowerLevelDoesNotScroll)
{
    MakeTree();
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, 30);
    std::vector<HTREEITEM> kids = Flat(top[1], 8, "K");
    Expand(top[1]);
    Select(top[20], TVGN_FIRSTVISIBLE);
    ASSERT_EQ(W()->firstVisibleIndex, 28);
    // Reverse the children's order by renaming, then sort them back.
    for (int i = 0; i < 8; ++i)
    {
        char text[8];
        wsprintfA(text, "k%d", 8 - i);
        TVITEMA tvi = {};
        tvi.mask = TVIF_TEXT;
        tvi.hItem = kids[i];
        tvi.pszText = text;
        Send(TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&tvi));
    }
    EXPECT_EQ(Send(TVM_SORTCHILDREN, 0, reinterpret_cast<LPARAM>(top[1])), 1);
    EXPECT_EQ(W()->firstVisible, I(top[20]));
    EXPECT_EQ(W()->firstVisibleIndex, 28);
    EXPECT_EQ(Next(TVGN_CHILD, top[1]), kids[7]);
    EXPECT_EQ(W()->store.root.firstChild->next->lastChild, I(kids[0]));
}

TEST_F(RGTreeModelF, QuicksortOrdersDuplicatesAndReversedRuns)
{
    // Labels with many equal keys in reversed order exercise every branch of the partition.
    std::vector<RGTreeItem> items(257);
    std::vector<std::string> labels(items.size());
    std::vector<RGTreeItem*> array;
    for (size_t i = 0; i < items.size(); ++i)
    {
        labels[i] = std::string(1, static_cast<char>('a' + (items.size() - i) % 7));
        items[i] = RGTreeItem();
        items[i].data.text = &labels[i][0];
        array.push_back(&items[i]);
    }
    auto compare = [](const RGTreeItemData* a, const RGTreeItemData* b) CALLBACK -> int {
        return _stricmp(a->text, b->text);
    };
    RGTreeSortArray(array.data(), 0, static_cast<int>(array.size()) - 1, compare);
    for (size_t i = 1; i < array.size(); ++i)
        EXPECT_LE(_stricmp(array[i - 1]->data.text, array[i]->data.text), 0) << i;
}

TEST_F(RGTreeModelF, NextItemCodesFollowTheVisibleOrder)
{
    MakeTree();
    HTREEITEM a = Insert(TVI_ROOT, TVI_LAST, "a");
    HTREEITEM a1 = Insert(a, TVI_LAST, "a1");
    HTREEITEM a2 = Insert(a, TVI_LAST, "a2");
    HTREEITEM a21 = Insert(a2, TVI_LAST, "a21");
    HTREEITEM b = Insert(TVI_ROOT, TVI_LAST, "b");
    EXPECT_EQ(Next(TVGN_PARENT, a), nullptr); // the root pseudo-item is never handed out
    EXPECT_EQ(Next(TVGN_PARENT, a1), a);
    EXPECT_EQ(Next(TVGN_CHILD, nullptr), a);
    EXPECT_EQ(Next(TVGN_NEXTVISIBLE, a), b);
    Expand(a);
    Expand(a2);
    EXPECT_EQ(Next(TVGN_NEXTVISIBLE, a), a1);
    EXPECT_EQ(Next(TVGN_NEXTVISIBLE, a21), b);
    EXPECT_EQ(Next(TVGN_NEXTVISIBLE, b), nullptr);
    EXPECT_EQ(Next(TVGN_PREVIOUSVISIBLE, b), a21);
    EXPECT_EQ(Next(TVGN_PREVIOUSVISIBLE, a1), a);
    EXPECT_EQ(Next(TVGN_PREVIOUSVISIBLE, a), nullptr);
    EXPECT_EQ(Next(TVGN_LASTVISIBLE, nullptr), b);
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(b));
    EXPECT_EQ(Next(TVGN_LASTVISIBLE, nullptr), a21);
    EXPECT_EQ(Next(11, a), nullptr);
    EXPECT_EQ(Next(TVGN_NEXT, nullptr), nullptr);
    EXPECT_EQ(W()->visibleCount, 4);
}

TEST_F(RGTreeModelF, SetFirstVisibleRepairsIndexWalkingBackward)
{
    MakeTree();
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, 20);
    Flat(top[3], 4, "B");
    Expand(top[3]);
    RGTreeSetFirstVisible(W(), I(top[10])); // relative to the old top row
    EXPECT_EQ(W()->firstVisibleIndex, 14);
    RGTreeSetFirstVisible(W(), I(top[12]));
    EXPECT_EQ(W()->firstVisibleIndex, 16);
    W()->firstVisible = nullptr; // forces the count from the top
    RGTreeSetFirstVisible(W(), I(Next(TVGN_CHILD, top[3])));
    EXPECT_EQ(W()->firstVisibleIndex, 4);
    EXPECT_TRUE(RGTreeIsAboveFirstVisible(W(), I(top[3])));
    EXPECT_FALSE(RGTreeIsAboveFirstVisible(W(), I(top[4])));
    EXPECT_TRUE(RGTreeIsAboveFirstVisible(W(), I(top[0])));
    EXPECT_TRUE(RGTreeIsDescendant(W(), I(top[3]), W()->firstVisible));
    EXPECT_FALSE(RGTreeIsDescendant(W(), I(top[4]), W()->firstVisible));
}

TEST_F(RGTreeModelF, SelectFirstVisibleOfHiddenItemExpandsItsAncestors)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    HTREEITEM c = Insert(p, TVI_LAST, "c");
    Select(c, TVGN_FIRSTVISIBLE);
    EXPECT_TRUE(State(p) & TVIS_EXPANDED);
    EXPECT_EQ(W()->firstVisible, I(c));
    EXPECT_EQ(W()->firstVisibleIndex, 1);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), c);
}

TEST_F(RGTreeModelF, GetItemTruncatesTextAndReportsChildren)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "abcdefgh");
    char buffer[8] = {};
    TVITEMA tvi = {};
    tvi.mask = TVIF_TEXT | TVIF_CHILDREN | TVIF_PARAM;
    tvi.hItem = p;
    tvi.pszText = buffer;
    tvi.cchTextMax = 4;
    EXPECT_EQ(Send(TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&tvi)), 1);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(tvi.cChildren, 0);
    EXPECT_EQ(tvi.lParam, 0x1234);
    Insert(p, TVI_LAST, "c");
    Send(TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&tvi));
    EXPECT_EQ(tvi.cChildren, 1);
}

TEST_F(RGTreeModelF, DestroyingTheWindowDeletesEveryItemOnce)
{
    MakeTree();
    HTREEITEM p = Insert(TVI_ROOT, TVI_LAST, "p");
    Insert(p, TVI_LAST, "c");
    Insert(TVI_ROOT, TVI_LAST, "q");
    state.clear();
    DestroyWindow(tree);
    tree = nullptr;
    EXPECT_EQ(state.deleted.size(), 3u);
}

TEST_F(RGTreeModelF, SelectingNullAsFirstVisibleKeepsTheTopRow)
{
    MakeTree();
    std::vector<HTREEITEM> top = Flat(TVI_ROOT, 5);
    Select(top[2], TVGN_FIRSTVISIBLE);
    Select(nullptr, TVGN_FIRSTVISIBLE);
    EXPECT_EQ(W()->firstVisible, I(top[2]));
    EXPECT_EQ(W()->firstVisibleIndex, 2);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), top[2]);
}

TEST_F(RGTreeModelF, UnansweredMessagesGoToThePreviousProcedure)
{
    MakeTree();
    // The engine's window class answers WM_GETTEXTLENGTH through the default procedure.
    SetWindowTextA(tree, "abc");
    EXPECT_EQ(SendMessageA(tree, WM_GETTEXTLENGTH, 0, 0), 3);
    // A sorted-children-by-callback request is not the engine's: nothing is sorted.
    HTREEITEM b = Insert(TVI_ROOT, TVI_LAST, "b");
    Insert(TVI_ROOT, TVI_LAST, "a");
    TVSORTCB sort = {};
    sort.hParent = TVI_ROOT;
    Send(TVM_SORTCHILDRENCB, 0, reinterpret_cast<LPARAM>(&sort));
    EXPECT_EQ(Next(TVGN_ROOT, nullptr), b);
}
