// Texts by number from the host's table, fixed-length names, shortening and name search.
#include "kelwinctrl.h"

#include <textlib.h>

namespace
{
// Texts are read into 256 characters and a terminator.
const int kTextCapacity = 256;

void TrimBlanks(CString& text)
{
    text.TrimRight(' ');
}
}

void GetDorvatText(CString& text, uint32_t number)
{
    GetDorvatText(text, number, nullptr);
}

void GetDorvatText(CString& text, uint32_t number, char* parameters)
{
    char buffer[kTextCapacity + 1] = {0};
    int length = 0;
    ll_get_text_multiline(number, kTextCapacity, parameters, buffer, &length);
    text = buffer;
    TrimBlanks(text);
}

void GetDorvatTextSingleLine(CString& text, uint32_t number)
{
    GetDorvatTextSingleLine(text, number, nullptr);
}

void GetDorvatTextSingleLine(CString& text, uint32_t number, char* parameters)
{
    char buffer[kTextCapacity + 1] = {0};
    int length = 0;
    ll_get_text(number, kTextCapacity, parameters, buffer, &length);
    text = buffer;
    TrimBlanks(text);
}

void ConvertToIso(CString& text)
{
    TrimBlanks(text);
}

void ConvertToAscii(CString& text, int length)
{
    if (text.GetLength() < length)
        text += CString(' ', length - text.GetLength());
}

bool IsCorrectName(const char* name)
{
    if (name == nullptr || *name == '\0')
        return false;
    CString trimmed(name);
    TrimBlanks(trimmed);
    return trimmed == name;
}

CString MakeShortedString(CDC* dc, const char* text, int width, int offset)
{
    CString result(text);
    if (result.IsEmpty() || dc->GetTextExtent(result).cx + offset <= width)
        return result;
    // The ellipsis is measured with its terminator, as four characters.
    const int ellipsis = dc->GetTextExtent("...", 4).cx;
    for (int n = result.GetLength() - 1; n > 0; --n)
    {
        if (dc->GetTextExtent(result.GetString(), n).cx + ellipsis + offset <= width)
            return result.Left(n) + "...";
    }
    return CString("...");
}

bool FindNameIsInText(const char* name, const char* text, bool caseSensitive, bool whole)
{
    CString n(name);
    CString t(text);
    if (!caseSensitive)
    {
        n.MakeUpper();
        t.MakeUpper();
    }
    if (whole)
        return n == t;
    return t.Find(n.GetString()) >= 0;
}
