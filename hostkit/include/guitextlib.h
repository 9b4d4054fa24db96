// Measuring text against pixels: cropping to a width and finding the character at a point.
//
//     CString shown = CropTextToPixelWidth(hdc, "Ground floor walls", 60);   // "Ground fl"
//     int caret = GetMiddleCharIndex_ByPixels(hdc, "Ground", 23);            // caret position
//
// Both measure in the font selected into hdc.
#pragma once
#include "hostkit.h"

#include <afxwin.h>

// The longest prefix of text whose extent is at most width pixels ("" for a width below the
// first character, or a null text).
KELHOSTKIT_API CString CropTextToPixelWidth(HDC hdc, const char* text, int width);
// The caret position (0 to the length of text) nearest to x pixels from the text's start:
// the index of the first character whose middle lies right of x.
KELHOSTKIT_API int GetMiddleCharIndex_ByPixels(HDC hdc, const char* text, int x);
