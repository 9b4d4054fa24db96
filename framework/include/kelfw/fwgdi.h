// Owners of GDI objects: CGdiObject, CPen, CBrush, CFont, CBitmap, CRgn.
//
// An owner deletes the handle it holds when it is destroyed; FromHandle hands out a
// temporary wrapper that borrows a handle and never deletes it. Temporary wrappers live in
// a per-thread map until AfxDeleteTempGdiMap() empties it, so keep their pointers only
// for the work at hand:
//
//     CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
//     CPen* pOld = dc.SelectObject(&pen);   // pOld is a temporary wrapper
//     dc.LineTo(10, 10);
//     dc.SelectObject(pOld);                // pen is deleted when it goes out of scope
#pragma once
#include "kelfw/fwdefs.h"

class CDC;
class CBitmap;

// Empties the calling thread's maps of temporary wrappers (GDI objects, device contexts,
// image lists). Pointers from FromHandle become invalid; the handles stay untouched.
KELFW_API void AfxDeleteTempGdiMap();

class CGdiTempMap;

class KELFW_API CGdiObject
{
public:
    // Attributes
    HGDIOBJ m_hObject;

    operator HGDIOBJ() const { return m_hObject; }
    HGDIOBJ GetSafeHandle() const { return m_hObject; }

    static CGdiObject* PASCAL FromHandle(HGDIOBJ hObject);
    static void PASCAL DeleteTempMap();

    // Operations
    CGdiObject();
    virtual ~CGdiObject();
    CGdiObject(const CGdiObject&) = delete;              // owners are not copied
    CGdiObject& operator=(const CGdiObject&) = delete;

    // Takes ownership (an owner that held a handle already deletes it first).
    BOOL Attach(HGDIOBJ hObject);
    // Gives the handle up without deleting it.
    HGDIOBJ Detach();
    // Deletes the handle now; through a temporary wrapper too, since the caller asks for it.
    BOOL DeleteObject();

    int GetObject(int nCount, LPVOID lpObject) const;
    UINT GetObjectType() const;
    BOOL CreateStockObject(int nIndex);
    BOOL UnrealizeObject();

    // True for the borrowing wrappers that FromHandle hands out.
    BOOL IsTemporary() const { return m_bTemporary; }

private:
    friend class CGdiTempMap;
    bool m_bTemporary;
};

class KELFW_API CPen : public CGdiObject
{
public:
    static CPen* PASCAL FromHandle(HPEN hPen);

    CPen();
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
         const DWORD* lpStyle = NULL);

    // A cosmetic or simple geometric pen.
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor);
    // A pen made by ExtCreatePen: geometric styles, joins, end caps, user dash patterns.
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = NULL);
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen);

    operator HPEN() const { return static_cast<HPEN>(GetSafeHandle()); }
    int GetLogPen(LOGPEN* pLogPen) const;
};

class KELFW_API CBrush : public CGdiObject
{
public:
    static CBrush* PASCAL FromHandle(HBRUSH hBrush);

    CBrush();
    explicit CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor);

    BOOL CreateSolidBrush(COLORREF crColor);
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor);
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush);
    BOOL CreatePatternBrush(CBitmap* pBitmap);
    // Holds the system's shared brush of a system colour; deleting it is harmless.
    BOOL CreateSysColorBrush(int nIndex);

    operator HBRUSH() const { return static_cast<HBRUSH>(GetSafeHandle()); }
    int GetLogBrush(LOGBRUSH* pLogBrush) const;
};

class KELFW_API CFont : public CGdiObject
{
public:
    static CFont* PASCAL FromHandle(HFONT hFont);

    CFont();

    BOOL CreateFontIndirect(const LOGFONT* lpLogFont);
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight,
                    BYTE bItalic, BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet,
                    BYTE nOutPrecision, BYTE nClipPrecision, BYTE nQuality,
                    BYTE nPitchAndFamily, LPCTSTR lpszFacename);
    // nPointSize is in tenths of a point (120 asks for 12 points); the height is converted
    // to logical units of pDC, or of the screen when pDC is NULL.
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = NULL);
    // As above, with lfHeight of *lpLogFont in tenths of a point.
    BOOL CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC = NULL);

    operator HFONT() const { return static_cast<HFONT>(GetSafeHandle()); }
    int GetLogFont(LOGFONT* pLogFont) const;
};

class KELFW_API CBitmap : public CGdiObject
{
public:
    static CBitmap* PASCAL FromHandle(HBITMAP hBitmap);

    CBitmap();

    // Loaded from the current resource module.
    BOOL LoadBitmap(LPCTSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource);
    // One of the system's OBM_* bitmaps.
    BOOL LoadOEMBitmap(UINT nIDBitmap);

    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits);
    BOOL CreateBitmapIndirect(LPBITMAP lpBitmap);
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);

    operator HBITMAP() const { return static_cast<HBITMAP>(GetSafeHandle()); }
    int GetBitmap(BITMAP* pBitMap) const;
};

class KELFW_API CRgn : public CGdiObject
{
public:
    static CRgn* PASCAL FromHandle(HRGN hRgn);

    CRgn();

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2);
    BOOL CreateRectRgnIndirect(LPCRECT lpRect);
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2);
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect);

    // Both set this region, which must exist already, to the result; the answer is the
    // region type (NULLREGION, SIMPLEREGION, COMPLEXREGION) or ERROR.
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode);
    void SetRectRgn(int x1, int y1, int x2, int y2);
    void SetRectRgn(LPCRECT lpRect);

    BOOL PtInRegion(int x, int y) const;
    BOOL PtInRegion(POINT point) const;
    int GetRgnBox(LPRECT lpRect) const;

    operator HRGN() const { return static_cast<HRGN>(GetSafeHandle()); }
};
