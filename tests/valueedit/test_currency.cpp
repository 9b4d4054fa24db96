// The currency field: its defaults, the user's currency settings, and a money value shown,
// typed and left.
#include "numericprobe.h"

#include <behaviors.h>

#include <stdlib.h>

using namespace kel_ve_test;

namespace
{
using Num = CKelValueEditEx::NumericBehavior;

bool LocaleText(LCTYPE type, std::string& text)
{
    char buffer[64] = {};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, type, buffer, sizeof(buffer)) <= 0)
        return false;
    text = buffer;
    return true;
}

// The currency settings the field should take, worked out from the locale here.
struct Expected
{
    std::string prefix = "$";
    int group = 3;
    int decimals = 2;
    char decimal = '.';
    char groupSeparator = 0;
};

Expected FromLocale()
{
    Expected e;
    std::string text;
    if (LocaleText(LOCALE_SCURRENCY, text))
        e.prefix = text;
    if (LocaleText(LOCALE_SMONGROUPING, text))
        e.group = atoi(text.c_str());
    if (LocaleText(LOCALE_ICURRDIGITS, text))
        e.decimals = atoi(text.c_str());
    if (LocaleText(LOCALE_ICURRENCY, text))
    {
        int placement = atoi(text.c_str());
        if (placement == 2)
            e.prefix += ' ';
        else if (placement != 0)
            e.prefix.clear();
    }
    if (LocaleText(LOCALE_SMONDECIMALSEP, text) && !text.empty())
        e.decimal = text[0];
    if (LocaleText(LOCALE_SMONTHOUSANDSEP, text))
        e.groupSeparator = text.empty() ? 0 : text[0];
    if (e.groupSeparator != 0 && e.groupSeparator == e.decimal)
        e.groupSeparator = e.decimal == ',' ? '.' : ',';
    return e;
}

// 1234567 in the expected grouping, without prefix.
std::string Grouped(const Expected& e, const std::string& digits)
{
    std::string result = digits;
    if (e.group > 0 && e.groupSeparator != 0)
        for (int pos = static_cast<int>(result.size()) - e.group; pos > 0; pos -= e.group)
            result.insert(static_cast<size_t>(pos), 1, e.groupSeparator);
    return result;
}
}

TEST(CurrencyField, TakesTheUsersCurrencySettings)
{
    Expected e = FromLocale();
    CCurrencyField field;
    EXPECT_EQ(9, field.GetMaxWholeDigits());
    EXPECT_EQ(e.decimals, field.GetMaxDecimalPlaces());
    EXPECT_EQ(e.group, field.GetDigitsInGroup());
    EXPECT_EQ(e.prefix, std::string(field.GetPrefix()));
    char decimal = 0, group = 0;
    field.GetSeparators(&decimal, &group);
    EXPECT_EQ(e.decimal, decimal);
    EXPECT_EQ(e.groupSeparator, group);
    EXPECT_EQ(0xFFu | 0x8E00u, field.Flags());
}

TEST(CurrencyField, DefaultLocaleOfTheTestPrefixIsTheUsualDollarFormat)
{
    // The Wine prefix of the tests runs in English (United States); the field's settings
    // then read as they do on such a desktop.
    std::string symbol;
    ASSERT_TRUE(LocaleText(LOCALE_SCURRENCY, symbol));
    ASSERT_EQ("$", symbol) << "the test prefix is not in English (United States)";
    CCurrencyField field;
    EXPECT_STREQ("$", field.GetPrefix());
    EXPECT_EQ(2, field.GetMaxDecimalPlaces());
    EXPECT_STREQ("$###,###,###.##", field.GetMask());
}

TEST_F(NumericTest, CurrencyValueIsShownWithAllDecimalPlaces)
{
    Expected e = FromLocale();
    CCurrencyField field;
    ASSERT_TRUE(Create(field));
    field.SetDouble(1234567.5);
    std::string expected = e.prefix + Grouped(e, "1234567");
    if (e.decimals > 0)
        expected += e.decimal + std::string("5") + std::string(static_cast<size_t>(e.decimals - 1), '0');
    EXPECT_EQ(expected, std::string(field.GetText()));
    EXPECT_DOUBLE_EQ(1234567.5, field.GetDouble());
}

TEST_F(NumericTest, CurrencyTypingIsNotPaddedAndLeavingFillsTheDecimals)
{
    Expected e = FromLocale();
    CCurrencyField field;
    ASSERT_TRUE(Create(field));
    field.SetFocus();
    kel_test::PumpPending();
    Type(field, "001234");
    EXPECT_EQ(e.prefix + Grouped(e, "001234"), std::string(field.GetText()));
    other.SetFocus();
    kel_test::PumpPending();
    std::string expected = e.prefix + Grouped(e, "1234");
    if (e.decimals > 0)
        expected += e.decimal + std::string(static_cast<size_t>(e.decimals), '0');
    EXPECT_EQ(expected, std::string(field.GetText()));
}

TEST_F(NumericTest, EmptyCurrencyFieldLeftReadsZero)
{
    Expected e = FromLocale();
    CCurrencyField field;
    ASSERT_TRUE(Create(field));
    field.SetFocus();
    kel_test::PumpPending();
    other.SetFocus();
    kel_test::PumpPending();
    std::string expected = e.prefix + "0";
    if (e.decimals > 0)
        expected += e.decimal + std::string(static_cast<size_t>(e.decimals), '0');
    EXPECT_EQ(expected, std::string(field.GetText()));
    EXPECT_EQ(other.m_hWnd, ::GetFocus());
}

TEST_F(NumericTest, CurrencyFieldWithExplicitEuropeanSettings)
{
    CCurrencyField field;
    ASSERT_TRUE(Create(field));
    field.SetPrefix("EUR ");
    field.SetSeparators(',', '.');
    field.SetDigitsInGroup(3);
    field.SetMaxDecimalPlaces(2);
    field.SetDouble(1234567.891);
    EXPECT_STREQ("EUR 1.234.567,89", field.GetText());
    EXPECT_DOUBLE_EQ(1234567.89, field.GetDouble());
    Select(field, 0, -1);
    Type(field, "42,5");
    EXPECT_STREQ("EUR 42,5", field.GetText());
    EXPECT_STREQ("EUR ###.###.###,##", field.GetMask());
}

TEST_F(NumericTest, CurrencySignTogglesBehindThePrefix)
{
    CCurrencyField field;
    ASSERT_TRUE(Create(field));
    field.SetPrefix("$");
    field.SetSeparators('.', ',');
    field.SetDouble(12.5);
    ASSERT_STREQ("$12.50", field.GetText());
    Select(field, 3, 3);
    Type(field, "-");
    EXPECT_STREQ("$-12.50", field.GetText());
    EXPECT_EQ(std::make_pair(4, 4), Selection(field));
    EXPECT_DOUBLE_EQ(-12.5, field.GetDouble());
}
