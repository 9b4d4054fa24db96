// The host's image container: draws its switch, lock and deletion images on request.
#include "kx_bitmapcontainer.h"

namespace
{
// Pixels are drawn into a 32-bit colour bitmap and a monochrome mask, black in the mask
// where the image is opaque.
struct IconCanvas
{
    int size;
    HDC dc = nullptr;
    HDC maskDc = nullptr;
    HBITMAP colour = nullptr;
    HBITMAP mask = nullptr;
    HGDIOBJ oldColour = nullptr;
    HGDIOBJ oldMask = nullptr;

    explicit IconCanvas(int n) : size(n)
    {
        HDC screen = GetDC(nullptr);
        dc = CreateCompatibleDC(screen);
        maskDc = CreateCompatibleDC(screen);
        colour = CreateCompatibleBitmap(screen, n, n);
        mask = CreateBitmap(n, n, 1, 1, nullptr);
        ReleaseDC(nullptr, screen);
        oldColour = SelectObject(dc, colour);
        oldMask = SelectObject(maskDc, mask);
        RECT all = {0, 0, n, n};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        FillRect(maskDc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    ~IconCanvas()
    {
        SelectObject(dc, oldColour);
        SelectObject(maskDc, oldMask);
        DeleteDC(dc);
        DeleteDC(maskDc);
        DeleteObject(colour);
        DeleteObject(mask);
    }
    IconCanvas(const IconCanvas&) = delete;
    IconCanvas& operator=(const IconCanvas&) = delete;

    void Fill(int l, int t, int r, int b, COLORREF c)
    {
        RECT rc = {l, t, r, b};
        HBRUSH brush = CreateSolidBrush(c);
        FillRect(dc, &rc, brush);
        DeleteObject(brush);
        FillRect(maskDc, &rc, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    }
    void Pixel(int x, int y, COLORREF c)
    {
        if (x < 0 || y < 0 || x >= size || y >= size)
            return;
        SetPixel(dc, x, y, c);
        SetPixel(maskDc, x, y, RGB(0, 0, 0));
    }
    // A framed box of 13 pixels (scaled) with a white or grey inside.
    void Box(COLORREF frame, COLORREF inside)
    {
        int o = (size - 13) / 2;
        Fill(o, o, o + 13, o + 13, frame);
        Fill(o + 1, o + 1, o + 12, o + 12, inside);
    }
    void Tick(COLORREF c)
    {
        int o = (size - 13) / 2;
        // A check mark of three pixel rows thickness inside the box.
        for (int i = 0; i < 7; ++i)
        {
            int x = o + 3 + i;
            int y = i < 2 ? o + 6 + i : o + 8 - (i - 2);
            for (int d = 0; d < 3; ++d)
                Pixel(x, y + d, c);
        }
    }
    void Cross(COLORREF c)
    {
        for (int i = 2; i < size - 2; ++i)
        {
            Pixel(i, i, c);
            Pixel(i + 1, i, c);
            Pixel(size - 1 - i, i, c);
            Pixel(size - 2 - i, i, c);
        }
    }
    HICON Make()
    {
        SelectObject(dc, oldColour);
        SelectObject(maskDc, oldMask);
        ICONINFO info = {};
        info.fIcon = TRUE;
        info.hbmColor = colour;
        info.hbmMask = mask;
        HICON icon = CreateIconIndirect(&info);
        oldColour = SelectObject(dc, colour);
        oldMask = SelectObject(maskDc, mask);
        return icon;
    }
};
}

KX_BitmapContainer& KX_BitmapContainer::instance()
{
    static KX_BitmapContainer container;
    return container;
}

bool KX_BitmapContainer::hasImage(int id) const
{
    switch (id)
    {
    case KX_BMP_SWITCH_OFF:
    case KX_BMP_SWITCH_ON:
    case KX_BMP_LOCKED_SWITCH_OFF:
    case KX_BMP_LOCKED_SWITCH_ON:
    case KX_BMP_DELETED_MARK:
        return true;
    default:
        return false;
    }
}

HICON KX_BitmapContainer::getGDIIcon(int id, int size, int state) const
{
    if (!hasImage(id))
        return nullptr;
    IconCanvas canvas(size == KX_BMPSIZE_24 ? 24 : 16);
    const COLORREF ink = state ? RGB(0, 0, 0) : RGB(128, 128, 128);
    switch (id)
    {
    case KX_BMP_SWITCH_OFF:
        canvas.Box(ink, RGB(255, 255, 255));
        break;
    case KX_BMP_SWITCH_ON:
        canvas.Box(ink, RGB(255, 255, 255));
        canvas.Tick(ink);
        break;
    case KX_BMP_LOCKED_SWITCH_OFF:
        canvas.Box(RGB(128, 128, 128), RGB(212, 208, 200));
        break;
    case KX_BMP_LOCKED_SWITCH_ON:
        canvas.Box(RGB(128, 128, 128), RGB(212, 208, 200));
        canvas.Tick(RGB(128, 128, 128));
        break;
    case KX_BMP_DELETED_MARK:
        canvas.Cross(state ? RGB(220, 0, 0) : RGB(128, 128, 128));
        break;
    }
    return canvas.Make();
}
