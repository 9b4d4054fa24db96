// Text to number and back for the value fields, through the host's expression parser.
#include "valueedit.h"

#include "../frame/hostentries.h"

#include <algebraicparser.h>
#include <anglelib.h>

#include <cmath>
#include <new>

namespace
{
// A parser for one conversion, with the host's length format brought up to date when the
// current mode writes lengths with fractions. Null when it could not be allocated.
CAlgebraicParserWrapper* CreateParser(bool flag)
{
    CAlgebraicParserWrapper* parser =
        new (std::nothrow) CAlgebraicParserWrapper(false, flag, pfnQueryService, pfnReleaseService);
    if (parser == nullptr)
        return nullptr;
    eInputMode mode = eInputModeAuto;
    parser->DetectMetric(true, &mode);
    if (mode == eInputModeFeetInchFraction || mode == eInputModeInchFraction)
    {
        // What the host writes back into the cells is of no interest here.
        int32_t cell1 = -9995;
        int32_t cell2 = -9998;
        double cell3 = -9998.0;
        pfnSetLengthFormat(&cell1, &cell2, &cell3);
    }
    return parser;
}
}

bool GetEditValueFromString(const char* text, double* value, bool flag, int nDecimals)
{
    CAlgebraicParserWrapper* parser = CreateParser(flag);
    if (parser == nullptr)
        return false;
    // The mode is detected afresh for this direction.
    eInputMode mode = eInputModeAuto;
    parser->DetectMetric(true, &mode);
    const bool understood = parser->StringToNumber(text, nDecimals, &mode, value, true);
    delete parser;
    return understood;
}

bool GetEditValueFromString(const char* text, double* value, bool flag)
{
    return GetEditValueFromString(text, value, flag, 4);
}

CString GetStringFromEditValue(double value, bool flag, int nDecimals)
{
    CAlgebraicParserWrapper* parser = CreateParser(flag);
    if (parser == nullptr)
        return CString();
    eInputMode mode = eInputModeAuto;
    parser->DetectMetric(true, &mode);
    CString text = parser->NumberToString(value, nDecimals, mode);
    delete parser;
    return text;
}

CString GetStringFromEditValue(double value, bool flag)
{
    return GetStringFromEditValue(value, flag, 4);
}

double RollWinkelValue(double* angleDef, double value)
{
    double first = 0.0;
    double fullCircle = 0.0;
    wkonst(angleDef, &first, &fullCircle);
    // A plain remainder: the sign follows value.
    return std::fmod(value, fullCircle);
}
