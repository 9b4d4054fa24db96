// Number fields: construction, the number read out of a text and written into it, and the
// setters that reshape the text at once.
#include "numericprobe.h"

#include <behaviors.h>

using namespace kel_ve_test;

namespace
{
using Num = CKelValueEditEx::NumericBehavior;

char LocaleNegativeSign()
{
    char sign[8] = {};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SNEGATIVESIGN, sign, sizeof(sign)) > 0 && sign[0] != 0)
        return sign[0];
    return '-';
}
}

TEST(NumericBehavior, StartsWithEveryFailureBitAndTheLocalesSign)
{
    CNumericField field(5, 2);
    EXPECT_EQ(0xFFu, field.Flags());
    EXPECT_TRUE(field.IsNegativeAllowed());
    EXPECT_EQ(LocaleNegativeSign(), field.NegativeSign());
    EXPECT_EQ(5, field.GetMaxWholeDigits());
    EXPECT_EQ(2, field.GetMaxDecimalPlaces());
    EXPECT_EQ(0, field.GetDigitsInGroup());
    char decimal = 0, group = 'x';
    field.GetSeparators(&decimal, &group);
    EXPECT_EQ('.', decimal);
    EXPECT_EQ(0, group);
    field.GetSeparators(nullptr, &group);
    EXPECT_STREQ("", field.GetPrefix());
    double min = 0, max = 0;
    field.GetRange(&min, &max);
    EXPECT_EQ(-1.7976931348623157e308, min);
    EXPECT_EQ(1.7976931348623157e308, max);
}

TEST(NumericBehavior, NegativeWholeDigitsAllowNoSign)
{
    CNumericField field(-4, 2);
    EXPECT_EQ(0x10FFu, field.Flags());
    EXPECT_EQ(4, field.GetMaxWholeDigits());
    EXPECT_FALSE(field.IsNegativeAllowed());
}

TEST(NumericBehavior, IntegerFieldHasNoDecimalPlaces)
{
    CIntegerField field(6);
    EXPECT_EQ(6, field.GetMaxWholeDigits());
    EXPECT_EQ(0, field.GetMaxDecimalPlaces());
    EXPECT_EQ(0xFFu, field.Flags());
}

TEST(NumericBehavior, NumericTextDropsPrefixSeparatorsAndTrailingZeros)
{
    CNumericField field(9, 3);
    field.SetPrefix("Nr. ");
    field.SetSeparators('.', ',');
    EXPECT_STREQ("-1234.5", field.NumericText("Nr. 1,234.50-", true));
    EXPECT_STREQ("12.0", field.NumericText("12.", true));
    EXPECT_STREQ("12.0", field.NumericText("12.000", false));
    EXPECT_STREQ("1200", field.NumericText("1,200", false));
    EXPECT_STREQ("", field.NumericText("abc", true));
}

TEST(NumericBehavior, NumericTextInTheFieldsSymbolsKeepsThemAndCompletesOnlyAPoint)
{
    CNumericField field(9, 3);
    field.SetSeparators(',', '.');
    EXPECT_STREQ("-12,5", field.NumericText("-1.2,50", false));
    EXPECT_STREQ("-12.5", field.NumericText("-1.2,50", true));
    EXPECT_STREQ("12,", field.NumericText("12,00", false));   // only a point is completed
    EXPECT_STREQ("12.0", field.NumericText("12,00", true));
}

TEST(NumericBehavior, DoubleTextUsesTheDecimalSeparatorAndTrimsToOneZero)
{
    CNumericField field(9, 3);
    EXPECT_STREQ("10.0", field.DoubleText(10.0, true));
    EXPECT_STREQ("2.500000", field.DoubleText(2.5, false));
    EXPECT_STREQ("-0.125", field.DoubleText(-0.125, true));
    field.SetSeparators(',', 0);
    EXPECT_STREQ("10,0", field.DoubleText(10.0, true));
    EXPECT_STREQ("3,25", field.DoubleText(3.25, true));
}

TEST(NumericBehavior, SeparatedTextGroupsTheWholePartBehindTheSignAndPutsThePrefixInFront)
{
    CNumericField field(9, 3);
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    EXPECT_STREQ("-1,234,567.50", field.SeparatedText("-1234567.50"));
    EXPECT_STREQ("-123", field.SeparatedText("-123"));
    EXPECT_STREQ("1,000", field.SeparatedText("1000"));
    field.SetPrefix("$");
    EXPECT_STREQ("$12,345", field.SeparatedText("12345"));
    EXPECT_STREQ("", field.SeparatedText(""));   // an empty number shows no prefix
    EXPECT_STREQ("$.5", field.SeparatedText(".5"));
}

TEST(NumericBehavior, NoGroupSeparatorMeansNoGrouping)
{
    CNumericField field(9, 3);
    field.SetDigitsInGroup(3);
    EXPECT_STREQ("1234567", field.SeparatedText("1234567"));
}

TEST(NumericBehavior, InsertZerosAtAPositionOrAtTheEnd)
{
    CNumericField field(9, 3);
    CString text = "12";
    field.ZerosInto(text, -1, 2);
    EXPECT_STREQ("1200", text);
    field.ZerosInto(text, 0, 1);
    EXPECT_STREQ("01200", text);
    field.ZerosInto(text, 3, 0);
    EXPECT_STREQ("01200", text);
}

TEST(NumericBehavior, EqualSeparatorsAreKeptApart)
{
    CNumericField field(9, 3);
    field.SetSeparators('.', '.');
    char decimal = 0, group = 0;
    field.GetSeparators(&decimal, &group);
    EXPECT_EQ('.', decimal);
    EXPECT_EQ(',', group);
    field.SetSeparators(',', ',');
    field.GetSeparators(&decimal, &group);
    EXPECT_EQ(',', decimal);
    EXPECT_EQ('.', group);
}

TEST_F(NumericTest, SetDoubleShowsTheValueCutToThePlaces)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetDouble(12.5);
    EXPECT_STREQ("12.5", field.GetText());
    field.SetDouble(3.14159);
    EXPECT_STREQ("3.14", field.GetText());
    field.SetDouble(-7.0);
    EXPECT_STREQ("-7.0", field.GetText());
    EXPECT_DOUBLE_EQ(-7.0, field.GetDouble());
    field.SetDouble(2.0, false);
    EXPECT_STREQ("2.00", field.GetText());
}

TEST_F(NumericTest, SetIntAndGetInt)
{
    CIntegerField field(6);
    ASSERT_TRUE(Create(field));
    field.SetInt(-4711);
    EXPECT_STREQ("-4711", field.GetText());
    EXPECT_EQ(-4711, field.GetInt());
    field.SetDouble(12.9);
    EXPECT_STREQ("12", field.GetText());
    EXPECT_EQ(12, field.GetInt());
}

TEST_F(NumericTest, EmptyFieldReadsAsZero)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    EXPECT_EQ(0.0, field.GetDouble());
    EXPECT_EQ(0, field.GetInt());
}

TEST_F(NumericTest, SetTextIsPassedThroughTheRules)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("x12345.678y");
    EXPECT_STREQ("123.67", field.GetText());
    field.SetWindowText("1.2.3");
    EXPECT_STREQ("1.23", field.GetText());
    field.SetWindowText("--5");
    EXPECT_STREQ("-5", field.GetText());
}

TEST_F(NumericTest, PadDecimalsOnSetFillsASetValueButNotTyping)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumPadDecimalsOnSet, 0);
    field.SetDouble(12.0);
    EXPECT_STREQ("12.00", field.GetText());
    field.SetWindowText("");
    Type(field, "34.5");
    EXPECT_STREQ("34.5", field.GetText());
}

TEST_F(NumericTest, PadDecimalsAlwaysFillsWhileTyping)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumPadDecimalsAlways, 0);
    Type(field, "5");
    EXPECT_STREQ("5.00", field.GetText());
    EXPECT_EQ(std::make_pair(1, 1), Selection(field));
    Type(field, "6");
    EXPECT_STREQ("56.00", field.GetText());
    Type(field, ".");
    EXPECT_EQ(std::make_pair(3, 3), Selection(field));
    Type(field, "78");   // overtypes the padding
    EXPECT_STREQ("56.78", field.GetText());
}

TEST_F(NumericTest, SettersReshapeTheTextAtOnce)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("-123.45");
    field.SetMaxDecimalPlaces(1);
    EXPECT_STREQ("-123.4", field.GetText());
    field.SetMaxWholeDigits(2);
    EXPECT_STREQ("-12.4", field.GetText());
    field.AllowNegative(false);
    EXPECT_STREQ("12.4", field.GetText());
    EXPECT_FALSE(field.IsNegativeAllowed());
    field.AllowNegative(true);
    EXPECT_TRUE(field.IsNegativeAllowed());
    field.SetMaxWholeDigits(5);
    field.SetWindowText("12345");
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(2);
    EXPECT_STREQ("1,23,45", field.GetText());
    field.SetDigitsInGroup(3);
    EXPECT_STREQ("12,345", field.GetText());
    field.SetMaxDecimalPlaces(0);
    field.SetWindowText("7.5");
    EXPECT_STREQ("7", field.GetText());
}

TEST_F(NumericTest, NegativeWholeDigitsOnTheSetterForbidTheSignAndPositiveOnesLeaveTheRule)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("-12");
    field.SetMaxWholeDigits(-4);
    EXPECT_FALSE(field.IsNegativeAllowed());
    EXPECT_EQ(4, field.GetMaxWholeDigits());
    EXPECT_STREQ("12", field.GetText());
    field.SetMaxWholeDigits(6);
    EXPECT_FALSE(field.IsNegativeAllowed());
}

TEST_F(NumericTest, NewSeparatorsShowTheSameNumber)
{
    CNumericField field(7, 2);
    ASSERT_TRUE(Create(field));
    field.SetDigitsInGroup(3);
    field.SetWindowText("1234.5");
    field.SetSeparators(',', '.');
    EXPECT_STREQ("1.234,5", field.GetText());
    EXPECT_DOUBLE_EQ(1234.5, field.GetDouble());
    Select(field, 7, 7);
    Type(field, "6");
    EXPECT_STREQ("1.234,56", field.GetText());
}

TEST_F(NumericTest, NewPrefixReplacesTheOldOneAndKeepsTheNumber)
{
    CNumericField field(7, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("Nr. ");
    field.SetWindowText("12.5");
    EXPECT_STREQ("Nr. 12.5", field.GetText());
    field.SetPrefix("$");
    EXPECT_STREQ("$12.5", field.GetText());
    EXPECT_DOUBLE_EQ(12.5, field.GetDouble());
    field.SetPrefix("");
    EXPECT_STREQ("12.5", field.GetText());
}

TEST_F(NumericTest, PrefixWithDigitsIsNoPartOfTheNumber)
{
    CNumericField field(7, 2);
    ASSERT_TRUE(Create(field));
    field.SetPrefix("No. 1 - ");
    field.SetDouble(42.0);
    EXPECT_STREQ("No. 1 - 42.0", field.GetText());
    EXPECT_DOUBLE_EQ(42.0, field.GetDouble());
}

TEST_F(NumericTest, SettersRedrawOnlyOnAChangeExceptTheRange)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.redraws = 0;
    field.SetMaxWholeDigits(5);
    field.SetMaxDecimalPlaces(2);
    field.SetDigitsInGroup(0);
    field.AllowNegative(true);
    EXPECT_EQ(0, field.redraws);
    field.SetMaxWholeDigits(6);
    field.SetMaxDecimalPlaces(3);
    field.SetDigitsInGroup(3);
    field.AllowNegative(false);
    EXPECT_EQ(4, field.redraws);
    field.redraws = 0;
    field.SetRange(0.0, 10.0);
    field.SetRange(0.0, 10.0);
    EXPECT_EQ(2, field.redraws);
}
