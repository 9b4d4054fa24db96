// Evaluator of the length expression language: a recursive descent over the tokens.
#include "lengthexpr.h"

#include "lengthlexer.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace kelhk
{
namespace
{
const double kPi = 3.14159265358979323846;
// Nesting deeper than this is refused, so that "((((..." cannot exhaust the stack.
const int kMaxDepth = 200;

class Evaluator
{
public:
    Evaluator(const std::vector<Token>& tokens, const ExpressionOptions& options)
        : m_tokens(tokens), m_options(options)
    {
    }

    bool Run(double& result)
    {
        if (Peek().kind == TokenKind::End)
            return false;
        if (!Expression(result))
            return false;
        return Peek().kind == TokenKind::End;
    }

private:
    const Token& Peek(size_t ahead = 0) const
    {
        const size_t i = m_pos + ahead;
        return i < m_tokens.size() ? m_tokens[i] : m_tokens.back();
    }
    bool At(TokenKind kind, size_t ahead = 0) const { return Peek(ahead).kind == kind; }
    void Next()
    {
        if (m_pos < m_tokens.size() - 1)
            ++m_pos;
    }

    static bool Finite(double v) { return std::isfinite(v); }

    bool Expression(double& result)
    {
        if (++m_depth > kMaxDepth)
            return false;
        if (!Term(result))
            return false;
        while (At(TokenKind::Plus) || At(TokenKind::Minus))
        {
            const bool plus = At(TokenKind::Plus);
            Next();
            double rhs = 0.0;
            if (!Term(rhs))
                return false;
            result = plus ? result + rhs : result - rhs;
            if (!Finite(result))
                return false;
        }
        --m_depth;
        return true;
    }

    bool Term(double& result)
    {
        if (!Unary(result))
            return false;
        while (At(TokenKind::Star) || At(TokenKind::Slash))
        {
            const bool times = At(TokenKind::Star);
            Next();
            double rhs = 0.0;
            if (!Unary(rhs))
                return false;
            if (!times && rhs == 0.0)
                return false;
            result = times ? result * rhs : result / rhs;
            if (!Finite(result))
                return false;
        }
        return true;
    }

    bool Unary(double& result)
    {
        if (At(TokenKind::Minus) || At(TokenKind::Plus))
        {
            const bool minus = At(TokenKind::Minus);
            Next();
            if (++m_depth > kMaxDepth)
                return false;
            if (!Unary(result))
                return false;
            --m_depth;
            if (minus)
                result = -result;
            return true;
        }
        return Primary(result);
    }

    // A unit at the current token, as millimetres per unit; 0 when there is none.
    double UnitHere(bool& isFoot, bool& isInch) const
    {
        const Token& t = Peek();
        isFoot = isInch = false;
        if (t.kind == TokenKind::Foot)
        {
            isFoot = true;
            return UnitToMillimetres(kUnitFoot);
        }
        if (t.kind == TokenKind::Inch)
        {
            isInch = true;
            return UnitToMillimetres(kUnitInch);
        }
        if (t.kind != TokenKind::Name)
            return 0.0;
        if (t.name == "mm")
            return UnitToMillimetres(kUnitMillimetre);
        if (t.name == "cm")
            return UnitToMillimetres(kUnitCentimetre);
        if (t.name == "m")
            return UnitToMillimetres(kUnitMetre);
        if (t.name == "in")
        {
            isInch = true;
            return UnitToMillimetres(kUnitInch);
        }
        if (t.name == "ft")
        {
            isFoot = true;
            return UnitToMillimetres(kUnitFoot);
        }
        return 0.0;
    }

    // Applies a unit that follows a value, if any. False for a unit where none is allowed.
    bool OptionalUnit(double& value, bool& wasFoot)
    {
        bool isFoot = false, isInch = false;
        wasFoot = false;
        const double mm = UnitHere(isFoot, isInch);
        if (mm == 0.0)
            return true;
        if (!m_options.lengths)
            return false;
        Next();
        value = value * mm / UnitToMillimetres(m_options.currentUnit);
        wasFoot = isFoot;
        return Finite(value);
    }

    // A number literal: whole, fraction (3/8) or mixed (1 1/2), without a unit.
    bool Literal(double& value)
    {
        const Token& first = Peek();
        value = first.value;
        Next();
        // A fraction: integer, slash, integer, with no blanks around the slash.
        if (first.integral && At(TokenKind::Slash) && !Peek().spaceBefore && At(TokenKind::Number, 1) &&
            Peek(1).integral && !Peek(1).spaceBefore)
        {
            const double denominator = Peek(1).value;
            if (denominator == 0.0)
                return false;
            Next();
            Next();
            value = value / denominator;
            return Finite(value);
        }
        // A mixed number: integer, blanks, integer fraction.
        if (first.integral && At(TokenKind::Number) && Peek().spaceBefore && Peek().integral &&
            At(TokenKind::Slash, 1) && !Peek(1).spaceBefore && At(TokenKind::Number, 2) && Peek(2).integral &&
            !Peek(2).spaceBefore)
        {
            const double numerator = Peek().value;
            const double denominator = Peek(2).value;
            if (denominator == 0.0)
                return false;
            Next();
            Next();
            Next();
            value = value + numerator / denominator;
            return Finite(value);
        }
        return Finite(value);
    }

    bool Quantity(double& result)
    {
        if (!Literal(result))
            return false;
        bool wasFoot = false;
        if (!OptionalUnit(result, wasFoot))
            return false;
        // Feet may be followed straight away by inches: 3'6", 3' 6 1/2", 3ft 6in, 3'6.
        if (wasFoot && At(TokenKind::Number))
        {
            double inches = 0.0;
            if (!Literal(inches))
                return false;
            bool isFoot = false, isInch = false;
            UnitHere(isFoot, isInch);
            if (isInch)
                Next();
            else if (UnitHere(isFoot, isInch) != 0.0)
                return false;
            if (inches < 0.0)
                return false;
            result += inches * UnitToMillimetres(kUnitInch) / UnitToMillimetres(m_options.currentUnit);
        }
        return Finite(result);
    }

    bool Primary(double& result)
    {
        const Token& t = Peek();
        if (t.kind == TokenKind::Number)
            return Quantity(result);
        bool unused = false;
        if (t.kind == TokenKind::LParen)
        {
            Next();
            if (!Expression(result) || !At(TokenKind::RParen))
                return false;
            Next();
            return OptionalUnit(result, unused);
        }
        if (t.kind != TokenKind::Name)
            return false;
        const std::string name = t.name;
        Next();
        if (name == "pi")
        {
            result = kPi;
            return OptionalUnit(result, unused);
        }
        if (name != "sqrt" && name != "sin" && name != "cos" && name != "tan")
            return false;
        if (!At(TokenKind::LParen))
            return false;
        Next();
        double argument = 0.0;
        if (!Expression(argument) || !At(TokenKind::RParen))
            return false;
        Next();
        if (name == "sqrt")
        {
            if (argument < 0.0)
                return false;
            result = std::sqrt(argument);
        }
        else
        {
            const double radians = argument * kPi / 180.0;
            if (name == "sin")
                result = std::sin(radians);
            else if (name == "cos")
                result = std::cos(radians);
            else
            {
                // The tangent has poles at 90 + k * 180 degrees.
                const double c = std::cos(radians);
                if (std::fabs(c) < 1e-12)
                    return false;
                result = std::tan(radians);
            }
        }
        if (!Finite(result))
            return false;
        return OptionalUnit(result, unused);
    }

    const std::vector<Token>& m_tokens;
    const ExpressionOptions& m_options;
    size_t m_pos = 0;
    int m_depth = 0;
};
}

double UnitToMillimetres(int unit)
{
    switch (unit)
    {
    case kUnitCentimetre: return 10.0;
    case kUnitMetre: return 1000.0;
    case kUnitInch: return 25.4;
    case kUnitFoot: return 304.8;
    default: return 1.0;
    }
}

bool IsImperialUnit(int unit)
{
    return unit == kUnitInch || unit == kUnitFoot;
}

bool EvaluateLengthExpression(const char* text, const ExpressionOptions& options, double* value)
{
    if (text == nullptr || value == nullptr)
        return false;
    const std::vector<Token> tokens = Tokenize(text, options.decimalComma);
    if (tokens.back().kind == TokenKind::Invalid)
        return false;
    if (options.plainNumber)
    {
        const size_t first = (tokens[0].kind == TokenKind::Minus || tokens[0].kind == TokenKind::Plus) ? 1 : 0;
        if (tokens.size() != first + 2 || tokens[first].kind != TokenKind::Number)
            return false;
    }
    Evaluator evaluator(tokens, options);
    double result = 0.0;
    if (!evaluator.Run(result) || !std::isfinite(result))
        return false;
    *value = result == 0.0 ? 0.0 : result;  // no negative zero
    return true;
}
}
