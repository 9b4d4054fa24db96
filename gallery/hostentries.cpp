// The gallery's host entries: a small colour table, a scale list, line and surface samples
// and a transparent blit, handed to the library at start-up.
#include "hostentries.h"

#include "hostservices.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

namespace
{
HWND g_hMainWindow = nullptr;
GalleryLengthFormatCall g_lengthFormat = {0, 0, 0, 0.0};

// The gallery's colour table, 0x00RRGGBB by colour number. 0 and 7 are the foreground
// colour, black on the gallery's light paper, as a CAD host shows them on a white sheet.
const uint32_t kColourTable[] = {
    0x000000,   // 0 foreground
    0xFF0000,   // 1 red
    0xFFFF00,   // 2 yellow
    0x00FF00,   // 3 green
    0x00FFFF,   // 4 cyan
    0x0000FF,   // 5 blue
    0xFF00FF,   // 6 magenta
    0x000000,   // 7 white on dark paper, black on light paper
    0x808080,   // 8 grey
    0xC0C0C0,   // 9 light grey
    0x800000,   // 10 dark red
    0x808000,   // 11 olive
    0x008000,   // 12 dark green
    0x008080,   // 13 teal
    0x000080,   // 14 dark blue
    0x800080,   // 15 purple
};

// The gallery's scales, in the order of its scale list.
const char* const kScales[] = {"1 : 1", "1 : 5", "1 : 10", "1 : 20", "1 : 50", "1 : 100", "1 : 200", "1 : 500"};

// The colour number the library passes for "the line's own colour".
const int kOwnColour = -254;

COLORREF HostToColorref(uint32_t rgb)
{
    return RGB((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

COLORREF ColourOfNumber(int number)
{
    int32_t n = number;
    return HostToColorref(GalleryGetColorRgb(&n));
}

int RoundToInt(double value)
{
    return static_cast<int>(std::lround(value));
}

// Dash patterns of the gallery's line types, in pixels at factor 1: 0 and 1 are solid.
struct LineTypePattern
{
    int count;
    DWORD dashes[4];
};

const LineTypePattern kLineTypes[] = {
    {2, {12, 6, 0, 0}},    // 2 dashed
    {2, {2, 4, 0, 0}},     // 3 dotted
    {4, {12, 4, 2, 4}},    // 4 dash-dot
    {2, {24, 6, 0, 0}},    // 5 long dashes
};

// Restores the device context to the state saved at construction on every way out.
class CSavedDC
{
public:
    explicit CSavedDC(HDC hDC) : m_hDC(hDC), m_nSaved(SaveDC(hDC)) {}
    ~CSavedDC()
    {
        if (m_nSaved != 0)
            RestoreDC(m_hDC, m_nSaved);
    }
    CSavedDC(const CSavedDC&) = delete;   // one restore per save
    CSavedDC& operator=(const CSavedDC&) = delete;

private:
    HDC m_hDC;
    int m_nSaved;
};

// Owns a GDI object created for one drawing call.
template <class THandle>
class CScopedGdi
{
public:
    explicit CScopedGdi(THandle h) : m_h(h) {}
    ~CScopedGdi()
    {
        if (m_h != nullptr)
            DeleteObject(m_h);
    }
    CScopedGdi(const CScopedGdi&) = delete;   // one owner per handle
    CScopedGdi& operator=(const CScopedGdi&) = delete;
    THandle get() const { return m_h; }

private:
    THandle m_h;
};
}

void FillGalleryHostEntries(KelWinCtrlInitRecord& record)
{
    record.pfnGetColorRgb = &GalleryGetColorRgb;
    record.pfnDrawEfline = &GalleryDrawEfline;
    record.pfnDrawSurface = &GalleryDrawSurface;
    record.pfnGetMasstabText = &GalleryGetMasstabText;
    // The layer dialog, the two surface selections and the bitmap path selection come with
    // the pages that use them; until then the gallery leaves these entries null.
    record.pfnSelectLayer = nullptr;
    record.pfnEditSurfaceAlt = nullptr;
    record.pfnEditSurface = nullptr;
    record.pfnQueryService = &GalleryQueryService;
    record.pfnReleaseService = &GalleryReleaseService;
    record.pfnIsMaskeFnAborted = &GalleryIsMaskeFnAborted;
    record.pfnGetMainWindow = &GalleryGetMainWindow;
    record.pfnGetEmbeddedMainWindow = &GalleryGetEmbeddedMainWindow;
    record.pfnSetLengthFormat = &GallerySetLengthFormat;
    record.pfnDrawTransparentBitmap = &GalleryDrawTransparentBitmap;
    record.pfnEditBitmapPath = nullptr;
    record.reserved = nullptr;
}

void SetGalleryMainWindow(HWND hWnd)
{
    g_hMainWindow = hWnd;
}

GalleryLengthFormatCall GetGalleryLengthFormatCalls()
{
    return g_lengthFormat;
}

uint32_t __cdecl GalleryGetColorRgb(int32_t* colorNumber)
{
    if (colorNumber == nullptr)
        return 0;
    int32_t n = *colorNumber;
    // Negative numbers (by layer, by pen) and numbers past the table draw in the foreground.
    if (n < 0 || n >= static_cast<int32_t>(std::size(kColourTable)))
        return kColourTable[0];
    return kColourTable[n];
}

void __cdecl GalleryDrawEfline(HDC hDC, double* scaleFactor, double* rect, int* clipRect, int* lineNumber,
                               int* penNumber, int* cell1, int* cell2, int* colour, double factor, int documentId,
                               int mode)
{
    if (hDC == nullptr || rect == nullptr)
        return;

    // The pen number is the width in pixels, as on a plotter with one pixel per pen step.
    int pen = penNumber != nullptr ? *penNumber : 0;
    int width = std::clamp(pen, 1, 10);
    int colourNumber = colour != nullptr ? *colour : kOwnColour;
    COLORREF crLine = colourNumber == kOwnColour ? HostToColorref(kColourTable[7]) : ColourOfNumber(colourNumber);

    LOGBRUSH lb = {BS_SOLID, crLine, 0};
    int line = lineNumber != nullptr ? *lineNumber : 0;
    HPEN hPen = nullptr;
    if (line <= 1)
    {
        hPen = ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT, static_cast<DWORD>(width), &lb, 0, nullptr);
    }
    else
    {
        // Line types past the table repeat it; the factor stretches the dashes.
        const LineTypePattern& pattern = kLineTypes[static_cast<size_t>(line - 2) % std::size(kLineTypes)];
        double stretch = factor > 0.0 ? factor : 1.0;
        DWORD dashes[4] = {};
        for (int i = 0; i < pattern.count; ++i)
            dashes[i] = std::max<DWORD>(1, static_cast<DWORD>(std::lround(pattern.dashes[i] * stretch)));
        hPen = ExtCreatePen(PS_GEOMETRIC | PS_USERSTYLE | PS_ENDCAP_FLAT, static_cast<DWORD>(width), &lb,
                            static_cast<DWORD>(pattern.count), dashes);
    }
    // Declared before the saved state, so that the pen is deselected before it is deleted.
    CScopedGdi<HPEN> ownedPen(hPen);
    if (hPen == nullptr)
        return;

    CSavedDC saved(hDC);
    if (clipRect != nullptr)
        IntersectClipRect(hDC, clipRect[0], clipRect[1], clipRect[2], clipRect[3]);
    SelectObject(hDC, hPen);
    MoveToEx(hDC, RoundToInt(rect[0]), RoundToInt(rect[1]), nullptr);
    LineTo(hDC, RoundToInt(rect[2]), RoundToInt(rect[3]));
}

void __cdecl GalleryDrawSurface(int kind, int value, HDC hDC, double* rect, int documentId, int flags)
{
    if (hDC == nullptr || rect == nullptr)
        return;
    RECT rc = {RoundToInt(rect[0]), RoundToInt(rect[1]), RoundToInt(rect[2]), RoundToInt(rect[3])};
    if (rc.right <= rc.left || rc.bottom <= rc.top)
        return;
    CSavedDC saved(hDC);
    IntersectClipRect(hDC, rc.left, rc.top, rc.right, rc.bottom);
    SetBkMode(hDC, TRANSPARENT);

    const int kHatchStyles = HS_DIAGCROSS + 1;   // HS_HORIZONTAL .. HS_DIAGCROSS
    int style = ((value % kHatchStyles) + kHatchStyles) % kHatchStyles;
    HBRUSH hBrush = nullptr;
    switch (kind)
    {
    case 2:   // a filling: the value is a colour number
        hBrush = CreateSolidBrush(ColourOfNumber(value));
        break;
    case -5:   // a hatch: black lines of the hatch's style over the background
        hBrush = CreateHatchBrush(style, HostToColorref(kColourTable[7]));
        break;
    case -1:   // a pattern: the same lines, in a colour of the table, to tell the two apart
        hBrush = CreateHatchBrush(style, ColourOfNumber(1 + (value % 6 + 6) % 6));
        break;
    default:
    {
        // A gradient's record does not fit into the int it is passed in on 64-bit Windows,
        // so the gallery does not read it and shows a neutral ramp instead.
        TRIVERTEX vertices[2] = {
            {rc.left, rc.top, 0x8000, 0x8000, 0x8000, 0},
            {rc.right, rc.bottom, 0xFF00, 0xFF00, 0xFF00, 0},
        };
        GRADIENT_RECT gradient = {0, 1};
        GradientFill(hDC, vertices, 2, &gradient, 1, GRADIENT_FILL_RECT_H);
        return;
    }
    }
    CScopedGdi<HBRUSH> ownedBrush(hBrush);
    if (hBrush != nullptr)
        FillRect(hDC, &rc, hBrush);
}

int32_t __cdecl GalleryGetMasstabText(char* buffer, int size, int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(kScales)))
        return -1;
    if (buffer != nullptr && size > 0)
        std::snprintf(buffer, static_cast<size_t>(size), "%s", kScales[index]);
    return index;
}

int32_t __cdecl GalleryIsMaskeFnAborted()
{
    // The gallery's selection dialogs never ask to leave the calling dialog.
    return 0;
}

HWND __cdecl GalleryGetMainWindow()
{
    return g_hMainWindow;
}

HWND __cdecl GalleryGetEmbeddedMainWindow()
{
    // The gallery always runs in a frame of its own.
    return nullptr;
}

void __cdecl GallerySetLengthFormat(int32_t* cell1, int32_t* cell2, double* cell3)
{
    // The gallery has one fixed length format; it only records the call.
    ++g_lengthFormat.calls;
    g_lengthFormat.cell1 = cell1 != nullptr ? *cell1 : 0;
    g_lengthFormat.cell2 = cell2 != nullptr ? *cell2 : 0;
    g_lengthFormat.cell3 = cell3 != nullptr ? *cell3 : 0.0;
}

void __cdecl GalleryDrawTransparentBitmap(HDC hDC, HBITMAP hBitmap, int x, int y, int width, int height,
                                          uint32_t transparentColor, int flag)
{
    // The library passes 0 as the flag; the gallery draws the same either way.
    if (hDC == nullptr || hBitmap == nullptr)
        return;
    BITMAP bm = {};
    if (GetObjectA(hBitmap, sizeof(bm), &bm) == 0)
        return;
    if (width <= 0)
        width = bm.bmWidth;
    if (height <= 0)
        height = bm.bmHeight;
    HDC hMemDC = CreateCompatibleDC(hDC);
    if (hMemDC == nullptr)
        return;
    HGDIOBJ hOld = SelectObject(hMemDC, hBitmap);
    // Every pixel of the transparent colour leaves the background as it was.
    TransparentBlt(hDC, x, y, width, height, hMemDC, 0, 0, bm.bmWidth, bm.bmHeight,
                   static_cast<UINT>(transparentColor));
    SelectObject(hMemDC, hOld);
    DeleteDC(hMemDC);
}
