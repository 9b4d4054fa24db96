// Number fields: what typed characters and the Delete key do to the text and the caret.
#include "numericprobe.h"

#include <behaviors.h>

using namespace kel_ve_test;

namespace
{
using Num = CKelValueEditEx::NumericBehavior;

std::pair<int, int> Caret(int position)
{
    return {position, position};
}
}

TEST_F(NumericTest, FourthDigitIgnoredWithThreeWholeDigits)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    Type(field, "1234");
    EXPECT_STREQ("123", field.GetText());
    EXPECT_EQ(Caret(3), Selection(field));
}

TEST_F(NumericTest, AutoDecimalTurnsTheDigitPastTheWholePartIntoTheFirstDecimal)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumAutoDecimal, 0);
    Type(field, "1234");
    EXPECT_STREQ("123.4", field.GetText());
    EXPECT_EQ(Caret(5), Selection(field));
}

TEST_F(NumericTest, AutoDecimalOvertypesSeparatorAndFirstDecimalInTheMiddle)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumAutoDecimal, 0);
    field.SetWindowText("123.56");
    Select(field, 3, 3);
    Type(field, "4");
    EXPECT_STREQ("123.46", field.GetText());
    EXPECT_EQ(Caret(5), Selection(field));
}

TEST_F(NumericTest, DigitPastTheWholePartWithoutAutoDecimalIsIgnored)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("123");
    Select(field, 3, 3);
    Type(field, "4");
    EXPECT_STREQ("123", field.GetText());
}

TEST_F(NumericTest, SignTypedInTheMiddleTogglesAndTheCaretFollows)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("12.5");
    Select(field, 2, 2);
    Type(field, "-");
    EXPECT_STREQ("-12.5", field.GetText());
    EXPECT_EQ(Caret(3), Selection(field));
    Type(field, "-");
    EXPECT_STREQ("12.5", field.GetText());
    EXPECT_EQ(Caret(2), Selection(field));
}

TEST_F(NumericTest, SignTypedInTheMiddleMovesASelectionAlong)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("12.5");
    Select(field, 1, 3);
    Type(field, "-");
    EXPECT_STREQ("-12.5", field.GetText());
    EXPECT_EQ(std::make_pair(2, 4), Selection(field));
}

TEST_F(NumericTest, SignAtTheStartIsInsertedOnceAndOvertypedAfterwards)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("12");
    Select(field, 0, 0);
    Type(field, "-");
    EXPECT_STREQ("-12", field.GetText());
    EXPECT_EQ(Caret(1), Selection(field));
    Select(field, 0, 0);
    Type(field, "-");
    EXPECT_STREQ("-12", field.GetText());
    EXPECT_EQ(Caret(1), Selection(field));
}

TEST_F(NumericTest, SignIsIgnoredWhenNegativesAreNotAllowed)
{
    CNumericField field(-3, 2);
    ASSERT_TRUE(Create(field));
    EXPECT_FALSE(field.IsNegativeAllowed());
    Type(field, "-12-");
    EXPECT_STREQ("12", field.GetText());
    field.SetWindowText("-45");
    EXPECT_STREQ("45", field.GetText());
}

TEST_F(NumericTest, PointWithTheCaretAtTheStartMovesTheCaretBehindTheExistingPoint)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("12.5");
    Select(field, 0, 0);
    Type(field, ".");
    EXPECT_STREQ("12.5", field.GetText());
    EXPECT_EQ(Caret(3), Selection(field));
}

TEST_F(NumericTest, PointThatReplacesTheSelectedPointIsTyped)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("12.5");
    Select(field, 1, 3);
    Type(field, ".");
    EXPECT_STREQ("1.5", field.GetText());
    EXPECT_EQ(Caret(2), Selection(field));
}

TEST_F(NumericTest, PointIsIgnoredWithoutDecimalPlaces)
{
    CNumericField field(5, 0);
    ASSERT_TRUE(Create(field));
    Type(field, "12.5");
    EXPECT_STREQ("125", field.GetText());
}

TEST_F(NumericTest, CommaIsTheDecimalSeparatorWhileItSeparatesNoGroups)
{
    CNumericField field(4, 2);
    ASSERT_TRUE(Create(field));
    Type(field, "12,5");
    EXPECT_STREQ("12.5", field.GetText());
    field.SetWindowText("7,25");
    EXPECT_STREQ("7.25", field.GetText());
}

TEST_F(NumericTest, CommaIsRefusedWhereItSeparatesGroups)
{
    CNumericField field(7, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    Type(field, "12,5");
    EXPECT_STREQ("125", field.GetText());
}

TEST_F(NumericTest, WithDecimalsFullADigitAtTheEndIsIgnoredAndOneInTheMiddleOvertypes)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("12.34");
    Select(field, 5, 5);
    Type(field, "5");
    EXPECT_STREQ("12.34", field.GetText());
    EXPECT_EQ(Caret(5), Selection(field));
    Select(field, 3, 3);
    Type(field, "9");
    EXPECT_STREQ("12.94", field.GetText());
    EXPECT_EQ(Caret(4), Selection(field));
    Type(field, "8");
    EXPECT_STREQ("12.98", field.GetText());
    EXPECT_EQ(Caret(5), Selection(field));
}

TEST_F(NumericTest, TrailingZerosTypedAfterThePointStay)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    Type(field, "1.10");
    EXPECT_STREQ("1.10", field.GetText());
    EXPECT_DOUBLE_EQ(1.1, field.GetDouble());
}

TEST_F(NumericTest, FullWholePartIsOvertypedInTheMiddle)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("123.4");
    Select(field, 1, 1);
    Type(field, "9");
    EXPECT_STREQ("193.4", field.GetText());
    EXPECT_EQ(Caret(2), Selection(field));
}

TEST_F(NumericTest, LettersAndOtherCharactersAreIgnored)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    Type(field, "1a2 b$3");
    EXPECT_STREQ("123", field.GetText());
}

TEST_F(NumericTest, ReadOnlyFieldTakesNoCharacter)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field, ES_READONLY));
    field.SetWindowText("12");
    Select(field, 2, 2);
    Type(field, "3-");
    EXPECT_STREQ("12", field.GetText());
}

TEST_F(NumericTest, VetoOfTheControlStopsADigit)
{
    struct CNoSevens : CNumericField
    {
        CNoSevens() : CNumericField(5, 2) {}
        bool ShouldEnter(char c) const override { return c != '7'; }
    } field;
    ASSERT_TRUE(Create(field));
    Type(field, "1727");
    EXPECT_STREQ("12", field.GetText());
}

TEST_F(NumericTest, GroupsOfThreeReadWithSeparatorsWhileTyping)
{
    CNumericField field(9, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    Type(field, "1234567");
    EXPECT_STREQ("1,234,567", field.GetText());
    EXPECT_EQ(Caret(9), Selection(field));
}

TEST_F(NumericTest, DeletingTheDigitBeforeASeparatorKeepsTheCaretAtItsDigit)
{
    CNumericField field(9, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    field.SetWindowText("1234567");
    ASSERT_STREQ("1,234,567", field.GetText());
    Select(field, 4, 4);   // 1,23|4,567
    Press(field, VK_DELETE);
    EXPECT_STREQ("123,567", field.GetText());
    EXPECT_EQ(Caret(3), Selection(field));   // still behind the 3
}

TEST_F(NumericTest, DeleteBeforeASeparatorTakesTheDigitBehindIt)
{
    CNumericField field(9, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    field.SetWindowText("1234567");
    Select(field, 1, 1);   // 1|,234,567
    Press(field, VK_DELETE);
    EXPECT_STREQ("134,567", field.GetText());
    EXPECT_EQ(Caret(1), Selection(field));
}

TEST_F(NumericTest, BackspaceKeepsTheGroupsInStep)
{
    CNumericField field(9, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    field.SetWindowText("1234567");
    Select(field, 9, 9);
    Press(field, VK_BACK);
    EXPECT_STREQ("123,456", field.GetText());
    EXPECT_EQ(Caret(7), Selection(field));
}

TEST_F(NumericTest, DeleteOfASelectionRunningToTheEndLeavesTheCaretAtItsStart)
{
    CNumericField field(9, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    field.SetWindowText("1234567.5");
    Select(field, 3, -1);
    Press(field, VK_DELETE);
    EXPECT_STREQ("12", field.GetText());
    EXPECT_EQ(Caret(2), Selection(field));
}

TEST_F(NumericTest, PrefixStandsInFrontOfTheNumberAndNotInAnEmptyField)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("Nr. ");
    EXPECT_STREQ("", field.GetText());
    Type(field, "12.5");
    EXPECT_STREQ("Nr. 12.5", field.GetText());
    EXPECT_DOUBLE_EQ(12.5, field.GetDouble());
    EXPECT_EQ(Caret(8), Selection(field));
}

TEST_F(NumericTest, DigitTypedInsideThePrefixGoesBehindIt)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("$ ");
    field.SetWindowText("45");
    ASSERT_STREQ("$ 45", field.GetText());
    Select(field, 0, 0);
    Type(field, "3");
    EXPECT_STREQ("$ 345", field.GetText());
    EXPECT_EQ(Caret(3), Selection(field));
}

TEST_F(NumericTest, PrefixCharacterOvertypesItselfAndOthersAreIgnoredThere)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("$ ");
    field.SetWindowText("45");
    Select(field, 0, 0);
    Type(field, "$");
    EXPECT_STREQ("$ 45", field.GetText());
    EXPECT_EQ(Caret(1), Selection(field));
    Type(field, "x");
    EXPECT_STREQ("$ 45", field.GetText());
    EXPECT_EQ(Caret(1), Selection(field));
}

TEST_F(NumericTest, DeleteInsideThePrefixIsSwallowedUnlessTheSelectionRunsToTheEnd)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("$ ");
    field.SetWindowText("45");
    Select(field, 0, 3);
    Press(field, VK_DELETE);
    EXPECT_STREQ("$ 45", field.GetText());
    Select(field, 1, -1);
    Press(field, VK_DELETE);
    EXPECT_STREQ("", field.GetText());
}

TEST_F(NumericTest, PasteIsCutToTheRules)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    ASSERT_TRUE(SetClipboardText(frame.m_hWnd, "ab-1234.5678"));
    field.SendMessage(WM_PASTE);
    EXPECT_STREQ("-123.56", field.GetText());
}

TEST_F(NumericTest, CutGoesThroughTheDeleteKeyAndAWholeCutIsADeletion)
{
    CNumericField field(9, 2);
    ASSERT_TRUE(Create(field));
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    field.SetWindowText("1234.5");
    ASSERT_STREQ("1,234.5", field.GetText());
    Select(field, 2, 4);   // "23": the rest closes up to a number without the separator
    field.SendMessage(WM_CUT);
    EXPECT_EQ(std::string("23"), GetClipboardText(frame.m_hWnd));
    EXPECT_STREQ("14.5", field.GetText());
    EXPECT_FALSE(field.DeletedArmed());
    Select(field, 0, -1);
    field.SendMessage(WM_CUT);
    EXPECT_EQ(std::string("14.5"), GetClipboardText(frame.m_hWnd));
    EXPECT_STREQ("", field.GetText());
    EXPECT_TRUE(field.DeletedArmed());
    CString deleted;
    field.GetDeletedItemText(deleted);
    EXPECT_STREQ("14.5", deleted);
}

TEST_F(NumericTest, PrefixRefusedByTheTextLimitLosesTheCharacterQuietly)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("Nr. ");
    field.SetLimitText(2);   // the prefix itself does not fit
    Type(field, "5");
    // What the edit took of the prefix, if anything; the digit did not get in.
    std::string text = field.GetText().GetString();
    EXPECT_LE(text.size(), 2u);
    EXPECT_EQ(0u, std::string("Nr. ").find(text));
    EXPECT_TRUE(::IsWindow(field.m_hWnd));
}
