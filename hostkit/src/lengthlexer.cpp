// Tokenizer of the length expression language.
#include "lengthlexer.h"

#include <cctype>
#include <locale>
#include <sstream>

namespace kelhk
{
namespace
{
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Reads a number at text[pos]; false for a malformed one. The value is converted in the
// classic locale, so a host's setlocale cannot change what "1.5" means.
bool ReadNumber(const char* text, size_t& pos, bool decimalComma, Token& token)
{
    std::string digits;
    bool integral = true;
    while (IsDigit(text[pos]))
        digits += text[pos++];
    if (text[pos] == '.' || (decimalComma && text[pos] == ','))
    {
        integral = false;
        ++pos;
        digits += '.';
        size_t fraction = 0;
        while (IsDigit(text[pos]))
        {
            digits += text[pos++];
            ++fraction;
        }
        // A lone point is no number; "5." is.
        if (fraction == 0 && digits.size() == 1)
            return false;
    }
    // An exponent only when digits follow, so that "2e" stays a number and a name.
    if ((text[pos] == 'e' || text[pos] == 'E') &&
        (IsDigit(text[pos + 1]) || ((text[pos + 1] == '+' || text[pos + 1] == '-') && IsDigit(text[pos + 2]))))
    {
        integral = false;
        digits += 'e';
        ++pos;
        if (text[pos] == '+' || text[pos] == '-')
            digits += text[pos++];
        while (IsDigit(text[pos]))
            digits += text[pos++];
    }
    std::istringstream in(digits);
    in.imbue(std::locale::classic());
    double value = 0.0;
    in >> value;
    if (in.fail() || !in.eof())
        return false;
    token.kind = TokenKind::Number;
    token.value = value;
    token.integral = integral;
    return true;
}
}

std::vector<Token> Tokenize(const char* text, bool decimalComma)
{
    std::vector<Token> tokens;
    size_t pos = 0;
    for (;;)
    {
        bool space = false;
        while (IsBlank(text[pos]))
        {
            ++pos;
            space = true;
        }
        Token token;
        token.spaceBefore = space;
        const char c = text[pos];
        if (c == '\0')
        {
            token.kind = TokenKind::End;
            tokens.push_back(token);
            return tokens;
        }
        if (IsDigit(c) || c == '.' || (decimalComma && c == ','))
        {
            if (!ReadNumber(text, pos, decimalComma, token))
            {
                token.kind = TokenKind::Invalid;
                tokens.push_back(token);
                return tokens;
            }
            tokens.push_back(token);
            continue;
        }
        if (IsLetter(c))
        {
            token.kind = TokenKind::Name;
            while (IsLetter(text[pos]))
                token.name += static_cast<char>(std::tolower(static_cast<unsigned char>(text[pos++])));
            tokens.push_back(token);
            continue;
        }
        switch (c)
        {
        case '+': token.kind = TokenKind::Plus; break;
        case '-': token.kind = TokenKind::Minus; break;
        case '*': token.kind = TokenKind::Star; break;
        case '/': token.kind = TokenKind::Slash; break;
        case '(': token.kind = TokenKind::LParen; break;
        case ')': token.kind = TokenKind::RParen; break;
        case '\'': token.kind = TokenKind::Foot; break;
        case '"': token.kind = TokenKind::Inch; break;
        default:
            token.kind = TokenKind::Invalid;
            tokens.push_back(token);
            return tokens;
        }
        ++pos;
        tokens.push_back(token);
    }
}
}
