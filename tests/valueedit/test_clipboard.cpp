// Cut, clear and paste of a value field, over the real clipboard.
#include "digitsfield.h"
#include "valueeditfixture.h"

using namespace kel_ve_test;

namespace
{
struct ClipboardTest : ::testing::Test
{
    CRecordingFrame frame;
    CDigitsField field;
    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateFrame());
        ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(10, 10, 210, 34), &frame, 100));
        field.SetWindowText("12345");
        field.setTextPasses.clear();
    }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
};
}

TEST_F(ClipboardTest, CutWithNoSelectionLeavesClipboardAlone)
{
    ASSERT_TRUE(SetClipboardText(frame.m_hWnd, "sentinel"));
    field.SetSel(2, 2);
    field.SendMessage(WM_CUT);
    EXPECT_EQ("sentinel", GetClipboardText(frame.m_hWnd));
    EXPECT_STREQ("12345", field.GetText());
}

TEST_F(ClipboardTest, CutWithSelectionCopiesAndRemovesIt)
{
    ASSERT_TRUE(SetClipboardText(frame.m_hWnd, "sentinel"));
    field.SetSel(1, 3);
    EXPECT_EQ(0, field.SendMessage(WM_CUT));
    EXPECT_EQ("23", GetClipboardText(frame.m_hWnd));
    EXPECT_STREQ("145", field.GetText());
    EXPECT_EQ(std::make_pair(1, 1), Selection(field));
}

TEST_F(ClipboardTest, ClearWithNoSelectionDoesNothing)
{
    field.SetSel(2, 2);
    field.SendMessage(WM_CLEAR);
    // The Delete key itself would have taken the "3" behind the caret.
    EXPECT_STREQ("12345", field.GetText());
    EXPECT_TRUE(field.keyDowns.empty());
}

TEST_F(ClipboardTest, ClearWithSelectionGoesThroughTheDeleteKey)
{
    field.SetSel(1, 3);
    EXPECT_EQ(0, field.SendMessage(WM_CLEAR));
    EXPECT_EQ(std::vector<UINT>{VK_DELETE}, field.keyDowns);
    EXPECT_STREQ("145", field.GetText());
}

TEST_F(ClipboardTest, ClearWithSelectionHonoursTheBehaviorsRefusal)
{
    field.refuseDelete = true;
    field.SetSel(1, 3);
    field.SendMessage(WM_CLEAR);
    EXPECT_EQ(std::vector<UINT>{VK_DELETE}, field.keyDowns);
    EXPECT_STREQ("12345", field.GetText());
}

TEST_F(ClipboardTest, PasteThatRulesShortenPutsSelectionBackWhereItWasBefore)
{
    ASSERT_TRUE(SetClipboardText(frame.m_hWnd, "9a8b7"));
    field.SetSel(1, 2);
    EXPECT_EQ(0, field.SendMessage(WM_PASTE));
    EXPECT_STREQ("1987345", field.GetText());
    // Not behind the pasted text (which would be 6), but where the selection was.
    EXPECT_EQ(std::make_pair(1, 2), Selection(field));
}

TEST_F(ClipboardTest, PasteThatRulesAcceptLeavesCaretBehindPastedText)
{
    ASSERT_TRUE(SetClipboardText(frame.m_hWnd, "77"));
    field.SetSel(1, 2);
    field.SendMessage(WM_PASTE);
    EXPECT_STREQ("177345", field.GetText());
    EXPECT_EQ(std::make_pair(3, 3), Selection(field));
    EXPECT_TRUE(field.setTextPasses.empty());   // nothing had to be replaced
}
