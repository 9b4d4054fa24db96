// Evaluator of the length expression language.
//
// The language, as a user types it into a length field:
//   numbers           12   1.5   .5   2e3        (1,5 too where the decimal comma is on)
//   fractions         3/8   1 1/2               (a whole number, blanks, then a fraction)
//   units             mm cm m in " ft '          a number without a unit is in the current unit
//   feet and inches   3'6"   3' 6 1/2"   3ft 6in  (inches written right after the feet)
//   arithmetic        + - * /, parentheses, unary minus and plus
//   constants         pi
//   functions         sqrt(x), sin(x), cos(x), tan(x)   angles in degrees
// A unit scales the value it follows into the current unit; "(1+2)in" and "sqrt(4)m" are
// allowed. A fraction of two whole numbers written without blanks around the slash binds to
// a following unit, so 3/8" is three eighths of an inch whatever the current unit is.
// There is no implicit multiplication: "2 3", "2pi" and "2(3)" are errors.
#pragma once

namespace kelhk
{
// Length units, numbered as the host's unit service answers them.
enum LengthUnit
{
    kUnitMillimetre = 0,
    kUnitCentimetre = 1,
    kUnitMetre = 2,
    kUnitInch = 3,
    kUnitFoot = 4
};

// Millimetres in one unit; an unknown unit counts as millimetres.
double UnitToMillimetres(int unit);
// True for inch and foot.
bool IsImperialUnit(int unit);

struct ExpressionOptions
{
    int currentUnit = kUnitMillimetre;  // the unit of the result and of bare numbers
    bool lengths = true;                // false: a plain number, unit suffixes are errors
    bool decimalComma = false;          // "," is a decimal point as well as "."
    bool plainNumber = false;           // only one number with an optional sign
};

// True when text is a complete expression with a finite result, written to *value. On
// failure (syntax, division by zero, overflow, a square root of a negative number, an
// empty text) *value is left as it was.
bool EvaluateLengthExpression(const char* text, const ExpressionOptions& options, double* value);
}
