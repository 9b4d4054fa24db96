// Tokens of the length expression language: numbers, names, operators and the foot and inch marks.
#pragma once
#include <string>
#include <vector>

namespace kelhk
{
enum class TokenKind
{
    Number,   // 12, 1.5, .5, 2e3 (and 1,5 where a decimal comma is accepted)
    Name,     // letters only, folded to lower case: mm, ft, pi, sqrt ...
    Plus,
    Minus,
    Star,
    Slash,
    LParen,
    RParen,
    Foot,     // '
    Inch,     // "
    End,
    Invalid   // a character that belongs to no token, or a malformed number
};

struct Token
{
    TokenKind kind = TokenKind::End;
    double value = 0.0;        // Number: its value
    bool integral = false;     // Number: written with digits alone (no point, no exponent)
    bool spaceBefore = false;  // white space separates it from the token before
    std::string name;          // Name: the letters in lower case
};

// Splits text into tokens; the list always ends with End, or with Invalid at the first
// character that cannot start a token. decimalComma makes "," a decimal point as well.
std::vector<Token> Tokenize(const char* text, bool decimalComma);
}
