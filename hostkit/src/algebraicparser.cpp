// CAlgebraicParserWrapper: the length parser and formatter over the host's unit settings.
//
// The settings are read from the host when the object is made and again at each
// DetectMetric(true, ...), so a change of units reaches the next conversion. Text to number
// (rounded to nDecimals places in the current unit):
// lengthexpr.h. Number to text: decimal with trailing zeros removed in modes 0 and 1; inch
// fractions to 1/2^nDecimals in modes 3 and 4 (4 decimals: sixteenths).
#include "algebraicparser.h"

#include "lengthexpr.h"
#include "lengthformat.h"
#include "unitservice.h"

#include <new>

struct CAlgebraicParserWrapper::Impl
{
    bool lengths = true;
    int (*query)(int, void**) = nullptr;
    int (*release)(int, void*) = nullptr;
    int unit = eKelUnitMillimetre;
    eInputMode hostMode = eInputModeMetric;

    void ReadSettings()
    {
        unit = eKelUnitMillimetre;
        int mode = eInputModeMetric;
        void* service = nullptr;
        if (query != nullptr)
            query(KELHOSTKIT_SERVICE_UNIT_SETTINGS, &service);
        if (service != nullptr)
        {
            IKelUnitSettings* settings = static_cast<IKelUnitSettings*>(service);
            unit = settings->GetLengthUnit();
            mode = settings->GetInputMode();
            if (release != nullptr)
                release(KELHOSTKIT_SERVICE_UNIT_SETTINGS, service);
        }
        if (unit < eKelUnitMillimetre || unit > eKelUnitFoot)
            unit = eKelUnitMillimetre;
        const bool imperial = kelhk::IsImperialUnit(unit);
        if (mode != eInputModeMetric && mode != eInputModeDecimalImperial && mode != eInputModeFeetInchFraction &&
            mode != eInputModeInchFraction)
            mode = imperial ? eInputModeDecimalImperial : eInputModeMetric;
        hostMode = static_cast<eInputMode>(mode);
    }

    eInputMode Resolve(eInputMode mode) const { return mode == eInputModeAuto ? hostMode : mode; }
};

namespace
{
// "," is a decimal point too when the user's locale writes decimals with it.
bool LocaleUsesDecimalComma()
{
    char separator[8] = {0};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, sizeof(separator)) == 0)
        return false;
    return separator[0] == ',' && separator[1] == '\0';
}
}

CAlgebraicParserWrapper::CAlgebraicParserWrapper(bool, bool bFlag, int (*query)(int, void**),
                                                 int (*release)(int, void*))
    : m_pImpl(new (std::nothrow) Impl)
{
    if (m_pImpl == nullptr)
        return;
    m_pImpl->lengths = bFlag;
    m_pImpl->query = query;
    m_pImpl->release = release;
    m_pImpl->ReadSettings();
}

CAlgebraicParserWrapper::~CAlgebraicParserWrapper()
{
    delete m_pImpl;
}

double CAlgebraicParserWrapper::DetectMetric(bool bDetect, eInputMode* mode)
{
    if (m_pImpl == nullptr)
        return 1.0;
    if (bDetect)
        m_pImpl->ReadSettings();
    if (mode != nullptr)
        *mode = m_pImpl->Resolve(*mode);
    return kelhk::UnitToMillimetres(m_pImpl->unit);
}

bool CAlgebraicParserWrapper::StringToNumber(const char* text, int nDecimals, eInputMode* mode, double* value,
                                             bool bExpression)
{
    if (m_pImpl == nullptr || text == nullptr || value == nullptr)
        return false;
    if (mode != nullptr)
        *mode = m_pImpl->Resolve(*mode);
    kelhk::ExpressionOptions options;
    options.currentUnit = m_pImpl->unit;
    options.lengths = m_pImpl->lengths;
    options.decimalComma = LocaleUsesDecimalComma();
    // Without bExpression only one number with an optional sign is taken.
    options.plainNumber = !bExpression;
    double result = 0.0;
    if (!kelhk::EvaluateLengthExpression(text, options, &result))
        return false;
    *value = kelhk::RoundToDecimals(result, nDecimals);
    return true;
}

CString CAlgebraicParserWrapper::NumberToString(double value, int nDecimals, eInputMode mode)
{
    if (m_pImpl == nullptr)
        return CString();
    mode = m_pImpl->Resolve(mode);
    if (m_pImpl->lengths && (mode == eInputModeFeetInchFraction || mode == eInputModeInchFraction))
    {
        const double inches = value * kelhk::UnitToMillimetres(m_pImpl->unit) / kelhk::UnitToMillimetres(eKelUnitInch);
        const std::string text = mode == eInputModeFeetInchFraction ? kelhk::FormatFeetInchFraction(inches, nDecimals)
                                                                    : kelhk::FormatInchFraction(inches, nDecimals);
        return CString(text.c_str());
    }
    return CString(kelhk::FormatDecimal(value, nDecimals).c_str());
}
