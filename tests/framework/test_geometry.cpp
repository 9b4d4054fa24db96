// Tests of CPoint, CSize and CRect: construction, arithmetic, and the rectangle operations.
#include "kelfw/fwgeometry.h"

#include <gtest/gtest.h>

namespace
{
void ExpectRect(const RECT& rect, int l, int t, int r, int b)
{
    EXPECT_EQ(l, rect.left);
    EXPECT_EQ(t, rect.top);
    EXPECT_EQ(r, rect.right);
    EXPECT_EQ(b, rect.bottom);
}

// Takes a rectangle the way Win32 functions do, to check the implicit conversions.
int AreaOf(LPCRECT rect)
{
    return (rect->right - rect->left) * (rect->bottom - rect->top);
}

void Widen(LPRECT rect)
{
    rect->right += 10;
}
} // namespace

// --- CSize ---------------------------------------------------------------------------------------

TEST(CSize, DefaultIsZero)
{
    const CSize size;
    EXPECT_EQ(0, size.cx);
    EXPECT_EQ(0, size.cy);
}

TEST(CSize, ConstructsFromValuesSizePointAndPackedWord)
{
    const CSize a(3, -4);
    EXPECT_EQ(3, a.cx);
    EXPECT_EQ(-4, a.cy);
    SIZE raw = {7, 8};
    EXPECT_EQ(CSize(7, 8), CSize(raw));
    POINT pt = {-1, 2};
    EXPECT_EQ(CSize(-1, 2), CSize(pt));
    EXPECT_EQ(CSize(5, -2), CSize(static_cast<DWORD>(MAKELONG(5, -2))));
}

TEST(CSize, EqualityComparesBothFields)
{
    EXPECT_TRUE(CSize(1, 2) == CSize(1, 2));
    EXPECT_FALSE(CSize(1, 2) == CSize(2, 1));
    EXPECT_TRUE(CSize(1, 2) != CSize(1, 3));
    EXPECT_FALSE(CSize(1, 2) != CSize(1, 2));
}

TEST(CSize, ArithmeticWithSizes)
{
    CSize size(10, 20);
    size += CSize(1, 2);
    EXPECT_EQ(CSize(11, 22), size);
    size -= CSize(5, 5);
    EXPECT_EQ(CSize(6, 17), size);
    EXPECT_EQ(CSize(8, 20), size + CSize(2, 3));
    EXPECT_EQ(CSize(4, 14), size - CSize(2, 3));
    EXPECT_EQ(CSize(-6, -17), -size);
    size.SetSize(-1, 9);
    EXPECT_EQ(CSize(-1, 9), size);
}

TEST(CSize, PlusPointGivesPoint)
{
    const CPoint p = CSize(2, 3) + CPoint(10, 20);
    EXPECT_EQ(CPoint(12, 23), p);
    const CPoint q = CSize(2, 3) - CPoint(10, 20);
    EXPECT_EQ(CPoint(-8, -17), q);
}

TEST(CSize, PlusRectOffsetsRect)
{
    const CRect rect(0, 0, 10, 10);
    ExpectRect(CSize(5, 6) + &rect, 5, 6, 15, 16);
    ExpectRect(CSize(5, 6) - &rect, -5, -6, 5, 4);
}

// --- CPoint --------------------------------------------------------------------------------------

TEST(CPoint, DefaultIsZero)
{
    const CPoint pt;
    EXPECT_EQ(0, pt.x);
    EXPECT_EQ(0, pt.y);
}

TEST(CPoint, ConstructsFromValuesPointAndSize)
{
    const CPoint a(4, -5);
    EXPECT_EQ(4, a.x);
    EXPECT_EQ(-5, a.y);
    POINT raw = {1, 2};
    EXPECT_EQ(CPoint(1, 2), CPoint(raw));
    SIZE size = {3, 4};
    EXPECT_EQ(CPoint(3, 4), CPoint(size));
}

TEST(CPoint, ConstructsFromMouseLParamWithSign)
{
    const LPARAM lParam = MAKELPARAM(static_cast<WORD>(-12), 300);
    const CPoint pt(lParam);
    EXPECT_EQ(-12, pt.x);
    EXPECT_EQ(300, pt.y);
    const CPoint neg(MAKELPARAM(20, static_cast<WORD>(-7)));
    EXPECT_EQ(CPoint(20, -7), neg);
}

TEST(CPoint, OffsetFormsMoveThePoint)
{
    CPoint pt(1, 1);
    pt.Offset(2, 3);
    EXPECT_EQ(CPoint(3, 4), pt);
    pt.Offset(CPoint(-1, -1));
    EXPECT_EQ(CPoint(2, 3), pt);
    pt.Offset(CSize(10, 0));
    EXPECT_EQ(CPoint(12, 3), pt);
    pt.SetPoint(-4, 8);
    EXPECT_EQ(CPoint(-4, 8), pt);
}

TEST(CPoint, EqualityComparesBothFields)
{
    EXPECT_TRUE(CPoint(1, 2) == CPoint(1, 2));
    EXPECT_FALSE(CPoint(1, 2) == CPoint(1, 3));
    EXPECT_TRUE(CPoint(1, 2) != CPoint(0, 2));
    EXPECT_FALSE(CPoint(1, 2) != CPoint(1, 2));
}

TEST(CPoint, CompoundAssignmentWithSizeAndPoint)
{
    CPoint pt(10, 10);
    pt += CSize(1, 2);
    EXPECT_EQ(CPoint(11, 12), pt);
    pt -= CSize(1, 2);
    EXPECT_EQ(CPoint(10, 10), pt);
    pt += CPoint(5, -5);
    EXPECT_EQ(CPoint(15, 5), pt);
    pt -= CPoint(15, 5);
    EXPECT_EQ(CPoint(0, 0), pt);
}

TEST(CPoint, BinaryOperatorsGiveExpectedTypes)
{
    const CPoint a(10, 20);
    const CPoint b(3, 4);
    const CPoint sum = a + b;
    EXPECT_EQ(CPoint(13, 24), sum);
    const CSize difference = a - b;
    EXPECT_EQ(CSize(7, 16), difference);
    const CPoint moved = a + CSize(1, 1);
    EXPECT_EQ(CPoint(11, 21), moved);
    const CPoint back = a - CSize(1, 1);
    EXPECT_EQ(CPoint(9, 19), back);
    EXPECT_EQ(CPoint(-10, -20), -a);
}

TEST(CPoint, PlusRectOffsetsRect)
{
    const CRect rect(1, 1, 2, 2);
    ExpectRect(CPoint(10, 20) + &rect, 11, 21, 12, 22);
    ExpectRect(CPoint(10, 20) - &rect, -9, -19, -8, -18);
}

// --- CRect: construction and attributes ------------------------------------------------------------

TEST(CRect, DefaultIsNullAndEmpty)
{
    const CRect rect;
    ExpectRect(rect, 0, 0, 0, 0);
    EXPECT_TRUE(rect.IsRectNull());
    EXPECT_TRUE(rect.IsRectEmpty());
}

TEST(CRect, ConstructsFromEdgesRectPointerPointSizeAndCorners)
{
    ExpectRect(CRect(1, 2, 3, 4), 1, 2, 3, 4);
    RECT raw = {5, 6, 7, 8};
    ExpectRect(CRect(raw), 5, 6, 7, 8);
    ExpectRect(CRect(&raw), 5, 6, 7, 8);
    ExpectRect(CRect(CPoint(10, 20), CSize(30, 40)), 10, 20, 40, 60);
    ExpectRect(CRect(CPoint(10, 20), CPoint(30, 40)), 10, 20, 30, 40);
}

TEST(CRect, WidthHeightAndSize)
{
    const CRect rect(10, 20, 110, 70);
    EXPECT_EQ(100, rect.Width());
    EXPECT_EQ(50, rect.Height());
    EXPECT_EQ(CSize(100, 50), rect.Size());
}

TEST(CRect, WidthOfInvertedRectIsNegative)
{
    const CRect rect(10, 10, 0, 5);
    EXPECT_EQ(-10, rect.Width());
    EXPECT_EQ(-5, rect.Height());
}

TEST(CRect, CornersAreReferencesToEdges)
{
    CRect rect(1, 2, 3, 4);
    EXPECT_EQ(CPoint(1, 2), rect.TopLeft());
    EXPECT_EQ(CPoint(3, 4), rect.BottomRight());
    rect.TopLeft() = CPoint(-1, -2);
    rect.BottomRight().Offset(10, 10);
    ExpectRect(rect, -1, -2, 13, 14);
    EXPECT_EQ(static_cast<void*>(&rect.left), static_cast<void*>(&rect.TopLeft()));
    EXPECT_EQ(static_cast<void*>(&rect.right), static_cast<void*>(&rect.BottomRight()));
    const CRect& constRect = rect;
    EXPECT_EQ(CPoint(13, 14), constRect.BottomRight());
}

TEST(CRect, CenterPointIsMidpointRoundedTowardZero)
{
    EXPECT_EQ(CPoint(5, 10), CRect(0, 0, 10, 20).CenterPoint());
    EXPECT_EQ(CPoint(5, 5), CRect(0, 0, 11, 11).CenterPoint());
    EXPECT_EQ(CPoint(-5, 0), CRect(-10, -1, 0, 1).CenterPoint());
}

TEST(CRect, ConvertsToRectPointers)
{
    CRect rect(0, 0, 4, 5);
    EXPECT_EQ(20, AreaOf(rect));
    Widen(rect);
    ExpectRect(rect, 0, 0, 14, 5);
    const LPCRECT p = rect;
    EXPECT_EQ(static_cast<const RECT*>(&rect), p);
}

TEST(CRect, WorksWithWin32Functions)
{
    CRect rect(0, 0, 10, 10);
    ASSERT_TRUE(::OffsetRect(rect, 3, 4));
    ExpectRect(rect, 3, 4, 13, 14);
}

// --- CRect: empty, null, hit testing --------------------------------------------------------------

TEST(CRect, IsRectEmptyWhenNoArea)
{
    EXPECT_FALSE(CRect(0, 0, 1, 1).IsRectEmpty());
    EXPECT_TRUE(CRect(0, 0, 0, 5).IsRectEmpty());
    EXPECT_TRUE(CRect(0, 0, 5, 0).IsRectEmpty());
    EXPECT_TRUE(CRect(5, 5, 0, 10).IsRectEmpty());
    EXPECT_TRUE(CRect(5, 5, 10, 0).IsRectEmpty());
}

TEST(CRect, IsRectNullOnlyWhenAllZero)
{
    EXPECT_TRUE(CRect(0, 0, 0, 0).IsRectNull());
    EXPECT_FALSE(CRect(1, 1, 1, 1).IsRectNull());
    EXPECT_TRUE(CRect(1, 1, 1, 1).IsRectEmpty());
    EXPECT_FALSE(CRect(0, 0, 0, 1).IsRectNull());
}

TEST(CRect, PtInRectIncludesTopLeftExcludesBottomRight)
{
    const CRect rect(10, 10, 20, 20);
    EXPECT_TRUE(rect.PtInRect(CPoint(10, 10)));
    EXPECT_TRUE(rect.PtInRect(CPoint(19, 19)));
    EXPECT_TRUE(rect.PtInRect(CPoint(15, 12)));
    EXPECT_FALSE(rect.PtInRect(CPoint(20, 15)));
    EXPECT_FALSE(rect.PtInRect(CPoint(15, 20)));
    EXPECT_FALSE(rect.PtInRect(CPoint(9, 15)));
    EXPECT_FALSE(CRect(0, 0, 0, 0).PtInRect(CPoint(0, 0)));
}

// --- CRect: setting and comparing ------------------------------------------------------------------

TEST(CRect, SetRectFormsAndSetRectEmpty)
{
    CRect rect;
    rect.SetRect(1, 2, 3, 4);
    ExpectRect(rect, 1, 2, 3, 4);
    rect.SetRect(CPoint(5, 6), CPoint(7, 8));
    ExpectRect(rect, 5, 6, 7, 8);
    rect.SetRectEmpty();
    EXPECT_TRUE(rect.IsRectNull());
}

TEST(CRect, CopyRectAndAssignment)
{
    const RECT raw = {9, 8, 7, 6};
    CRect rect;
    rect.CopyRect(&raw);
    ExpectRect(rect, 9, 8, 7, 6);
    CRect other;
    other = raw;
    ExpectRect(other, 9, 8, 7, 6);
    CRect third(1, 1, 2, 2);
    third = rect;
    ExpectRect(third, 9, 8, 7, 6);
}

TEST(CRect, EqualRectAndOperatorsCompareAllEdges)
{
    const CRect a(1, 2, 3, 4);
    const CRect b(1, 2, 3, 4);
    const CRect c(1, 2, 3, 5);
    EXPECT_TRUE(a.EqualRect(&b));
    EXPECT_FALSE(a.EqualRect(&c));
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(a != c);
    EXPECT_FALSE(a != b);
    const RECT raw = {1, 2, 3, 4};
    EXPECT_TRUE(a == raw);
}

// --- CRect: inflate, deflate, offset, move ---------------------------------------------------------

TEST(CRect, InflateRectAllForms)
{
    CRect rect(10, 10, 20, 20);
    rect.InflateRect(1, 2);
    ExpectRect(rect, 9, 8, 21, 22);
    rect.InflateRect(CSize(1, 1));
    ExpectRect(rect, 8, 7, 22, 23);
    const RECT sides = {1, 2, 3, 4};
    rect.InflateRect(&sides);
    ExpectRect(rect, 7, 5, 25, 27);
    rect.InflateRect(1, 0, 0, 1);
    ExpectRect(rect, 6, 5, 25, 28);
}

TEST(CRect, DeflateRectAllForms)
{
    CRect rect(0, 0, 100, 100);
    rect.DeflateRect(1, 2);
    ExpectRect(rect, 1, 2, 99, 98);
    rect.DeflateRect(CSize(1, 1));
    ExpectRect(rect, 2, 3, 98, 97);
    const RECT sides = {1, 2, 3, 4};
    rect.DeflateRect(&sides);
    ExpectRect(rect, 3, 5, 95, 93);
    rect.DeflateRect(3, 0, 0, 3);
    ExpectRect(rect, 6, 5, 95, 90);
}

TEST(CRect, DeflatePastCentreInvertsRect)
{
    CRect rect(0, 0, 10, 10);
    rect.DeflateRect(6, 6);
    ExpectRect(rect, 6, 6, 4, 4);
    EXPECT_TRUE(rect.IsRectEmpty());
    EXPECT_EQ(-2, rect.Width());
}

TEST(CRect, OffsetRectAllForms)
{
    CRect rect(0, 0, 10, 10);
    rect.OffsetRect(5, -5);
    ExpectRect(rect, 5, -5, 15, 5);
    rect.OffsetRect(CPoint(-5, 5));
    ExpectRect(rect, 0, 0, 10, 10);
    rect.OffsetRect(CSize(2, 3));
    ExpectRect(rect, 2, 3, 12, 13);
}

TEST(CRect, MoveToKeepsSize)
{
    CRect rect(10, 20, 40, 60);
    rect.MoveToX(0);
    ExpectRect(rect, 0, 20, 30, 60);
    rect.MoveToY(0);
    ExpectRect(rect, 0, 0, 30, 40);
    rect.MoveToXY(5, 6);
    ExpectRect(rect, 5, 6, 35, 46);
    rect.MoveToXY(CPoint(-1, -1));
    ExpectRect(rect, -1, -1, 29, 39);
}

// --- CRect: normalisation --------------------------------------------------------------------------

TEST(CRect, NormalizeRectSwapsInvertedEdges)
{
    CRect rect(20, 30, 10, 5);
    rect.NormalizeRect();
    ExpectRect(rect, 10, 5, 20, 30);
    EXPECT_FALSE(rect.IsRectEmpty());
}

TEST(CRect, NormalizeRectFixesOneAxisOnly)
{
    CRect horizontal(20, 0, 10, 5);
    horizontal.NormalizeRect();
    ExpectRect(horizontal, 10, 0, 20, 5);
    CRect vertical(0, 9, 5, 1);
    vertical.NormalizeRect();
    ExpectRect(vertical, 0, 1, 5, 9);
}

TEST(CRect, NormalizeRectLeavesNormalRectAlone)
{
    CRect rect(1, 2, 3, 4);
    rect.NormalizeRect();
    ExpectRect(rect, 1, 2, 3, 4);
    CRect flat(5, 5, 5, 5);
    flat.NormalizeRect();
    ExpectRect(flat, 5, 5, 5, 5);
}

TEST(CRect, SwapLeftRightExchangesHorizontalEdges)
{
    CRect rect(1, 2, 3, 4);
    rect.SwapLeftRight();
    ExpectRect(rect, 3, 2, 1, 4);
    RECT raw = {5, 6, 7, 8};
    CRect::SwapLeftRight(&raw);
    ExpectRect(raw, 7, 6, 5, 8);
}

// --- CRect: intersection, union, subtraction -------------------------------------------------------

TEST(CRect, IntersectRectOfOverlappingRects)
{
    const CRect a(0, 0, 10, 10);
    const CRect b(5, 5, 15, 15);
    CRect result;
    EXPECT_TRUE(result.IntersectRect(a, b));
    ExpectRect(result, 5, 5, 10, 10);
}

TEST(CRect, IntersectRectOfDisjointRectsIsNull)
{
    const CRect a(0, 0, 10, 10);
    const CRect b(20, 20, 30, 30);
    CRect result(1, 2, 3, 4);
    EXPECT_FALSE(result.IntersectRect(a, b));
    EXPECT_TRUE(result.IsRectNull());
}

TEST(CRect, IntersectRectOfTouchingRectsIsEmpty)
{
    const CRect a(0, 0, 10, 10);
    const CRect b(10, 0, 20, 10);
    CRect result;
    EXPECT_FALSE(result.IntersectRect(a, b));
    EXPECT_TRUE(result.IsRectEmpty());
}

TEST(CRect, IntersectRectWithContainedRect)
{
    const CRect outer(0, 0, 100, 100);
    const CRect inner(10, 20, 30, 40);
    CRect result;
    EXPECT_TRUE(result.IntersectRect(outer, inner));
    EXPECT_EQ(inner, result);
}

TEST(CRect, IntersectRectIntoOneOfItsSources)
{
    CRect a(0, 0, 10, 10);
    const CRect b(3, -5, 8, 4);
    EXPECT_TRUE(a.IntersectRect(a, b));
    ExpectRect(a, 3, 0, 8, 4);
}

TEST(CRect, UnionRectSpansBoth)
{
    const CRect a(0, 0, 10, 10);
    const CRect b(20, 5, 30, 40);
    CRect result;
    EXPECT_TRUE(result.UnionRect(a, b));
    ExpectRect(result, 0, 0, 30, 40);
}

TEST(CRect, UnionRectIgnoresEmptyRect)
{
    const CRect a(5, 5, 10, 10);
    const CRect empty(100, 100, 100, 200);
    CRect result;
    EXPECT_TRUE(result.UnionRect(a, empty));
    EXPECT_EQ(a, result);
    EXPECT_TRUE(result.UnionRect(empty, a));
    EXPECT_EQ(a, result);
}

TEST(CRect, UnionRectOfTwoEmptyRectsIsNull)
{
    const CRect a(1, 1, 1, 5);
    const CRect b(7, 7, 3, 3);
    CRect result(1, 2, 3, 4);
    EXPECT_FALSE(result.UnionRect(a, b));
    EXPECT_TRUE(result.IsRectNull());
}

TEST(CRect, SubtractRectCutsFullSide)
{
    const CRect source(0, 0, 100, 50);
    const CRect right(60, -10, 200, 60);
    CRect result;
    EXPECT_TRUE(result.SubtractRect(source, right));
    ExpectRect(result, 0, 0, 60, 50);
    const CRect top(-10, -10, 110, 20);
    EXPECT_TRUE(result.SubtractRect(source, top));
    ExpectRect(result, 0, 20, 100, 50);
}

TEST(CRect, SubtractRectOfPartialOverlapKeepsSource)
{
    // Taking a corner away leaves no rectangle, so the source stays as it was.
    const CRect source(0, 0, 100, 100);
    const CRect corner(50, 50, 150, 150);
    CRect result;
    EXPECT_TRUE(result.SubtractRect(source, corner));
    EXPECT_EQ(source, result);
}

TEST(CRect, SubtractRectOfCoveringRectIsEmpty)
{
    const CRect source(10, 10, 20, 20);
    const CRect cover(0, 0, 30, 30);
    CRect result(1, 2, 3, 4);
    EXPECT_FALSE(result.SubtractRect(source, cover));
    EXPECT_TRUE(result.IsRectEmpty());
}

// --- CRect: operators ----------------------------------------------------------------------------

TEST(CRect, CompoundOperatorsOffsetOrInflate)
{
    CRect rect(0, 0, 10, 10);
    rect += CPoint(1, 2);
    ExpectRect(rect, 1, 2, 11, 12);
    rect -= CPoint(1, 2);
    ExpectRect(rect, 0, 0, 10, 10);
    rect += CSize(3, 3);
    ExpectRect(rect, 3, 3, 13, 13);
    rect -= CSize(3, 3);
    ExpectRect(rect, 0, 0, 10, 10);
    const RECT sides = {1, 1, 2, 2};
    rect += &sides;
    ExpectRect(rect, -1, -1, 12, 12);
    rect -= &sides;
    ExpectRect(rect, 0, 0, 10, 10);
}

TEST(CRect, IntersectAndUnionAssignment)
{
    CRect rect(0, 0, 10, 10);
    rect &= CRect(5, 5, 20, 20);
    ExpectRect(rect, 5, 5, 10, 10);
    rect |= CRect(0, 0, 1, 1);
    ExpectRect(rect, 0, 0, 10, 10);
    rect &= CRect(50, 50, 60, 60);
    EXPECT_TRUE(rect.IsRectNull());
}

TEST(CRect, BinaryOperatorsLeaveOperandUnchanged)
{
    const CRect rect(0, 0, 10, 10);
    ExpectRect(rect + CPoint(1, 1), 1, 1, 11, 11);
    ExpectRect(rect - CPoint(1, 1), -1, -1, 9, 9);
    ExpectRect(rect + CSize(2, 0), 2, 0, 12, 10);
    ExpectRect(rect - CSize(0, 2), 0, -2, 10, 8);
    const RECT sides = {1, 2, 3, 4};
    ExpectRect(rect + &sides, -1, -2, 13, 14);
    ExpectRect(rect - &sides, 1, 2, 7, 6);
    ExpectRect(rect & CRect(5, -5, 15, 5), 5, 0, 10, 5);
    ExpectRect(rect | CRect(5, -5, 15, 5), 0, -5, 15, 10);
    ExpectRect(rect, 0, 0, 10, 10);
}

TEST(CRect, IntersectOperatorOfDisjointRectsIsNull)
{
    const CRect result = CRect(0, 0, 5, 5) & CRect(6, 6, 9, 9);
    EXPECT_TRUE(result.IsRectNull());
}

TEST(CRect, MulDivScalesEdges)
{
    const CRect rect(10, 20, 30, 41);
    ExpectRect(rect.MulDiv(3, 2), 15, 30, 45, 62);
    ExpectRect(rect.MulDiv(1, 1), 10, 20, 30, 41);
    ExpectRect(CRect(-3, 0, 3, 0).MulDiv(1, 2), -2, 0, 2, 0);
}
