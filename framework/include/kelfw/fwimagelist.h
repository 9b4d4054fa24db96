// CImageList: the owner of a common-controls image list.
//
// The owner destroys its list when it is destroyed; FromHandle hands out a temporary,
// borrowing wrapper (see AfxDeleteTempGdiMap).
//
//     CImageList images;
//     images.Create(16, 16, ILC_COLOR32 | ILC_MASK, 4, 4);
//     images.Add(&bitmap, RGB(255, 0, 255));
//     images.Draw(&dc, 0, CPoint(2, 2), ILD_NORMAL);
#pragma once
#include "kelfw/fwdefs.h"
#include "kelfw/fwgdi.h"

class CDC;

class KELFW_API CImageList
{
public:
    // Attributes
    HIMAGELIST m_hImageList;

    operator HIMAGELIST() const { return m_hImageList; }
    HIMAGELIST GetSafeHandle() const { return m_hImageList; }

    static CImageList* PASCAL FromHandle(HIMAGELIST hImageList);
    static void PASCAL DeleteTempMap();

    // True for the borrowing wrappers that FromHandle hands out.
    BOOL IsTemporary() const { return m_bTemporary; }

    int GetImageCount() const;
    COLORREF SetBkColor(COLORREF cr);
    COLORREF GetBkColor() const;
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const;

    // Construction
    CImageList();
    virtual ~CImageList();
    CImageList(const CImageList&) = delete;              // owners are not copied
    CImageList& operator=(const CImageList&) = delete;

    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    // Loads a strip of cx-wide images from a bitmap of the current resource module; the
    // pixels of crMask become transparent (CLR_NONE for none).
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Create(LPCTSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask);

    BOOL Attach(HIMAGELIST hImageList);
    HIMAGELIST Detach();
    BOOL DeleteImageList();

    // Operations: each Add answers the index of the first new image, or -1.
    int Add(CBitmap* pbmImage, CBitmap* pbmMask);
    int Add(CBitmap* pbmImage, COLORREF crMask);
    int Add(HICON hIcon);
    BOOL Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask);
    int Replace(int nImage, HICON hIcon);
    // -1 removes every image.
    BOOL Remove(int nImage);

    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle);

private:
    bool m_bTemporary;
    friend class CImageListTempMap;
};
