// Tests of the length expression language: good inputs in each unit, and bad inputs that
// must answer false without touching the result.
#include "lengthexpr.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using kelhk::EvaluateLengthExpression;
using kelhk::ExpressionOptions;

namespace
{
struct Good
{
    const char* text;
    int unit;
    double expected;
};

ExpressionOptions In(int unit)
{
    ExpressionOptions options;
    options.currentUnit = unit;
    return options;
}

const double kPi = 3.14159265358979323846;

const Good kGood[] = {
    // plain numbers and arithmetic, millimetres
    {"12", kelhk::kUnitMillimetre, 12},
    {"  12  ", kelhk::kUnitMillimetre, 12},
    {"1.5", kelhk::kUnitMillimetre, 1.5},
    {".5", kelhk::kUnitMillimetre, 0.5},
    {"5.", kelhk::kUnitMillimetre, 5},
    {"2e3", kelhk::kUnitMillimetre, 2000},
    {"2E-3", kelhk::kUnitMillimetre, 0.002},
    {"1+2*3", kelhk::kUnitMillimetre, 7},
    {"(1+2)*3", kelhk::kUnitMillimetre, 9},
    {"10-4-3", kelhk::kUnitMillimetre, 3},
    {"100/4/5", kelhk::kUnitMillimetre, 5},
    {"-5", kelhk::kUnitMillimetre, -5},
    {"--5", kelhk::kUnitMillimetre, 5},
    {"+5", kelhk::kUnitMillimetre, 5},
    {"-(2+3)", kelhk::kUnitMillimetre, -5},
    {"2*-3", kelhk::kUnitMillimetre, -6},
    {"((((7))))", kelhk::kUnitMillimetre, 7},
    {"0", kelhk::kUnitMillimetre, 0},
    {"-0", kelhk::kUnitMillimetre, 0},
    // constants and functions, angles in degrees
    {"pi", kelhk::kUnitMillimetre, kPi},
    {"PI*2", kelhk::kUnitMillimetre, 2 * kPi},
    {"sqrt(16)", kelhk::kUnitMillimetre, 4},
    {"SQRT(2)*sqrt(2)", kelhk::kUnitMillimetre, 2},
    {"sin(30)", kelhk::kUnitMillimetre, 0.5},
    {"cos(60)", kelhk::kUnitMillimetre, 0.5},
    {"tan(45)", kelhk::kUnitMillimetre, 1},
    {"100*sin(90)", kelhk::kUnitMillimetre, 100},
    {"sqrt(9)", kelhk::kUnitMillimetre, 3},
    // units into millimetres
    {"1mm", kelhk::kUnitMillimetre, 1},
    {"1cm", kelhk::kUnitMillimetre, 10},
    {"1 m", kelhk::kUnitMillimetre, 1000},
    {"1in", kelhk::kUnitMillimetre, 25.4},
    {"1\"", kelhk::kUnitMillimetre, 25.4},
    {"1ft", kelhk::kUnitMillimetre, 304.8},
    {"1'", kelhk::kUnitMillimetre, 304.8},
    {"1m + 20cm + 3mm", kelhk::kUnitMillimetre, 1203},
    {"2*3cm", kelhk::kUnitMillimetre, 60},
    {"(1+2)cm", kelhk::kUnitMillimetre, 30},
    {"1.5M", kelhk::kUnitMillimetre, 1500},
    // into centimetres and metres
    {"1", kelhk::kUnitCentimetre, 1},
    {"25mm", kelhk::kUnitCentimetre, 2.5},
    {"1m", kelhk::kUnitCentimetre, 100},
    {"1in", kelhk::kUnitCentimetre, 2.54},
    {"2", kelhk::kUnitMetre, 2},
    {"250mm", kelhk::kUnitMetre, 0.25},
    {"1ft", kelhk::kUnitMetre, 0.3048},
    {"3m - 50cm", kelhk::kUnitMetre, 2.5},
    // inches: fractions, feet and inches
    {"3/8", kelhk::kUnitInch, 0.375},
    {"3/8\"", kelhk::kUnitInch, 0.375},
    {"1 1/2", kelhk::kUnitInch, 1.5},
    {"1 1/2\"", kelhk::kUnitInch, 1.5},
    {"-1 1/2", kelhk::kUnitInch, -1.5},
    {"3'6\"", kelhk::kUnitInch, 42},
    {"3' 6\"", kelhk::kUnitInch, 42},
    {"3'6", kelhk::kUnitInch, 42},
    {"3' 6 1/2\"", kelhk::kUnitInch, 42.5},
    {"3ft 6in", kelhk::kUnitInch, 42},
    {"3' 1/2\"", kelhk::kUnitInch, 36.5},
    {"-3' 6\"", kelhk::kUnitInch, -42},
    {"3' - 6\"", kelhk::kUnitInch, 30},
    {"3'6\" + 1 1/2\"", kelhk::kUnitInch, 43.5},
    {"2*3'", kelhk::kUnitInch, 72},
    {"1/2 * 4", kelhk::kUnitInch, 2},
    {"1 / 2", kelhk::kUnitInch, 0.5},
    {"25.4mm", kelhk::kUnitInch, 1},
    {"12", kelhk::kUnitInch, 12},
    // feet
    {"6\"", kelhk::kUnitFoot, 0.5},
    {"3'6\"", kelhk::kUnitFoot, 3.5},
    {"3/8\"", kelhk::kUnitFoot, 0.375 / 12},
    {"2", kelhk::kUnitFoot, 2},
    {"304.8mm", kelhk::kUnitFoot, 1},
    {"3/8\"", kelhk::kUnitMillimetre, 9.525},
};

TEST(LengthExpression, GoodInputsInEachUnit)
{
    for (const Good& g : kGood)
    {
        double value = -999.0;
        ASSERT_TRUE(EvaluateLengthExpression(g.text, In(g.unit), &value)) << g.text;
        EXPECT_NEAR(g.expected, value, 1e-9 * (1 + std::fabs(g.expected))) << g.text;
    }
}

const char* const kBad[] = {
    "",            "   ",          "+",          "-",           "*",           "/",
    "1+",          "1-",           "*2",         "/2",          "1**2",        "1//2",
    "(",           ")",            "(1",         "1)",          "()",          "(1+2",
    "1 2",         "2pi",          "2(3)",       "(2)(3)",      "2 sqrt(4)",   "1/0",
    "1/(2-2)",     "3/0\"",        "1 1/0",      "sqrt(-1)",    "sqrt",        "sqrt 4",
    "sqrt()",      "sin",          "tan(90)",    "tan(-270)",   "foo",         "foo(1)",
    "1e400",       "1e308*10",     "-1e308*10",  "1e200*1e200", "1mm mm",      "1 kg",
    "1 yd",        "3''",          "3\"\"",      "3'6'",        "3'6mm",       "1..2",
    ".",           "1.2.3",        "1,5",        "abc",         "1 + abc",     "#1",
    "1;2",         "1=1",          "1^2",        "1%",          "$5",          "1 1/2 1/2",
    "2.5 1/2",     "1 1.5/2",      "\t",         "1e",          "e5",          "3'6\"6\"",
    "1,",          ",5",
};

TEST(LengthExpression, BadInputsAnswerFalseAndLeaveTheValue)
{
    int count = 0;
    for (const char* text : kBad)
    {
        double value = 77.0;
        EXPECT_FALSE(EvaluateLengthExpression(text, In(kelhk::kUnitInch), &value)) << "'" << text << "'";
        EXPECT_EQ(77.0, value) << text;
        ++count;
    }
    EXPECT_GE(count, 40);
}

TEST(LengthExpression, NullTextOrValueAnswersFalse)
{
    double value = 0;
    EXPECT_FALSE(EvaluateLengthExpression(nullptr, In(kelhk::kUnitMillimetre), &value));
    EXPECT_FALSE(EvaluateLengthExpression("1", In(kelhk::kUnitMillimetre), nullptr));
}

TEST(LengthExpression, DeepNestingAnswersFalseWithoutCrash)
{
    const std::string open(100000, '(');
    double value = 5;
    EXPECT_FALSE(EvaluateLengthExpression((open + "1" + std::string(100000, ')')).c_str(),
                                          In(kelhk::kUnitMillimetre), &value));
    EXPECT_FALSE(EvaluateLengthExpression(std::string(100000, '-').append("1").c_str(),
                                          In(kelhk::kUnitMillimetre), &value));
    EXPECT_EQ(5, value);
    // Moderate nesting is fine.
    ASSERT_TRUE(EvaluateLengthExpression((std::string(50, '(') + "1" + std::string(50, ')')).c_str(),
                                         In(kelhk::kUnitMillimetre), &value));
    EXPECT_EQ(1, value);
}

TEST(LengthExpression, VeryLongNumberIsReadOrRefused)
{
    double value = 0;
    ASSERT_TRUE(EvaluateLengthExpression(std::string(300, '1').c_str(), In(kelhk::kUnitMillimetre), &value));
    EXPECT_GT(value, 1e299);
    EXPECT_FALSE(EvaluateLengthExpression(std::string(400, '9').c_str(), In(kelhk::kUnitMillimetre), &value));
}

TEST(LengthExpression, DecimalCommaOnlyWhenAsked)
{
    ExpressionOptions options = In(kelhk::kUnitMillimetre);
    double value = 0;
    EXPECT_FALSE(EvaluateLengthExpression("1,5", options, &value));
    options.decimalComma = true;
    ASSERT_TRUE(EvaluateLengthExpression("1,5", options, &value));
    EXPECT_DOUBLE_EQ(1.5, value);
    ASSERT_TRUE(EvaluateLengthExpression("1,5 + 1.5", options, &value));
    EXPECT_DOUBLE_EQ(3.0, value);
    ASSERT_TRUE(EvaluateLengthExpression(",5cm", options, &value));
    EXPECT_DOUBLE_EQ(5.0, value);
    EXPECT_FALSE(EvaluateLengthExpression("1,5,5", options, &value));
}

TEST(LengthExpression, PlainNumbersRefuseUnitsWhenNotLengths)
{
    ExpressionOptions options = In(kelhk::kUnitMillimetre);
    options.lengths = false;
    double value = 0;
    EXPECT_FALSE(EvaluateLengthExpression("3mm", options, &value));
    EXPECT_FALSE(EvaluateLengthExpression("3'", options, &value));
    ASSERT_TRUE(EvaluateLengthExpression("3/8 + 1", options, &value));
    EXPECT_DOUBLE_EQ(1.375, value);
}

TEST(LengthExpression, PlainNumberOptionTakesOneSignedNumberOnly)
{
    ExpressionOptions options = In(kelhk::kUnitMillimetre);
    options.plainNumber = true;
    double value = 0;
    ASSERT_TRUE(EvaluateLengthExpression(" -12.5 ", options, &value));
    EXPECT_DOUBLE_EQ(-12.5, value);
    EXPECT_FALSE(EvaluateLengthExpression("1+2", options, &value));
    EXPECT_FALSE(EvaluateLengthExpression("3mm", options, &value));
    EXPECT_FALSE(EvaluateLengthExpression("--3", options, &value));
}
}
