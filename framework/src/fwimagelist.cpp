// CImageList: the owner of a common-controls image list, and its temporary wrappers.
#include "kelfw/fwimagelist.h"

#include "kelfw/fwdc.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwmodule.h"
#include "threadslot.h"

#include <map>
#include <memory>

// The temporary CImageList wrappers of one thread.
class CImageListTempMap
{
public:
    static CImageList* Lookup(HIMAGELIST hImageList)
    {
        if (hImageList == nullptr)
            return nullptr;
        std::unique_ptr<CImageList>& slot = s_map.GetOrCreate()[hImageList];
        if (!slot)
        {
            slot.reset(new CImageList);
            slot->m_bTemporary = true;
        }
        // A wrapper that was detached by hand is pointed at its list again.
        slot->m_hImageList = hImageList;
        return slot.get();
    }

    static void Clear()
    {
        // Wrappers are temporary, so their destructors leave the lists alone.
        s_map.Reset();
    }

private:
    using Map = std::map<HIMAGELIST, std::unique_ptr<CImageList>>;
    static CThreadLocalPtr<Map> s_map;
};

// Released with the thread that made it, like every per-thread object of the framework.
CThreadLocalPtr<CImageListTempMap::Map> CImageListTempMap::s_map;

namespace
{
HBITMAP BitmapOf(const CBitmap* pBitmap)
{
    return pBitmap != nullptr ? static_cast<HBITMAP>(pBitmap->m_hObject) : nullptr;
}
}

CImageList::CImageList() : m_hImageList(nullptr), m_bTemporary(false) {}

CImageList::~CImageList()
{
    if (!m_bTemporary)
        DeleteImageList();
}

CImageList* PASCAL CImageList::FromHandle(HIMAGELIST hImageList)
{
    return CImageListTempMap::Lookup(hImageList);
}

void PASCAL CImageList::DeleteTempMap()
{
    CImageListTempMap::Clear();
}

int CImageList::GetImageCount() const
{
    if (m_hImageList == nullptr)
        return 0;
    return ImageList_GetImageCount(m_hImageList);
}

COLORREF CImageList::SetBkColor(COLORREF cr)
{
    if (m_hImageList == nullptr)
        return CLR_NONE;
    return ImageList_SetBkColor(m_hImageList, cr);
}

COLORREF CImageList::GetBkColor() const
{
    if (m_hImageList == nullptr)
        return CLR_NONE;
    return ImageList_GetBkColor(m_hImageList);
}

BOOL CImageList::GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
{
    if (m_hImageList == nullptr || pImageInfo == nullptr)
        return FALSE;
    return ImageList_GetImageInfo(m_hImageList, nImage, pImageInfo);
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    return Attach(ImageList_Create(cx, cy, nFlags, nInitial, nGrow));
}

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    return Create(MAKEINTRESOURCE(nBitmapID), cx, nGrow, crMask);
}

BOOL CImageList::Create(LPCTSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask)
{
    return Attach(ImageList_LoadImage(AfxGetResourceHandle(), lpszBitmapID, cx, nGrow, crMask,
                                      IMAGE_BITMAP, 0));
}

BOOL CImageList::Attach(HIMAGELIST hImageList)
{
    if (hImageList == nullptr)
        return FALSE;
    // One list at a time: an owner destroys what it held before, a wrapper lets it go.
    if (m_hImageList != nullptr)
    {
        if (m_bTemporary)
            Detach();
        else
            DeleteImageList();
    }
    m_hImageList = hImageList;
    if (!m_bTemporary)
        AfxAdjustLiveCount(afxLiveImageLists, +1);
    return TRUE;
}

HIMAGELIST CImageList::Detach()
{
    HIMAGELIST hImageList = m_hImageList;
    if (hImageList != nullptr && !m_bTemporary)
        AfxAdjustLiveCount(afxLiveImageLists, -1);
    m_hImageList = nullptr;
    return hImageList;
}

BOOL CImageList::DeleteImageList()
{
    if (m_hImageList == nullptr)
        return FALSE;
    return ImageList_Destroy(Detach());
}

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask)
{
    if (m_hImageList == nullptr || BitmapOf(pbmImage) == nullptr)
        return -1;
    return ImageList_Add(m_hImageList, BitmapOf(pbmImage), BitmapOf(pbmMask));
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask)
{
    if (m_hImageList == nullptr || BitmapOf(pbmImage) == nullptr)
        return -1;
    return ImageList_AddMasked(m_hImageList, BitmapOf(pbmImage), crMask);
}

int CImageList::Add(HICON hIcon)
{
    if (m_hImageList == nullptr || hIcon == nullptr)
        return -1;
    return ImageList_ReplaceIcon(m_hImageList, -1, hIcon);
}

BOOL CImageList::Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask)
{
    if (m_hImageList == nullptr || BitmapOf(pbmImage) == nullptr)
        return FALSE;
    return ImageList_Replace(m_hImageList, nImage, BitmapOf(pbmImage), BitmapOf(pbmMask));
}

int CImageList::Replace(int nImage, HICON hIcon)
{
    if (m_hImageList == nullptr || hIcon == nullptr)
        return -1;
    return ImageList_ReplaceIcon(m_hImageList, nImage, hIcon);
}

BOOL CImageList::Remove(int nImage)
{
    if (m_hImageList == nullptr)
        return FALSE;
    return ImageList_Remove(m_hImageList, nImage);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle)
{
    if (m_hImageList == nullptr || pDC == nullptr || pDC->m_hDC == nullptr)
        return FALSE;
    return ImageList_Draw(m_hImageList, nImage, pDC->m_hDC, pt.x, pt.y, nStyle);
}
