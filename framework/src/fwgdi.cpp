// Owners of GDI objects, their temporary wrappers, and the live count of what they hold.
#include "kelfw/fwgdi.h"

#include "kelfw/fwdc.h"
#include "kelfw/fwimagelist.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwmodule.h"
#include "threadslot.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <typeindex>
#include <utility>

// The temporary wrappers of one thread. A handle may be wrapped once per class
// (CGdiObject::FromHandle and CPen::FromHandle of one pen give two wrappers), so that
// each caller gets an object of the class it asked for.
class CGdiTempMap
{
public:
    template <class T>
    static T* Lookup(HGDIOBJ hObject)
    {
        if (hObject == nullptr)
            return nullptr;
        std::unique_ptr<CGdiObject>& slot = s_map.GetOrCreate()[Key(hObject, std::type_index(typeid(T)))];
        if (!slot)
        {
            slot.reset(new T);
            slot->m_bTemporary = true;
        }
        // A wrapper that was detached or deleted by hand is pointed at its handle again.
        slot->m_hObject = hObject;
        return static_cast<T*>(slot.get());
    }

    static void Clear()
    {
        // Wrappers are temporary, so their destructors leave the handles alone.
        s_map.Reset();
    }

private:
    using Key = std::pair<HGDIOBJ, std::type_index>;
    using Map = std::map<Key, std::unique_ptr<CGdiObject>>;
    static CThreadLocalPtr<Map> s_map;
};

// Released with the thread that made it, like every per-thread object of the framework.
CThreadLocalPtr<CGdiTempMap::Map> CGdiTempMap::s_map;

void AfxDeleteTempGdiMap()
{
    CGdiObject::DeleteTempMap();
    CDC::DeleteTempMap();
    CImageList::DeleteTempMap();
}

// ---------------------------------------------------------------------------------------
// CGdiObject

CGdiObject::CGdiObject() : m_hObject(nullptr), m_bTemporary(false) {}

CGdiObject::~CGdiObject()
{
    if (!m_bTemporary)
        DeleteObject();
}

CGdiObject* PASCAL CGdiObject::FromHandle(HGDIOBJ hObject)
{
    return CGdiTempMap::Lookup<CGdiObject>(hObject);
}

void PASCAL CGdiObject::DeleteTempMap()
{
    CGdiTempMap::Clear();
}

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    if (hObject == nullptr)
        return FALSE;
    // One handle at a time: an owner deletes what it held before, a wrapper lets it go.
    if (m_hObject != nullptr)
    {
        if (m_bTemporary)
            Detach();
        else
            DeleteObject();
    }
    m_hObject = hObject;
    if (!m_bTemporary)
        AfxAdjustLiveCount(afxLiveGdiObjects, +1);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    HGDIOBJ hObject = m_hObject;
    if (hObject != nullptr && !m_bTemporary)
        AfxAdjustLiveCount(afxLiveGdiObjects, -1);
    m_hObject = nullptr;
    return hObject;
}

BOOL CGdiObject::DeleteObject()
{
    if (m_hObject == nullptr)
        return FALSE;
    return ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const
{
    if (m_hObject == nullptr)
        return 0;
    return ::GetObject(m_hObject, nCount, lpObject);
}

UINT CGdiObject::GetObjectType() const
{
    if (m_hObject == nullptr)
        return 0;
    return static_cast<UINT>(::GetObjectType(m_hObject));
}

BOOL CGdiObject::CreateStockObject(int nIndex)
{
    return Attach(::GetStockObject(nIndex));
}

BOOL CGdiObject::UnrealizeObject()
{
    if (m_hObject == nullptr)
        return FALSE;
    return ::UnrealizeObject(m_hObject);
}

// ---------------------------------------------------------------------------------------
// CPen

CPen* PASCAL CPen::FromHandle(HPEN hPen)
{
    return CGdiTempMap::Lookup<CPen>(hPen);
}

CPen::CPen() {}

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    CreatePen(nPenStyle, nWidth, crColor);
}

CPen::CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount,
           const DWORD* lpStyle)
{
    CreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle);
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor)
{
    return Attach(::CreatePen(nPenStyle, nWidth, crColor));
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount,
                     const DWORD* lpStyle)
{
    if (pLogBrush == nullptr)
        return FALSE;
    return Attach(::ExtCreatePen(static_cast<DWORD>(nPenStyle), static_cast<DWORD>(nWidth),
                                 pLogBrush, static_cast<DWORD>(nStyleCount), lpStyle));
}

BOOL CPen::CreatePenIndirect(LPLOGPEN lpLogPen)
{
    if (lpLogPen == nullptr)
        return FALSE;
    return Attach(::CreatePenIndirect(lpLogPen));
}

int CPen::GetLogPen(LOGPEN* pLogPen) const
{
    return GetObject(sizeof(LOGPEN), pLogPen);
}

// ---------------------------------------------------------------------------------------
// CBrush

CBrush* PASCAL CBrush::FromHandle(HBRUSH hBrush)
{
    return CGdiTempMap::Lookup<CBrush>(hBrush);
}

CBrush::CBrush() {}

CBrush::CBrush(COLORREF crColor)
{
    CreateSolidBrush(crColor);
}

CBrush::CBrush(int nIndex, COLORREF crColor)
{
    CreateHatchBrush(nIndex, crColor);
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor)
{
    return Attach(::CreateSolidBrush(crColor));
}

BOOL CBrush::CreateHatchBrush(int nIndex, COLORREF crColor)
{
    return Attach(::CreateHatchBrush(nIndex, crColor));
}

BOOL CBrush::CreateBrushIndirect(const LOGBRUSH* lpLogBrush)
{
    if (lpLogBrush == nullptr)
        return FALSE;
    return Attach(::CreateBrushIndirect(lpLogBrush));
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap)
{
    if (pBitmap == nullptr || pBitmap->m_hObject == nullptr)
        return FALSE;
    return Attach(::CreatePatternBrush(static_cast<HBITMAP>(pBitmap->m_hObject)));
}

BOOL CBrush::CreateSysColorBrush(int nIndex)
{
    return Attach(::GetSysColorBrush(nIndex));
}

int CBrush::GetLogBrush(LOGBRUSH* pLogBrush) const
{
    return GetObject(sizeof(LOGBRUSH), pLogBrush);
}

// ---------------------------------------------------------------------------------------
// CFont

CFont* PASCAL CFont::FromHandle(HFONT hFont)
{
    return CGdiTempMap::Lookup<CFont>(hFont);
}

CFont::CFont() {}

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont)
{
    if (lpLogFont == nullptr)
        return FALSE;
    return Attach(::CreateFontIndirect(lpLogFont));
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight,
                       BYTE bItalic, BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet,
                       BYTE nOutPrecision, BYTE nClipPrecision, BYTE nQuality,
                       BYTE nPitchAndFamily, LPCTSTR lpszFacename)
{
    return Attach(::CreateFont(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic,
                               bUnderline, cStrikeOut, nCharSet, nOutPrecision, nClipPrecision,
                               nQuality, nPitchAndFamily, lpszFacename));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC)
{
    LOGFONT lf = {};
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfHeight = nPointSize;
    if (lpszFaceName != nullptr)
        lstrcpyn(lf.lfFaceName, lpszFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&lf, pDC);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC)
{
    if (lpLogFont == nullptr)
        return FALSE;
    HDC hDC = pDC != nullptr ? pDC->m_hAttribDC : ::GetDC(nullptr);
    if (hDC == nullptr)
        return FALSE;

    // Tenths of a point to device pixels (720 tenths to the inch), then to the logical
    // units of the context; a negative height asks for the character height.
    LOGFONT lf = *lpLogFont;
    POINT pt = {0, MulDiv(::GetDeviceCaps(hDC, LOGPIXELSY), lf.lfHeight, 720)};
    POINT ptOrg = {0, 0};
    ::DPtoLP(hDC, &pt, 1);
    ::DPtoLP(hDC, &ptOrg, 1);
    lf.lfHeight = -std::abs(pt.y - ptOrg.y);

    if (pDC == nullptr)
        ::ReleaseDC(nullptr, hDC);
    return CreateFontIndirect(&lf);
}

int CFont::GetLogFont(LOGFONT* pLogFont) const
{
    return GetObject(sizeof(LOGFONT), pLogFont);
}

// ---------------------------------------------------------------------------------------
// CBitmap

CBitmap* PASCAL CBitmap::FromHandle(HBITMAP hBitmap)
{
    return CGdiTempMap::Lookup<CBitmap>(hBitmap);
}

CBitmap::CBitmap() {}

BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName)
{
    return Attach(::LoadBitmap(AfxGetResourceHandle(), lpszResourceName));
}

BOOL CBitmap::LoadBitmap(UINT nIDResource)
{
    return LoadBitmap(MAKEINTRESOURCE(nIDResource));
}

BOOL CBitmap::LoadOEMBitmap(UINT nIDBitmap)
{
    return Attach(::LoadBitmap(nullptr, MAKEINTRESOURCE(nIDBitmap)));
}

BOOL CBitmap::CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount,
                           const void* lpBits)
{
    return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
}

BOOL CBitmap::CreateBitmapIndirect(LPBITMAP lpBitmap)
{
    if (lpBitmap == nullptr)
        return FALSE;
    return Attach(::CreateBitmapIndirect(lpBitmap));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    if (pDC == nullptr || pDC->m_hDC == nullptr)
        return FALSE;
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}

int CBitmap::GetBitmap(BITMAP* pBitMap) const
{
    return GetObject(sizeof(BITMAP), pBitMap);
}

// ---------------------------------------------------------------------------------------
// CRgn

CRgn* PASCAL CRgn::FromHandle(HRGN hRgn)
{
    return CGdiTempMap::Lookup<CRgn>(hRgn);
}

CRgn::CRgn() {}

BOOL CRgn::CreateRectRgn(int x1, int y1, int x2, int y2)
{
    return Attach(::CreateRectRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateRectRgnIndirect(LPCRECT lpRect)
{
    if (lpRect == nullptr)
        return FALSE;
    return Attach(::CreateRectRgnIndirect(lpRect));
}

BOOL CRgn::CreateEllipticRgn(int x1, int y1, int x2, int y2)
{
    return Attach(::CreateEllipticRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateEllipticRgnIndirect(LPCRECT lpRect)
{
    if (lpRect == nullptr)
        return FALSE;
    return Attach(::CreateEllipticRgnIndirect(lpRect));
}

int CRgn::CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode)
{
    if (m_hObject == nullptr || pRgn1 == nullptr)
        return ERROR;
    HRGN hRgn2 = pRgn2 != nullptr ? static_cast<HRGN>(pRgn2->m_hObject) : nullptr;
    return ::CombineRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(pRgn1->m_hObject), hRgn2,
                        nCombineMode);
}

void CRgn::SetRectRgn(int x1, int y1, int x2, int y2)
{
    if (m_hObject != nullptr)
        ::SetRectRgn(static_cast<HRGN>(m_hObject), x1, y1, x2, y2);
}

void CRgn::SetRectRgn(LPCRECT lpRect)
{
    if (lpRect != nullptr)
        SetRectRgn(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

BOOL CRgn::PtInRegion(int x, int y) const
{
    if (m_hObject == nullptr)
        return FALSE;
    return ::PtInRegion(static_cast<HRGN>(m_hObject), x, y);
}

BOOL CRgn::PtInRegion(POINT point) const
{
    return PtInRegion(point.x, point.y);
}

int CRgn::GetRgnBox(LPRECT lpRect) const
{
    if (m_hObject == nullptr || lpRect == nullptr)
        return ERROR;
    return ::GetRgnBox(static_cast<HRGN>(m_hObject), lpRect);
}
