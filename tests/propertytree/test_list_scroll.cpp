// The list surface's scroll ranges, scrolling by bar and wheel, the back buffer's size, and
// the sideways part of making a row visible.
#include "ptlist.h"

using pttest::CountedItem;
using pttest::ListFixture;
using pttest::PaintedValueItem;

namespace
{
struct ScrollTest : ListFixture
{
    // A client area of 360 by 200 and rows top-level rows of 20 pixels.
    void Rows(int count)
    {
        tree.MoveWindow(0, 0, 360, 200);
        for (int i = 0; i < count; ++i)
            Add("row");
        Paint();
    }
    SCROLLINFO Info(int bar)
    {
        SCROLLINFO si = {};
        si.cbSize = sizeof(si);
        si.fMask = SIF_ALL;
        list->GetScrollInfo(bar, &si);
        return si;
    }
    void Wheel(short delta) { list->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), MAKELPARAM(10, 10)); }
    void VScroll(UINT code, UINT pos = 0) { list->SendMessage(WM_VSCROLL, MAKEWPARAM(code, pos), 0); }
    void HScroll(UINT code, UINT pos = 0) { list->SendMessage(WM_HSCROLL, MAKEWPARAM(code, pos), 0); }
};
}

TEST_F(ScrollTest, VerticalRangeIsTheRootRowPlusAllOpenRowsAndThePageIsClientPlusOne)
{
    Rows(30);
    ASSERT_EQ(200, Client().Height());
    SCROLLINFO si = Info(SB_VERT);
    EXPECT_EQ(0, si.nMin);
    EXPECT_EQ(20 + 30 * 20, si.nMax);
    EXPECT_EQ(201u, si.nPage);
}

TEST_F(ScrollTest, AWheelNotchOfAnySizeMovesOneLineOf21Pixels)
{
    Rows(30);
    Wheel(-WHEEL_DELTA);
    EXPECT_EQ(21, V());
    Wheel(-1);
    EXPECT_EQ(42, V());
    Wheel(-5 * WHEEL_DELTA);
    EXPECT_EQ(63, V());
    Wheel(7);
    EXPECT_EQ(42, V());
    EXPECT_EQ(42, list->GetScrollPos(SB_VERT));
}

TEST_F(ScrollTest, TheWheelDoesNothingWhenTheRangeIsSmallerThanTheClient)
{
    Rows(5);
    Wheel(-WHEEL_DELTA);
    EXPECT_EQ(0, V());
}

TEST_F(ScrollTest, BarMovesByLinesOf21ByPagesOfTheClientAndStopAtTheRangeEnd)
{
    Rows(30);
    VScroll(SB_LINEDOWN);
    EXPECT_EQ(21, V());
    VScroll(SB_PAGEDOWN);
    EXPECT_EQ(21 + 201, V());
    VScroll(SB_LINEUP);
    EXPECT_EQ(201, V());
    VScroll(SB_THUMBPOSITION, 100);
    EXPECT_EQ(100, V());
    // nMax less the page plus one is the last position.
    VScroll(SB_PAGEDOWN);
    VScroll(SB_PAGEDOWN);
    VScroll(SB_PAGEDOWN);
    EXPECT_EQ(620 - 201 + 1, V());
    VScroll(SB_THUMBPOSITION, 5000);
    EXPECT_EQ(620 - 201 + 1, V());
    VScroll(SB_THUMBPOSITION, 0);
    VScroll(SB_LINEUP);
    EXPECT_EQ(0, V());
}

TEST_F(ScrollTest, ScrolledRowsPaintAtTheirTopLessThePosition)
{
    Rows(30);
    VScroll(SB_LINEDOWN);
    Paint();
    CKelPropertyTreeItem* second = tree.GetRootItem()->GetChild()->GetSibling();
    EXPECT_EQ(20, second->GetLocation().y);
    EXPECT_EQ(second, tree.FindItem(CPoint(50, 0)));   // tree y 21
    EXPECT_EQ(20 + 2 - 21, second->GetAttributeRect().top);
}

TEST_F(ScrollTest, WithAllRowsFittingThePositionReturnsToZeroAtTheNextUpdate)
{
    Rows(10);   // 200 pixels of rows in 200: one root row too many to fit
    VScroll(SB_LINEDOWN);
    EXPECT_EQ(20, V());   // the range ends at 220 - 201 + 1
    // 180 pixels of rows: at most the client less the root's 20, so all fit.
    tree.DeleteItem(tree.GetRootItem()->GetChild());
    EXPECT_EQ(0, V());
    EXPECT_EQ(0, list->GetScrollPos(SB_VERT));
}

TEST_F(ScrollTest, ARangeThatShrinksUnderThePositionPullsThePositionBack)
{
    Rows(30);
    VScroll(SB_THUMBPOSITION, 400);
    ASSERT_EQ(400, V());
    for (int i = 0; i < 10; ++i)
        tree.DeleteItem(tree.GetRootItem()->GetChild());
    EXPECT_EQ(420 - 201 + 1, V());
}

TEST_F(ScrollTest, SidewaysStepsOf5And15MoveTheColumnTheOtherWay)
{
    tree.MoveWindow(0, 0, 360, 200);
    CKelPropertyTreeItem* top = Add("Top");
    tree.InsertItem(new PaintedValueItem("wide", 0, RGB(255, 0, 0), 400), top);
    top->Expand(1);
    tree.UpdatedItems();
    Paint();
    Paint();   // the first paint learned the width, the scroll bar follows it
    ASSERT_EQ(400, tree.GetInfoColMaxVisibleWidth());
    const int cw = Client().Width();
    SCROLLINFO si = Info(SB_HORZ);
    EXPECT_EQ(400 - (cw + 1 - 190) + cw + 1, si.nMax);
    HScroll(SB_LINERIGHT);
    EXPECT_EQ(5, H());
    EXPECT_EQ(185, C());
    HScroll(SB_PAGERIGHT);
    EXPECT_EQ(20, H());
    EXPECT_EQ(170, C());
    HScroll(SB_LINELEFT);
    EXPECT_EQ(15, H());
    EXPECT_EQ(175, C());
    // Past the splitter minimum the column goes on by the same amount, since the minimum
    // is less the horizontal origin and that grows with every step.
    HScroll(SB_PAGERIGHT);
    HScroll(SB_PAGERIGHT);
    EXPECT_EQ(45, H());
    EXPECT_EQ(190 - 45, C());
    // A column set left of the minimum is pulled back to it at the next step.
    tree.SetOriginOffsetX(0);
    EXPECT_EQ(160 - 45, C());
    HScroll(SB_LINERIGHT);
    EXPECT_EQ(50, H());
    EXPECT_EQ(160 - 45, C());
    // Left steps are cut to the position.
    for (int i = 0; i < 5; ++i)
        HScroll(SB_PAGELEFT);
    EXPECT_EQ(0, H());
}

TEST_F(ScrollTest, SidewaysStepIsCutToTheScrollLimit)
{
    tree.MoveWindow(0, 0, 360, 200);
    CKelPropertyTreeItem* top = Add("Top");
    tree.InsertItem(new PaintedValueItem("wide", 0, RGB(255, 0, 0), 200), top);
    top->Expand(1);
    tree.UpdatedItems();
    Paint();
    Paint();
    SCROLLINFO si = Info(SB_HORZ);
    const int limit = si.nMax - static_cast<int>(si.nPage) + 1;
    ASSERT_GT(limit, 0);
    ASSERT_LT(limit, 100);
    for (int i = 0; i < 20; ++i)
        HScroll(SB_LINERIGHT);
    EXPECT_EQ(limit, H());
}

TEST_F(ScrollTest, BackBufferGrowsWithTheWindowAndNeverShrinks)
{
    tree.MoveWindow(0, 0, 300, 200);
    const CSize first = list->GetBackBufferSize();
    EXPECT_GE(first.cx, Client().Width());
    EXPECT_GE(first.cy, 200);
    tree.MoveWindow(0, 0, 420, 260);
    const CSize grown = list->GetBackBufferSize();
    EXPECT_GE(grown.cx, Client().Width());
    EXPECT_EQ(260, grown.cy);
    tree.MoveWindow(0, 0, 100, 50);
    EXPECT_EQ(grown, list->GetBackBufferSize());
}

TEST_F(ScrollTest, APaintWithDirtyScrollBarsRecalculatesThem)
{
    Rows(3);
    list->PostUpgradeTheScrollBars();
    EXPECT_TRUE(list->AreScrollBarsDirty());
    Paint();
    EXPECT_FALSE(list->AreScrollBarsDirty());
}

TEST_F(ScrollTest, EnsureVisibleScrollsSidewaysUntilTheWidestValueEndsInside)
{
    tree.MoveWindow(0, 0, 360, 200);
    CKelPropertyTreeItem* top = Add("Top");
    CKelPropertyTreeItem* row = tree.InsertItem(new PaintedValueItem("wide", 0, RGB(255, 0, 0), 250), top);
    top->Expand(1);
    tree.UpdatedItems();
    Paint();
    Paint();
    const CRect client = Client();
    const long need = 190 + 5 + 250 - client.right;
    ASSERT_GT(need, 0);
    SCROLLINFO si = Info(SB_HORZ);
    const long limit = si.nMax - static_cast<long>(si.nPage) + 1;
    tree.EnsureVisible(row);
    const long moved = std::min(need, limit);
    EXPECT_EQ(moved, H());
    EXPECT_EQ(std::max(190 - moved, 160L), C());
    EXPECT_EQ(moved, list->GetScrollPos(SB_HORZ));
    // At the scroll limit, or once the value fits, nothing moves any more.
    const long h = H(), c = C();
    Paint();
    tree.EnsureVisible(row);
    EXPECT_EQ(h, H());
    EXPECT_EQ(c, C());
}

TEST_F(ScrollTest, EnsureVisibleLeavesTheSidewaysPositionWhenTheValuesFit)
{
    tree.MoveWindow(0, 0, 360, 200);
    CKelPropertyTreeItem* top = Add("Top");
    CKelPropertyTreeItem* row = tree.InsertItem(new PaintedValueItem("narrow", 0, RGB(255, 0, 0), 30), top);
    top->Expand(1);
    Paint();
    tree.EnsureVisible(row);
    EXPECT_EQ(0, H());
    EXPECT_EQ(190, C());
}
