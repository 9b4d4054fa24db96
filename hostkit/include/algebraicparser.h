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
    // bReserved is always false for the library; bFlag is the caller's conversion flag.
    // query/release are the host's service entries through which the unit settings are read.
    CAlgebraicParserWrapper(bool bReserved, bool bFlag, int (*query)(int, void**), int (*release)(int, void*));
    ~CAlgebraicParserWrapper();
    CAlgebraicParserWrapper(const CAlgebraicParserWrapper&) = delete;
    CAlgebraicParserWrapper& operator=(const CAlgebraicParserWrapper&) = delete;

    // mode is in and out: it comes with eInputModeAuto and gets the mode to use. The result
    // is the factor of the current length unit to millimetres.
    double DetectMetric(bool bDetect, eInputMode* mode);
    // True when text was understood; *value then holds the number in the current unit.
    bool StringToNumber(const char* text, int nDecimals, eInputMode* mode, double* value, bool bFlag);
    // Formats a value of the current unit for display in the given mode.
    CString NumberToString(double value, int nDecimals, eInputMode mode);

private:
    struct Impl;
    Impl* m_pImpl;
};
