// Number fields: the rules given as one picture, and the picture of the rules.
#include "numericprobe.h"

#include <behaviors.h>

using namespace kel_ve_test;

TEST(NumericMask, MaskOfFiveWholeAndTwoDecimalPlacesInGroupsOfThree)
{
    CNumericField field(5, 2);
    field.SetSeparators('.', ',');
    field.SetDigitsInGroup(3);
    EXPECT_STREQ("##,###.##", field.GetMask());
}

TEST(NumericMask, MaskWithoutDecimalPlacesOrGroups)
{
    CNumericField field(4, 0);
    EXPECT_STREQ("####", field.GetMask());
    field.SetPrefix("Nr. ");
    EXPECT_STREQ("Nr. ####", field.GetMask());
}

TEST(NumericMask, MaskDoesNotShowTheSign)
{
    CNumericField field(-3, 1);
    EXPECT_STREQ("###.#", field.GetMask());
    CNumericField signed_(3, 1);
    EXPECT_STREQ("###.#", signed_.GetMask());
}

TEST(NumericMask, PlainPictureGivesWholeDigitsAndDecimalPlaces)
{
    CNumericField field(9, 4);
    field.SetMask("###.##");
    EXPECT_EQ(3, field.GetMaxWholeDigits());
    EXPECT_EQ(2, field.GetMaxDecimalPlaces());
    EXPECT_EQ(0, field.GetDigitsInGroup());
    EXPECT_STREQ("", field.GetPrefix());
    EXPECT_STREQ("###.##", field.GetMask());
}

TEST(NumericMask, PictureWithPrefixAndGroups)
{
    CNumericField field(9, 4);
    field.SetMask("$ #,###.##");
    EXPECT_STREQ("$ ", field.GetPrefix());
    EXPECT_EQ(4, field.GetMaxWholeDigits());
    EXPECT_EQ(2, field.GetMaxDecimalPlaces());
    EXPECT_EQ(3, field.GetDigitsInGroup());
    char decimal = 0, group = 0;
    field.GetSeparators(&decimal, &group);
    EXPECT_EQ('.', decimal);
    EXPECT_EQ(',', group);
    EXPECT_STREQ("$ #,###.##", field.GetMask());
}

TEST(NumericMask, PictureWithoutDecimalSeparatorHasOnlyWholeDigits)
{
    CNumericField field(9, 4);
    field.SetMask("##,###");
    EXPECT_EQ(5, field.GetMaxWholeDigits());
    EXPECT_EQ(0, field.GetMaxDecimalPlaces());
    EXPECT_EQ(3, field.GetDigitsInGroup());
}

TEST(NumericMask, FurtherGroupSeparatorsRepeatTheFirstGroup)
{
    CNumericField field(9, 4);
    field.SetSeparators(',', '.');
    field.SetMask("#.###.###,##");
    EXPECT_EQ(7, field.GetMaxWholeDigits());
    EXPECT_EQ(2, field.GetMaxDecimalPlaces());
    EXPECT_EQ(3, field.GetDigitsInGroup());
    EXPECT_STREQ("", field.GetPrefix());
    EXPECT_STREQ("#.###.###,##", field.GetMask());
}

TEST(NumericMask, PointInThePrefixEndsTheWalk)
{
    CNumericField field(9, 4);
    field.SetMask("Nr. ###");
    EXPECT_STREQ("Nr. ", field.GetPrefix());
    EXPECT_EQ(3, field.GetMaxWholeDigits());
    EXPECT_EQ(0, field.GetMaxDecimalPlaces());
}

TEST(NumericMask, PictureAllowsTheSign)
{
    CNumericField field(-3, 2);
    ASSERT_FALSE(field.IsNegativeAllowed());
    field.SetMask("###.##");
    EXPECT_TRUE(field.IsNegativeAllowed());
}

TEST(NumericMask, PictureWithTheCurrentDecimalSeparatorTakesIt)
{
    CNumericField field(9, 4);
    field.SetSeparators(',', 0);
    field.SetMask("####,###");
    EXPECT_EQ(4, field.GetMaxWholeDigits());
    EXPECT_EQ(3, field.GetMaxDecimalPlaces());
    char decimal = 0;
    field.GetSeparators(&decimal, nullptr);
    EXPECT_EQ(',', decimal);
}

TEST_F(NumericTest, PictureShapesTheFieldAndKeepsItsNumber)
{
    CNumericField field(9, 4);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("1234.5678");
    field.SetMask("$ #,###.##");
    EXPECT_STREQ("$ 1,234.56", field.GetText());
    field.SetWindowText("");
    Type(field, "98765");
    EXPECT_STREQ("$ 9,876", field.GetText());
}
