// How an edit row paints its value: colours, the unit or remark, asterisks, the engraved look
// of a row switched off, and the widest value kept by the tree.
#include <gtest/gtest.h>

#include "dibsurface.h"
#include "editfixture.h"

#include <string>

using kel_test::DibSurface;
using pttest::EditTest;
using Edit = CKelPropertyTreeItemEdit;

namespace
{
const RECT kAttribute = {4, 4, 236, 23};   // a value column rectangle; text is drawn 2 above it

// The width of a text in the tree's normal font, as the row measures it.
int Width(const char* text)
{
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    CSelectObjectScope font(&dc, CKelPropertyTree::GetNormalFont());
    return dc.GetTextExtent(CString(text)).cx;
}

// Columns that hold at least one pixel of the colour: first and one past the last.
std::pair<int, int> Columns(const DibSurface& dib, COLORREF c)
{
    int first = -1, last = -1;
    for (int x = 0; x < dib.Width(); ++x)
        for (int y = 0; y < dib.Height(); ++y)
            if (dib.Pixel(x, y) == c)
            {
                if (first < 0)
                    first = x;
                last = x;
                break;
            }
    return {first, last + 1};
}

const COLORREF kBackground = RGB(0, 0, 255);

// Columns touched by any drawing (text may be smoothed): first and one past the last.
std::pair<int, int> InkColumns(const DibSurface& dib)
{
    int first = -1, last = -1;
    for (int x = 0; x < dib.Width(); ++x)
        for (int y = 0; y < dib.Height(); ++y)
            if (dib.Pixel(x, y) != kBackground)
            {
                if (first < 0)
                    first = x;
                last = x;
                break;
            }
    return {first, last + 1};
}

// Rows that hold at least one pixel of the colour: first and one past the last.
std::pair<int, int> Rows(const DibSurface& dib, COLORREF c)
{
    int first = -1, last = -1;
    for (int y = 0; y < dib.Height(); ++y)
        for (int x = 0; x < dib.Width(); ++x)
            if (dib.Pixel(x, y) == c)
            {
                if (first < 0)
                    first = y;
                last = y;
                break;
            }
    return {first, last + 1};
}
}

TEST_F(EditTest, ValueIsDrawnInWindowTextInsideTheValueColumnMovedTwoUp)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("Wall"));
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    EXPECT_GT(dib.Count(CRect(0, 0, 260, 30), text), 10);
    EXPECT_EQ(0, dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_GRAYTEXT)));
    const auto cols = InkColumns(dib);
    EXPECT_GE(cols.first, kAttribute.left);
    EXPECT_LE(cols.second, kAttribute.left + Width("Wall"));
    // Centred on one line in the rectangle moved 2 up: top 2, bottom 21.
    const auto rows = Rows(dib, text);
    EXPECT_GE(rows.first, 2);
    EXPECT_LE(rows.second, 21);
    EXPECT_NEAR((rows.first + rows.second) / 2.0, 11.5, 3.0);
}

TEST_F(EditTest, ReadOnlyRowIsGreyOnlyWithDrawingFlagOne)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("Locked"));
    row->ReadOnly(1);
    {
        DibSurface dib(260, 30, kBackground);
        row->DrawAttribute(&dib.DC(), kAttribute);
        EXPECT_GT(dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_WINDOWTEXT)), 10);
        EXPECT_EQ(0, dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_GRAYTEXT)));
    }
    tree.SetDrawingFlag(1);
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    EXPECT_GT(dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_GRAYTEXT)), 10);
    EXPECT_EQ(0, dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_WINDOWTEXT)));
}

TEST_F(EditTest, RowDisabledBySwitchIsEngravedOnePixelApart)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("Off"));
    row->SetRowDisabled(1);
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    const COLORREF grey = GetSysColor(COLOR_GRAYTEXT);
    const COLORREF light = GetSysColor(COLOR_3DHIGHLIGHT);
    ASSERT_NE(grey, light);
    EXPECT_EQ(0, dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_WINDOWTEXT)));
    EXPECT_GT(dib.Count(CRect(0, 0, 260, 30), grey), 10);
    EXPECT_GT(dib.Count(CRect(0, 0, 260, 30), light), 0);
    // The light copy lies under the grey text, one pixel right and down.
    EXPECT_EQ(Columns(dib, grey).second + 1, Columns(dib, light).second);
    EXPECT_EQ(Rows(dib, grey).second + 1, Rows(dib, light).second);
}

TEST_F(EditTest, NumberShowsItsUnitWithoutBracketsAndMeasuresTheValueOnly)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetItemValue(CString("12.5"));
    row->SetAdditionalTextInfo("mm");
    tree.ResetInfoColMaxVisibleWidth();
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    EXPECT_EQ(Width("12.5"), tree.GetInfoColMaxVisibleWidth());
    // The ink ends within the last letter of "12.5 mm"; a bracket would reach further.
    const auto cols = InkColumns(dib);
    EXPECT_GT(cols.second, kAttribute.left + Width("12.5 m"));
    EXPECT_LE(cols.second, kAttribute.left + Width("12.5 mm"));
}

TEST_F(EditTest, TextShowsItsRemarkInBracketsAndMeasuresTheValueOnly)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("abc"));
    row->SetAdditionalTextInfo("remark");
    tree.ResetInfoColMaxVisibleWidth();
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    EXPECT_EQ(Width("abc"), tree.GetInfoColMaxVisibleWidth());
    const auto cols = InkColumns(dib);
    EXPECT_GT(cols.second, kAttribute.left + Width("abc [remark"));
    EXPECT_LE(cols.second, kAttribute.left + Width("abc [remark]"));
}

TEST_F(EditTest, EmptyRemarkAddsNoBlank)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("abc"));
    row->SetAsPassword(1);
    tree.ResetInfoColMaxVisibleWidth();
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    // A blank behind the value would make a fourth asterisk.
    ASSERT_LT(Width("***"), Width("****"));
    EXPECT_EQ(Width("***"), tree.GetInfoColMaxVisibleWidth());
}

TEST_F(EditTest, PasswordRowDrawsAndMeasuresAsterisksOfTheWholeText)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("secret"));
    row->SetAdditionalTextInfo("pw");
    row->SetAsPassword(1);
    tree.ResetInfoColMaxVisibleWidth();
    DibSurface dib(260, 30, kBackground);
    row->DrawAttribute(&dib.DC(), kAttribute);
    const std::string stars(std::string("secret [pw]").size(), '*');
    EXPECT_EQ(Width(stars.c_str()), tree.GetInfoColMaxVisibleWidth());
    ASSERT_NE(Width(stars.c_str()), Width("secret"));
    const std::string fewer(stars.size() - 1, '*');
    const auto cols = InkColumns(dib);
    EXPECT_GT(cols.second, kAttribute.left + Width(fewer.c_str()));
    EXPECT_LE(cols.second, kAttribute.left + Width(stars.c_str()));
    EXPECT_EQ(0, dib.Count(CRect(0, 0, 260, 30), GetSysColor(COLOR_WINDOWTEXT)));   // no letters, only stars
}

TEST_F(EditTest, InfoColumnWidthKeepsTheWidestValue)
{
    Edit* wide = AddEdit(Edit::VALUE_FORMAT_TEXT);
    Edit* narrow = AddEdit(Edit::VALUE_FORMAT_TEXT);
    wide->SetItemValue(CString("a much wider value"));
    narrow->SetItemValue(CString("x"));
    tree.ResetInfoColMaxVisibleWidth();
    DibSurface dib(260, 30, kBackground);
    wide->DrawAttribute(&dib.DC(), kAttribute);
    narrow->DrawAttribute(&dib.DC(), kAttribute);
    EXPECT_EQ(Width("a much wider value"), tree.GetInfoColMaxVisibleWidth());
}

TEST(EditPaint, RowWithoutTreeDrawsNothing)
{
    CKelPropertyTreeItemEdit row;
    row.SetItemValue(CString("nothing"));
    DibSurface dib(100, 30, kBackground);
    row.DrawAttribute(&dib.DC(), kAttribute);
    EXPECT_EQ(100 * 30, dib.Count(CRect(0, 0, 100, 30), kBackground));
}

TEST_F(EditTest, DrawingLeavesTheContextAsItWas)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("x"));
    DibSurface dib(100, 30, kBackground);
    CDC& dc = dib.DC();
    dc.SetTextColor(RGB(1, 2, 3));
    dc.SetBkMode(OPAQUE);
    HGDIOBJ font = ::GetCurrentObject(dc.m_hDC, OBJ_FONT);
    row->DrawAttribute(&dc, kAttribute);
    EXPECT_EQ(RGB(1, 2, 3), dc.GetTextColor());
    EXPECT_EQ(OPAQUE, dc.GetBkMode());
    EXPECT_EQ(font, ::GetCurrentObject(dc.m_hDC, OBJ_FONT));
}
