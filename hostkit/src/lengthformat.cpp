// Number to text for the length fields.
#include "lengthformat.h"

#include <cmath>
#include <cstdio>

namespace kelhk
{
namespace
{
// Counts of 1/2^k above this lose whole steps in a double; such lengths are written decimally.
const double kMaxSteps = 1e15;

int ClampInt(int v, int lo, int hi)
{
    return v < lo ? lo : (v > hi ? hi : v);
}

// The inch part "6 1/2", "1/2" or "6" of whole inches and numerator/denominator.
std::string InchPart(long long whole, long long numerator, long long denominator)
{
    while (numerator != 0 && numerator % 2 == 0 && denominator % 2 == 0)
    {
        numerator /= 2;
        denominator /= 2;
    }
    char buffer[64];
    if (numerator == 0)
        std::snprintf(buffer, sizeof(buffer), "%lld", whole);
    else if (whole == 0)
        std::snprintf(buffer, sizeof(buffer), "%lld/%lld", numerator, denominator);
    else
        std::snprintf(buffer, sizeof(buffer), "%lld %lld/%lld", whole, numerator, denominator);
    return buffer;
}
}

double RoundToDecimals(double value, int nDecimals)
{
    if (nDecimals < 0 || !std::isfinite(value))
        return value;
    const double scale = std::pow(10.0, ClampInt(nDecimals, 0, 15));
    const double scaled = value * scale;
    if (std::fabs(scaled) >= kMaxSteps)
        return value;
    const double rounded = std::round(scaled) / scale;
    return rounded == 0.0 ? 0.0 : rounded;
}

std::string FormatDecimal(double value, int nDecimals)
{
    if (!std::isfinite(value))
        return std::string();
    nDecimals = ClampInt(nDecimals, 0, 15);
    const int size = std::snprintf(nullptr, 0, "%.*f", nDecimals, value);
    std::string text(static_cast<size_t>(size) + 1, '\0');
    std::snprintf(&text[0], text.size(), "%.*f", nDecimals, value);
    text.resize(static_cast<size_t>(size));
    // Whatever locale the host set, the point is ".".
    for (char& c : text)
        if (c == ',')
            c = '.';
    if (text.find('.') != std::string::npos)
    {
        while (!text.empty() && text.back() == '0')
            text.pop_back();
        if (!text.empty() && text.back() == '.')
            text.pop_back();
    }
    if (text == "-0")
        text = "0";
    return text;
}

std::string FormatInchFraction(double inches, int k)
{
    k = ClampInt(k, 0, 8);
    const long long denominator = 1LL << k;
    if (!std::isfinite(inches))
        return std::string();
    if (std::fabs(inches) * static_cast<double>(denominator) > kMaxSteps)
        return FormatDecimal(inches, 4) + "\"";
    const long long steps = std::llround(std::fabs(inches) * static_cast<double>(denominator));
    const std::string sign = (inches < 0 && steps != 0) ? "-" : "";
    return sign + InchPart(steps / denominator, steps % denominator, denominator) + "\"";
}

std::string FormatFeetInchFraction(double inches, int k)
{
    k = ClampInt(k, 0, 8);
    const long long denominator = 1LL << k;
    if (!std::isfinite(inches))
        return std::string();
    if (std::fabs(inches) * static_cast<double>(denominator) > kMaxSteps)
        return FormatDecimal(inches, 4) + "\"";
    const long long steps = std::llround(std::fabs(inches) * static_cast<double>(denominator));
    const std::string sign = (inches < 0 && steps != 0) ? "-" : "";
    const long long wholeInches = steps / denominator;
    const long long feet = wholeInches / 12;
    char feetText[32];
    std::snprintf(feetText, sizeof(feetText), "%lld' ", feet);
    return sign + feetText + InchPart(wholeInches % 12, steps % denominator, denominator) + "\"";
}
}
