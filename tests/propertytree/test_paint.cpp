// Row painting: pixels at the coordinates the row geometry gives, the rectangles painting
// writes for hit testing, the visible list it builds, and no handle left behind.
#include "kx_bitmapcontainer.h"
#include "ptlist.h"

#include <kelfw/fwlivecount.h>

using pttest::CountedItem;
using pttest::ListFixture;
using pttest::PaintedValueItem;

namespace
{
COLORREF Sys(int index)
{
    return GetSysColor(index);
}

int CountColour(const kel_test::DibSurface& s, const RECT& rc, COLORREF c)
{
    return s.Count(rc, c);
}

// A row with a special button from its construction.
class ButtonItem : public CountedItem
{
public:
    explicit ButtonItem(const char* label) : CountedItem(label) { ShowSpecialButton(1); }
};

struct PaintTest : ListFixture
{
};
}

TEST_F(PaintTest, TopLevelExpandBoxIsANineByNineShadowFrameWithPlusAndNoFill)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    Add("a1", a);
    Paint();
    EXPECT_EQ(CRect(4, 4, 12, 12), CRect(a->GetRectExpandBox()));
    auto s = Render();
    const COLORREF shadow = Sys(COLOR_3DSHADOW);
    for (int i = 0; i <= 8; ++i)
    {
        EXPECT_EQ(shadow, s->Pixel(4 + i, 4)) << i;
        EXPECT_EQ(shadow, s->Pixel(4 + i, 12)) << i;
        EXPECT_EQ(shadow, s->Pixel(4, 4 + i)) << i;
        EXPECT_EQ(shadow, s->Pixel(12, 4 + i)) << i;
    }
    EXPECT_NE(shadow, s->Pixel(13, 8));
    // Unfilled: the band shows through; the plus is black.
    EXPECT_EQ(Sys(COLOR_BTNFACE), s->Pixel(5, 5));
    for (int i = 6; i <= 10; ++i)
    {
        EXPECT_EQ(RGB(0, 0, 0), s->Pixel(i, 8)) << i;
        EXPECT_EQ(RGB(0, 0, 0), s->Pixel(8, i)) << i;
    }
    // Expanded: the minus only.
    a->Expand(1);
    Paint();
    auto t = Render();
    EXPECT_EQ(RGB(0, 0, 0), t->Pixel(8, 8));
    EXPECT_EQ(Sys(COLOR_BTNFACE), t->Pixel(8, 6));
    EXPECT_EQ(Sys(COLOR_BTNFACE), t->Pixel(8, 10));
}

TEST_F(PaintTest, ExpandBoxBelowTheTopLevelIsWhiteFilled)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    Add("a11", a1);
    a->Expand(1);
    Paint();
    // The first level below a band is not indented: a1 starts at x 0, at y 20.
    EXPECT_EQ(CRect(4, 24, 12, 32), CRect(a1->GetRectExpandBox()));
    auto s = Render();
    EXPECT_EQ(Sys(COLOR_3DSHADOW), s->Pixel(4, 24));
    EXPECT_EQ(Sys(COLOR_3DSHADOW), s->Pixel(12, 32));
    EXPECT_EQ(RGB(255, 255, 255), s->Pixel(5, 25));
    EXPECT_EQ(RGB(255, 255, 255), s->Pixel(11, 31));
}

TEST_F(PaintTest, PaintingWritesLocationAndValueRectangleOfEachRow)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* a11 = Add("a11", a1);
    a->Expand(1);
    a1->Expand(1);
    Paint();
    const CRect inner = Inner();
    EXPECT_EQ(CPoint(0, 0), CPoint(a->GetLocation()));
    EXPECT_EQ(CPoint(0, 20), CPoint(a1->GetLocation()));
    EXPECT_EQ(CPoint(16, 40), CPoint(a11->GetLocation()));
    EXPECT_EQ(CRect(C() + 5, 42, inner.right, 59), CRect(a11->GetAttributeRect()));
    // A leaf without icon or switch has no expand box.
    EXPECT_TRUE(CRect(a11->GetRectExpandBox()).IsRectEmpty());
    // Scrolled sideways, the row's left edge moves with the horizontal origin; the expand
    // box is kept in screen x and tree y.
    tree.SetOriginOffsetHorz(7);
    Paint();
    EXPECT_EQ(CPoint(9, 40), CPoint(a11->GetLocation()));
    EXPECT_EQ(CRect(-7 + 4, 24, -7 + 12, 32), CRect(a1->GetRectExpandBox()));
    tree.SetOriginOffset(10);
    Paint();
    EXPECT_EQ(CRect(-7 + 4, 24, -7 + 12, 32), CRect(a1->GetRectExpandBox()));
    EXPECT_EQ(CRect(C() + 5, 32, inner.right, 49), CRect(a11->GetAttributeRect()));
}

TEST_F(PaintTest, CollapsedChildrenAreNotOnTheVisibleListAndCannotBeFound)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("Beta");
    a->Expand(1);
    Paint();
    EXPECT_TRUE(tree.IsItemOnVisibleList(a1));
    EXPECT_EQ(a1, tree.FindItem(CPoint(50, 25)));
    EXPECT_EQ(b, tree.FindItem(CPoint(50, 45)));
    a->Expand(0);
    Paint();
    // The paint emptied the list and refilled it with what it drew, in drawing order.
    EXPECT_FALSE(tree.IsItemOnVisibleList(a1));
    EXPECT_EQ(a, tree.GetVisibleList());
    EXPECT_EQ(b, a->GetNextVisible());
    EXPECT_EQ(nullptr, b->GetNextVisible());
    EXPECT_EQ(b, tree.FindItem(CPoint(50, 25)));
    EXPECT_EQ(nullptr, tree.FindItem(CPoint(50, 45)));
}

TEST_F(PaintTest, SelectedLabelIsHighlightedWithFocusAndButtonFaceWithout)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("Selected row", a);
    a->Expand(1);
    tree.SelectItems(a1, 1);
    ::SetFocus(parent.m_hWnd);
    kel_test::PumpPending();
    ASSERT_FALSE(list->IsFocusOnTreeList());
    Paint();
    CRect band(a1->GetLabelHighlightRect());
    ASSERT_FALSE(band.IsRectEmpty());
    EXPECT_EQ(a1->GetLabelHorizOffset() - 4, band.left);
    EXPECT_EQ(Top(a1), band.top);   // the text moved down 2, the band goes up 2
    auto s = Render();
    EXPECT_EQ(Sys(COLOR_BTNFACE), s->Pixel(band.left + 1, band.top + 1));
    EXPECT_GT(s->CountDark(band), 0);   // the text in button text colour
    // An unselected row has no band.
    EXPECT_TRUE(CRect(a->GetLabelHighlightRect()).IsRectEmpty());

    ASSERT_TRUE(FocusList()) << "the desktop would not give the list the focus";
    ASSERT_TRUE(list->IsFocusOnTreeList());
    Paint();
    auto t = Render();
    EXPECT_EQ(Sys(COLOR_HIGHLIGHT), t->Pixel(band.left + 1, band.top + 1));
    EXPECT_GT(CountColour(*t, band, Sys(COLOR_HIGHLIGHT)), band.Width() * band.Height() / 2);
}

TEST_F(PaintTest, DottedLineUnderARowSetsEverySecondPixel)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    a->Expand(1);
    Paint();
    auto s = Render();
    const COLORREF shadow = Sys(COLOR_3DSHADOW);
    const int y = static_cast<int>(Top(a1) + 19);
    EXPECT_EQ(shadow, s->Pixel(16, y));
    EXPECT_NE(shadow, s->Pixel(17, y));
    EXPECT_EQ(shadow, s->Pixel(18, y));
    EXPECT_EQ(shadow, s->Pixel(100, y));
    EXPECT_NE(shadow, s->Pixel(101, y));
    // Nothing left of x 16.
    EXPECT_NE(shadow, s->Pixel(14, y));
}

TEST_F(PaintTest, TopLevelRowWithoutChildrenDrawsADenseLineAtItsTop)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    Add("a1", a);
    CKelPropertyTreeItem* b = Add("Beta");
    a->Expand(1);
    Paint();
    auto s = Render();
    const COLORREF shadow = Sys(COLOR_3DSHADOW);
    const int top = static_cast<int>(Top(b));
    ASSERT_EQ(40, top);
    // One line at the top from x 16, one a pixel higher from x 17: together every pixel.
    for (int x = 16; x < 60; ++x)
        EXPECT_EQ(shadow, s->Pixel(x, x % 2 == 0 ? top : top - 1)) << x;
    for (int x = 17; x < 60; ++x)
        EXPECT_EQ(shadow, s->Pixel(x, top - 1)) << x;
}

TEST_F(PaintTest, ColumnSeparatorIsShadowAtTheColumnAndHighlightRightOfIt)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* group = Add("group", a, PT_RESID_GROUP_ROOT);
    a->Expand(1);
    Paint();
    auto s = Render();
    const int c = static_cast<int>(C());
    for (int y = static_cast<int>(Top(a1)); y < Top(a1) + 19; ++y)
    {
        EXPECT_EQ(Sys(COLOR_3DSHADOW), s->Pixel(c, y)) << y;
        EXPECT_EQ(Sys(COLOR_3DHIGHLIGHT), s->Pixel(c + 1, y)) << y;
    }
    // Group roots have no separator, and neither has the band of a top-level row.
    EXPECT_EQ(Sys(COLOR_WINDOW), s->Pixel(c, static_cast<int>(Top(group) + 5)));
    EXPECT_EQ(Sys(COLOR_BTNFACE), s->Pixel(c, 5));
}

TEST_F(PaintTest, DeletedMarkIsTheInternalImageAtTheRightOfTheLabelColumn)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("x", a);
    a->Expand(1);
    a1->DeleteItem(1, 0);
    Paint();
    auto s = Render();
    kel_test::DibSurface reference(16, 16, Sys(COLOR_WINDOW));
    tree.GetInternalImageList()->Draw(&reference.DC(), PT_IMAGE_DELETED, CPoint(0, 0), ILD_TRANSPARENT);
    ::GdiFlush();
    const int left = static_cast<int>(C() - 16);
    const int top = static_cast<int>(Top(a1) + 1);
    int differing = 0, notBackground = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
        {
            differing += s->Pixel(left + x, top + y) != reference.Pixel(x, y);
            notBackground += reference.Pixel(x, y) != Sys(COLOR_WINDOW);
        }
    EXPECT_EQ(0, differing);
    EXPECT_GT(notBackground, 10);   // the image is not empty
    // A group root carries no mark.
    a1->SetResID(PT_RESID_GROUP_ROOT);
    Paint();
    auto t = Render();
    EXPECT_EQ(Sys(COLOR_WINDOW), t->Pixel(left + 8, top + 8));
}

namespace
{
// Shadow pixels on the strike-through line of a row, in the label and in the value column.
struct Strikes
{
    int label = 0;
    int value = 0;
};
}

TEST_F(PaintTest, LockedLayerStrikesThroughBothColumnsAndPlainLookSparesOnlyTheOwnValueLine)
{
    CKelPropertyTreeItem* top = Add("Top");
    CKelPropertyTreeItem* layer = Add("L", top, PT_RESID_LAYER);
    PaintedValueItem* under = static_cast<PaintedValueItem*>(tree.InsertItem(new PaintedValueItem("u"), layer));
    CKelPropertyTreeItem* other = Add("Other");
    PaintedValueItem* own = static_cast<PaintedValueItem*>(tree.InsertItem(new PaintedValueItem("o"), other));
    top->Expand(1);
    layer->Expand(1);
    other->Expand(1);
    auto strikes = [&](CKelPropertyTreeItem* row) {
        Paint();
        auto s = Render();
        const CRect r(row->GetAttributeRect());
        const int y = static_cast<int>(Top(row) + 9);
        Strikes k;
        k.label = s->Count(CRect(60, y, static_cast<int>(C() - 20), y + 1), Sys(COLOR_3DSHADOW));
        k.value = s->Count(CRect(r.left + 2, y, r.right - 2, y + 1), Sys(COLOR_3DSHADOW));
        return k;
    };
    Strikes k = strikes(under);
    EXPECT_EQ(0, k.label);
    EXPECT_EQ(0, k.value);
    layer->Lock(1, 0);
    k = strikes(under);
    EXPECT_GT(k.label, 10);
    EXPECT_GT(k.value, 10);
    // Under a locked layer the row's own plain look does not matter.
    under->Lock(1, 1);
    k = strikes(under);
    EXPECT_GT(k.label, 10);
    EXPECT_GT(k.value, 10);
    // A row's own lock strikes its value only, and plain look spares it.
    own->Lock(1, 0);
    k = strikes(own);
    EXPECT_EQ(0, k.label);
    EXPECT_GT(k.value, 10);
    own->Lock(1, 1);
    k = strikes(own);
    EXPECT_EQ(0, k.value);
}

namespace
{
// A 16 by 16 icon with a black frame of 13 pixels at (1, 1) and a clear inside, to see what
// painting puts behind a switch image.
HICON MakeFrameIcon()
{
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP colour = CreateCompatibleBitmap(screen, 16, 16);
    HBITMAP mask = CreateBitmap(16, 16, 1, 1, nullptr);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = SelectObject(dc, colour);
    RECT all = {0, 0, 16, 16};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    SelectObject(dc, mask);
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    RECT frame = {1, 1, 14, 14};
    FrameRect(dc, &frame, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    SelectObject(dc, old);
    DeleteDC(dc);
    ICONINFO info = {};
    info.fIcon = TRUE;
    info.hbmColor = colour;
    info.hbmMask = mask;
    HICON icon = CreateIconIndirect(&info);
    DeleteObject(colour);
    DeleteObject(mask);
    return icon;
}
}

TEST_F(PaintTest, MixedSwitchShowsTheOnImageOverAGreySquare)
{
    // An on image with a clear inside shows what lies behind it.
    HICON frameIcon = MakeFrameIcon();
    ASSERT_NE(nullptr, frameIcon);
    ASSERT_GE(tree.GetInternalImageList()->Replace(PT_IMAGE_SWITCH_ON, frameIcon), 0);
    DestroyIcon(frameIcon);
    tree.SetTreeItemsSwitchable(1, 1);
    tree.SetThreeStateCheckBox(true);
    CKelPropertyTreeItem* p = Add("Parent");
    CKelPropertyTreeItem* c1 = Add("c1", p);
    CKelPropertyTreeItem* c2 = Add("c2", p);
    for (CKelPropertyTreeItem* r : {p, c1, c2})
        r->SetItemSwitching(1);
    p->SetAutoCheckSubItems(true);
    c1->SetItemSwitchStatus(1, 1);
    c2->SetItemSwitchStatus(0, 1);
    ASSERT_EQ(2u, p->GetItemSwitchStatus());
    Paint();
    CRect sw(p->GetSwitchBoxRect());
    sw.OffsetRect(static_cast<int>(1 - H()), static_cast<int>(1 - V()));
    // A top-level row's box: 18 by 18, 21 pixels right of its left edge, 2 below its top.
    EXPECT_EQ(CRect(21, 2, 39, 20), sw);
    const CRect square(sw.left + 2, sw.top + 1, sw.left + 14, sw.top + 13);
    auto mixed = Render();
    const int greyMixed = mixed->Count(square, Sys(COLOR_3DSHADOW));
    c2->SetItemSwitchStatus(1, 1);
    ASSERT_EQ(1u, p->GetItemSwitchStatus());
    Paint();
    auto on = Render();
    const int greyOn = on->Count(square, Sys(COLOR_3DSHADOW));
    // The 12 by 12 square at (2, 1) of the box, less the frame's top row and right column.
    EXPECT_EQ(11 * 11, greyMixed);
    EXPECT_EQ(0, greyOn);
    // The image drawn over the square is the same on image.
    kel_test::DibSurface image(16, 16, Sys(COLOR_BTNFACE));
    tree.GetInternalImageList()->Draw(&image.DC(), PT_IMAGE_SWITCH_ON, CPoint(0, 0), ILD_TRANSPARENT);
    ::GdiFlush();
    int same = 0, opaque = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            if (image.Pixel(x, y) != Sys(COLOR_BTNFACE))
            {
                ++opaque;
                same += mixed->Pixel(sw.left + x, sw.top + y) == image.Pixel(x, y);
            }
    EXPECT_GT(opaque, 0);
    EXPECT_EQ(opaque, same);
}

TEST_F(PaintTest, HiddenValueShowsLabelAndSwitchButAnEmptyValueColumn)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* a = Add("Alpha");
    PaintedValueItem* row = static_cast<PaintedValueItem*>(tree.InsertItem(new PaintedValueItem("Value row"), a));
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(1, 1);
    a->Expand(1);
    Paint();
    auto shown = Render();
    const CRect value(row->GetAttributeRect());
    EXPECT_GT(shown->Count(value, RGB(255, 0, 0)), value.Width() * value.Height() / 2);
    row->SetVisible_Internal(false);
    const int drawsBefore = row->draws;
    Paint();
    auto hidden = Render();
    EXPECT_EQ(drawsBefore, row->draws);
    EXPECT_EQ(0, hidden->Count(value, RGB(255, 0, 0)));
    const CRect label(row->GetLabelHorizOffset(), static_cast<int>(Top(row)), static_cast<int>(C()),
                      static_cast<int>(Top(row) + 20));
    EXPECT_GT(hidden->CountDark(label), 5);
    CRect sw(row->GetSwitchBoxRect());
    ASSERT_FALSE(sw.IsRectEmpty());
    sw.OffsetRect(static_cast<int>(1 - H()), static_cast<int>(1 - V()));
    const CRect image(sw.left, sw.top, sw.left + 16, sw.top + 16);
    EXPECT_LT(hidden->Count(image, Sys(COLOR_WINDOW)), 16 * 16);
}

TEST_F(PaintTest, SpecialButtonIsRaisedSunkenWhenPressedAndKeptInTreeCoordinates)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* b = tree.InsertItem(new ButtonItem("b"), a);
    b->SetItemEditableManuallyForExternalFunction(1);
    a->Expand(1);
    Paint();
    const CRect inner = Inner();
    CRect stored(*b->GetSpecialButtonRectPtr());
    EXPECT_EQ(CRect(inner.right - 20 + H(), 22, inner.right - 4 + H(), 38), stored);
    auto up = Render();
    CRect screen = stored;
    screen.OffsetRect(static_cast<int>(-H()), static_cast<int>(-V()));
    EXPECT_EQ(Sys(COLOR_3DHIGHLIGHT), up->Pixel(screen.left, screen.top + 5));
    EXPECT_EQ(Sys(COLOR_3DSHADOW), up->Pixel(screen.right - 1, screen.top + 5));
    EXPECT_EQ(Sys(COLOR_BTNFACE), up->Pixel(screen.left + 3, screen.top + 3));
    b->SetSpecialButtonPressedStatus(1);
    Paint();
    auto down = Render();
    EXPECT_EQ(Sys(COLOR_3DSHADOW), down->Pixel(screen.left, screen.top + 5));
    EXPECT_EQ(Sys(COLOR_3DHIGHLIGHT), down->Pixel(screen.right - 1, screen.top + 5));
    // Not drawn on a read-only row: the rectangle is emptied, so the mouse cannot hit it.
    b->ReadOnly(1);
    Paint();
    EXPECT_TRUE(CRect(*b->GetSpecialButtonRectPtr()).IsRectEmpty());
    EXPECT_NE(PTHT_SPECIAL_BUTTON, tree.HitTest(screen.CenterPoint()));
}

TEST_F(PaintTest, RowSwitchedOffIsGreyedWithShadowText)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* a = Add("Alpha");
    PaintedValueItem* row = static_cast<PaintedValueItem*>(tree.InsertItem(new PaintedValueItem("Greyed"), a));
    row->SetItemSwitching(1);
    row->SetItemSwitchStatus(0, 1);
    a->Expand(1);
    Paint();
    EXPECT_TRUE(row->IsRowDisabled());
    auto s = Render();
    CRect sw(row->GetSwitchBoxRect());
    sw.OffsetRect(static_cast<int>(1 - H()), static_cast<int>(1 - V()));
    const int d = sw.left + 18;
    // The band from the dotted line at D is button face, and the label is drawn in shadow.
    EXPECT_EQ(Sys(COLOR_BTNFACE), s->Pixel(d + 1, sw.top + 4));
    const CRect label(row->GetLabelHorizOffset(), static_cast<int>(Top(row)), static_cast<int>(C()),
                      static_cast<int>(Top(row) + 20));
    EXPECT_GT(s->Count(label, Sys(COLOR_3DSHADOW)), 5);
    EXPECT_EQ(0, s->Count(label, RGB(0, 0, 0)));
    row->SetItemSwitchStatus(1, 1);
    Paint();
    EXPECT_FALSE(row->IsRowDisabled());
    auto t = Render();
    EXPECT_GT(t->CountDark(label), 5);
}

TEST_F(PaintTest, PaintingManyTimesAndDestroyingTheTreeLeavesNoHandle)
{
    const long gdi = AfxGetLiveCount(afxLiveGdiObjects);
    const long dcs = AfxGetLiveCount(afxLiveDCs);
    const long lists = AfxGetLiveCount(afxLiveImageLists);
    const long windows = AfxGetLiveCount(afxLiveWindows);
    {
        CKelPropertyTree other;
        ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 200), &parent, 77));
        other.SetTreeItemsSwitchable(1, 1);
        other.SetPopulated(1);
        CKelPropertyTreeItem* top = other.InsertItem(new CountedItem("Top"));
        for (int i = 0; i < 20; ++i)
        {
            CKelPropertyTreeItem* row = other.InsertItem(new PaintedValueItem("row"), top);
            row->SetItemSwitching(1);
            row->SetItemSwitchStatus(i % 3 == 0 ? 0 : 1, 1);
            row->DeleteItem(i % 4 == 0, 0);
            other.SelectItems(row, i % 5 == 0);
        }
        top->Expand(1);
        for (int i = 0; i < 50; ++i)
        {
            other.GetCtrlParent()->Invalidate();
            other.GetCtrlParent()->UpdateWindow();
        }
        other.DestroyWindow();
    }
    kel_test::PumpPending();
    EXPECT_EQ(gdi, AfxGetLiveCount(afxLiveGdiObjects));
    EXPECT_EQ(dcs, AfxGetLiveCount(afxLiveDCs));
    EXPECT_EQ(lists, AfxGetLiveCount(afxLiveImageLists));
    EXPECT_EQ(windows, AfxGetLiveCount(afxLiveWindows));
}

namespace
{
// Pixels of a 16 by 16 area at (left, top) that differ from the image drawn alone on the
// same background.
int DiffersFromImage(const kel_test::DibSurface& s, int left, int top, CImageList* images, int index,
                     COLORREF background)
{
    kel_test::DibSurface alone(16, 16, background);
    images->Draw(&alone.DC(), index, CPoint(0, 0), ILD_TRANSPARENT);
    ::GdiFlush();
    int differing = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            differing += s.Pixel(left + x, top + y) != alone.Pixel(x, y);
    return differing;
}
}

TEST_F(PaintTest, SwitchBoxShowsOffOnAndTheLockedImages)
{
    tree.SetTreeItemsSwitchable(1, 0);   // rows stay usable when switched off
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* row = Add("row", a);
    a->Expand(1);
    row->SetItemSwitching(1);
    auto check = [&](int image) {
        Paint();
        auto s = Render();
        CRect sw(row->GetSwitchBoxRect());
        sw.OffsetRect(static_cast<int>(1 - H()), static_cast<int>(1 - V()));
        return DiffersFromImage(*s, sw.left, sw.top, tree.GetInternalImageList(), image, Sys(COLOR_WINDOW));
    };
    row->SetItemSwitchStatus(0, 1);
    EXPECT_EQ(0, check(PT_IMAGE_SWITCH_OFF));
    row->SetItemSwitchStatus(1, 1);
    EXPECT_EQ(0, check(PT_IMAGE_SWITCH_ON));
    EXPECT_GT(check(PT_IMAGE_SWITCH_OFF), 0);
    row->SetItemSwitching(1, 1);
    EXPECT_EQ(0, check(PT_IMAGE_LOCKED_SWITCH_ON));
    row->SetItemSwitchStatus(0, 1, KPTISM_PROGRAM);
    EXPECT_EQ(0, check(PT_IMAGE_LOCKED_SWITCH_OFF));
    // Below the top level, the box is the expand box grown by 5 and moved 17 right, 2 down.
    EXPECT_EQ(CRect(4 - 5 + 17, 24 - 5 + 2, 12 + 5 + 17, 32 + 5 + 2), CRect(row->GetSwitchBoxRect()));
}

TEST_F(PaintTest, ARowsIconIsDrawnBesideItsExpandBoxAndMovesTheLabel)
{
    const int ids[] = {KX_BMP_DELETED_MARK};
    tree.AddIcons_NA(ids, 1);
    ASSERT_EQ(0, tree.GetImageListNrByIconNr(KX_BMP_DELETED_MARK));
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* row = Add("row", a);
    CKelPropertyTreeItem* plain = Add("plain", a);
    a->Expand(1);
    row->SetIconNr(KX_BMP_DELETED_MARK);
    Paint();
    // Level 1: the expand box moved 18 right and 4 up, then 1 down: drawn at (22, top + 1).
    const int top = static_cast<int>(Top(row));
    auto s = Render();
    EXPECT_EQ(0, DiffersFromImage(*s, 22, top + 1, tree.GetIconImageList(), 0, Sys(COLOR_WINDOW)));
    // The stored point is the drawn one moved by the row's left edge plus 16.
    EXPECT_EQ(CPoint(22 + 0 + 16, top + 1), CPoint(row->GetIconPoint()));
    // The label moves 26 to the right of where it would stand.
    EXPECT_EQ(plain->GetLabelHorizOffset() + 26, row->GetLabelHorizOffset());
}

TEST_F(PaintTest, APaintThatStopsEarlyLeavesThePartOfTheVisibleListItDrew)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("Beta");
    a->Expand(1);
    Paint();
    ASSERT_TRUE(tree.IsItemOnVisibleList(b));
    // Only the first top-level row is drawn, as a paint cut short after it would.
    kel_test::DibSurface surface(Client().Width(), Client().Height());
    tree.ClearVisibleList();
    const long used = a->DrawItem(&surface.DC(), Inner(), 0, 0);
    EXPECT_EQ(40, used);
    EXPECT_TRUE(tree.IsItemOnVisibleList(a));
    EXPECT_TRUE(tree.IsItemOnVisibleList(a1));
    EXPECT_FALSE(tree.IsItemOnVisibleList(b));
    EXPECT_EQ(nullptr, tree.FindItem(CPoint(50, 45)));
    EXPECT_EQ(PTHT_NOWHERE, tree.HitTest(CPoint(50, 45)));
}

TEST_F(PaintTest, AnUnpopulatedTreePaintsNothingAndKeepsItsVisibleList)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    Paint();
    ASSERT_EQ(a, tree.GetVisibleList());
    tree.SetPopulated(0);
    tree.ClearVisibleList();
    Paint();
    EXPECT_EQ(nullptr, tree.GetVisibleList());
    EXPECT_EQ(PTHT_NOT_POPULATED, tree.HitTest(CPoint(50, 5)));
    tree.SetPopulated(1);
    Paint();
    EXPECT_EQ(a, tree.GetVisibleList());
}

TEST_F(PaintTest, TheBackBufferHoldsWhatTheLastPaintShowed)
{
    CKelPropertyTreeItem* a = Add("Alpha");
    tree.InsertItem(new PaintedValueItem("value"), a);
    a->Expand(1);
    Paint();
    auto printed = Render();
    const CRect client = Client();
    kel_test::DibSurface copy(client.Width(), client.Height());
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(&copy.DC()));
    {
        CSelectObjectScope keep(memory, *list->GetBackBuffer());
        copy.DC().BitBlt(0, 0, client.Width(), client.Height(), &memory, 0, 0, SRCCOPY);
    }
    ::GdiFlush();
    int differing = 0;
    for (int y = 0; y < client.Height(); ++y)
        for (int x = 0; x < client.Width(); ++x)
            differing += printed->Pixel(x, y) != copy.Pixel(x, y);
    EXPECT_EQ(0, differing);
    EXPECT_GT(copy.Count(client, RGB(255, 0, 0)), 100);
}

TEST_F(PaintTest, JoinedRowsAreLinkedByAThreePixelDottedLineFromTheExpandBox)
{
    tree.SetJoiningCheckItemResID(50);
    CKelPropertyTreeItem* holder = Add("Holder", nullptr, 50);
    CKelPropertyTreeItem* first = Add("first", holder);
    CKelPropertyTreeItem* second = Add("second", holder);
    Add("inside", first);
    first->SetJoinIdx(3);
    second->SetJoinIdx(3);
    holder->Expand(1);
    Paint();
    const CRect box(first->GetRectExpandBox());
    const int x = box.left + 4;
    const int y0 = static_cast<int>(box.top - V() + 4);
    auto joined = Render();
    const COLORREF shadow = Sys(COLOR_3DSHADOW);
    // Below the box: the middle line on every second pixel from the box's middle, the side
    // lines one pixel lower; down to the middle of a link 40 pixels longer than the box.
    EXPECT_EQ(shadow, joined->Pixel(x, y0 + 6));
    EXPECT_EQ(shadow, joined->Pixel(x, y0 + 18));
    EXPECT_NE(shadow, joined->Pixel(x, y0 + 7));
    EXPECT_EQ(shadow, joined->Pixel(x - 1, y0 + 7));
    EXPECT_EQ(shadow, joined->Pixel(x + 1, y0 + 7));
    EXPECT_NE(shadow, joined->Pixel(x, y0 + 22));
    // Different join indices: no link.
    second->SetJoinIdx(4);
    Paint();
    auto apart = Render();
    EXPECT_NE(shadow, apart->Pixel(x, y0 + 6));
    EXPECT_NE(shadow, apart->Pixel(x - 1, y0 + 7));
}
