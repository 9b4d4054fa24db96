// The expression parser for CAD lengths: text to number and number to text in the user's
// current length unit and input mode, which it reads from the host at construction.
//
//     CAlgebraicParserWrapper parser(false, true, pfnQueryService, pfnReleaseService);
//     eInputMode mode = eInputMode(2);
//     parser.DetectMetric(true, &mode);
//     double value = 0;
//     if (parser.StringToNumber("3' 6 1/2\"", 4, &mode, &value, true)) ...
#pragma once
#include "hostkit.h"

#include <afxwin.h>

// Input modes. A caller offers eInputModeAuto; DetectMetric answers the mode the host's
// settings ask for. In the two fractional modes lengths are written with fractions.
enum eInputMode
{
    eInputModeMetric = 0,        // decimal numbers in a metric unit
    eInputModeDecimalImperial = 1,  // decimal numbers in inches or feet
    eInputModeAuto = 2,          // what a caller offers: "use the host's settings"
    eInputModeFeetInchFraction = 3, // feet and inches with fractions: 3' 6 1/2"
    eInputModeInchFraction = 4   // inches with fractions: 42 1/2"
};

class KELHOSTKIT_API CAlgebraicParserWrapper
{
public:
    // bReserved is always false for the library and not used. bFlag is the caller's
    // conversion flag: true for lengths; false for plain numbers, which take no unit suffix
    // and are always written as decimals. query/release are the host's service entries
    // through which the unit settings are read (service KELHOSTKIT_SERVICE_UNIT_SETTINGS of
    // unitservice.h); without them, or when the query stores null, millimetres and metric.
    CAlgebraicParserWrapper(bool bReserved, bool bFlag, int (*query)(int, void**), int (*release)(int, void*));
    ~CAlgebraicParserWrapper();
    CAlgebraicParserWrapper(const CAlgebraicParserWrapper&) = delete;
    CAlgebraicParserWrapper& operator=(const CAlgebraicParserWrapper&) = delete;

    // mode is in and out: it comes with eInputModeAuto and gets the mode to use (any other
    // mode stays). The result is the factor of the current length unit to millimetres. With
    // bDetect the host's settings are read afresh.
    double DetectMetric(bool bDetect, eInputMode* mode);
    // True when text was understood; *value then holds the number in the current unit,
    // rounded to nDecimals places (a negative nDecimals keeps every place). Text may hold
    // numbers (1.5, 2e3; 1,5 where the user's locale writes a decimal comma), fractions
    // (3/8, 1 1/2), units (mm cm m in " ft '), feet and inches (3'6", 3' 6 1/2"), + - * /,
    // parentheses, pi, sqrt() and sin() cos() tan() in degrees; a bare number is in the
    // current unit. Syntax errors, division by zero, overflow and an empty text answer
    // false, and *value is then not touched. With bFlag false only one number with an
    // optional sign is taken.
    bool StringToNumber(const char* text, int nDecimals, eInputMode* mode, double* value, bool bFlag);
    // Formats a value of the current unit for display in the given mode: modes 0 and 1 as a
    // decimal with nDecimals places, trailing zeros and point removed ("12.5", "3"); mode 3 as
    // feet and inches (3' 6 1/2") and mode 4 as inches (42 1/2"), with fractions of
    // 1/2^nDecimals inch, reduced. A value that is not finite gives "".
    CString NumberToString(double value, int nDecimals, eInputMode mode);

private:
    struct Impl;
    Impl* m_pImpl;
};
