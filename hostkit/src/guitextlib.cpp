// Measuring text against pixels.
#include "guitextlib.h"

#include <cstring>
#include <vector>

namespace
{
// Right edge of each character: ends[i] is the extent of the first i + 1 characters.
std::vector<int> CharacterEnds(HDC hdc, const char* text, int length)
{
    std::vector<int> ends(static_cast<size_t>(length), 0);
    SIZE size = {0, 0};
    // Without a count of fitting characters every partial extent is filled in.
    if (length > 0 && !::GetTextExtentExPointA(hdc, text, length, 0, nullptr, ends.data(), &size))
        ends.assign(static_cast<size_t>(length), 0);
    return ends;
}
}

CString CropTextToPixelWidth(HDC hdc, const char* text, int width)
{
    if (text == nullptr)
        return CString();
    const int length = static_cast<int>(std::strlen(text));
    const std::vector<int> ends = CharacterEnds(hdc, text, length);
    int n = 0;
    while (n < length && ends[static_cast<size_t>(n)] <= width)
        ++n;
    return CString(text, n);
}

int GetMiddleCharIndex_ByPixels(HDC hdc, const char* text, int x)
{
    if (text == nullptr)
        return 0;
    const int length = static_cast<int>(std::strlen(text));
    const std::vector<int> ends = CharacterEnds(hdc, text, length);
    int start = 0;
    for (int i = 0; i < length; ++i)
    {
        const int end = ends[static_cast<size_t>(i)];
        // Left of a character's middle the caret goes before it.
        if (2 * x < start + end)
            return i;
        start = end;
    }
    return length;
}
