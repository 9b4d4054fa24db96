// Colours of a value field: the brush and text colour it answers to its parent's colour
// request, and what the field paints with them.
#include "valueeditfixture.h"

using namespace kel_ve_test;

namespace
{
struct ColourTest : ::testing::Test
{
    CRecordingFrame frame;
    CKelValueEditEx field;
    HDC hdcMem = nullptr;
    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateFrame());
        ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, CRect(10, 10, 210, 40), &frame, 100));
        hdcMem = ::CreateCompatibleDC(nullptr);
    }
    void TearDown() override
    {
        ::DeleteDC(hdcMem);
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
    // The colour request as the stock edit sends it to its parent.
    LRESULT AskParent(UINT message = WM_CTLCOLOREDIT)
    {
        return frame.SendMessage(message, reinterpret_cast<WPARAM>(hdcMem), reinterpret_cast<LPARAM>(field.m_hWnd));
    }
    static COLORREF BrushColour(LRESULT hbr)
    {
        LOGBRUSH lb = {};
        ::GetObjectA(reinterpret_cast<HBRUSH>(hbr), sizeof(lb), &lb);
        return lb.lbColor;
    }
};
}

TEST_F(ColourTest, WithoutColoursTheRequestIsLeftToTheParent)
{
    ::SetTextColor(hdcMem, RGB(0, 128, 0));
    ::SetBkColor(hdcMem, RGB(0, 0, 128));
    LRESULT hbr = AskParent();
    // The parent's default answer: the system's window colours, as for any stock edit.
    ASSERT_NE(0, hbr);
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), BrushColour(hbr));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOWTEXT), ::GetTextColor(hdcMem));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), ::GetBkColor(hdcMem));
}

TEST_F(ColourTest, BackgroundColourAnswersTheRequestAndPaintsTheField)
{
    field.SetBackgroundColor(RGB(255, 255, 0));
    EXPECT_EQ(RGB(255, 255, 0), field.GetBackgroundColor());
    LRESULT hbr = AskParent();
    ASSERT_NE(0, hbr);
    EXPECT_EQ(RGB(255, 255, 0), BrushColour(hbr));
    EXPECT_EQ(RGB(255, 255, 0), ::GetBkColor(hdcMem));
    // Read-only and disabled edits ask with WM_CTLCOLORSTATIC: the same answer.
    EXPECT_EQ(hbr, AskParent(WM_CTLCOLORSTATIC));

    field.SetWindowText("8");
    kel_test::PumpPending();
    ClientRender render(field.m_hWnd);
    // Right of the short text the field shows its background.
    EXPECT_EQ(RGB(255, 255, 0), render.Pixel(render.Width() - 3, render.Height() - 3));
    EXPECT_EQ(RGB(255, 255, 0), render.Pixel(render.Width() / 2, render.Height() / 2));
}

TEST_F(ColourTest, NewBackgroundColourReplacesTheBrush)
{
    field.SetBackgroundColor(RGB(255, 0, 0));
    field.SetBackgroundColor(RGB(0, 0, 255));
    EXPECT_EQ(RGB(0, 0, 255), field.GetBackgroundColor());
    EXPECT_EQ(RGB(0, 0, 255), BrushColour(AskParent()));
    ClientRender render(field.m_hWnd);
    EXPECT_EQ(RGB(0, 0, 255), render.Pixel(render.Width() - 3, render.Height() - 3));
    EXPECT_EQ(0, render.Count(RGB(255, 0, 0)));
}

TEST_F(ColourTest, TextColourIsSetOnTheContextAndPaintsTheText)
{
    field.SetTextColor(RGB(200, 0, 0));
    EXPECT_EQ(RGB(200, 0, 0), field.GetTextColor());
    ::SetTextColor(hdcMem, RGB(0, 128, 0));
    LRESULT hbr = AskParent();
    ASSERT_NE(0, hbr);
    EXPECT_EQ(RGB(200, 0, 0), ::GetTextColor(hdcMem));

    field.SetWindowText("8888");
    kel_test::PumpPending();
    ClientRender render(field.m_hWnd);
    EXPECT_GT(render.Count(RGB(200, 0, 0)), 0);
}

TEST_F(ColourTest, StoredBlackTextIsNotAppliedToTheContext)
{
    field.SetTextColor(RGB(0, 0, 0));
    ::SetTextColor(hdcMem, RGB(0, 128, 0));
    LRESULT hbr = AskParent();
    // The field answers (bit 0 is set) with its brush, but leaves the context's text colour.
    ASSERT_NE(0, hbr);
    EXPECT_EQ(static_cast<COLORREF>(field.GetBackgroundColor()), BrushColour(hbr));
    EXPECT_EQ(RGB(0, 128, 0), ::GetTextColor(hdcMem));
}

TEST_F(ColourTest, GetBackgroundColorWithoutBrushLeavesTheFieldWithOne)
{
    HDC hdcField = ::GetDC(field.m_hWnd);
    COLORREF expected = ::GetBkColor(hdcField);
    ::ReleaseDC(field.m_hWnd, hdcField);

    COLORREF read = field.GetBackgroundColor();
    EXPECT_EQ(expected, read);
    // From now on the field answers colour requests with a brush of that colour.
    ::SetBkColor(hdcMem, RGB(0, 0, 128));
    LRESULT hbr = AskParent();
    ASSERT_NE(0, hbr);
    EXPECT_EQ(read, BrushColour(hbr));
    EXPECT_EQ(read, ::GetBkColor(hdcMem));
    EXPECT_EQ(hbr, AskParent());   // the same brush again: it was kept
}

TEST_F(ColourTest, GetTextColorWithoutStoredColourReadsAndKeepsIt)
{
    HDC hdcField = ::GetDC(field.m_hWnd);
    COLORREF expected = ::GetTextColor(hdcField);
    ::ReleaseDC(field.m_hWnd, hdcField);
    EXPECT_EQ(expected, field.GetTextColor());
    // Marked as stored: the field now answers colour requests itself.
    EXPECT_NE(0, AskParent());
    field.SetTextColor(RGB(1, 100, 1));
    EXPECT_EQ(RGB(1, 100, 1), field.GetTextColor());
}
