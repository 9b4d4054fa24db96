// Device contexts: owners, temporary wrappers, the paint/client/window contexts, and the
// selection scope.
#include "kelfw/fwdc.h"

#include "kelfw/fwlivecount.h"
#include "kelfw/fwwnd.h"
#include "threadslot.h"

#include <map>
#include <memory>

// The temporary CDC wrappers of one thread.
class CDCTempMap
{
public:
    static CDC* Lookup(HDC hDC)
    {
        if (hDC == nullptr)
            return nullptr;
        std::unique_ptr<CDC>& slot = s_map.GetOrCreate()[hDC];
        if (!slot)
        {
            slot.reset(new CDC);
            slot->m_bTemporary = true;
        }
        // A wrapper that was detached by hand is pointed at its context again.
        slot->m_hDC = hDC;
        slot->m_hAttribDC = hDC;
        return slot.get();
    }

    static void Clear()
    {
        // Wrappers are temporary, so their destructors leave the contexts alone.
        s_map.Reset();
    }

private:
    using Map = std::map<HDC, std::unique_ptr<CDC>>;
    static CThreadLocalPtr<Map> s_map;
};

// Released with the thread that made it, like every per-thread object of the framework.
CThreadLocalPtr<CDCTempMap::Map> CDCTempMap::s_map;

namespace
{
HGDIOBJ HandleOf(const CGdiObject* pObject)
{
    return pObject != nullptr ? pObject->m_hObject : nullptr;
}

HWND HwndOf(CWnd* pWnd)
{
    return pWnd != nullptr ? pWnd->GetSafeHwnd() : nullptr;
}

// Applies a setting to the output context and, when it is a different one, to the
// attribute context as well; the answer is the attribute context's.
template <class Fn, class... Args>
auto SetOnBoth(HDC hDC, HDC hAttribDC, Fn fn, Args... args) -> decltype(fn(hDC, args...))
{
    decltype(fn(hDC, args...)) result{};
    if (hDC != nullptr && hDC != hAttribDC)
        result = fn(hDC, args...);
    if (hAttribDC != nullptr)
        result = fn(hAttribDC, args...);
    return result;
}
}

// ---------------------------------------------------------------------------------------
// CDC: construction

CDC::CDC() : m_hDC(nullptr), m_hAttribDC(nullptr), m_bTemporary(false) {}

CDC::~CDC()
{
    if (!m_bTemporary)
        DeleteDC();
}

CDC* PASCAL CDC::FromHandle(HDC hDC)
{
    return CDCTempMap::Lookup(hDC);
}

void PASCAL CDC::DeleteTempMap()
{
    CDCTempMap::Clear();
}

BOOL CDC::Attach(HDC hDC)
{
    if (hDC == nullptr)
        return FALSE;
    // One context at a time: an owner deletes what it held before, a wrapper lets it go.
    if (m_hDC != nullptr)
    {
        if (m_bTemporary)
            Detach();
        else
            DeleteDC();
    }
    m_hDC = hDC;
    m_hAttribDC = hDC;
    if (!m_bTemporary)
        AfxAdjustLiveCount(afxLiveDCs, +1);
    return TRUE;
}

HDC CDC::Detach()
{
    HDC hDC = m_hDC;
    if (hDC != nullptr && !m_bTemporary)
        AfxAdjustLiveCount(afxLiveDCs, -1);
    m_hDC = nullptr;
    m_hAttribDC = nullptr;
    return hDC;
}

BOOL CDC::CreateCompatibleDC(CDC* pDC)
{
    return Attach(::CreateCompatibleDC(pDC != nullptr ? pDC->m_hDC : nullptr));
}

BOOL CDC::CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput,
                   const void* lpInitData)
{
    return Attach(::CreateDC(lpszDriverName, lpszDeviceName, lpszOutput,
                             static_cast<const DEVMODE*>(lpInitData)));
}

BOOL CDC::DeleteDC()
{
    if (m_hDC == nullptr)
        return FALSE;
    return ::DeleteDC(Detach());
}

int CDC::SaveDC()
{
    int nSaved = 0;
    if (m_hAttribDC != nullptr && m_hAttribDC != m_hDC)
        ::SaveDC(m_hAttribDC);
    if (m_hDC != nullptr)
        nSaved = ::SaveDC(m_hDC);
    return nSaved;
}

BOOL CDC::RestoreDC(int nSavedDC)
{
    BOOL bOK = TRUE;
    if (m_hAttribDC != nullptr && m_hAttribDC != m_hDC)
        bOK = ::RestoreDC(m_hAttribDC, nSavedDC);
    if (m_hDC != nullptr)
        bOK = ::RestoreDC(m_hDC, nSavedDC) && bOK;
    return bOK;
}

int CDC::GetDeviceCaps(int nIndex) const
{
    return ::GetDeviceCaps(m_hAttribDC, nIndex);
}

// ---------------------------------------------------------------------------------------
// CDC: selection

HGDIOBJ CDC::SelectObject(HGDIOBJ hObject)
{
    if (hObject == nullptr)
        return nullptr;
    HGDIOBJ hOld = nullptr;
    if (m_hDC != nullptr)
        hOld = ::SelectObject(m_hDC, hObject);
    if (m_hAttribDC != nullptr && m_hAttribDC != m_hDC)
        hOld = ::SelectObject(m_hAttribDC, hObject);
    return hOld;
}

CPen* CDC::SelectObject(CPen* pPen)
{
    return CPen::FromHandle(static_cast<HPEN>(SelectObject(HandleOf(pPen))));
}

CBrush* CDC::SelectObject(CBrush* pBrush)
{
    return CBrush::FromHandle(static_cast<HBRUSH>(SelectObject(HandleOf(pBrush))));
}

CFont* CDC::SelectObject(CFont* pFont)
{
    return CFont::FromHandle(static_cast<HFONT>(SelectObject(HandleOf(pFont))));
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap)
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(SelectObject(HandleOf(pBitmap))));
}

CGdiObject* CDC::SelectObject(CGdiObject* pObject)
{
    HGDIOBJ hObject = HandleOf(pObject);
    // A region is not selected but copied into the clip region; nothing comes back.
    if (hObject != nullptr && ::GetObjectType(hObject) == OBJ_REGION)
    {
        SetOnBoth(m_hDC, m_hAttribDC, ::SelectClipRgn, static_cast<HRGN>(hObject));
        return nullptr;
    }
    return CGdiObject::FromHandle(SelectObject(hObject));
}

int CDC::SelectObject(CRgn* pRgn)
{
    if (pRgn == nullptr || pRgn->m_hObject == nullptr)
        return ERROR;
    return SelectClipRgn(pRgn);
}

CGdiObject* CDC::SelectStockObject(int nIndex)
{
    HGDIOBJ hObject = ::GetStockObject(nIndex);
    if (hObject == nullptr)
        return nullptr;
    return CGdiObject::FromHandle(SelectObject(hObject));
}

CPen* CDC::GetCurrentPen() const
{
    return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hDC, OBJ_PEN)));
}

CBrush* CDC::GetCurrentBrush() const
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hDC, OBJ_BRUSH)));
}

CFont* CDC::GetCurrentFont() const
{
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hDC, OBJ_FONT)));
}

CBitmap* CDC::GetCurrentBitmap() const
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP)));
}

// ---------------------------------------------------------------------------------------
// CDC: colours, modes, coordinates, clipping

COLORREF CDC::GetTextColor() const
{
    return ::GetTextColor(m_hAttribDC);
}

COLORREF CDC::GetBkColor() const
{
    return ::GetBkColor(m_hAttribDC);
}

int CDC::GetBkMode() const
{
    return ::GetBkMode(m_hAttribDC);
}

COLORREF CDC::SetTextColor(COLORREF crColor)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::SetTextColor, crColor);
}

COLORREF CDC::SetBkColor(COLORREF crColor)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::SetBkColor, crColor);
}

int CDC::SetBkMode(int nBkMode)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::SetBkMode, nBkMode);
}

int CDC::GetROP2() const
{
    return ::GetROP2(m_hAttribDC);
}

int CDC::SetROP2(int nDrawMode)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::SetROP2, nDrawMode);
}

int CDC::GetMapMode() const
{
    return ::GetMapMode(m_hAttribDC);
}

int CDC::SetMapMode(int nMapMode)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::SetMapMode, nMapMode);
}

CPoint CDC::GetViewportOrg() const
{
    POINT pt = {0, 0};
    ::GetViewportOrgEx(m_hAttribDC, &pt);
    return CPoint(pt.x, pt.y);
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    POINT old = {0, 0};
    SetOnBoth(m_hDC, m_hAttribDC, ::SetViewportOrgEx, x, y, &old);
    return CPoint(old.x, old.y);
}

CPoint CDC::SetViewportOrg(POINT point)
{
    return SetViewportOrg(point.x, point.y);
}

CPoint CDC::GetWindowOrg() const
{
    POINT pt = {0, 0};
    ::GetWindowOrgEx(m_hAttribDC, &pt);
    return CPoint(pt.x, pt.y);
}

CPoint CDC::SetWindowOrg(int x, int y)
{
    POINT old = {0, 0};
    SetOnBoth(m_hDC, m_hAttribDC, ::SetWindowOrgEx, x, y, &old);
    return CPoint(old.x, old.y);
}

CPoint CDC::SetWindowOrg(POINT point)
{
    return SetWindowOrg(point.x, point.y);
}

int CDC::GetClipBox(LPRECT lpRect) const
{
    return ::GetClipBox(m_hDC, lpRect);
}

int CDC::IntersectClipRect(int x1, int y1, int x2, int y2)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::IntersectClipRect, x1, y1, x2, y2);
}

int CDC::IntersectClipRect(LPCRECT lpRect)
{
    if (lpRect == nullptr)
        return ERROR;
    return IntersectClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CDC::ExcludeClipRect(int x1, int y1, int x2, int y2)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::ExcludeClipRect, x1, y1, x2, y2);
}

int CDC::ExcludeClipRect(LPCRECT lpRect)
{
    if (lpRect == nullptr)
        return ERROR;
    return ExcludeClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CDC::SelectClipRgn(CRgn* pRgn)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::SelectClipRgn, static_cast<HRGN>(HandleOf(pRgn)));
}

int CDC::SelectClipRgn(CRgn* pRgn, int nMode)
{
    return SetOnBoth(m_hDC, m_hAttribDC, ::ExtSelectClipRgn, static_cast<HRGN>(HandleOf(pRgn)),
                     nMode);
}

// ---------------------------------------------------------------------------------------
// CDC: lines and shapes

CPoint CDC::MoveTo(int x, int y)
{
    POINT old = {0, 0};
    SetOnBoth(m_hDC, m_hAttribDC, ::MoveToEx, x, y, &old);
    return CPoint(old.x, old.y);
}

CPoint CDC::MoveTo(POINT point)
{
    return MoveTo(point.x, point.y);
}

BOOL CDC::LineTo(int x, int y)
{
    // The attribute context follows the pen's position too.
    if (m_hAttribDC != nullptr && m_hAttribDC != m_hDC)
        ::MoveToEx(m_hAttribDC, x, y, nullptr);
    return ::LineTo(m_hDC, x, y);
}

BOOL CDC::LineTo(POINT point)
{
    return LineTo(point.x, point.y);
}

BOOL CDC::Polyline(const POINT* lpPoints, int nCount)
{
    return ::Polyline(m_hDC, lpPoints, nCount);
}

BOOL CDC::Polygon(const POINT* lpPoints, int nCount)
{
    return ::Polygon(m_hDC, lpPoints, nCount);
}

BOOL CDC::Rectangle(int x1, int y1, int x2, int y2)
{
    return ::Rectangle(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Rectangle(LPCRECT lpRect)
{
    if (lpRect == nullptr)
        return FALSE;
    return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

BOOL CDC::Ellipse(int x1, int y1, int x2, int y2)
{
    return ::Ellipse(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Ellipse(LPCRECT lpRect)
{
    if (lpRect == nullptr)
        return FALSE;
    return Ellipse(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

// ---------------------------------------------------------------------------------------
// CDC: rectangles

void CDC::FillRect(LPCRECT lpRect, CBrush* pBrush)
{
    if (lpRect != nullptr && pBrush != nullptr)
        ::FillRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->m_hObject));
}

void CDC::FrameRect(LPCRECT lpRect, CBrush* pBrush)
{
    if (lpRect != nullptr && pBrush != nullptr)
        ::FrameRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->m_hObject));
}

void CDC::InvertRect(LPCRECT lpRect)
{
    if (lpRect != nullptr)
        ::InvertRect(m_hDC, lpRect);
}

void CDC::DrawFocusRect(LPCRECT lpRect)
{
    if (lpRect != nullptr)
        ::DrawFocusRect(m_hDC, lpRect);
}

BOOL CDC::DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags)
{
    if (lpRect == nullptr)
        return FALSE;
    return ::DrawEdge(m_hDC, lpRect, nEdge, nFlags);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    if (lpRect == nullptr)
        return;
    // An opaque, empty text run fills the rectangle with the back colour and needs no brush.
    ::SetBkColor(m_hDC, clr);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    RECT rc = {x, y, x + cx, y + cy};
    FillSolidRect(&rc, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    if (lpRect == nullptr)
        return;
    Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left,
               lpRect->bottom - lpRect->top, clrTopLeft, clrBottomRight);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    // The bottom-right colour owns the top-right and bottom-left corner pixels.
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

// ---------------------------------------------------------------------------------------
// CDC: pixels, bitmaps, icons

COLORREF CDC::GetPixel(int x, int y) const
{
    return ::GetPixel(m_hDC, x, y);
}

COLORREF CDC::GetPixel(POINT point) const
{
    return GetPixel(point.x, point.y);
}

COLORREF CDC::SetPixel(int x, int y, COLORREF crColor)
{
    return ::SetPixel(m_hDC, x, y, crColor);
}

COLORREF CDC::SetPixel(POINT point, COLORREF crColor)
{
    return SetPixel(point.x, point.y, crColor);
}

BOOL CDC::PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop)
{
    return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                 DWORD dwRop)
{
    HDC hSrc = pSrcDC != nullptr ? pSrcDC->m_hDC : nullptr;
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, hSrc, xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                     int nSrcWidth, int nSrcHeight, DWORD dwRop)
{
    HDC hSrc = pSrcDC != nullptr ? pSrcDC->m_hDC : nullptr;
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, hSrc, xSrc, ySrc, nSrcWidth, nSrcHeight,
                        dwRop);
}

BOOL CDC::DrawIcon(int x, int y, HICON hIcon)
{
    return ::DrawIcon(m_hDC, x, y, hIcon);
}

BOOL CDC::DrawIcon(POINT point, HICON hIcon)
{
    return DrawIcon(point.x, point.y, hIcon);
}

// ---------------------------------------------------------------------------------------
// CDC: text

BOOL CDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount)
{
    return ::TextOut(m_hDC, x, y, lpszString, nCount);
}

BOOL CDC::TextOut(int x, int y, const CString& str)
{
    return TextOut(x, y, str.GetString(), str.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString,
                     UINT nCount, LPINT lpDxWidths)
{
    return ::ExtTextOut(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str,
                     LPINT lpDxWidths)
{
    return ExtTextOut(x, y, nOptions, lpRect, str.GetString(), static_cast<UINT>(str.GetLength()),
                      lpDxWidths);
}

int CDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
{
    if (lpRect == nullptr)
        return 0;
    return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
}

int CDC::DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
{
    return DrawText(str.GetString(), str.GetLength(), lpRect, nFormat);
}

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const
{
    SIZE size = {0, 0};
    if (lpszString != nullptr && nCount > 0)
        ::GetTextExtentPoint32(m_hAttribDC, lpszString, nCount, &size);
    return CSize(size.cx, size.cy);
}

CSize CDC::GetTextExtent(const CString& str) const
{
    return GetTextExtent(str.GetString(), str.GetLength());
}

BOOL CDC::GetTextMetrics(LPTEXTMETRIC lpMetrics) const
{
    return ::GetTextMetrics(m_hAttribDC, lpMetrics);
}

// ---------------------------------------------------------------------------------------
// CPaintDC, CClientDC, CWindowDC

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(HwndOf(pWnd)), m_ps()
{
    if (m_hWnd != nullptr)
        Attach(::BeginPaint(m_hWnd, &m_ps));
}

CPaintDC::~CPaintDC()
{
    if (m_hDC != nullptr)
    {
        Detach();
        ::EndPaint(m_hWnd, &m_ps);
    }
}

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(HwndOf(pWnd))
{
    Attach(::GetDC(m_hWnd));
}

CClientDC::~CClientDC()
{
    if (m_hDC != nullptr)
        ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(HwndOf(pWnd))
{
    Attach(::GetWindowDC(m_hWnd));
}

CWindowDC::~CWindowDC()
{
    if (m_hDC != nullptr)
        ::ReleaseDC(m_hWnd, Detach());
}

// ---------------------------------------------------------------------------------------
// CSelectObjectScope

CSelectObjectScope::CSelectObjectScope(HDC hDC, HGDIOBJ hObject)
    : m_hDC(nullptr), m_pDC(nullptr), m_hOld(nullptr)
{
    if (hDC != nullptr && hObject != nullptr && ::GetObjectType(hObject) != OBJ_REGION)
    {
        m_hDC = hDC;
        m_hOld = ::SelectObject(hDC, hObject);
    }
}

CSelectObjectScope::CSelectObjectScope(CDC& dc, CGdiObject& object)
    : CSelectObjectScope(&dc, &object)
{
}

CSelectObjectScope::CSelectObjectScope(CDC* pDC, CGdiObject* pObject)
    : m_hDC(nullptr), m_pDC(nullptr), m_hOld(nullptr)
{
    HGDIOBJ hObject = HandleOf(pObject);
    if (pDC != nullptr && pDC->m_hDC != nullptr && hObject != nullptr &&
        ::GetObjectType(hObject) != OBJ_REGION)
    {
        // Through the CDC, so that an attribute context of its own follows as well.
        m_pDC = pDC;
        m_hOld = pDC->SelectObject(hObject);
    }
}

CSelectObjectScope::~CSelectObjectScope()
{
    Restore();
}

void CSelectObjectScope::Restore()
{
    if (m_hOld != nullptr && m_hOld != HGDI_ERROR)
    {
        if (m_pDC != nullptr)
            m_pDC->SelectObject(m_hOld);
        else
            ::SelectObject(m_hDC, m_hOld);
    }
    m_hOld = nullptr;
    m_pDC = nullptr;
    m_hDC = nullptr;
}
