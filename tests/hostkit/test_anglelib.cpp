// Tests of wkonst: the constants of degrees, grads and radians.
#include <anglelib.h>

#include <gtest/gtest.h>

namespace
{
const double kPi = 3.14159265358979323846;

void Expect(double def, double perRadian, double full)
{
    double cell = def, first = 0, circle = 0;
    wkonst(&cell, &first, &circle);
    EXPECT_DOUBLE_EQ(perRadian, first) << def;
    EXPECT_DOUBLE_EQ(full, circle) << def;
    EXPECT_EQ(def, cell) << "the definition cell is left alone";
}
}

TEST(AngleUnits, DegreesGradsRadians)
{
    Expect(KELHOSTKIT_ANGLE_DEGREES, 180.0 / kPi, 360.0);
    Expect(KELHOSTKIT_ANGLE_GRADS, 200.0 / kPi, 400.0);
    Expect(KELHOSTKIT_ANGLE_RADIANS, 1.0, 2.0 * kPi);
}

TEST(AngleUnits, CellRoundedToTheNearestCode)
{
    Expect(0.9, 200.0 / kPi, 400.0);
    Expect(2.2, 1.0, 2.0 * kPi);
    Expect(0.4, 180.0 / kPi, 360.0);
}

TEST(AngleUnits, UnknownCodesAreDegrees)
{
    Expect(3.0, 180.0 / kPi, 360.0);
    Expect(-1.0, 180.0 / kPi, 360.0);
    Expect(1e300, 180.0 / kPi, 360.0);
}

TEST(AngleUnits, NullCellsAreSkipped)
{
    double full = 0;
    wkonst(nullptr, nullptr, &full);
    EXPECT_DOUBLE_EQ(360.0, full);
    double def = KELHOSTKIT_ANGLE_GRADS;
    wkonst(&def, nullptr, nullptr);
}
