// Number to text for the length fields: decimal numbers and inch fractions.
#pragma once
#include <string>

namespace kelhk
{
// value rounded half away from zero to nDecimals places (at most 15); a negative nDecimals,
// or a value too large for the rounding to matter, gives value unchanged.
double RoundToDecimals(double value, int nDecimals);

// value with nDecimals places (0 to 15), trailing zeros and a trailing point removed,
// always with "." as the point: 12.5000 -> "12.5", 3.0 -> "3", -0.00001 -> "0".
// A value that is not finite gives "".
std::string FormatDecimal(double value, int nDecimals);

// Inches rounded to 1/2^k (k from 0 to 8), the fraction reduced: 42.5 -> 42 1/2", 0.375 -> 3/8",
// 0 -> 0". Too large to count in 1/2^k steps: the decimal form with ". Not finite: "".
std::string FormatInchFraction(double inches, int k);

// Feet and inches, the inches rounded to 1/2^k: 42.5 -> 3' 6 1/2", 0.375 -> 0' 3/8",
// 36 -> 3' 0". The feet are always written.
std::string FormatFeetInchFraction(double inches, int k);
}
