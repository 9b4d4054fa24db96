// CPoint, CSize and CRect: the Win32 POINT, SIZE and RECT with the framework's members.
//
//     CRect client(0, 0, 200, 100);
//     client.DeflateRect(4, 4);                  // (4, 4, 196, 96)
//     CRect cell(client.TopLeft(), CSize(50, 20));
//     if (cell.PtInRect(CPoint(10, 10)))
//         ::InvalidateRect(hwnd, cell, FALSE);   // a CRect is an LPCRECT wherever one is asked
//
// Classes: CSize, CPoint, CRect. All are header-only and add no data to the Win32 structure,
// so a CRect can stand wherever a RECT is expected and TopLeft()/BottomRight() are the
// rectangle's own corners. Default construction gives zeros. CRect relies on the Win32
// rectangle functions for emptiness, hit testing, intersection, union and subtraction, so
// they agree with what the system does with the same rectangles.
#pragma once
#include "kelfw/fwdefs.h"

class CPoint;
class CRect;

class CSize : public tagSIZE
{
public:
    // Construction
    CSize() noexcept { cx = 0; cy = 0; }
    CSize(int initCX, int initCY) noexcept { cx = initCX; cy = initCY; }
    CSize(SIZE initSize) noexcept { cx = initSize.cx; cy = initSize.cy; }
    CSize(POINT initPt) noexcept { cx = initPt.x; cy = initPt.y; }
    // The low word is cx, the high word cy, each a signed 16-bit value.
    CSize(DWORD dwSize) noexcept
    {
        cx = static_cast<short>(LOWORD(dwSize));
        cy = static_cast<short>(HIWORD(dwSize));
    }

    // Operations
    bool operator==(SIZE size) const noexcept { return cx == size.cx && cy == size.cy; }
    bool operator!=(SIZE size) const noexcept { return !(*this == size); }
    void operator+=(SIZE size) noexcept { cx += size.cx; cy += size.cy; }
    void operator-=(SIZE size) noexcept { cx -= size.cx; cy -= size.cy; }
    void SetSize(int CX, int CY) noexcept { cx = CX; cy = CY; }

    CSize operator+(SIZE size) const noexcept { return CSize(cx + size.cx, cy + size.cy); }
    CSize operator-(SIZE size) const noexcept { return CSize(cx - size.cx, cy - size.cy); }
    CSize operator-() const noexcept { return CSize(-cx, -cy); }
    CPoint operator+(POINT point) const noexcept;
    CPoint operator-(POINT point) const noexcept;
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

class CPoint : public tagPOINT
{
public:
    // Construction
    CPoint() noexcept { x = 0; y = 0; }
    CPoint(int initX, int initY) noexcept { x = initX; y = initY; }
    CPoint(POINT initPt) noexcept { x = initPt.x; y = initPt.y; }
    CPoint(SIZE initSize) noexcept { x = initSize.cx; y = initSize.cy; }
    // A packed mouse position (lParam of a mouse message): signed low and high words.
    CPoint(LPARAM dwPoint) noexcept
    {
        x = static_cast<short>(LOWORD(dwPoint));
        y = static_cast<short>(HIWORD(dwPoint));
    }

    // Operations
    void Offset(int xOffset, int yOffset) noexcept { x += xOffset; y += yOffset; }
    void Offset(POINT point) noexcept { Offset(point.x, point.y); }
    void Offset(SIZE size) noexcept { Offset(size.cx, size.cy); }
    void SetPoint(int X, int Y) noexcept { x = X; y = Y; }

    bool operator==(POINT point) const noexcept { return x == point.x && y == point.y; }
    bool operator!=(POINT point) const noexcept { return !(*this == point); }
    void operator+=(SIZE size) noexcept { Offset(size); }
    void operator-=(SIZE size) noexcept { Offset(-size.cx, -size.cy); }
    void operator+=(POINT point) noexcept { Offset(point); }
    void operator-=(POINT point) noexcept { Offset(-point.x, -point.y); }

    CPoint operator+(SIZE size) const noexcept { return CPoint(x + size.cx, y + size.cy); }
    CPoint operator-(SIZE size) const noexcept { return CPoint(x - size.cx, y - size.cy); }
    CPoint operator-() const noexcept { return CPoint(-x, -y); }
    CPoint operator+(POINT point) const noexcept { return CPoint(x + point.x, y + point.y); }
    // The distance between two points is a size.
    CSize operator-(POINT point) const noexcept { return CSize(x - point.x, y - point.y); }
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

class CRect : public tagRECT
{
public:
    // Construction
    CRect() noexcept { SetRectEmpty(); }
    CRect(int l, int t, int r, int b) noexcept { SetRect(l, t, r, b); }
    CRect(const RECT& srcRect) noexcept { CopyRect(&srcRect); }
    CRect(LPCRECT lpSrcRect) noexcept { CopyRect(lpSrcRect); }
    CRect(POINT point, SIZE size) noexcept
    {
        SetRect(point.x, point.y, point.x + size.cx, point.y + size.cy);
    }
    CRect(POINT topLeft, POINT bottomRight) noexcept { SetRect(topLeft, bottomRight); }

    // Attributes
    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return CSize(Width(), Height()); }
    // The corners are the rectangle's own fields seen as points: writing to them moves
    // the edges. CPoint adds nothing to POINT, and RECT is two POINTs in a row.
    CPoint& TopLeft() noexcept { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() noexcept { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const noexcept { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const noexcept { return *reinterpret_cast<const CPoint*>(&right); }
    CPoint CenterPoint() const noexcept { return CPoint((left + right) / 2, (top + bottom) / 2); }
    void SwapLeftRight() noexcept { SwapLeftRight(this); }
    static void SwapLeftRight(LPRECT lpRect) noexcept
    {
        const LONG temp = lpRect->left;
        lpRect->left = lpRect->right;
        lpRect->right = temp;
    }
    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }

    // Empty: no area (width or height not positive). Null: all four values are zero.
    BOOL IsRectEmpty() const noexcept { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const noexcept { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    // Inside means left <= x < right and top <= y < bottom.
    BOOL PtInRect(POINT point) const noexcept { return ::PtInRect(this, point); }

    // Operations
    void SetRect(int x1, int y1, int x2, int y2) noexcept
    {
        left = x1;
        top = y1;
        right = x2;
        bottom = y2;
    }
    void SetRect(POINT topLeft, POINT bottomRight) noexcept
    {
        SetRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
    }
    void SetRectEmpty() noexcept { SetRect(0, 0, 0, 0); }
    void CopyRect(LPCRECT lpSrcRect) noexcept
    {
        SetRect(lpSrcRect->left, lpSrcRect->top, lpSrcRect->right, lpSrcRect->bottom);
    }
    BOOL EqualRect(LPCRECT lpRect) const noexcept { return ::EqualRect(this, lpRect); }

    // Inflate moves each edge outwards, deflate inwards.
    void InflateRect(int x, int y) noexcept { InflateRect(x, y, x, y); }
    void InflateRect(SIZE size) noexcept { InflateRect(size.cx, size.cy); }
    void InflateRect(LPCRECT lpRect) noexcept
    {
        InflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    void InflateRect(int l, int t, int r, int b) noexcept
    {
        left -= l;
        top -= t;
        right += r;
        bottom += b;
    }
    void DeflateRect(int x, int y) noexcept { InflateRect(-x, -y); }
    void DeflateRect(SIZE size) noexcept { InflateRect(-size.cx, -size.cy); }
    void DeflateRect(LPCRECT lpRect) noexcept
    {
        InflateRect(-lpRect->left, -lpRect->top, -lpRect->right, -lpRect->bottom);
    }
    void DeflateRect(int l, int t, int r, int b) noexcept { InflateRect(-l, -t, -r, -b); }

    void OffsetRect(int x, int y) noexcept
    {
        left += x;
        right += x;
        top += y;
        bottom += y;
    }
    void OffsetRect(POINT point) noexcept { OffsetRect(point.x, point.y); }
    void OffsetRect(SIZE size) noexcept { OffsetRect(size.cx, size.cy); }
    void MoveToX(int x) noexcept { OffsetRect(x - left, 0); }
    void MoveToY(int y) noexcept { OffsetRect(0, y - top); }
    void MoveToXY(int x, int y) noexcept { OffsetRect(x - left, y - top); }
    void MoveToXY(POINT point) noexcept { MoveToXY(point.x, point.y); }

    // Swaps edges so that left <= right and top <= bottom.
    void NormalizeRect() noexcept
    {
        if (left > right)
            SwapLeftRight();
        if (top > bottom)
        {
            const LONG temp = top;
            top = bottom;
            bottom = temp;
        }
    }

    // Each stores its result here and answers whether it is non-empty; an empty result is
    // stored as (0, 0, 0, 0).
    BOOL IntersectRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept
    {
        return ::IntersectRect(this, lpRect1, lpRect2);
    }
    BOOL UnionRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept
    {
        return ::UnionRect(this, lpRect1, lpRect2);
    }
    BOOL SubtractRect(LPCRECT lpRectSrc1, LPCRECT lpRectSrc2) noexcept
    {
        return ::SubtractRect(this, lpRectSrc1, lpRectSrc2);
    }

    // Scales every edge by nMultiplier / nDivisor, rounded as MulDiv does.
    CRect MulDiv(int nMultiplier, int nDivisor) const noexcept
    {
        return CRect(::MulDiv(left, nMultiplier, nDivisor), ::MulDiv(top, nMultiplier, nDivisor),
                     ::MulDiv(right, nMultiplier, nDivisor), ::MulDiv(bottom, nMultiplier, nDivisor));
    }

    // Operators: + and - with a point or size offset, with a rectangle they inflate or
    // deflate; & is the intersection, | the union.
    CRect& operator=(const RECT& srcRect) noexcept
    {
        CopyRect(&srcRect);
        return *this;
    }
    bool operator==(const RECT& rect) const noexcept { return EqualRect(&rect) != FALSE; }
    bool operator!=(const RECT& rect) const noexcept { return !(*this == rect); }
    void operator+=(POINT point) noexcept { OffsetRect(point); }
    void operator+=(SIZE size) noexcept { OffsetRect(size); }
    void operator+=(LPCRECT lpRect) noexcept { InflateRect(lpRect); }
    void operator-=(POINT point) noexcept { OffsetRect(-point.x, -point.y); }
    void operator-=(SIZE size) noexcept { OffsetRect(-size.cx, -size.cy); }
    void operator-=(LPCRECT lpRect) noexcept { DeflateRect(lpRect); }
    void operator&=(const RECT& rect) noexcept { ::IntersectRect(this, this, &rect); }
    void operator|=(const RECT& rect) noexcept { ::UnionRect(this, this, &rect); }

    CRect operator+(POINT point) const noexcept
    {
        CRect rect(*this);
        rect.OffsetRect(point);
        return rect;
    }
    CRect operator-(POINT point) const noexcept
    {
        CRect rect(*this);
        rect.OffsetRect(-point.x, -point.y);
        return rect;
    }
    CRect operator+(SIZE size) const noexcept
    {
        CRect rect(*this);
        rect.OffsetRect(size);
        return rect;
    }
    CRect operator-(SIZE size) const noexcept
    {
        CRect rect(*this);
        rect.OffsetRect(-size.cx, -size.cy);
        return rect;
    }
    CRect operator+(LPCRECT lpRect) const noexcept
    {
        CRect rect(*this);
        rect.InflateRect(lpRect);
        return rect;
    }
    CRect operator-(LPCRECT lpRect) const noexcept
    {
        CRect rect(*this);
        rect.DeflateRect(lpRect);
        return rect;
    }
    CRect operator&(const RECT& rect2) const noexcept
    {
        CRect rect;
        ::IntersectRect(&rect, this, &rect2);
        return rect;
    }
    CRect operator|(const RECT& rect2) const noexcept
    {
        CRect rect;
        ::UnionRect(&rect, this, &rect2);
        return rect;
    }
};

inline CPoint CSize::operator+(POINT point) const noexcept
{
    return CPoint(cx + point.x, cy + point.y);
}

inline CPoint CSize::operator-(POINT point) const noexcept
{
    return CPoint(cx - point.x, cy - point.y);
}

inline CRect CSize::operator+(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) + *this;
}

inline CRect CSize::operator-(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) - *this;
}

inline CRect CPoint::operator+(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) + *this;
}

inline CRect CPoint::operator-(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) - *this;
}
