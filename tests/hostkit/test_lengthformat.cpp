// Tests of the number to text formatting: decimals with trimmed zeros, inch fractions.
#include "lengthformat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace kelhk;

TEST(LengthFormat, DecimalTrimsTrailingZerosAndPoint)
{
    EXPECT_EQ("12.5", FormatDecimal(12.5, 4));
    EXPECT_EQ("3", FormatDecimal(3.0, 4));
    EXPECT_EQ("1.2346", FormatDecimal(1.234567, 4));
    EXPECT_EQ("1.23", FormatDecimal(1.234567, 2));
    EXPECT_EQ("1", FormatDecimal(1.4, 0));
    EXPECT_EQ("100", FormatDecimal(100.0, 2));
    EXPECT_EQ("-7.25", FormatDecimal(-7.25, 4));
    EXPECT_EQ("0", FormatDecimal(0.0, 4));
}

TEST(LengthFormat, DecimalNeverNegativeZero)
{
    EXPECT_EQ("0", FormatDecimal(-0.00001, 4));
    EXPECT_EQ("0", FormatDecimal(-0.0, 2));
}

TEST(LengthFormat, DecimalClampsThePlaces)
{
    EXPECT_EQ("2", FormatDecimal(1.5, -3));      // as 0 places; printf rounds half to even
    EXPECT_EQ("0.1", FormatDecimal(0.1, 40));    // 15 places at most
}

TEST(LengthFormat, DecimalOfNonFiniteIsEmpty)
{
    EXPECT_EQ("", FormatDecimal(std::numeric_limits<double>::infinity(), 4));
    EXPECT_EQ("", FormatDecimal(std::nan(""), 4));
}

TEST(LengthFormat, InchFractionsReduced)
{
    EXPECT_EQ("42 1/2\"", FormatInchFraction(42.5, 4));
    EXPECT_EQ("3/8\"", FormatInchFraction(0.375, 4));
    EXPECT_EQ("0\"", FormatInchFraction(0.0, 4));
    EXPECT_EQ("12\"", FormatInchFraction(12.0, 4));
    EXPECT_EQ("-7 3/8\"", FormatInchFraction(-7.375, 4));
    EXPECT_EQ("1 3/16\"", FormatInchFraction(1.2, 4));   // 1.2 is nearest to 19/16
    EXPECT_EQ("1 1/4\"", FormatInchFraction(1.2, 2));
    EXPECT_EQ("1\"", FormatInchFraction(1.2, 0));
    EXPECT_EQ("2\"", FormatInchFraction(1.99, 4));       // rounds up to the whole inch
    EXPECT_EQ("0\"", FormatInchFraction(-0.01, 4));      // no sign on zero
    EXPECT_EQ("1/256\"", FormatInchFraction(1.0 / 256, 20));
}

TEST(LengthFormat, FeetAndInches)
{
    EXPECT_EQ("3' 6 1/2\"", FormatFeetInchFraction(42.5, 4));
    EXPECT_EQ("0' 3/8\"", FormatFeetInchFraction(0.375, 4));
    EXPECT_EQ("3' 0\"", FormatFeetInchFraction(36.0, 4));
    EXPECT_EQ("0' 0\"", FormatFeetInchFraction(0.0, 4));
    EXPECT_EQ("-3' 6 1/2\"", FormatFeetInchFraction(-42.5, 4));
    EXPECT_EQ("1' 0\"", FormatFeetInchFraction(11.999, 4));   // 11 15.98/16 rounds to a foot
    EXPECT_EQ("100' 11\"", FormatFeetInchFraction(1211.0, 4));
}

TEST(LengthFormat, HugeOrNonFiniteFractionsFallBackToDecimalInches)
{
    const std::string huge = FormatInchFraction(1e20, 4);
    EXPECT_EQ("100000000000000000000\"", huge);
    EXPECT_EQ("", FormatFeetInchFraction(std::numeric_limits<double>::infinity(), 4));
    EXPECT_EQ("", FormatInchFraction(std::nan(""), 4));
}

TEST(LengthFormat, RoundToDecimals)
{
    EXPECT_DOUBLE_EQ(1.2346, RoundToDecimals(1.234567, 4));
    EXPECT_DOUBLE_EQ(-1.2346, RoundToDecimals(-1.234567, 4));
    EXPECT_DOUBLE_EQ(3.0, RoundToDecimals(2.5, 0));   // half away from zero
    EXPECT_DOUBLE_EQ(1.0 / 3.0, RoundToDecimals(1.0 / 3.0, -1));
    EXPECT_DOUBLE_EQ(1e300, RoundToDecimals(1e300, 4));
    EXPECT_EQ(0.0, RoundToDecimals(-0.00001, 4));
    EXPECT_FALSE(std::signbit(RoundToDecimals(-0.00001, 4)));
}
