// A 32-bit top-down DIB section for pixel checks: a drawing target selected into a memory
// CDC, or an image handed to a CBitmap. Pixels are read and written straight in the bits,
// independently of the context's own GetPixel.
#pragma once
#include <afxwin.h>

namespace kel_test
{
class DibSurface
{
public:
    DibSurface(int cx, int cy, COLORREF fill = RGB(255, 255, 255));
    ~DibSurface();
    DibSurface(const DibSurface&) = delete;
    DibSurface& operator=(const DibSurface&) = delete;

    bool IsValid() const { return m_pBits != nullptr; }
    int Width() const { return m_cx; }
    int Height() const { return m_cy; }
    HBITMAP Bitmap() const { return m_hBitmap; }

    // The section selected into a memory context, created at first use.
    CDC& DC();
    // Hands the section to a bitmap owner, which then deletes it.
    void GiveTo(CBitmap& bitmap);

    void Fill(const RECT& rc, COLORREF c);
    COLORREF Pixel(int x, int y) const;
    // Pixels of rc whose colour is c.
    int Count(const RECT& rc, COLORREF c) const;
    // Pixels of rc darker than mid grey in every channel (text, however it is smoothed).
    int CountDark(const RECT& rc) const;

private:
    int m_cx;
    int m_cy;
    HBITMAP m_hBitmap = nullptr;
    DWORD* m_pBits = nullptr;
    CDC m_dc;
    HGDIOBJ m_hOld = nullptr;
};

// Makes a module the current resource module for one scope and puts the old one back.
class ResourceModuleScope
{
public:
    explicit ResourceModuleScope(HINSTANCE hModule) : m_hOld(AfxGetResourceHandle())
    {
        AfxSetResourceHandle(hModule);
    }
    ~ResourceModuleScope() { AfxSetResourceHandle(m_hOld); }
    ResourceModuleScope(const ResourceModuleScope&) = delete;
    ResourceModuleScope& operator=(const ResourceModuleScope&) = delete;

private:
    HINSTANCE m_hOld;
};
}
