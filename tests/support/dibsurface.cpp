// A 32-bit top-down DIB section for pixel checks.
#include "dibsurface.h"

namespace kel_test
{
namespace
{
DWORD ToBits(COLORREF c)
{
    return (static_cast<DWORD>(GetRValue(c)) << 16) | (static_cast<DWORD>(GetGValue(c)) << 8) | GetBValue(c);
}
}

DibSurface::DibSurface(int cx, int cy, COLORREF fill) : m_cx(cx), m_cy(cy)
{
    BITMAPINFO bmi = {};
    bmi.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    bmi.bmiHeader.biWidth = cx;
    bmi.bmiHeader.biHeight = -cy;
    bmi.bmiHeader.biPlanes = 1;
    bmi.bmiHeader.biBitCount = 32;
    bmi.bmiHeader.biCompression = BI_RGB;
    void* pBits = nullptr;
    m_hBitmap = ::CreateDIBSection(nullptr, &bmi, DIB_RGB_COLORS, &pBits, nullptr, 0);
    m_pBits = static_cast<DWORD*>(pBits);
    for (int i = 0; m_pBits != nullptr && i < cx * cy; ++i)
        m_pBits[i] = ToBits(fill);
}

DibSurface::~DibSurface()
{
    if (m_dc.m_hDC != nullptr)
        ::SelectObject(m_dc.m_hDC, m_hOld);
    m_dc.DeleteDC();
    if (m_hBitmap != nullptr)
        ::DeleteObject(m_hBitmap);
}

CDC& DibSurface::DC()
{
    if (m_dc.m_hDC == nullptr && m_hBitmap != nullptr && m_dc.CreateCompatibleDC(nullptr))
        m_hOld = ::SelectObject(m_dc.m_hDC, m_hBitmap);
    return m_dc;
}

void DibSurface::GiveTo(CBitmap& bitmap)
{
    ::GdiFlush();
    if (m_dc.m_hDC != nullptr)
    {
        ::SelectObject(m_dc.m_hDC, m_hOld);
        m_dc.DeleteDC();
    }
    bitmap.Attach(m_hBitmap);
    m_hBitmap = nullptr;
    m_pBits = nullptr;
}

void DibSurface::Fill(const RECT& rc, COLORREF c)
{
    ::GdiFlush();
    for (int y = rc.top; y < rc.bottom; ++y)
        for (int x = rc.left; x < rc.right; ++x)
            m_pBits[y * m_cx + x] = ToBits(c);
}

COLORREF DibSurface::Pixel(int x, int y) const
{
    ::GdiFlush();
    const DWORD v = m_pBits[y * m_cx + x];
    return RGB((v >> 16) & 0xFF, (v >> 8) & 0xFF, v & 0xFF);
}

int DibSurface::Count(const RECT& rc, COLORREF c) const
{
    int n = 0;
    for (int y = rc.top; y < rc.bottom; ++y)
        for (int x = rc.left; x < rc.right; ++x)
            n += Pixel(x, y) == c ? 1 : 0;
    return n;
}

int DibSurface::CountDark(const RECT& rc) const
{
    int n = 0;
    for (int y = rc.top; y < rc.bottom; ++y)
        for (int x = rc.left; x < rc.right; ++x)
        {
            const COLORREF c = Pixel(x, y);
            n += (GetRValue(c) < 128 && GetGValue(c) < 128 && GetBValue(c) < 128) ? 1 : 0;
        }
    return n;
}
}
