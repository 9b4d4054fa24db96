// Tests of the number text conversions: GetEditValueFromString, GetStringFromEditValue and
// RollWinkelValue, over a host whose unit service answers the mode and unit each test sets.
#include "valueedit.h"

#include <anglelib.h>
#include <unitservice.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

namespace
{
// The host's unit settings, changed by the tests between conversions.
class FakeUnits : public IKelUnitSettings
{
public:
    int GetLengthUnit() override { return unit; }
    int GetInputMode() override { return mode; }
    int unit = eKelUnitMillimetre;
    int mode = 0;
};

FakeUnits g_units;
bool g_offerUnits = true;  // false: the query stores null
int g_queries = 0;
int g_releases = 0;

struct LengthFormatCall
{
    int32_t cell1;
    int32_t cell2;
    double cell3;
};
std::vector<LengthFormatCall> g_lengthFormatCalls;

int32_t __cdecl QueryService(int id, void** service)
{
    *service = nullptr;
    if (id != KELHOSTKIT_SERVICE_UNIT_SETTINGS)
        return 0;
    ++g_queries;
    if (!g_offerUnits)
        return 0;
    *service = static_cast<IKelUnitSettings*>(&g_units);
    return 1;
}

int32_t __cdecl ReleaseService(int id, void*)
{
    if (id == KELHOSTKIT_SERVICE_UNIT_SETTINGS)
        ++g_releases;
    return 1;
}

void __cdecl SetLengthFormat(int32_t* cell1, int32_t* cell2, double* cell3)
{
    g_lengthFormatCalls.push_back({*cell1, *cell2, *cell3});
    // The host may write into the cells; the library does not look at them afterwards.
    *cell1 = 1;
    *cell2 = 2;
    *cell3 = 3.0;
}

class NumberText : public ::testing::Test
{
protected:
    void SetUp() override
    {
        KelWinCtrlInitRecord record;
        std::memset(&record, 0, sizeof(record));
        record.cbSize = sizeof(record);
        record.dwVersion = KELWINCTRL_RECORD_VERSION;
        record.pfnQueryService = &QueryService;
        record.pfnReleaseService = &ReleaseService;
        record.pfnSetLengthFormat = &SetLengthFormat;
        ASSERT_EQ(1u, KelWinCtrlInic(&record));
        SetUnits(eKelUnitMillimetre, 0);
        g_offerUnits = true;
        g_queries = g_releases = 0;
        g_lengthFormatCalls.clear();
    }

    static void SetUnits(int unit, int mode)
    {
        g_units.unit = unit;
        g_units.mode = mode;
    }

    static void ExpectOneLengthFormatCall()
    {
        ASSERT_EQ(1u, g_lengthFormatCalls.size());
        EXPECT_EQ(-9995, g_lengthFormatCalls[0].cell1);
        EXPECT_EQ(-9998, g_lengthFormatCalls[0].cell2);
        EXPECT_EQ(-9998.0, g_lengthFormatCalls[0].cell3);
    }
};

TEST_F(NumberText, ModeThreeCallsSetLengthFormatOncePerTextToNumber)
{
    SetUnits(eKelUnitInch, 3);
    double value = 0;
    ASSERT_TRUE(GetEditValueFromString("3' 6 1/2\"", &value, true));
    EXPECT_DOUBLE_EQ(42.5, value);
    ExpectOneLengthFormatCall();
}

TEST_F(NumberText, ModeThreeCallsSetLengthFormatOncePerNumberToText)
{
    SetUnits(eKelUnitInch, 3);
    EXPECT_STREQ("3' 6 1/2\"", GetStringFromEditValue(42.5, true).GetString());
    ExpectOneLengthFormatCall();
}

TEST_F(NumberText, ModeFourCallsSetLengthFormatOncePerConversion)
{
    SetUnits(eKelUnitInch, 4);
    double value = 0;
    ASSERT_TRUE(GetEditValueFromString("42 1/2\"", &value, true));
    EXPECT_DOUBLE_EQ(42.5, value);
    ExpectOneLengthFormatCall();
    g_lengthFormatCalls.clear();
    EXPECT_STREQ("42 1/2\"", GetStringFromEditValue(42.5, true).GetString());
    ExpectOneLengthFormatCall();
}

TEST_F(NumberText, ModeThreeCallsSetLengthFormatEvenWhenTheTextIsNotUnderstood)
{
    SetUnits(eKelUnitFoot, 3);
    double value = 0;
    EXPECT_FALSE(GetEditValueFromString("3''", &value, true));
    ExpectOneLengthFormatCall();
}

TEST_F(NumberText, OtherModesDoNotCallSetLengthFormat)
{
    const int modes[] = {0, 1, 2, 5, -1};
    for (int mode : modes)
    {
        SetUnits(mode == 1 ? eKelUnitInch : eKelUnitMillimetre, mode);
        double value = 0;
        EXPECT_TRUE(GetEditValueFromString("12.5", &value, true)) << "mode " << mode;
        EXPECT_DOUBLE_EQ(12.5, value) << "mode " << mode;
        EXPECT_STREQ("12.5", GetStringFromEditValue(12.5, true).GetString()) << "mode " << mode;
    }
    EXPECT_TRUE(g_lengthFormatCalls.empty());
}

TEST_F(NumberText, WithoutUnitServiceMillimetresAndNoLengthFormatCall)
{
    g_offerUnits = false;
    double value = 0;
    ASSERT_TRUE(GetEditValueFromString("1in + 1cm", &value, true));
    EXPECT_DOUBLE_EQ(35.4, value);
    EXPECT_STREQ("35.4", GetStringFromEditValue(35.4, true).GetString());
    EXPECT_TRUE(g_lengthFormatCalls.empty());
}

TEST_F(NumberText, EachConversionReadsTheUnitsAfreshAndGivesTheServiceBack)
{
    // Made, then two detections: once at creation and once for the direction.
    double value = 0;
    ASSERT_TRUE(GetEditValueFromString("1", &value, true));
    EXPECT_EQ(3, g_queries);
    EXPECT_EQ(3, g_releases);
    GetStringFromEditValue(1.0, true);
    EXPECT_EQ(6, g_queries);
    EXPECT_EQ(6, g_releases);
}

TEST_F(NumberText, ChangeOfUnitsTakesEffectAtTheNextConversion)
{
    double value = 0;
    ASSERT_TRUE(GetEditValueFromString("1in", &value, true));
    EXPECT_DOUBLE_EQ(25.4, value);
    SetUnits(eKelUnitInch, 1);
    ASSERT_TRUE(GetEditValueFromString("1in", &value, true));
    EXPECT_DOUBLE_EQ(1.0, value);
    SetUnits(eKelUnitMetre, 0);
    ASSERT_TRUE(GetEditValueFromString("250mm", &value, true));
    EXPECT_DOUBLE_EQ(0.25, value);
    EXPECT_STREQ("0.25", GetStringFromEditValue(value, true).GetString());
}

TEST_F(NumberText, UnparsableTextReturnsFalseAndLeavesTheValue)
{
    const char* bad[] = {"", "abc", "1+", "(2", "1/0", "3mm mm"};
    for (const char* text : bad)
    {
        double value = -123.0;
        EXPECT_FALSE(GetEditValueFromString(text, &value, true)) << text;
        EXPECT_EQ(-123.0, value) << text;
    }
}

TEST_F(NumberText, TwoArgumentOverloadsPassFourDecimals)
{
    double two = 0, four = 0, fourExplicit = 0;
    ASSERT_TRUE(GetEditValueFromString("1.234567", &two, true, 2));
    ASSERT_TRUE(GetEditValueFromString("1.234567", &four, true));
    ASSERT_TRUE(GetEditValueFromString("1.234567", &fourExplicit, true, 4));
    EXPECT_DOUBLE_EQ(1.23, two);
    EXPECT_DOUBLE_EQ(1.2346, four);
    EXPECT_EQ(fourExplicit, four);

    EXPECT_STREQ("1.2346", GetStringFromEditValue(1.234567, true).GetString());
    EXPECT_STREQ("1.23", GetStringFromEditValue(1.234567, true, 2).GetString());
    // In a fractional mode the decimals are the power of two of the smallest fraction: 4 is 1/16.
    SetUnits(eKelUnitInch, 4);
    EXPECT_STREQ("1 3/16\"", GetStringFromEditValue(1.2, true).GetString());
    EXPECT_STREQ("1 1/4\"", GetStringFromEditValue(1.2, true, 2).GetString());
}

TEST_F(NumberText, FlagFalseRefusesUnitsAndWritesDecimals)
{
    SetUnits(eKelUnitInch, 3);
    double value = 0;
    EXPECT_FALSE(GetEditValueFromString("3mm", &value, false));
    ASSERT_TRUE(GetEditValueFromString("2*3", &value, false));
    EXPECT_DOUBLE_EQ(6.0, value);
    EXPECT_STREQ("42.5", GetStringFromEditValue(42.5, false).GetString());
}

TEST_F(NumberText, RoundTripInEveryMode)
{
    struct Case
    {
        int unit, mode;
        double value;
    } cases[] = {{eKelUnitMillimetre, 0, 1234.5}, {eKelUnitMetre, 0, -0.125}, {eKelUnitCentimetre, 0, 7},
                 {eKelUnitInch, 1, 3.25},         {eKelUnitFoot, 1, 12.75},  {eKelUnitInch, 3, 42.5},
                 {eKelUnitFoot, 3, 3.5},          {eKelUnitInch, 4, -7.375}, {eKelUnitMillimetre, 3, 25.4}};
    for (const Case& c : cases)
    {
        SetUnits(c.unit, c.mode);
        const CString text = GetStringFromEditValue(c.value, true);
        double back = 0;
        ASSERT_TRUE(GetEditValueFromString(text, &back, true)) << text.GetString();
        EXPECT_NEAR(c.value, back, 1e-9) << text.GetString();
    }
}

TEST_F(NumberText, RollWinkelValueKeepsTheSign)
{
    double degrees = KELHOSTKIT_ANGLE_DEGREES;
    EXPECT_DOUBLE_EQ(10.0, RollWinkelValue(&degrees, 370.0));
    EXPECT_DOUBLE_EQ(-10.0, RollWinkelValue(&degrees, -370.0));
    EXPECT_DOUBLE_EQ(-30.0, RollWinkelValue(&degrees, -30.0));
    EXPECT_DOUBLE_EQ(0.0, RollWinkelValue(&degrees, 720.0));
    double grads = KELHOSTKIT_ANGLE_GRADS;
    EXPECT_DOUBLE_EQ(10.0, RollWinkelValue(&grads, 410.0));
    EXPECT_DOUBLE_EQ(370.0, RollWinkelValue(&grads, 370.0));
    double radians = KELHOSTKIT_ANGLE_RADIANS;
    EXPECT_NEAR(7.0 - 2 * 3.14159265358979323846, RollWinkelValue(&radians, 7.0), 1e-12);
    EXPECT_DOUBLE_EQ(KELHOSTKIT_ANGLE_DEGREES, degrees);
}
}
