// Device contexts: CDC, CPaintDC, CClientDC, CWindowDC, and CSelectObjectScope.
//
// A CDC that created or attached a context deletes it when destroyed; CPaintDC ends the
// paint, CClientDC and CWindowDC release the context they fetched. CDC::FromHandle hands
// out a temporary, borrowing wrapper (see AfxDeleteTempGdiMap). Selecting into a context
// is best done through CSelectObjectScope, which puts the old object back on every way out:
//
//     CClientDC dc(pWnd);
//     CBrush brush(RGB(0, 128, 0));
//     CSelectObjectScope keepBrush(dc, brush);
//     dc.Rectangle(0, 0, 20, 20);
#pragma once
#include "kelfw/fwdefs.h"
#include "kelfw/fwgdi.h"
#include "kelfw/fwgeometry.h"
#include "kelfw/fwstring.h"

class CWnd;

class KELFW_API CDC
{
public:
    // Attributes
    HDC m_hDC;        // the context drawn into
    HDC m_hAttribDC;  // the context queried for attributes; the same as m_hDC here

    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }

    static CDC* PASCAL FromHandle(HDC hDC);
    static void PASCAL DeleteTempMap();

    // True for the borrowing wrappers that FromHandle hands out.
    BOOL IsTemporary() const { return m_bTemporary; }

    // Construction
    CDC();
    virtual ~CDC();
    CDC(const CDC&) = delete;              // owners are not copied
    CDC& operator=(const CDC&) = delete;

    BOOL Attach(HDC hDC);
    HDC Detach();

    // A memory context compatible with pDC, or with the screen when pDC is NULL.
    BOOL CreateCompatibleDC(CDC* pDC);
    BOOL CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput,
                  const void* lpInitData);
    BOOL DeleteDC();

    int SaveDC();
    BOOL RestoreDC(int nSavedDC);
    int GetDeviceCaps(int nIndex) const;

    // Selection: each answers the object selected before, as a temporary wrapper.
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap);
    // A region handed over as a CGdiObject clips as below and answers NULL.
    CGdiObject* SelectObject(CGdiObject* pObject);
    // A region is copied into the clip region; the answer is the region type.
    int SelectObject(CRgn* pRgn);
    // The raw form, for pens, brushes, fonts and bitmaps; answers the previous handle.
    HGDIOBJ SelectObject(HGDIOBJ hObject);
    virtual CGdiObject* SelectStockObject(int nIndex);

    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;

    // Colours and modes
    COLORREF GetTextColor() const;
    COLORREF GetBkColor() const;
    int GetBkMode() const;
    virtual COLORREF SetTextColor(COLORREF crColor);
    virtual COLORREF SetBkColor(COLORREF crColor);
    int SetBkMode(int nBkMode);
    int GetROP2() const;
    int SetROP2(int nDrawMode);

    // Coordinates
    int GetMapMode() const;
    virtual int SetMapMode(int nMapMode);
    CPoint GetViewportOrg() const;
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point);
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point);

    // Clipping
    virtual int GetClipBox(LPRECT lpRect) const;
    int IntersectClipRect(int x1, int y1, int x2, int y2);
    int IntersectClipRect(LPCRECT lpRect);
    int ExcludeClipRect(int x1, int y1, int x2, int y2);
    int ExcludeClipRect(LPCRECT lpRect);
    // NULL removes the clip region.
    int SelectClipRgn(CRgn* pRgn);
    int SelectClipRgn(CRgn* pRgn, int nMode);

    // Lines and shapes
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point);
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point);
    BOOL Polyline(const POINT* lpPoints, int nCount);
    BOOL Polygon(const POINT* lpPoints, int nCount);
    BOOL Rectangle(int x1, int y1, int x2, int y2);
    BOOL Rectangle(LPCRECT lpRect);
    BOOL Ellipse(int x1, int y1, int x2, int y2);
    BOOL Ellipse(LPCRECT lpRect);

    // Rectangles
    void FillRect(LPCRECT lpRect, CBrush* pBrush);
    void FrameRect(LPCRECT lpRect, CBrush* pBrush);
    void InvertRect(LPCRECT lpRect);
    void DrawFocusRect(LPCRECT lpRect);
    BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags);
    // Both fill through ExtTextOut with ETO_OPAQUE, which leaves clr as the back colour.
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    // A one-pixel frame: top and left in one colour, bottom and right in the other.
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight);

    // Pixels, bitmaps, icons
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT point) const;
    COLORREF SetPixel(int x, int y, COLORREF crColor);
    COLORREF SetPixel(POINT point, COLORREF crColor);
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop);
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                DWORD dwRop);
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                    int nSrcWidth, int nSrcHeight, DWORD dwRop);
    BOOL DrawIcon(int x, int y, HICON hIcon);
    BOOL DrawIcon(POINT point, HICON hIcon);

    // Text
    virtual BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount);
    BOOL TextOut(int x, int y, const CString& str);
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString,
                            UINT nCount, LPINT lpDxWidths);
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str,
                    LPINT lpDxWidths);
    virtual int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat);
    CSize GetTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const;
    BOOL GetTextMetrics(LPTEXTMETRIC lpMetrics) const;

private:
    bool m_bTemporary;
    friend class CDCTempMap;
};

// Paints a window between BeginPaint and EndPaint; only for WM_PAINT.
class KELFW_API CPaintDC : public CDC
{
public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

    HWND m_hWnd;
    PAINTSTRUCT m_ps;
};

// The client area of a window (the screen when pWnd is NULL), released when destroyed.
class KELFW_API CClientDC : public CDC
{
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

    HWND m_hWnd;
};

// The whole window including its frame (the screen when pWnd is NULL), released when destroyed.
class KELFW_API CWindowDC : public CDC
{
public:
    explicit CWindowDC(CWnd* pWnd);
    ~CWindowDC() override;

    HWND m_hWnd;
};

// Selects a GDI object into a context for the lifetime of the scope and puts the object
// it replaced back in its destructor. A region, a null context or a null object selects
// nothing (regions are copied into the clip region, not selected).
class KELFW_API CSelectObjectScope
{
public:
    CSelectObjectScope(HDC hDC, HGDIOBJ hObject);
    CSelectObjectScope(CDC& dc, CGdiObject& object);
    CSelectObjectScope(CDC* pDC, CGdiObject* pObject);
    ~CSelectObjectScope();
    CSelectObjectScope(const CSelectObjectScope&) = delete;   // one restore per selection
    CSelectObjectScope& operator=(const CSelectObjectScope&) = delete;

    // The object that was selected before, which the destructor reselects.
    HGDIOBJ GetOldObject() const { return m_hOld; }
    // Puts the old object back now; the destructor then does nothing.
    void Restore();

private:
    HDC m_hDC;        // the context selected into directly, or
    CDC* m_pDC;       // the CDC selected through
    HGDIOBJ m_hOld;
};
