// The text paths of a value field that pass through the rules: WM_SETTEXT, Redraw and the
// behavior's flags; the text accessors; SelectionSaver.
#include "digitsfield.h"
#include "valueeditfixture.h"

using namespace kel_ve_test;

namespace
{
struct TextRulesTest : ::testing::Test
{
    CRecordingFrame frame;
    CDigitsField field;
    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateFrame());
        ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(10, 10, 210, 34), &frame, 100));
        field.setTextPasses.clear();
    }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
};
}

TEST_F(TextRulesTest, SettingTextThatRulesChangeTakesTwoPassesAndEndsValid)
{
    field.SetWindowText("1a2b3");
    EXPECT_EQ((std::vector<std::string>{"1a2b3", "123"}), field.setTextPasses);
    EXPECT_STREQ("123", field.GetText());
}

TEST_F(TextRulesTest, SettingValidTextTakesOnePass)
{
    field.SetText(CString("4711"));
    EXPECT_EQ(std::vector<std::string>{"4711"}, field.setTextPasses);
    EXPECT_STREQ("4711", field.GetText());
}

TEST_F(TextRulesTest, RawSetTextMessageFromOutsideIsRuledToo)
{
    ::SetWindowTextA(field.m_hWnd, "x9y8");
    EXPECT_EQ((std::vector<std::string>{"x9y8", "98"}), field.setTextPasses);
    char text[16] = {};
    ::GetWindowTextA(field.m_hWnd, text, sizeof(text));
    EXPECT_STREQ("98", text);
}

TEST_F(TextRulesTest, ModifyFlagsWithNoChangeReturnsFalseAndDoesNotRedraw)
{
    field.SetWindowText("12345");
    EXPECT_FALSE(field.ModifyFlags(0, 0));
    EXPECT_FALSE(field.ModifyFlags(0, CDigitsField::kAtMostThree));   // not set: nothing to remove
    EXPECT_EQ(0, field.redraws);
    EXPECT_STREQ("12345", field.GetText());

    EXPECT_TRUE(field.ModifyFlags(CDigitsField::kAtMostThree, 0));
    EXPECT_EQ(1, field.redraws);
    EXPECT_EQ(CDigitsField::kAtMostThree, field.Flags());
    EXPECT_STREQ("123", field.GetText());   // the redraw brought the text in line

    EXPECT_FALSE(field.ModifyFlags(CDigitsField::kAtMostThree, 0));
    EXPECT_EQ(1, field.redraws);
    EXPECT_TRUE(field.ModifyFlags(0x4, CDigitsField::kAtMostThree));
    EXPECT_EQ(0x4u, field.Flags());
    EXPECT_EQ(2, field.redraws);
}

TEST_F(TextRulesTest, RedrawReplacesOnlyTextThatDiffersFromValidText)
{
    field.SetWindowText("555");
    field.setTextPasses.clear();
    field.Redraw();
    EXPECT_TRUE(field.setTextPasses.empty());

    // Slip an invalid text past the rules with the stock procedure, then redraw.
    ::CallWindowProcA(field.m_pfnSuper, field.m_hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("5x6"));
    EXPECT_STREQ("5x6", field.GetText());
    field.Redraw();
    EXPECT_EQ(std::vector<std::string>{"56"}, field.setTextPasses);
    EXPECT_STREQ("56", field.GetText());
}

TEST_F(TextRulesTest, RedrawWithoutWindowDoesNothing)
{
    CDigitsField loose;
    loose.Redraw();   // no window: must neither fail nor try to set text
    EXPECT_TRUE(loose.setTextPasses.empty());
    EXPECT_FALSE(loose.ModifyFlags(0, 0));
    EXPECT_TRUE(loose.ModifyFlags(CDigitsField::kAtMostThree, 0));
    EXPECT_EQ(1, loose.redraws);
}

TEST(ValueEditText, TrimmedTextLosesSpacesAtBothEndsOnly)
{
    CRecordingFrame frame;
    ASSERT_TRUE(frame.CreateFrame());
    CKelValueEditEx edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 24), &frame, 1));
    edit.SetWindowText("  12 m  ");
    EXPECT_STREQ("  12 m  ", edit.GetText());
    EXPECT_STREQ("12 m", edit.GetTrimmedText());
    // The plain field has no rules: its valid text is its text, every character may enter.
    EXPECT_STREQ("  12 m  ", edit.GetValidText());
    EXPECT_TRUE(edit.ShouldEnter('x'));
    EXPECT_TRUE(edit.ShouldEnter('\t'));
    frame.DestroyWindow();
}

TEST(ValueEditText, ReadOnlyFollowsTheStyleBit)
{
    CRecordingFrame frame;
    ASSERT_TRUE(frame.CreateFrame());
    CKelValueEditEx edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 24), &frame, 1));
    EXPECT_FALSE(edit.IsReadOnly());
    edit.SetReadOnly(TRUE);
    EXPECT_TRUE(edit.IsReadOnly());
    edit.SetReadOnly(FALSE);
    EXPECT_FALSE(edit.IsReadOnly());
    frame.DestroyWindow();
}

TEST_F(TextRulesTest, SelectionSaverPutsSelectionBackAtEndOfScope)
{
    field.SetWindowText("123456");
    field.SetSel(2, 4);
    {
        CKelValueEditEx::SelectionSaver saver(&field);
        EXPECT_EQ(2, saver.GetStart());
        EXPECT_EQ(4, saver.GetEnd());
        field.SetSel(0, 0);
    }
    EXPECT_EQ(std::make_pair(2, 4), Selection(field));
}

TEST_F(TextRulesTest, SelectionSaverMovesAndUpdates)
{
    field.SetWindowText("123456");
    {
        CKelValueEditEx::SelectionSaver saver(&field, 1, 1);
        saver += 2;
        EXPECT_EQ(3, saver.GetStart());
        saver.MoveBy(-1, 2);
        EXPECT_EQ(2, saver.GetStart());
        EXPECT_EQ(5, saver.GetEnd());
        field.SetSel(0, -1);
    }
    EXPECT_EQ(std::make_pair(2, 5), Selection(field));
    {
        CKelValueEditEx::SelectionSaver saver(&field);
        saver.MoveTo(4, 6);
        field.SetSel(1, 3);
        saver.Update();   // reads the selection again, dropping the move
        EXPECT_EQ(1, saver.GetStart());
        EXPECT_EQ(3, saver.GetEnd());
        field.SetSel(0, 0);
    }
    EXPECT_EQ(std::make_pair(1, 3), Selection(field));
}

TEST_F(TextRulesTest, DisabledSelectionSaverLeavesSelectionAlone)
{
    field.SetWindowText("123456");
    field.SetSel(2, 4);
    {
        CKelValueEditEx::SelectionSaver saver(&field);
        saver.Disable();
        saver.Update();   // without a control: nothing
        EXPECT_EQ(2, saver.GetStart());
        field.SetSel(5, 6);
    }
    EXPECT_EQ(std::make_pair(5, 6), Selection(field));
}
