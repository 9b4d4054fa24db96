// Tests of the device contexts: ownership and live counts, selection and the selection
// scope, drawing read back from a DIB section, and the paint/client/window contexts on a
// real window.
#include "kelfw/fwdc.h"
#include "kelfw/fwgdi.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwstring.h"
#include "kelfw/fwwnd.h"

#include <gtest/gtest.h>

#include "dibsurface.h"

#include <type_traits>
#include <vector>

static_assert(!std::is_copy_constructible<CDC>::value, "contexts are not copied");
static_assert(!std::is_copy_constructible<CSelectObjectScope>::value, "one restore per selection");

namespace
{
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);
const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kGreen = RGB(0, 255, 0);
const COLORREF kBlue = RGB(0, 0, 255);

long DcCount()
{
    return AfxGetLiveCount(afxLiveDCs);
}

using kel_test::DibSurface;

// ---------------------------------------------------------------------------------------
// A plain test window whose WM_PAINT paints through CPaintDC and records what it saw.

const COLORREF kPaintColour = RGB(12, 200, 34);

struct PaintRecord
{
    int nPaints = 0;
    HDC hDC = nullptr;
    bool bPsMatches = false;
    RECT rcPaint = {};
    long dcCountInside = 0;
};
PaintRecord g_paint;

LRESULT CALLBACK PaintTestWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    if (nMsg == WM_PAINT)
    {
        CWnd wrapper(hWnd);
        CPaintDC dc(&wrapper);
        ++g_paint.nPaints;
        g_paint.hDC = dc.m_hDC;
        g_paint.bPsMatches = dc.m_ps.hdc == dc.m_hDC && dc.m_hWnd == hWnd;
        g_paint.rcPaint = dc.m_ps.rcPaint;
        g_paint.dcCountInside = DcCount();
        RECT rcClient = {};
        ::GetClientRect(hWnd, &rcClient);
        dc.FillSolidRect(&rcClient, kPaintColour);
        return 0;
    }
    if (nMsg == WM_ERASEBKGND)
        return 1;
    return ::DefWindowProc(hWnd, nMsg, wParam, lParam);
}

const char* PaintTestClass()
{
    static const char* s_name = [] {
        WNDCLASSEX wc = {};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = PaintTestWndProc;
        wc.hInstance = ::GetModuleHandle(nullptr);
        wc.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
        wc.lpszClassName = "KelFwDcTestWindow";
        ::RegisterClassEx(&wc);
        return "KelFwDcTestWindow";
    }();
    return s_name;
}

void PumpMessages()
{
    MSG msg;
    while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    }
}

// A visible top-level test window, destroyed with the object.
class TestWindow
{
public:
    TestWindow()
    {
        m_hWnd = ::CreateWindowEx(0, PaintTestClass(), "DC test", WS_POPUP | WS_BORDER, 60, 60,
                                  240, 160, nullptr, nullptr, ::GetModuleHandle(nullptr), nullptr);
        // A bordered popup shown without activation: a captioned or activated window costs
        // Wine's X11 driver two seconds on destruction when no window manager runs.
        if (m_hWnd != nullptr)
            ::ShowWindow(m_hWnd, SW_SHOWNOACTIVATE);
        PumpMessages();
    }
    ~TestWindow()
    {
        if (m_hWnd != nullptr)
            ::DestroyWindow(m_hWnd);
        PumpMessages();
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    HWND m_hWnd = nullptr;
};
}

// ---------------------------------------------------------------------------------------
// Ownership and live counts

TEST(DCOwner, CompatibleDCIsDeletedWithItsOwner)
{
    const long before = DcCount();
    HDC hDC = nullptr;
    {
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        hDC = dc;
        EXPECT_EQ(hDC, dc.GetSafeHdc());
        EXPECT_EQ(hDC, dc.m_hAttribDC);
        EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), ::GetObjectType(hDC));
        EXPECT_EQ(before + 1, DcCount());
    }
    EXPECT_EQ(0u, ::GetObjectType(hDC));
    EXPECT_EQ(before, DcCount());
}

TEST(DCOwner, CreateDCOfTheDisplayIsDeletedWithItsOwner)
{
    const long before = DcCount();
    HDC hDC = nullptr;
    {
        CDC dc;
        ASSERT_TRUE(dc.CreateDC("DISPLAY", nullptr, nullptr, nullptr));
        hDC = dc;
        EXPECT_EQ(static_cast<DWORD>(OBJ_DC), ::GetObjectType(hDC));
        EXPECT_GT(dc.GetDeviceCaps(HORZRES), 0);
        EXPECT_EQ(before + 1, DcCount());
    }
    EXPECT_EQ(0u, ::GetObjectType(hDC));
    EXPECT_EQ(before, DcCount());
}

TEST(DCOwner, DetachLeavesTheContextAlive)
{
    const long before = DcCount();
    HDC hDC = nullptr;
    {
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        hDC = dc.Detach();
        EXPECT_EQ(nullptr, dc.m_hDC);
        EXPECT_EQ(nullptr, dc.m_hAttribDC);
        EXPECT_EQ(before, DcCount());
    }
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), ::GetObjectType(hDC));
    EXPECT_TRUE(::DeleteDC(hDC));
}

TEST(DCOwner, AttachOfForeignContextTakesOwnership)
{
    const long before = DcCount();
    HDC hRaw = ::CreateCompatibleDC(nullptr);
    ASSERT_NE(hRaw, nullptr);
    {
        CDC dc;
        EXPECT_TRUE(dc.Attach(hRaw));
        EXPECT_EQ(before + 1, DcCount());
    }
    EXPECT_EQ(0u, ::GetObjectType(hRaw));
    EXPECT_EQ(before, DcCount());
}

TEST(DCOwner, DeleteDCDeletesNowAndOnlyOnce)
{
    const long before = DcCount();
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    HDC hDC = dc;
    EXPECT_TRUE(dc.DeleteDC());
    EXPECT_EQ(0u, ::GetObjectType(hDC));
    EXPECT_EQ(before, DcCount());
    EXPECT_FALSE(dc.DeleteDC());
    EXPECT_EQ(before, DcCount());
}

TEST(DCTemporary, FromHandleBorrowsAndNeverDeletes)
{
    const long before = DcCount();
    HDC hRaw = ::CreateCompatibleDC(nullptr);
    ASSERT_NE(hRaw, nullptr);
    CDC* pDC = CDC::FromHandle(hRaw);
    ASSERT_NE(pDC, nullptr);
    EXPECT_TRUE(pDC->IsTemporary());
    EXPECT_EQ(hRaw, pDC->m_hDC);
    EXPECT_EQ(pDC, CDC::FromHandle(hRaw));
    EXPECT_EQ(nullptr, CDC::FromHandle(nullptr));
    EXPECT_EQ(before, DcCount());

    AfxDeleteTempGdiMap();
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), ::GetObjectType(hRaw));
    EXPECT_EQ(before, DcCount());
    EXPECT_TRUE(::DeleteDC(hRaw));
}

// ---------------------------------------------------------------------------------------
// Selection

TEST(DCSelect, SelectObjectAnswersThePreviousObject)
{
    DibSurface surface(8, 8);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    const long gdiBefore = AfxGetLiveCount(afxLiveGdiObjects);

    HGDIOBJ hPenBefore = ::GetCurrentObject(dc, OBJ_PEN);
    CPen pen(PS_SOLID, 1, kRed);
    CPen* pOld = dc.SelectObject(&pen);
    ASSERT_NE(pOld, nullptr);
    EXPECT_TRUE(pOld->IsTemporary());
    EXPECT_EQ(hPenBefore, pOld->m_hObject);
    EXPECT_EQ(pen.m_hObject, ::GetCurrentObject(dc, OBJ_PEN));
    EXPECT_EQ(pen.m_hObject, dc.GetCurrentPen()->m_hObject);

    CPen* pMine = dc.SelectObject(pOld);
    EXPECT_EQ(pen.m_hObject, pMine->m_hObject);
    EXPECT_EQ(hPenBefore, ::GetCurrentObject(dc, OBJ_PEN));

    CBitmap* pOldBitmap = dc.GetCurrentBitmap();
    EXPECT_EQ(surface.Bitmap(), static_cast<HBITMAP>(*pOldBitmap));

    // The wrappers handed out count nothing and delete nothing.
    AfxDeleteTempGdiMap();
    EXPECT_EQ(gdiBefore + 1, AfxGetLiveCount(afxLiveGdiObjects));
    EXPECT_EQ(static_cast<DWORD>(OBJ_PEN), ::GetObjectType(hPenBefore));
}

TEST(DCSelect, EachOverloadSelectsItsKind)
{
    DibSurface surface(8, 8);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();

    CBrush brush(kGreen);
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(100, "Arial"));
    HGDIOBJ hBrushBefore = ::GetCurrentObject(dc, OBJ_BRUSH);
    HGDIOBJ hFontBefore = ::GetCurrentObject(dc, OBJ_FONT);

    EXPECT_EQ(hBrushBefore, dc.SelectObject(&brush)->m_hObject);
    EXPECT_EQ(hFontBefore, dc.SelectObject(&font)->m_hObject);
    EXPECT_EQ(brush.m_hObject, dc.GetCurrentBrush()->m_hObject);
    EXPECT_EQ(font.m_hObject, dc.GetCurrentFont()->m_hObject);

    CGdiObject* pOld = dc.SelectObject(static_cast<CGdiObject*>(CBrush::FromHandle(
        static_cast<HBRUSH>(hBrushBefore))));
    EXPECT_EQ(brush.m_hObject, pOld->m_hObject);

    CGdiObject* pStockOld = dc.SelectStockObject(SYSTEM_FONT);
    EXPECT_EQ(font.m_hObject, pStockOld->m_hObject);
    EXPECT_EQ(::GetStockObject(SYSTEM_FONT), ::GetCurrentObject(dc, OBJ_FONT));

    EXPECT_EQ(nullptr, dc.SelectObject(static_cast<CPen*>(nullptr)));
    AfxDeleteTempGdiMap();
}

TEST(DCSelect, ScopeRestoresTheOldObjectOnExit)
{
    DibSurface surface(8, 8);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    HGDIOBJ hBrushBefore = ::GetCurrentObject(dc, OBJ_BRUSH);
    HGDIOBJ hFontBefore = ::GetCurrentObject(dc, OBJ_FONT);
    CBrush brush(kBlue);
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(80, "Arial"));
    {
        CSelectObjectScope keepBrush(dc, brush);
        CSelectObjectScope keepFont(&dc, &font);
        EXPECT_EQ(hBrushBefore, keepBrush.GetOldObject());
        EXPECT_EQ(hFontBefore, keepFont.GetOldObject());
        EXPECT_EQ(brush.m_hObject, ::GetCurrentObject(dc, OBJ_BRUSH));
        EXPECT_EQ(font.m_hObject, ::GetCurrentObject(dc, OBJ_FONT));
    }
    EXPECT_EQ(hBrushBefore, ::GetCurrentObject(dc, OBJ_BRUSH));
    EXPECT_EQ(hFontBefore, ::GetCurrentObject(dc, OBJ_FONT));
}

TEST(DCSelect, ScopeOnARawContextRestoresEarlyOnRequest)
{
    DibSurface surface(8, 8);
    ASSERT_TRUE(surface.IsValid());
    HDC hDC = surface.DC();
    HGDIOBJ hPenBefore = ::GetCurrentObject(hDC, OBJ_PEN);
    CPen pen(PS_SOLID, 2, kBlue);
    {
        CSelectObjectScope keep(hDC, pen.m_hObject);
        EXPECT_EQ(pen.m_hObject, ::GetCurrentObject(hDC, OBJ_PEN));
        keep.Restore();
        EXPECT_EQ(hPenBefore, ::GetCurrentObject(hDC, OBJ_PEN));
        EXPECT_EQ(nullptr, keep.GetOldObject());
        // Something else selected after the early restore is left alone by the destructor.
        ::SelectObject(hDC, pen.m_hObject);
    }
    EXPECT_EQ(pen.m_hObject, ::GetCurrentObject(hDC, OBJ_PEN));
    ::SelectObject(hDC, hPenBefore);
}

TEST(DCSelect, ScopeLeavesTheOwnerDeletableAfterward)
{
    // The object is out of the context again when its owner is destroyed, so it is deleted.
    DibSurface surface(8, 8);
    ASSERT_TRUE(surface.IsValid());
    HGDIOBJ hBrush = nullptr;
    {
        CBrush brush(kRed);
        hBrush = brush;
        CSelectObjectScope keep(surface.DC(), brush);
        surface.DC().PatBlt(0, 0, 8, 8, PATCOPY);
    }
    EXPECT_EQ(0u, ::GetObjectType(hBrush));
    EXPECT_EQ(kRed, surface.Pixel(3, 3));
}

TEST(DCSelect, ScopeRefusesRegions)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateRectRgn(0, 0, 5, 5));
    {
        CSelectObjectScope keep(surface.DC(), rgn);
        EXPECT_EQ(nullptr, keep.GetOldObject());
    }
    RECT box = {};
    surface.DC().GetClipBox(&box);
    EXPECT_EQ(20, box.right);
    EXPECT_EQ(20, box.bottom);
}

TEST(DCSelect, SelectingARegionClipsDrawing)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateRectRgn(5, 5, 10, 10));
    EXPECT_EQ(SIMPLEREGION, dc.SelectObject(&rgn));
    dc.FillSolidRect(0, 0, 20, 20, kRed);
    EXPECT_EQ(kRed, surface.Pixel(7, 7));
    EXPECT_EQ(kWhite, surface.Pixel(2, 2));
    EXPECT_EQ(kWhite, surface.Pixel(12, 12));

    // The context holds a copy: the region may go, and NULL lifts the clipping.
    rgn.DeleteObject();
    dc.FillSolidRect(0, 0, 20, 20, kBlue);
    EXPECT_EQ(kWhite, surface.Pixel(2, 2));
    EXPECT_EQ(SIMPLEREGION, dc.SelectClipRgn(nullptr));
    dc.FillSolidRect(0, 0, 20, 20, kGreen);
    EXPECT_EQ(kGreen, surface.Pixel(2, 2));
}

TEST(DCSelect, RegionHandedAsAGdiObjectClipsToo)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateRectRgn(0, 0, 4, 4));
    EXPECT_EQ(nullptr, dc.SelectObject(static_cast<CGdiObject*>(&rgn)));
    dc.FillSolidRect(0, 0, 20, 20, kRed);
    EXPECT_EQ(16, surface.Count(RECT{0, 0, 20, 20}, kRed));
}

TEST(DCSelect, ClipRegionModesCombine)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CRgn left, right;
    ASSERT_TRUE(left.CreateRectRgn(0, 0, 5, 20));
    ASSERT_TRUE(right.CreateRectRgn(15, 0, 20, 20));
    dc.SelectClipRgn(&left);
    EXPECT_EQ(COMPLEXREGION, dc.SelectClipRgn(&right, RGN_OR));
    dc.FillSolidRect(0, 0, 20, 20, kRed);
    EXPECT_EQ(kRed, surface.Pixel(2, 10));
    EXPECT_EQ(kRed, surface.Pixel(17, 10));
    EXPECT_EQ(kWhite, surface.Pixel(10, 10));
}

// ---------------------------------------------------------------------------------------
// Rectangles

TEST(DCDraw, FillSolidRectPaintsAndLeavesItsColourAsBackColour)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    dc.SetBkColor(kWhite);
    dc.FillSolidRect(2, 3, 5, 4, kRed);   // x 2..6, y 3..6
    EXPECT_EQ(kRed, surface.Pixel(2, 3));
    EXPECT_EQ(kRed, surface.Pixel(6, 6));
    EXPECT_EQ(kWhite, surface.Pixel(7, 6));
    EXPECT_EQ(kWhite, surface.Pixel(6, 7));
    EXPECT_EQ(kWhite, surface.Pixel(1, 3));
    EXPECT_EQ(20, surface.Count(RECT{0, 0, 20, 20}, kRed));
    EXPECT_EQ(kRed, dc.GetBkColor());

    RECT rc = {10, 10, 12, 12};
    dc.FillSolidRect(&rc, kBlue);
    EXPECT_EQ(4, surface.Count(RECT{0, 0, 20, 20}, kBlue));
    EXPECT_EQ(kBlue, dc.GetBkColor());
}

TEST(DCDraw, FillRectAndFrameRectUseTheBrush)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CBrush green(kGreen);
    CBrush blue(kBlue);
    RECT rc = {2, 2, 12, 12};
    dc.FillRect(&rc, &green);
    dc.FrameRect(&rc, &blue);
    EXPECT_EQ(kBlue, surface.Pixel(2, 2));
    EXPECT_EQ(kBlue, surface.Pixel(11, 7));
    EXPECT_EQ(kBlue, surface.Pixel(7, 11));
    EXPECT_EQ(kGreen, surface.Pixel(3, 3));
    EXPECT_EQ(kGreen, surface.Pixel(10, 10));
    EXPECT_EQ(kWhite, surface.Pixel(12, 12));
    EXPECT_EQ(36, surface.Count(RECT{0, 0, 20, 20}, kBlue));
}

TEST(DCDraw, Draw3dRectGivesTheCornersToTheBottomRightColour)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    dc.Draw3dRect(2, 2, 10, 8, kRed, kBlue);   // x 2..11, y 2..9
    EXPECT_EQ(kRed, surface.Pixel(2, 2));
    EXPECT_EQ(kRed, surface.Pixel(10, 2));
    EXPECT_EQ(kRed, surface.Pixel(2, 8));
    EXPECT_EQ(kBlue, surface.Pixel(11, 2));   // top-right corner
    EXPECT_EQ(kBlue, surface.Pixel(2, 9));    // bottom-left corner
    EXPECT_EQ(kBlue, surface.Pixel(11, 9));
    EXPECT_EQ(kWhite, surface.Pixel(5, 5));   // the inside is left alone
    EXPECT_EQ(kWhite, surface.Pixel(12, 5));
    EXPECT_EQ(9 + 7 - 1, surface.Count(RECT{0, 0, 20, 20}, kRed));    // top row, left column
    EXPECT_EQ(8 + 10 - 1, surface.Count(RECT{0, 0, 20, 20}, kBlue));  // right column, bottom row

    RECT rc = {14, 14, 18, 18};
    dc.Draw3dRect(&rc, kGreen, kBlack);
    EXPECT_EQ(kGreen, surface.Pixel(14, 14));
    EXPECT_EQ(kBlack, surface.Pixel(17, 17));
    EXPECT_EQ(kWhite, surface.Pixel(15, 15));
}

TEST(DCDraw, DrawEdgeDrawsSystemColoursAndAdjustsTheRect)
{
    DibSurface surface(30, 30);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    RECT rc = {2, 2, 22, 22};
    ASSERT_TRUE(dc.DrawEdge(&rc, EDGE_SUNKEN, BF_RECT | BF_ADJUST));
    EXPECT_EQ(4, rc.left);
    EXPECT_EQ(4, rc.top);
    EXPECT_EQ(20, rc.right);
    EXPECT_EQ(20, rc.bottom);
    // A sunken edge: shadow outside at the top-left, highlight outside at the bottom-right.
    EXPECT_EQ(::GetSysColor(COLOR_BTNSHADOW), surface.Pixel(10, 2));
    EXPECT_EQ(::GetSysColor(COLOR_BTNHIGHLIGHT), surface.Pixel(10, 21));
    EXPECT_EQ(kWhite, surface.Pixel(10, 10));
}

TEST(DCDraw, InvertRectInvertsEveryPixel)
{
    DibSurface surface(10, 10);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    dc.FillSolidRect(0, 0, 5, 10, kRed);
    RECT rc = {0, 0, 10, 10};
    dc.InvertRect(&rc);
    EXPECT_EQ(RGB(0, 255, 255), surface.Pixel(2, 2));
    EXPECT_EQ(kBlack, surface.Pixel(7, 7));
}

TEST(DCDraw, DrawFocusRectDotsTheBorderAndTogglesBack)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    RECT rc = {2, 2, 18, 18};
    dc.DrawFocusRect(&rc);
    const int changed = 400 - surface.Count(RECT{0, 0, 20, 20}, kWhite);
    // Dotted: some but not all of the 60 pixels of the one-pixel ring, and nothing else.
    EXPECT_GT(changed, 10);
    EXPECT_LT(changed, 60);
    EXPECT_EQ(changed, 16 * 16 - surface.Count(RECT{2, 2, 18, 18}, kWhite));
    EXPECT_EQ(14 * 14, surface.Count(RECT{3, 3, 17, 17}, kWhite));
    dc.DrawFocusRect(&rc);   // drawn by XOR: a second call takes it away
    EXPECT_EQ(400, surface.Count(RECT{0, 0, 20, 20}, kWhite));
}

// ---------------------------------------------------------------------------------------
// Lines and shapes

TEST(DCDraw, LineToDrawsFromTheCurrentPositionExcludingTheEnd)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CPen pen(PS_SOLID, 1, kBlue);
    CSelectObjectScope keep(dc, pen);
    CPoint old = dc.MoveTo(2, 5);
    EXPECT_EQ(0, old.x);
    EXPECT_EQ(0, old.y);
    EXPECT_TRUE(dc.LineTo(12, 5));
    EXPECT_EQ(kBlue, surface.Pixel(2, 5));
    EXPECT_EQ(kBlue, surface.Pixel(11, 5));
    EXPECT_EQ(kWhite, surface.Pixel(12, 5));
    EXPECT_EQ(10, surface.Count(RECT{0, 0, 20, 20}, kBlue));
    old = dc.MoveTo(POINT{0, 0});
    EXPECT_EQ(12, old.x);
    EXPECT_EQ(5, old.y);
    EXPECT_TRUE(dc.LineTo(POINT{0, 4}));
    EXPECT_EQ(kBlue, surface.Pixel(0, 3));
}

TEST(DCDraw, RectangleFramesWithThePenAndFillsWithTheBrush)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CPen pen(PS_SOLID, 1, kBlue);
    CBrush brush(kGreen);
    CSelectObjectScope keepPen(dc, pen);
    CSelectObjectScope keepBrush(dc, brush);
    EXPECT_TRUE(dc.Rectangle(2, 2, 12, 12));
    EXPECT_EQ(kBlue, surface.Pixel(2, 7));
    EXPECT_EQ(kBlue, surface.Pixel(11, 7));
    EXPECT_EQ(kGreen, surface.Pixel(6, 6));
    EXPECT_EQ(kWhite, surface.Pixel(12, 12));
    EXPECT_EQ(8 * 8, surface.Count(RECT{0, 0, 20, 20}, kGreen));

    RECT rc = {14, 14, 18, 18};
    EXPECT_TRUE(dc.Rectangle(&rc));
    EXPECT_EQ(kGreen, surface.Pixel(15, 15));
}

TEST(DCDraw, EllipseFillsTheCentreButNotTheCorners)
{
    DibSurface surface(40, 40);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CBrush brush(kRed);
    CSelectObjectScope keepBrush(dc, brush);
    CSelectObjectScope keepPen(dc.m_hDC, ::GetStockObject(NULL_PEN));
    EXPECT_TRUE(dc.Ellipse(0, 0, 40, 40));
    EXPECT_EQ(kRed, surface.Pixel(20, 20));
    EXPECT_EQ(kWhite, surface.Pixel(1, 1));
    EXPECT_EQ(kWhite, surface.Pixel(38, 38));
}

TEST(DCDraw, PolygonFillsAndPolylineOnlyStrokes)
{
    DibSurface surface(30, 30);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CPen pen(PS_SOLID, 1, kBlue);
    CBrush brush(kGreen);
    CSelectObjectScope keepPen(dc, pen);
    CSelectObjectScope keepBrush(dc, brush);
    const POINT square[] = {{2, 2}, {12, 2}, {12, 12}, {2, 12}};
    EXPECT_TRUE(dc.Polygon(square, 4));
    EXPECT_EQ(kGreen, surface.Pixel(7, 7));
    EXPECT_EQ(kBlue, surface.Pixel(2, 7));

    const POINT open[] = {{16, 16}, {26, 16}, {26, 26}, {16, 26}};
    EXPECT_TRUE(dc.Polyline(open, 4));
    EXPECT_EQ(kBlue, surface.Pixel(20, 16));
    EXPECT_EQ(kWhite, surface.Pixel(20, 20));   // never filled
    EXPECT_EQ(kWhite, surface.Pixel(16, 20));   // and never closed
}

TEST(DCDraw, Rop2XorPenInvertsTwiceBackToTheStart)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CPen pen(PS_SOLID, 1, kWhite);
    CSelectObjectScope keep(dc, pen);
    EXPECT_EQ(R2_COPYPEN, dc.SetROP2(R2_XORPEN));
    EXPECT_EQ(R2_XORPEN, dc.GetROP2());
    dc.MoveTo(0, 5);
    dc.LineTo(10, 5);
    EXPECT_EQ(kBlack, surface.Pixel(4, 5));
    dc.MoveTo(0, 5);
    dc.LineTo(10, 5);
    EXPECT_EQ(kWhite, surface.Pixel(4, 5));
}

// ---------------------------------------------------------------------------------------
// Pixels, blits, icons

TEST(DCDraw, SetPixelAndGetPixelMeetInTheBits)
{
    DibSurface surface(10, 10);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    dc.SetPixel(3, 4, RGB(10, 20, 30));
    dc.SetPixel(POINT{5, 6}, kBlue);
    EXPECT_EQ(RGB(10, 20, 30), surface.Pixel(3, 4));
    EXPECT_EQ(RGB(10, 20, 30), dc.GetPixel(3, 4));
    EXPECT_EQ(kBlue, dc.GetPixel(POINT{5, 6}));
    EXPECT_EQ(kWhite, dc.GetPixel(0, 0));
    EXPECT_EQ(CLR_INVALID, dc.GetPixel(50, 50));
}

TEST(DCDraw, BitBltStretchBltAndPatBltMovePixels)
{
    DibSurface source(4, 4);
    DibSurface target(20, 20);
    ASSERT_TRUE(source.IsValid());
    ASSERT_TRUE(target.IsValid());
    source.DC().FillSolidRect(0, 0, 2, 4, kRed);
    source.DC().FillSolidRect(2, 0, 2, 4, kBlue);

    EXPECT_TRUE(target.DC().BitBlt(1, 1, 4, 4, &source.DC(), 0, 0, SRCCOPY));
    EXPECT_EQ(kRed, target.Pixel(1, 1));
    EXPECT_EQ(kBlue, target.Pixel(4, 4));
    EXPECT_EQ(kWhite, target.Pixel(5, 4));

    EXPECT_TRUE(target.DC().StretchBlt(10, 10, 8, 8, &source.DC(), 0, 0, 4, 4, SRCCOPY));
    EXPECT_EQ(16 * 2, target.Count(RECT{10, 10, 18, 18}, kRed));
    EXPECT_EQ(kRed, target.Pixel(13, 17));
    EXPECT_EQ(kBlue, target.Pixel(14, 10));

    EXPECT_TRUE(target.DC().PatBlt(0, 0, 3, 3, BLACKNESS));
    EXPECT_EQ(kBlack, target.Pixel(2, 2));
    CBrush green(kGreen);
    CSelectObjectScope keep(target.DC(), green);
    EXPECT_TRUE(target.DC().PatBlt(6, 0, 2, 2, PATCOPY));
    EXPECT_EQ(4, target.Count(RECT{0, 0, 20, 20}, kGreen));
}

TEST(DCDraw, DrawIconPaintsTheIconsPixels)
{
    const int cx = ::GetSystemMetrics(SM_CXICON);
    const int cy = ::GetSystemMetrics(SM_CYICON);
    DibSurface colour(cx, cy);
    ASSERT_TRUE(colour.IsValid());
    colour.DC().FillSolidRect(0, 0, cx, cy, kRed);
    // Keep the colour bitmap out of a context while the icon copies it.
    ::SelectObject(colour.DC(), ::GetStockObject(DEFAULT_GUI_FONT));
    std::vector<BYTE> maskBits(static_cast<size_t>((cx + 15) / 16 * 2 * cy), 0);   // 0: opaque
    CBitmap mask;
    ASSERT_TRUE(mask.CreateBitmap(cx, cy, 1, 1, maskBits.data()));
    ICONINFO ii = {TRUE, 0, 0, static_cast<HBITMAP>(mask.m_hObject), colour.Bitmap()};
    HICON hIcon = ::CreateIconIndirect(&ii);
    ASSERT_NE(hIcon, nullptr);

    DibSurface surface(cx + 10, cy + 10);
    ASSERT_TRUE(surface.IsValid());
    EXPECT_TRUE(surface.DC().DrawIcon(POINT{5, 5}, hIcon));
    EXPECT_EQ(kWhite, surface.Pixel(2, 2));
    EXPECT_EQ(kRed, surface.Pixel(5, 5));
    EXPECT_EQ(kRed, surface.Pixel(5 + cx / 2, 5 + cy / 2));
    EXPECT_EQ(kRed, surface.Pixel(4 + cx, 4 + cy));
    EXPECT_EQ(kWhite, surface.Pixel(5 + cx, 5 + cy));
    ::DestroyIcon(hIcon);
}

// ---------------------------------------------------------------------------------------
// Text

TEST(DCText, DrawTextDrawsDarkPixelsInsideTheRectOnly)
{
    DibSurface surface(120, 60);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    dc.SetTextColor(kBlack);
    dc.SetBkMode(TRANSPARENT);
    RECT rc = {10, 10, 110, 40};
    const int height = dc.DrawText("Wg", -1, &rc, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    EXPECT_GT(height, 0);
    EXPECT_GT(surface.CountDark(rc), 10);
    EXPECT_EQ(0, surface.CountDark(RECT{0, 0, 120, 10}));
    EXPECT_EQ(0, surface.CountDark(RECT{0, 40, 120, 60}));
    EXPECT_EQ(0, surface.CountDark(RECT{0, 10, 10, 40}));
}

TEST(DCText, DrawTextOfACStringAndCalcRectDrawsNothing)
{
    DibSurface surface(120, 60);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CString text("Hello");
    RECT calc = {0, 0, 0, 0};
    EXPECT_GT(dc.DrawText(text, &calc, DT_SINGLELINE | DT_CALCRECT), 0);
    EXPECT_EQ(dc.GetTextExtent(text).cx, calc.right);
    EXPECT_EQ(0, surface.CountDark(RECT{0, 0, 120, 60}));

    RECT rc = {0, 0, 120, 30};
    dc.SetTextColor(kBlack);
    dc.SetBkColor(kWhite);
    EXPECT_GT(dc.DrawText(text, &rc, DT_SINGLELINE), 0);
    EXPECT_GT(surface.CountDark(RECT{0, 0, calc.right, calc.bottom}), 10);
    EXPECT_EQ(0, surface.CountDark(RECT{calc.right + 1, 0, 120, 60}));
}

TEST(DCText, TextColourAndOpaqueBackgroundReachThePixels)
{
    DibSurface surface(120, 40);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    EXPECT_EQ(kBlack, dc.SetTextColor(kRed));
    EXPECT_EQ(kRed, dc.GetTextColor());
    dc.SetBkColor(kBlue);
    EXPECT_EQ(OPAQUE, dc.SetBkMode(OPAQUE));
    EXPECT_EQ(OPAQUE, dc.GetBkMode());
    EXPECT_TRUE(dc.TextOut(2, 2, "Mm", 2));
    const CSize extent = dc.GetTextExtent("Mm", 2);
    RECT cell = {2, 2, 2 + extent.cx, 2 + extent.cy};
    EXPECT_GT(surface.Count(cell, kRed), 0);
    EXPECT_GT(surface.Count(cell, kBlue), 0);
    EXPECT_EQ(0, surface.Count(RECT{2 + extent.cx, 0, 120, 40}, kRed));

    CString more("xy");
    EXPECT_TRUE(dc.TextOut(60, 2, more));
    EXPECT_GT(surface.Count(RECT{60, 2, 120, 40}, kRed), 0);
}

TEST(DCText, ExtTextOutOpaqueFillsItsRectWithTheBackColour)
{
    DibSurface surface(60, 30);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    dc.SetBkColor(kGreen);
    RECT rc = {5, 5, 50, 25};
    EXPECT_TRUE(dc.ExtTextOut(6, 6, ETO_OPAQUE, &rc, "a", 1, nullptr));
    EXPECT_EQ(kGreen, surface.Pixel(5, 5));
    EXPECT_EQ(kGreen, surface.Pixel(49, 24));
    EXPECT_EQ(kWhite, surface.Pixel(50, 25));
    EXPECT_GT(surface.CountDark(rc), 0);
}

TEST(DCText, ExtTextOutClippedKeepsTheTextInsideItsRect)
{
    CString word("WWW");
    RECT small = {0, 0, 4, 4};

    DibSurface clipped(60, 30);
    ASSERT_TRUE(clipped.IsValid());
    clipped.DC().SetBkColor(kGreen);
    EXPECT_TRUE(clipped.DC().ExtTextOut(0, 0, ETO_OPAQUE | ETO_CLIPPED, &small, word, nullptr));
    EXPECT_EQ(0, clipped.Count(small, kWhite));
    EXPECT_EQ(60 * 30 - 16, clipped.Count(RECT{0, 0, 60, 30}, kWhite));

    DibSurface unclipped(60, 30);
    ASSERT_TRUE(unclipped.IsValid());
    unclipped.DC().SetBkColor(kGreen);
    EXPECT_TRUE(unclipped.DC().ExtTextOut(0, 0, ETO_OPAQUE, &small, word, nullptr));
    EXPECT_GT(unclipped.CountDark(RECT{4, 0, 60, 30}), 0);
}

TEST(DCText, TextExtentGrowsWithTheTextAndMatchesTheMetrics)
{
    DibSurface surface(10, 10);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(100, "Arial", &dc));
    CSelectObjectScope keep(dc, font);
    TEXTMETRIC tm = {};
    ASSERT_TRUE(dc.GetTextMetrics(&tm));
    EXPECT_GT(tm.tmHeight, 0);
    const CSize one = dc.GetTextExtent("W", 1);
    const CSize three = dc.GetTextExtent(CString("WWW"));
    EXPECT_EQ(tm.tmHeight, one.cy);
    EXPECT_GT(one.cx, 0);
    EXPECT_EQ(3 * one.cx, three.cx);
    EXPECT_EQ(0, dc.GetTextExtent("", 0).cx);
}

// ---------------------------------------------------------------------------------------
// Coordinates, clipping, saved states

TEST(DCCoords, ViewportAndWindowOriginsShiftDrawing)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    CPoint old = dc.SetViewportOrg(5, 6);
    EXPECT_EQ(0, old.x);
    EXPECT_EQ(0, old.y);
    EXPECT_EQ(5, dc.GetViewportOrg().x);
    dc.SetPixel(0, 0, kRed);
    EXPECT_EQ(kRed, surface.Pixel(5, 6));

    dc.SetViewportOrg(POINT{0, 0});
    old = dc.SetWindowOrg(-3, -4);
    EXPECT_EQ(0, old.x);
    EXPECT_EQ(-4, dc.GetWindowOrg().y);
    dc.SetPixel(0, 0, kBlue);
    EXPECT_EQ(kBlue, surface.Pixel(3, 4));
    old = dc.SetWindowOrg(POINT{0, 0});
    EXPECT_EQ(-3, old.x);
}

TEST(DCCoords, MapModeChangesTheUnits)
{
    DibSurface surface(10, 10);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    EXPECT_EQ(MM_TEXT, dc.SetMapMode(MM_LOMETRIC));
    EXPECT_EQ(MM_LOMETRIC, dc.GetMapMode());
    POINT pt = {0, -100};   // one centimetre down
    ::LPtoDP(dc, &pt, 1);
    EXPECT_GT(pt.y, 10);
    EXPECT_EQ(MM_LOMETRIC, dc.SetMapMode(MM_TEXT));
}

TEST(DCCoords, ClipRectsLimitDrawingAndTheClipBox)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    RECT box = {};
    EXPECT_EQ(SIMPLEREGION, dc.GetClipBox(&box));
    EXPECT_EQ(20, box.right);

    EXPECT_EQ(SIMPLEREGION, dc.IntersectClipRect(0, 0, 10, 10));
    RECT hole = {2, 2, 4, 4};
    EXPECT_EQ(COMPLEXREGION, dc.ExcludeClipRect(&hole));
    dc.GetClipBox(&box);
    EXPECT_EQ(10, box.right);
    EXPECT_EQ(10, box.bottom);
    dc.FillSolidRect(0, 0, 20, 20, kRed);
    EXPECT_EQ(kRed, surface.Pixel(0, 0));
    EXPECT_EQ(kRed, surface.Pixel(9, 9));
    EXPECT_EQ(kWhite, surface.Pixel(10, 10));
    EXPECT_EQ(kWhite, surface.Pixel(3, 3));
    EXPECT_EQ(100 - 4, surface.Count(RECT{0, 0, 20, 20}, kRed));
}

TEST(DCCoords, RestoreDCBringsBackColoursObjectsAndClipping)
{
    DibSurface surface(20, 20);
    ASSERT_TRUE(surface.IsValid());
    CDC& dc = surface.DC();
    HGDIOBJ hBrushBefore = ::GetCurrentObject(dc, OBJ_BRUSH);
    const int saved = dc.SaveDC();
    ASSERT_GT(saved, 0);
    {
        CBrush brush(kRed);
        dc.SelectObject(&brush);
        dc.SetTextColor(kBlue);
        RECT rc = {0, 0, 5, 5};
        dc.IntersectClipRect(&rc);
        EXPECT_TRUE(dc.RestoreDC(saved));
    }
    EXPECT_EQ(hBrushBefore, ::GetCurrentObject(dc, OBJ_BRUSH));
    EXPECT_EQ(kBlack, dc.GetTextColor());
    RECT box = {};
    dc.GetClipBox(&box);
    EXPECT_EQ(20, box.right);
    AfxDeleteTempGdiMap();
}

// ---------------------------------------------------------------------------------------
// Paint, client and window contexts on a real window

TEST(DCWindow, PaintDCPaintsInsideWmPaintAndValidates)
{
    TestWindow window;
    ASSERT_NE(window.m_hWnd, nullptr);
    const long before = DcCount();
    g_paint = PaintRecord();

    RECT dirty = {10, 10, 30, 30};
    ::InvalidateRect(window.m_hWnd, &dirty, FALSE);
    ::UpdateWindow(window.m_hWnd);

    ASSERT_GE(g_paint.nPaints, 1);
    EXPECT_NE(nullptr, g_paint.hDC);
    EXPECT_TRUE(g_paint.bPsMatches);
    EXPECT_EQ(before + 1, g_paint.dcCountInside);
    EXPECT_EQ(before, DcCount());
    RECT both = {};
    ::IntersectRect(&both, &g_paint.rcPaint, &dirty);
    EXPECT_TRUE(::EqualRect(&both, &dirty)) << "rcPaint does not cover the invalidated rect";
    // EndPaint validated the window: nothing is left to paint.
    EXPECT_FALSE(::GetUpdateRect(window.m_hWnd, nullptr, FALSE));

    CWnd wrapper(window.m_hWnd);
    CClientDC dc(&wrapper);
    EXPECT_EQ(kPaintColour, dc.GetPixel(20, 20));
}

TEST(DCWindow, PaintDCWithoutAWindowHoldsNothing)
{
    const long before = DcCount();
    CPaintDC dc(nullptr);
    EXPECT_EQ(nullptr, dc.m_hDC);
    EXPECT_EQ(before, DcCount());
}

TEST(DCWindow, ClientDCCoversTheClientAreaAndIsReleased)
{
    TestWindow window;
    ASSERT_NE(window.m_hWnd, nullptr);
    const long before = DcCount();
    RECT client = {};
    ::GetClientRect(window.m_hWnd, &client);
    HDC hDC = nullptr;
    {
        CWnd wrapper(window.m_hWnd);
        CClientDC dc(&wrapper);
        hDC = dc;
        ASSERT_NE(hDC, nullptr);
        EXPECT_EQ(window.m_hWnd, dc.m_hWnd);
        EXPECT_EQ(window.m_hWnd, ::WindowFromDC(hDC));
        EXPECT_EQ(before + 1, DcCount());
        RECT box = {};
        dc.GetClipBox(&box);
        EXPECT_TRUE(::EqualRect(&client, &box));
        dc.FillSolidRect(0, 0, 5, 5, kBlue);
        EXPECT_EQ(kBlue, dc.GetPixel(2, 2));
    }
    EXPECT_EQ(before, DcCount());
    // Released already, so the system has nothing more to release.
    EXPECT_EQ(0, ::ReleaseDC(window.m_hWnd, hDC));
}

TEST(DCWindow, WindowDCCoversTheFrameAndIsReleased)
{
    TestWindow window;
    ASSERT_NE(window.m_hWnd, nullptr);
    const long before = DcCount();
    RECT rcWindow = {};
    RECT client = {};
    ::GetWindowRect(window.m_hWnd, &rcWindow);
    ::GetClientRect(window.m_hWnd, &client);
    HDC hDC = nullptr;
    {
        CWnd wrapper(window.m_hWnd);
        CWindowDC dc(&wrapper);
        hDC = dc;
        ASSERT_NE(hDC, nullptr);
        EXPECT_EQ(before + 1, DcCount());
        // Window coordinates: the client area sits below the caption, inside the clip box
        // (which on some window managers leaves the frame they draw themselves out).
        POINT clientOrigin = {0, 0};
        ::ClientToScreen(window.m_hWnd, &clientOrigin);
        RECT clientInWindow = client;
        ::OffsetRect(&clientInWindow, clientOrigin.x - rcWindow.left,
                     clientOrigin.y - rcWindow.top);
        EXPECT_GT(clientInWindow.top, 0);
        RECT whole = {0, 0, rcWindow.right - rcWindow.left, rcWindow.bottom - rcWindow.top};
        RECT box = {};
        dc.GetClipBox(&box);
        RECT meet = {};
        ::IntersectRect(&meet, &box, &clientInWindow);
        EXPECT_TRUE(::EqualRect(&meet, &clientInWindow)) << "the client area is not inside";
        ::IntersectRect(&meet, &box, &whole);
        EXPECT_TRUE(::EqualRect(&meet, &box)) << "the clip box exceeds the window";
    }
    EXPECT_EQ(before, DcCount());
    EXPECT_EQ(0, ::ReleaseDC(window.m_hWnd, hDC));
}

TEST(DCWindow, NullWindowMeansTheScreen)
{
    const long before = DcCount();
    {
        CClientDC screen(nullptr);
        ASSERT_NE(screen.m_hDC, nullptr);
        EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), screen.GetDeviceCaps(HORZRES));
        CWindowDC whole(nullptr);
        ASSERT_NE(whole.m_hDC, nullptr);
        EXPECT_EQ(::GetSystemMetrics(SM_CYSCREEN), whole.GetDeviceCaps(VERTRES));
        EXPECT_EQ(before + 2, DcCount());
    }
    EXPECT_EQ(before, DcCount());
}
