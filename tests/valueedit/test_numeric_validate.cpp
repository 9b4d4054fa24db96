// Number fields: the range, the checks and repairs when the focus leaves, the range message
// and the report of a wiped field.
#include "numericprobe.h"

#include <behaviors.h>

#include <float.h>

using namespace kel_ve_test;

namespace
{
using Num = CKelValueEditEx::NumericBehavior;
const uint32_t kEmptyBits = Num::NumBeepIfEmpty | Num::NumFixIfEmpty | Num::NumFocusIfEmpty | Num::NumMessageIfEmpty;

// Moves the focus from the field to the other edit while a box of the library may show, and
// answers that box with OK. What the box showed is returned (found false: none came).
kel_test::BoxSeen LeaveAnsweringTheBox(CWnd& other, DWORD timeoutMs = 5000)
{
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK, timeoutMs);
    other.SetFocus();
    kel_test::BoxSeen seen = answerer.Wait();
    kel_test::PumpPending();
    return seen;
}

// Moves the focus from the field to the other edit where no box should show. A box that
// shows anyway is answered; the loop runs meanwhile, since the watcher reads window texts of
// this thread.
kel_test::BoxSeen LeaveExpectingNoBox(CWnd& other)
{
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK, 600);
    other.SetFocus();
    kel_test::PumpFor(1000);
    return answerer.Wait();
}

bool ValueDeletedWaiting(HWND hParent)
{
    MSG msg;
    return ::PeekMessageA(&msg, hParent, KEL_WM_VALUE_DELETED, KEL_WM_VALUE_DELETED, PM_NOREMOVE) != FALSE;
}
}

TEST_F(NumericTest, ValueBelowTheRangeBeepsIsPulledToTheBoundIsShownAndKeepsTheFocus)
{
    CIntegerField field(4);
    ASSERT_TRUE(Create(field));
    field.SetRange(10.0, 20.0);
    field.SetWindowText("5");
    field.SetFocus();
    kel_test::PumpPending();
    ASSERT_EQ(field.m_hWnd, ::GetFocus());

    kel_test::BoxSeen seen = LeaveAnsweringTheBox(other);
    EXPECT_TRUE(seen.found);
    EXPECT_EQ("Please specify a numeric value between 10.0 and 20.0.", seen.text);
    EXPECT_EQ(1, field.errorMessages);
    EXPECT_STREQ("10", field.GetText());
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
}

TEST_F(NumericTest, ValueAboveTheRangeWithDecimalsIsSetAsTheTrimmedBound)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(10.0, 20.0);
    field.SetWindowText("25.5");
    field.SetFocus();
    kel_test::PumpPending();
    kel_test::BoxSeen seen = LeaveAnsweringTheBox(other);
    EXPECT_TRUE(seen.found);
    EXPECT_STREQ("20.0", field.GetText());
    EXPECT_DOUBLE_EQ(20.0, field.GetDouble());
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
}

TEST_F(NumericTest, ValueWithinTheRangeLeavesQuietly)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(10.0, 20.0);
    field.SetWindowText("12.5");
    field.SetFocus();
    kel_test::PumpPending();
    kel_test::BoxSeen seen = LeaveExpectingNoBox(other);
    EXPECT_FALSE(seen.found);
    EXPECT_EQ(0, field.errorMessages);
    EXPECT_STREQ("12.5", field.GetText());
    EXPECT_EQ(other.m_hWnd, ::GetFocus());
}

TEST_F(NumericTest, EmptyFieldWithDefaultFlagsTakesTheLowerBoundWhenZeroLiesBelowTheRange)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(10.0, 20.0);
    field.SetFocus();
    kel_test::PumpPending();
    kel_test::BoxSeen seen = LeaveAnsweringTheBox(other);
    EXPECT_TRUE(seen.found);
    EXPECT_EQ("Please specify a numeric value between 10.0 and 20.0.", seen.text);
    EXPECT_STREQ("10.0", field.GetText());
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
}

TEST_F(NumericTest, EmptyFieldWithDefaultFlagsTakesTheUpperBoundWhenZeroLiesAboveTheRange)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(-20.0, -10.0);
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK);
    EXPECT_EQ(0, field.Validate());   // empty: a failure the default flags act on
    EXPECT_TRUE(answerer.Wait().found);
    kel_test::PumpPending();
    EXPECT_STREQ("-10.0", field.GetText());
    EXPECT_EQ(1, field.errorMessages);
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
}

TEST_F(NumericTest, EmptyFieldWithZeroInTheRangeStaysEmptyButIsStillAFailure)
{
    CNumericField field(3, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(-5.0, 5.0);
    field.SetFocus();
    kel_test::PumpPending();
    kel_test::BoxSeen seen = LeaveAnsweringTheBox(other);
    EXPECT_TRUE(seen.found);
    EXPECT_EQ("Please specify a numeric value between -5.0 and 5.0.", seen.text);
    EXPECT_STREQ("", field.GetText());
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
}

TEST_F(NumericTest, ValidateFillsTextAndValueAndAnswersOneForAValidNumber)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("-0.50");
    CString text = "junk";
    double value = 99.0;
    field.SetRange(-1.0, 1.0);
    EXPECT_EQ(1, field.Validate(&text, &value, nullptr));
    EXPECT_STREQ("-0.5", text);   // the number without trailing zeros
    EXPECT_DOUBLE_EQ(-0.5, value);
}

TEST_F(NumericTest, ValidateOfAnEmptyFieldClearsTextAndValue)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(0, kEmptyBits);
    CString text = "junk";
    double value = 99.0;
    EXPECT_EQ(1, field.Validate(&text, &value, nullptr));
    EXPECT_STREQ("", text);
    EXPECT_EQ(0.0, value);
}

TEST_F(NumericTest, ValidateSetsThePresetFirst)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    CString preset = "7.25";
    double value = 0.0;
    EXPECT_EQ(1, field.Validate(nullptr, &value, &preset));
    EXPECT_STREQ("7.25", field.GetText());
    EXPECT_DOUBLE_EQ(7.25, value);
}

TEST_F(NumericTest, ValidatePadsTheDecimalPlaces)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumPadDecimalZeros, 0xFF);
    field.SetWindowText("12");
    EXPECT_EQ(1, field.Validate());
    EXPECT_STREQ("12.00", field.GetText());
    field.SetWindowText("3.5");
    field.Validate();
    EXPECT_STREQ("3.50", field.GetText());
    field.SetWindowText("-");
    field.Validate();
    EXPECT_STREQ("0.00", field.GetText());
}

TEST_F(NumericTest, ValidatePadsTheWholeDigitsBehindTheSign)
{
    CNumericField field(4, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumPadWholeZeros, 0xFF);
    field.SetWindowText("12.5");
    field.Validate();
    EXPECT_STREQ("0012.5", field.GetText());
    field.SetWindowText("-3");
    field.Validate();
    EXPECT_STREQ("-0003", field.GetText());
}

TEST_F(NumericTest, ValidateTrimsLeadingZeros)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumTrimLeadingZeros, 0xFF);
    field.SetWindowText("007.5");
    field.Validate();
    EXPECT_STREQ("7.5", field.GetText());
    field.SetWindowText("000");
    field.Validate();
    EXPECT_STREQ("0", field.GetText());
    field.SetWindowText("-.5");
    field.Validate();
    EXPECT_STREQ("-0.5", field.GetText());
}

TEST_F(NumericTest, ValidateKeepsTheSelectionWhenItReshapesTheText)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumPadDecimalZeros, 0xFF);
    field.SetWindowText("12");
    Select(field, 1, 1);
    field.Validate();
    EXPECT_STREQ("12.00", field.GetText());
    EXPECT_EQ(std::make_pair(1, 1), Selection(field));
}

TEST_F(NumericTest, ValidateAnswersOneWhenTheFlagsLetAFailurePass)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(10.0, 20.0);
    field.SetWindowText("5");
    // The message alone does nothing: it needs the focus bit.
    field.ModifyFlags(Num::NumMessageIfInvalid, 0xFF);
    EXPECT_EQ(1, field.Validate());
    EXPECT_EQ(0, field.errorMessages);
    EXPECT_STREQ("5", field.GetText());
    // The repair alone repairs silently and reports the failure.
    field.ModifyFlags(Num::NumFixIfInvalid, 0xFF);
    EXPECT_EQ(0, field.Validate());
    EXPECT_STREQ("10.0", field.GetText());
    EXPECT_EQ(0, field.errorMessages);
    // The beep alone reports the failure and leaves the text.
    field.SetWindowText("50");
    field.ModifyFlags(Num::NumBeepIfInvalid, 0xFF);
    EXPECT_EQ(0, field.Validate());
    EXPECT_STREQ("50", field.GetText());
}

TEST_F(NumericTest, LeavingWithoutValidationOnKillFocusChangesNothing)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(10.0, 20.0);
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
    field.SetWindowText("5");
    field.SetFocus();
    kel_test::PumpPending();
    kel_test::BoxSeen seen = LeaveExpectingNoBox(other);
    EXPECT_FALSE(seen.found);
    EXPECT_STREQ("5", field.GetText());
    EXPECT_EQ(other.m_hWnd, ::GetFocus());
}

TEST_F(NumericTest, RangeMessageNamesBothBoundsThroughTheHostText)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(1.5, 100.0);
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK);
    field.ShowErrorMessage();
    const kel_test::BoxSeen& seen = answerer.Wait();
    EXPECT_TRUE(seen.found);
    EXPECT_TRUE(seen.hasOk);
    EXPECT_NE(nullptr, seen.icon);
    EXPECT_EQ("Please specify a numeric value between 1.5 and 100.0.", seen.text);
}

TEST_F(NumericTest, RangeMessageWithOnlyALowerBound)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(-2.25, DBL_MAX);
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK);
    field.ShowErrorMessage();
    EXPECT_EQ("Please specify a numeric value greater than or equal to -2.25.", answerer.Wait().text);
}

TEST_F(NumericTest, RangeMessageWithOnlyAnUpperBound)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(-DBL_MAX, 30.0);
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK);
    field.ShowErrorMessage();
    EXPECT_EQ("Please specify a numeric value less than or equal to 30.0.", answerer.Wait().text);
}

TEST_F(NumericTest, RangeMessageWithoutBounds)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK);
    field.ShowErrorMessage();
    EXPECT_EQ("Please specify a valid numeric value.", answerer.Wait().text);
}

TEST_F(NumericTest, CheckIfValidShowsTheRangeAndPutsTheFocusBack)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
    field.SetRange(0.0, 10.0);
    field.SetWindowText("12");
    other.SetFocus();
    kel_test::PumpPending();
    EXPECT_FALSE(field.CheckIfValid(false));
    EXPECT_EQ(0, field.errorMessages);
    EXPECT_EQ(other.m_hWnd, ::GetFocus());

    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK);
    EXPECT_FALSE(field.CheckIfValid(true));
    EXPECT_EQ("Please specify a numeric value between 0.0 and 10.0.", answerer.Wait().text);
    kel_test::PumpPending();
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    EXPECT_STREQ("12", field.GetText());   // shown, not repaired
}

TEST_F(NumericTest, DisabledFieldIsValid)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetRange(0.0, 10.0);
    field.SetWindowText("12");
    field.EnableWindow(FALSE);
    EXPECT_TRUE(field.CheckIfValid(true));
    EXPECT_EQ(0, field.errorMessages);
    EXPECT_FALSE(field.IsValid());
}

TEST_F(NumericTest, ReversedRangeIsTakenInOrder)
{
    CNumericField field(5, 2);
    double min = 0.0, max = 0.0;
    field.SetRange(20.0, 10.0);
    field.GetRange(&min, &max);
    EXPECT_EQ(10.0, min);
    EXPECT_EQ(20.0, max);
    field.GetRange(nullptr, &max);
    EXPECT_EQ(20.0, max);
}

TEST_F(NumericTest, WipingTheFieldAndLeavingPostsValueDeletedOnce)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(0, kEmptyBits);
    field.SetWindowText("123.4");
    field.SetFocus();
    kel_test::PumpPending();
    Select(field, 0, -1);
    Press(field, VK_DELETE);
    EXPECT_STREQ("", field.GetText());
    EXPECT_TRUE(field.DeletedArmed());

    other.SetFocus();
    // Posted, not sent: it waits in the queue until the loop runs.
    EXPECT_TRUE(ValueDeletedWaiting(frame.m_hWnd));
    EXPECT_EQ(0, frame.valueDeleted);
    kel_test::PumpPending();
    EXPECT_EQ(1, frame.valueDeleted);
    EXPECT_FALSE(field.DeletedArmed());
    CString deleted;
    field.GetDeletedItemText(deleted);
    EXPECT_STREQ("123.4", deleted);

    field.SetFocus();
    other.SetFocus();
    kel_test::PumpPending();
    EXPECT_EQ(1, frame.valueDeleted);
}

TEST_F(NumericTest, TypingAfterTheWipeCancelsTheReport)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(0, kEmptyBits);
    field.SetWindowText("123.4");
    field.SetFocus();
    kel_test::PumpPending();
    Select(field, 0, -1);
    Press(field, VK_DELETE);
    Type(field, "7");
    EXPECT_FALSE(field.DeletedArmed());
    other.SetFocus();
    kel_test::PumpPending();
    EXPECT_EQ(0, frame.valueDeleted);
    EXPECT_STREQ("7", field.GetText());
}

TEST_F(NumericTest, DeleteInAnEmptyFieldArmsNothing)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.ModifyFlags(0, kEmptyBits);
    field.SetFocus();
    kel_test::PumpPending();
    Press(field, VK_DELETE);
    EXPECT_FALSE(field.DeletedArmed());
    other.SetFocus();
    kel_test::PumpPending();
    EXPECT_EQ(0, frame.valueDeleted);
}

TEST_F(NumericTest, WipedFieldWithDefaultFlagsIsReportedAndComplainedAbout)
{
    CNumericField field(5, 2);
    ASSERT_TRUE(Create(field));
    field.SetWindowText("42");
    field.SetFocus();
    kel_test::PumpPending();
    Select(field, 0, -1);
    Press(field, VK_DELETE);
    kel_test::BoxSeen seen = LeaveAnsweringTheBox(other);
    EXPECT_TRUE(seen.found);
    EXPECT_EQ("Please specify a valid numeric value.", seen.text);
    EXPECT_EQ(1, frame.valueDeleted);
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    field.ModifyFlags(Num::NumNoValidateOnKillFocus, 0);
}
