// Tests of the GDI object owners: ownership, live counts, temporary wrappers, and the
// attributes each Create* call gives its object.
#define OEMRESOURCE   // the OBM_* bitmap ids
#include "kelfw/fwdc.h"
#include "kelfw/fwgdi.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwmodule.h"

#include <gtest/gtest.h>

#include "dibsurface.h"

#include <cstdlib>
#include <type_traits>

static_assert(!std::is_copy_constructible<CGdiObject>::value, "owners are not copied");
static_assert(!std::is_copy_assignable<CPen>::value, "owners are not copied");
static_assert(!std::is_copy_constructible<CBitmap>::value, "owners are not copied");

namespace
{
long GdiCount()
{
    return AfxGetLiveCount(afxLiveGdiObjects);
}

using kel_test::ResourceModuleScope;

// What a second thread saw when it wrapped a brush.
struct ThreadProbe
{
    HBRUSH hBrush;
    CBrush* pTheirs;
    HBRUSH hSeen;
};

DWORD WINAPI WrapOnOtherThread(LPVOID pParam)
{
    ThreadProbe* pProbe = static_cast<ThreadProbe*>(pParam);
    pProbe->pTheirs = CBrush::FromHandle(pProbe->hBrush);
    pProbe->hSeen = *pProbe->pTheirs;
    AfxDeleteTempGdiMap();
    return 0;
}

// The standard small toolbar strip that the common controls carry as a bitmap resource.
const UINT kStdSmallColorBitmap = 120;
}

TEST(GdiOwner, PenDeletesItsHandleWhenDestroyed)
{
    const long before = GdiCount();
    HGDIOBJ hPen = nullptr;
    {
        CPen pen(PS_SOLID, 3, RGB(10, 20, 30));
        hPen = pen.GetSafeHandle();
        ASSERT_NE(hPen, nullptr);
        EXPECT_EQ(static_cast<DWORD>(OBJ_PEN), ::GetObjectType(hPen));
        EXPECT_EQ(before + 1, GdiCount());
    }
    EXPECT_EQ(0u, ::GetObjectType(hPen));
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiOwner, EveryKindOfOwnerDeletesItsHandle)
{
    const long before = GdiCount();
    HGDIOBJ handles[5] = {};
    {
        CPen pen;
        CBrush brush;
        CFont font;
        CBitmap bitmap;
        CRgn rgn;
        ASSERT_TRUE(pen.CreatePen(PS_DASH, 1, RGB(0, 0, 255)));
        ASSERT_TRUE(brush.CreateSolidBrush(RGB(1, 2, 3)));
        ASSERT_TRUE(font.CreatePointFont(90, "Arial"));
        ASSERT_TRUE(bitmap.CreateBitmap(4, 4, 1, 1, nullptr));
        ASSERT_TRUE(rgn.CreateRectRgn(0, 0, 5, 5));
        handles[0] = pen;
        handles[1] = brush;
        handles[2] = font;
        handles[3] = bitmap;
        handles[4] = rgn;
        EXPECT_EQ(before + 5, GdiCount());
        EXPECT_EQ(static_cast<UINT>(OBJ_FONT), font.GetObjectType());
        EXPECT_EQ(static_cast<UINT>(OBJ_REGION), rgn.GetObjectType());
    }
    for (HGDIOBJ h : handles)
        EXPECT_EQ(0u, ::GetObjectType(h)) << h;
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiOwner, DetachGivesTheHandleUpAlive)
{
    const long before = GdiCount();
    HGDIOBJ hBrush = nullptr;
    {
        CBrush brush(RGB(200, 100, 0));
        ASSERT_NE(brush.m_hObject, nullptr);
        hBrush = brush.Detach();
        EXPECT_EQ(nullptr, brush.m_hObject);
        EXPECT_EQ(before, GdiCount());
    }
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hBrush));
    EXPECT_TRUE(::DeleteObject(hBrush));
}

TEST(GdiOwner, AttachOfForeignHandleTakesOwnership)
{
    const long before = GdiCount();
    HPEN hRaw = ::CreatePen(PS_SOLID, 1, RGB(9, 9, 9));
    ASSERT_NE(hRaw, nullptr);
    {
        CPen pen;
        EXPECT_TRUE(pen.Attach(hRaw));
        EXPECT_EQ(hRaw, static_cast<HPEN>(pen));
        EXPECT_EQ(before + 1, GdiCount());
    }
    EXPECT_EQ(0u, ::GetObjectType(hRaw));
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiOwner, AttachOfNullFailsAndCountsNothing)
{
    const long before = GdiCount();
    CBrush brush;
    EXPECT_FALSE(brush.Attach(nullptr));
    EXPECT_EQ(nullptr, brush.m_hObject);
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiOwner, CreatingAgainDeletesTheHandleHeldBefore)
{
    const long before = GdiCount();
    CBrush brush(RGB(1, 1, 1));
    HGDIOBJ hFirst = brush.m_hObject;
    ASSERT_TRUE(brush.CreateSolidBrush(RGB(2, 2, 2)));
    EXPECT_NE(hFirst, brush.m_hObject);
    EXPECT_EQ(0u, ::GetObjectType(hFirst));
    EXPECT_EQ(before + 1, GdiCount());
}

TEST(GdiOwner, DeleteObjectDeletesNowAndOnlyOnce)
{
    const long before = GdiCount();
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateEllipticRgn(0, 0, 10, 10));
    HGDIOBJ hRgn = rgn;
    EXPECT_TRUE(rgn.DeleteObject());
    EXPECT_EQ(nullptr, rgn.m_hObject);
    EXPECT_EQ(0u, ::GetObjectType(hRgn));
    EXPECT_EQ(before, GdiCount());
    EXPECT_FALSE(rgn.DeleteObject());
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiOwner, StockObjectOutlivesItsOwner)
{
    const long before = GdiCount();
    HGDIOBJ hStock = ::GetStockObject(BLACK_BRUSH);
    {
        CBrush brush;
        ASSERT_TRUE(brush.CreateStockObject(BLACK_BRUSH));
        EXPECT_EQ(hStock, brush.m_hObject);
        EXPECT_EQ(before + 1, GdiCount());
    }
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hStock));
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiTemporary, FromHandleBorrowsAndNeverDeletes)
{
    const long before = GdiCount();
    HBRUSH hRaw = ::CreateSolidBrush(RGB(5, 6, 7));
    ASSERT_NE(hRaw, nullptr);

    CBrush* pFirst = CBrush::FromHandle(hRaw);
    ASSERT_NE(pFirst, nullptr);
    EXPECT_TRUE(pFirst->IsTemporary());
    EXPECT_EQ(hRaw, static_cast<HBRUSH>(*pFirst));
    EXPECT_EQ(pFirst, CBrush::FromHandle(hRaw));   // one wrapper per handle and class
    EXPECT_EQ(before, GdiCount());

    AfxDeleteTempGdiMap();
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hRaw));
    EXPECT_EQ(before, GdiCount());
    EXPECT_TRUE(::DeleteObject(hRaw));
}

TEST(GdiTemporary, FromHandleOfNullIsNull)
{
    EXPECT_EQ(nullptr, CGdiObject::FromHandle(nullptr));
    EXPECT_EQ(nullptr, CPen::FromHandle(nullptr));
    EXPECT_EQ(nullptr, CRgn::FromHandle(nullptr));
}

TEST(GdiTemporary, EachClassGetsAWrapperOfItsOwnType)
{
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    CGdiObject* pAny = CGdiObject::FromHandle(pen);
    CPen* pPen = CPen::FromHandle(pen);
    ASSERT_NE(pAny, nullptr);
    ASSERT_NE(pPen, nullptr);
    EXPECT_NE(static_cast<CGdiObject*>(pPen), pAny);
    EXPECT_NE(nullptr, dynamic_cast<CPen*>(static_cast<CGdiObject*>(pPen)));
    EXPECT_EQ(pen.m_hObject, pAny->m_hObject);
    EXPECT_EQ(pen.m_hObject, pPen->m_hObject);
    AfxDeleteTempGdiMap();
    EXPECT_EQ(static_cast<DWORD>(OBJ_PEN), ::GetObjectType(pen));
}

TEST(GdiTemporary, WrappersArePerThread)
{
    CBrush brush(RGB(3, 3, 3));
    CBrush* pMine = CBrush::FromHandle(brush);

    ThreadProbe probe = {brush, nullptr, nullptr};
    HANDLE hThread = ::CreateThread(nullptr, 0, WrapOnOtherThread, &probe, 0, nullptr);
    ASSERT_NE(hThread, nullptr);
    ASSERT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(hThread, 10000));
    ::CloseHandle(hThread);

    EXPECT_NE(pMine, probe.pTheirs);
    EXPECT_EQ(static_cast<HBRUSH>(brush), probe.hSeen);
    // The other thread emptied its own map only: ours still answers the same wrapper.
    EXPECT_EQ(pMine, CBrush::FromHandle(brush));
    EXPECT_EQ(static_cast<HBRUSH>(brush), static_cast<HBRUSH>(*pMine));
    AfxDeleteTempGdiMap();
}

TEST(GdiPen, ExtendedPenCarriesStyleWidthAndColour)
{
    LOGBRUSH lb = {BS_SOLID, RGB(0, 128, 255), 0};
    CPen pen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT, 5, &lb);
    ASSERT_NE(pen.m_hObject, nullptr);
    EXPECT_EQ(static_cast<UINT>(OBJ_EXTPEN), pen.GetObjectType());
    EXTLOGPEN elp = {};
    ASSERT_GT(pen.GetObject(sizeof(elp), &elp), 0);
    EXPECT_EQ(5u, elp.elpWidth);
    EXPECT_EQ(static_cast<DWORD>(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT), elp.elpPenStyle);
    EXPECT_EQ(RGB(0, 128, 255), elp.elpColor);
}

TEST(GdiPen, IndirectPenRoundTripsItsLogPen)
{
    LOGPEN lp = {PS_DOT, {1, 0}, RGB(1, 2, 3)};
    CPen pen;
    ASSERT_TRUE(pen.CreatePenIndirect(&lp));
    LOGPEN back = {};
    ASSERT_EQ(static_cast<int>(sizeof(LOGPEN)), pen.GetLogPen(&back));
    EXPECT_EQ(static_cast<UINT>(PS_DOT), back.lopnStyle);
    EXPECT_EQ(1, back.lopnWidth.x);
    EXPECT_EQ(RGB(1, 2, 3), back.lopnColor);
}

TEST(GdiBrush, HatchAndPatternBrushesHaveTheirStyles)
{
    CBrush hatch(HS_CROSS, RGB(255, 0, 0));
    LOGBRUSH lb = {};
    ASSERT_GT(hatch.GetLogBrush(&lb), 0);
    EXPECT_EQ(static_cast<UINT>(BS_HATCHED), lb.lbStyle);
    EXPECT_EQ(static_cast<ULONG_PTR>(HS_CROSS), lb.lbHatch);
    EXPECT_EQ(RGB(255, 0, 0), lb.lbColor);

    const WORD bits[8] = {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
    CBitmap pattern;
    ASSERT_TRUE(pattern.CreateBitmap(8, 8, 1, 1, bits));
    CBrush brush;
    ASSERT_TRUE(brush.CreatePatternBrush(&pattern));
    ASSERT_GT(brush.GetLogBrush(&lb), 0);
    EXPECT_EQ(static_cast<UINT>(BS_PATTERN), lb.lbStyle);
}

TEST(GdiBrush, PatternBrushFromEmptyBitmapFails)
{
    const long before = GdiCount();
    CBitmap empty;
    CBrush brush;
    EXPECT_FALSE(brush.CreatePatternBrush(&empty));
    EXPECT_FALSE(brush.CreatePatternBrush(nullptr));
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiBrush, SysColorBrushIsTheSharedOneAndSurvivesItsOwner)
{
    const long before = GdiCount();
    HBRUSH hShared = ::GetSysColorBrush(COLOR_WINDOW);
    {
        CBrush brush;
        ASSERT_TRUE(brush.CreateSysColorBrush(COLOR_WINDOW));
        EXPECT_EQ(hShared, static_cast<HBRUSH>(brush));
        LOGBRUSH lb = {};
        ASSERT_GT(brush.GetLogBrush(&lb), 0);
        EXPECT_EQ(::GetSysColor(COLOR_WINDOW), lb.lbColor);
    }
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), ::GetObjectType(hShared));
    EXPECT_EQ(hShared, ::GetSysColorBrush(COLOR_WINDOW));
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiBrush, UnrealizeObjectWorksOnABrush)
{
    CBrush brush(RGB(4, 4, 4));
    EXPECT_TRUE(brush.UnrealizeObject());
    CBrush none;
    EXPECT_FALSE(none.UnrealizeObject());
}

TEST(GdiFont, CreateFontRoundTripsFaceWeightAndHeight)
{
    CFont font;
    ASSERT_TRUE(font.CreateFont(-13, 0, 0, 0, FW_BOLD, TRUE, FALSE, 0, ANSI_CHARSET,
                                OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                DEFAULT_PITCH | FF_SWISS, "Tahoma"));
    LOGFONT lf = {};
    ASSERT_EQ(static_cast<int>(sizeof(LOGFONT)), font.GetLogFont(&lf));
    EXPECT_EQ(-13, lf.lfHeight);
    EXPECT_EQ(FW_BOLD, lf.lfWeight);
    EXPECT_EQ(TRUE, lf.lfItalic);
    EXPECT_STREQ("Tahoma", lf.lfFaceName);

    LOGFONT copy = lf;
    copy.lfWeight = FW_NORMAL;
    CFont second;
    ASSERT_TRUE(second.CreateFontIndirect(&copy));
    ASSERT_GT(second.GetLogFont(&lf), 0);
    EXPECT_EQ(FW_NORMAL, lf.lfWeight);
}

TEST(GdiFont, PointFontOnTheScreenUsesItsPixelsPerInch)
{
    HDC hScreen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(hScreen, LOGPIXELSY);
    ::ReleaseDC(nullptr, hScreen);

    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, "Arial"));   // tenths of a point: 12 pt
    LOGFONT lf = {};
    ASSERT_GT(font.GetLogFont(&lf), 0);
    EXPECT_EQ(-MulDiv(dpi, 120, 720), lf.lfHeight);
    EXPECT_STREQ("Arial", lf.lfFaceName);
}

TEST(GdiFont, PointFontFollowsTheMappingOfTheGivenContext)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    dc.SetMapMode(MM_LOENGLISH);   // hundredths of an inch

    CFont font;
    ASSERT_TRUE(font.CreatePointFont(360, "Arial", &dc));   // half an inch
    LOGFONT lf = {};
    ASSERT_GT(font.GetLogFont(&lf), 0);
    EXPECT_LE(std::abs(lf.lfHeight + 50), 1) << lf.lfHeight;
}

TEST(GdiBitmap, CreatedBitmapsReportTheirSize)
{
    CBitmap mono;
    ASSERT_TRUE(mono.CreateBitmap(16, 4, 1, 1, nullptr));
    BITMAP bm = {};
    ASSERT_EQ(static_cast<int>(sizeof(BITMAP)), mono.GetBitmap(&bm));
    EXPECT_EQ(16, bm.bmWidth);
    EXPECT_EQ(4, bm.bmHeight);
    EXPECT_EQ(1, bm.bmBitsPixel);

    CDC screenDC;
    ASSERT_TRUE(screenDC.CreateDC("DISPLAY", nullptr, nullptr, nullptr));
    CBitmap compatible;
    ASSERT_TRUE(compatible.CreateCompatibleBitmap(&screenDC, 10, 20));
    ASSERT_GT(compatible.GetBitmap(&bm), 0);
    EXPECT_EQ(10, bm.bmWidth);
    EXPECT_EQ(20, bm.bmHeight);
    EXPECT_EQ(screenDC.GetDeviceCaps(BITSPIXEL), bm.bmBitsPixel);

    BITMAP desc = {0, 3, 5, 2, 1, 1, nullptr};
    CBitmap indirect;
    ASSERT_TRUE(indirect.CreateBitmapIndirect(&desc));
    ASSERT_GT(indirect.GetBitmap(&bm), 0);
    EXPECT_EQ(3, bm.bmWidth);
    EXPECT_EQ(5, bm.bmHeight);
}

TEST(GdiBitmap, CompatibleBitmapNeedsAContext)
{
    const long before = GdiCount();
    CBitmap bitmap;
    EXPECT_FALSE(bitmap.CreateCompatibleBitmap(nullptr, 4, 4));
    EXPECT_EQ(before, GdiCount());
}

TEST(GdiBitmap, OemBitmapLoadsFromTheSystem)
{
    CBitmap check;
    ASSERT_TRUE(check.LoadOEMBitmap(OBM_CHECK));
    BITMAP bm = {};
    ASSERT_GT(check.GetBitmap(&bm), 0);
    EXPECT_GT(bm.bmWidth, 0);
    EXPECT_GT(bm.bmHeight, 0);
}

TEST(GdiBitmap, LoadBitmapSearchesTheCurrentResourceModule)
{
    HMODULE hCommon = ::GetModuleHandle("comctl32.dll");
    ASSERT_NE(hCommon, nullptr);
    const long before = GdiCount();

    CBitmap fromProgram;
    EXPECT_FALSE(fromProgram.LoadBitmap(kStdSmallColorBitmap));   // the test has no bitmaps
    EXPECT_EQ(before, GdiCount());

    ResourceModuleScope scope(hCommon);
    CBitmap strip;
    ASSERT_TRUE(strip.LoadBitmap(kStdSmallColorBitmap));
    BITMAP bm = {};
    ASSERT_GT(strip.GetBitmap(&bm), 0);
    EXPECT_EQ(16, bm.bmHeight);
    EXPECT_EQ(0, bm.bmWidth % 16);
    EXPECT_EQ(before + 1, GdiCount());

    CBitmap byName;
    EXPECT_TRUE(byName.LoadBitmap(MAKEINTRESOURCE(kStdSmallColorBitmap)));
}

TEST(GdiRgn, RectRegionContainsItsInsideOnly)
{
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateRectRgn(10, 10, 20, 30));
    EXPECT_TRUE(rgn.PtInRegion(10, 10));
    EXPECT_TRUE(rgn.PtInRegion(19, 29));
    EXPECT_FALSE(rgn.PtInRegion(20, 15));   // right and bottom edges are outside
    EXPECT_FALSE(rgn.PtInRegion(POINT{15, 30}));

    RECT rc = {1, 2, 3, 4};
    CRgn indirect;
    ASSERT_TRUE(indirect.CreateRectRgnIndirect(&rc));
    RECT box = {};
    EXPECT_EQ(SIMPLEREGION, indirect.GetRgnBox(&box));
    EXPECT_TRUE(::EqualRect(&rc, &box));
}

TEST(GdiRgn, EllipticRegionLeavesTheCornersOut)
{
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateEllipticRgn(0, 0, 40, 40));
    EXPECT_TRUE(rgn.PtInRegion(20, 20));
    EXPECT_FALSE(rgn.PtInRegion(1, 1));
    EXPECT_FALSE(rgn.PtInRegion(38, 38));

    RECT rc = {0, 0, 40, 20};
    CRgn flat;
    ASSERT_TRUE(flat.CreateEllipticRgnIndirect(&rc));
    EXPECT_TRUE(flat.PtInRegion(20, 10));
    EXPECT_FALSE(flat.PtInRegion(20, 25));
}

TEST(GdiRgn, CombineJoinsTwoRegionsIntoThisOne)
{
    CRgn left, right, both;
    ASSERT_TRUE(left.CreateRectRgn(0, 0, 10, 10));
    ASSERT_TRUE(right.CreateRectRgn(20, 0, 30, 10));
    ASSERT_TRUE(both.CreateRectRgn(0, 0, 0, 0));
    EXPECT_EQ(COMPLEXREGION, both.CombineRgn(&left, &right, RGN_OR));
    EXPECT_TRUE(both.PtInRegion(5, 5));
    EXPECT_TRUE(both.PtInRegion(25, 5));
    EXPECT_FALSE(both.PtInRegion(15, 5));

    EXPECT_EQ(NULLREGION, both.CombineRgn(&left, &right, RGN_AND));
    EXPECT_FALSE(both.PtInRegion(5, 5));

    CRgn none;   // holds no region yet, so there is nothing to set
    EXPECT_EQ(ERROR, none.CombineRgn(&left, &right, RGN_OR));
}

TEST(GdiRgn, SetRectRgnMovesTheRegion)
{
    CRgn rgn;
    ASSERT_TRUE(rgn.CreateRectRgn(0, 0, 5, 5));
    HGDIOBJ hBefore = rgn;
    rgn.SetRectRgn(50, 60, 70, 80);
    EXPECT_EQ(hBefore, rgn.m_hObject);
    EXPECT_FALSE(rgn.PtInRegion(1, 1));
    EXPECT_TRUE(rgn.PtInRegion(55, 65));
    RECT rc = {100, 100, 110, 120};
    rgn.SetRectRgn(&rc);
    RECT box = {};
    rgn.GetRgnBox(&box);
    EXPECT_TRUE(::EqualRect(&rc, &box));
}
