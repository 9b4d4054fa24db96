// Tests of CAlgebraicParserWrapper over a host whose unit service the tests set.
#include <algebraicparser.h>
#include <unitservice.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace
{
class Units : public IKelUnitSettings
{
public:
    int GetLengthUnit() override { return unit; }
    int GetInputMode() override { return mode; }
    int unit = eKelUnitMillimetre;
    int mode = eInputModeMetric;
};

Units g_units;
bool g_offer = true;
int g_open = 0;  // services handed out and not yet given back

int __cdecl Query(int id, void** service)
{
    *service = nullptr;
    if (id == KELHOSTKIT_SERVICE_UNIT_SETTINGS && g_offer)
    {
        *service = static_cast<IKelUnitSettings*>(&g_units);
        ++g_open;
        return 1;
    }
    return 0;
}

int __cdecl Release(int id, void* service)
{
    if (id == KELHOSTKIT_SERVICE_UNIT_SETTINGS && service == &g_units)
        --g_open;
    return 1;
}

class Parser : public ::testing::Test
{
protected:
    void SetUp() override
    {
        g_units.unit = eKelUnitMillimetre;
        g_units.mode = eInputModeMetric;
        g_offer = true;
        g_open = 0;
    }
    void TearDown() override { EXPECT_EQ(0, g_open) << "every service given back"; }

    static void Set(int unit, int mode)
    {
        g_units.unit = unit;
        g_units.mode = mode;
    }
};

TEST_F(Parser, DetectMetricAnswersFactorAndHostMode)
{
    const struct
    {
        int unit, mode;
        double factor;
        eInputMode expected;
    } cases[] = {
        {eKelUnitMillimetre, 0, 1.0, eInputModeMetric},   {eKelUnitCentimetre, 0, 10.0, eInputModeMetric},
        {eKelUnitMetre, 0, 1000.0, eInputModeMetric},     {eKelUnitInch, 1, 25.4, eInputModeDecimalImperial},
        {eKelUnitFoot, 1, 304.8, eInputModeDecimalImperial}, {eKelUnitInch, 3, 25.4, eInputModeFeetInchFraction},
        {eKelUnitFoot, 4, 304.8, eInputModeInchFraction},
        // A mode the parser does not know follows the unit; so does the "auto" mode itself.
        {eKelUnitInch, 9, 25.4, eInputModeDecimalImperial}, {eKelUnitMetre, 2, 1000.0, eInputModeMetric},
        // An unknown unit is millimetres.
        {17, 0, 1.0, eInputModeMetric},
    };
    for (const auto& c : cases)
    {
        Set(c.unit, c.mode);
        CAlgebraicParserWrapper parser(false, true, &Query, &Release);
        eInputMode mode = eInputModeAuto;
        EXPECT_DOUBLE_EQ(c.factor, parser.DetectMetric(true, &mode)) << c.unit;
        EXPECT_EQ(c.expected, mode) << c.unit << "/" << c.mode;
    }
}

TEST_F(Parser, DetectMetricKeepsAModeThatIsNotAuto)
{
    Set(eKelUnitInch, 3);
    CAlgebraicParserWrapper parser(false, true, &Query, &Release);
    eInputMode mode = eInputModeMetric;
    parser.DetectMetric(true, &mode);
    EXPECT_EQ(eInputModeMetric, mode);
}

TEST_F(Parser, NoServiceMeansMillimetresAndMetric)
{
    g_offer = false;
    CAlgebraicParserWrapper parser(false, true, &Query, &Release);
    eInputMode mode = eInputModeAuto;
    EXPECT_DOUBLE_EQ(1.0, parser.DetectMetric(true, &mode));
    EXPECT_EQ(eInputModeMetric, mode);
    double value = 0;
    ASSERT_TRUE(parser.StringToNumber("1in", 4, &mode, &value, true));
    EXPECT_DOUBLE_EQ(25.4, value);
}

TEST_F(Parser, NullQueryEntryMeansMillimetresAndMetric)
{
    CAlgebraicParserWrapper parser(false, true, nullptr, nullptr);
    eInputMode mode = eInputModeAuto;
    EXPECT_DOUBLE_EQ(1.0, parser.DetectMetric(true, &mode));
    EXPECT_EQ(eInputModeMetric, mode);
    EXPECT_STREQ("2.5", parser.NumberToString(2.5, 4, mode).GetString());
}

TEST_F(Parser, UnitChangeSeenAtNextDetection)
{
    CAlgebraicParserWrapper parser(false, true, &Query, &Release);
    eInputMode mode = eInputModeAuto;
    double value = 0;
    ASSERT_TRUE(parser.StringToNumber("1in", 4, &mode, &value, true));
    EXPECT_DOUBLE_EQ(25.4, value);
    Set(eKelUnitInch, 1);
    mode = eInputModeAuto;
    EXPECT_DOUBLE_EQ(25.4, parser.DetectMetric(true, &mode));
    ASSERT_TRUE(parser.StringToNumber("1in", 4, &mode, &value, true));
    EXPECT_DOUBLE_EQ(1.0, value);
    EXPECT_EQ(eInputModeDecimalImperial, mode);
}

TEST_F(Parser, StringToNumberResolvesAutoModeAndRounds)
{
    Set(eKelUnitFoot, 3);
    CAlgebraicParserWrapper parser(false, true, &Query, &Release);
    eInputMode mode = eInputModeAuto;
    double value = 0;
    ASSERT_TRUE(parser.StringToNumber("3' 6\"", 4, &mode, &value, true));
    EXPECT_DOUBLE_EQ(3.5, value);
    EXPECT_EQ(eInputModeFeetInchFraction, mode);
    ASSERT_TRUE(parser.StringToNumber("1\"", 4, &mode, &value, true));
    EXPECT_DOUBLE_EQ(0.0833, value);   // 1/12 foot at 4 places
    ASSERT_TRUE(parser.StringToNumber("1\"", -1, &mode, &value, true));
    EXPECT_DOUBLE_EQ(1.0 / 12.0, value);
}

TEST_F(Parser, WithoutExpressionFlagOnlyAPlainNumber)
{
    CAlgebraicParserWrapper parser(false, true, &Query, &Release);
    eInputMode mode = eInputModeAuto;
    double value = 0;
    ASSERT_TRUE(parser.StringToNumber("-4.5", 4, &mode, &value, false));
    EXPECT_DOUBLE_EQ(-4.5, value);
    EXPECT_FALSE(parser.StringToNumber("2*2", 4, &mode, &value, false));
    EXPECT_FALSE(parser.StringToNumber("2mm", 4, &mode, &value, false));
}

TEST_F(Parser, DecimalCommaFollowsTheUserLocale)
{
    char separator[8] = {0};
    ASSERT_NE(0, GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, sizeof(separator)));
    CAlgebraicParserWrapper parser(false, true, &Query, &Release);
    eInputMode mode = eInputModeAuto;
    double value = 0;
    const bool comma = std::string(separator) == ",";
    EXPECT_EQ(comma, parser.StringToNumber("1,5", 4, &mode, &value, true)) << "separator '" << separator << "'";
    if (comma)
    {
        EXPECT_DOUBLE_EQ(1.5, value);
    }
    // The point is always understood.
    ASSERT_TRUE(parser.StringToNumber("1.5", 4, &mode, &value, true));
    EXPECT_DOUBLE_EQ(1.5, value);
}

TEST_F(Parser, NumberToStringInEachMode)
{
    const struct
    {
        int unit, mode;
        double value;
        int decimals;
        const char* text;
    } cases[] = {
        {eKelUnitMillimetre, 0, 1234.5, 4, "1234.5"},
        {eKelUnitMillimetre, 0, 1234.56789, 2, "1234.57"},
        {eKelUnitMetre, 0, 0.1, 4, "0.1"},
        {eKelUnitMetre, 0, -2.0, 4, "-2"},
        {eKelUnitInch, 1, 3.25, 4, "3.25"},
        {eKelUnitFoot, 1, 12.0, 4, "12"},
        {eKelUnitInch, 3, 42.5, 4, "3' 6 1/2\""},
        {eKelUnitFoot, 3, 3.5, 4, "3' 6\""},
        {eKelUnitMillimetre, 3, 25.4, 4, "0' 1\""},
        {eKelUnitInch, 4, 42.5, 4, "42 1/2\""},
        {eKelUnitFoot, 4, 0.25, 4, "3\""},
        {eKelUnitInch, 4, 0.1, 3, "1/8\""},
        {eKelUnitInch, 4, 0.1, 8, "13/128\""},
    };
    for (const auto& c : cases)
    {
        Set(c.unit, c.mode);
        CAlgebraicParserWrapper parser(false, true, &Query, &Release);
        eInputMode mode = eInputModeAuto;
        parser.DetectMetric(true, &mode);
        EXPECT_STREQ(c.text, parser.NumberToString(c.value, c.decimals, mode).GetString())
            << c.unit << "/" << c.mode << " " << c.value;
    }
}

TEST_F(Parser, NumberToStringWithoutLengthFlagIsDecimal)
{
    Set(eKelUnitInch, 3);
    CAlgebraicParserWrapper parser(false, false, &Query, &Release);
    EXPECT_STREQ("42.5", parser.NumberToString(42.5, 4, eInputModeAuto).GetString());
}

TEST_F(Parser, BadTextsAnswerFalseInEveryMode)
{
    const char* bad[] = {"", "x", "1/0", "sqrt(-4)", "1e999", "(1", "3''", "1 2", "tan(90)", "1mm mm"};
    const int modes[][2] = {{eKelUnitMillimetre, 0}, {eKelUnitInch, 1}, {eKelUnitInch, 3}, {eKelUnitFoot, 4}};
    for (const auto& m : modes)
    {
        Set(m[0], m[1]);
        CAlgebraicParserWrapper parser(false, true, &Query, &Release);
        for (const char* text : bad)
        {
            eInputMode mode = eInputModeAuto;
            double value = 9.0;
            EXPECT_FALSE(parser.StringToNumber(text, 4, &mode, &value, true)) << text;
            EXPECT_EQ(9.0, value) << text;
        }
        eInputMode mode = eInputModeAuto;
        double value = 9.0;
        EXPECT_FALSE(parser.StringToNumber(nullptr, 4, &mode, &value, true));
        EXPECT_FALSE(parser.StringToNumber("1", 4, &mode, nullptr, true));
    }
}
}
