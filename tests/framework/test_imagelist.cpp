// Tests of CImageList: ownership and live counts, adding, replacing and removing images,
// and drawing them into a DIB section whose pixels are read back.
#include "kelfw/fwdc.h"
#include "kelfw/fwgdi.h"
#include "kelfw/fwimagelist.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwmodule.h"

#include <gtest/gtest.h>

#include "dibsurface.h"

#include <functional>
#include <type_traits>
#include <vector>

static_assert(!std::is_copy_constructible<CImageList>::value, "owners are not copied");

namespace
{
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);
const COLORREF kGrey = RGB(128, 128, 128);
const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kGreen = RGB(0, 255, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kMagenta = RGB(255, 0, 255);

long ListCount()
{
    return AfxGetLiveCount(afxLiveImageLists);
}

using Dib = kel_test::DibSurface;

// A monochrome mask of cx x cy whose pixels inside rcTransparent are 1 (transparent).
void MakeMask(CBitmap& mask, int cx, int cy, const RECT& rcTransparent)
{
    const int stride = (cx + 15) / 16 * 2;
    std::vector<BYTE> bits(static_cast<size_t>(stride * cy), 0);
    for (int y = rcTransparent.top; y < rcTransparent.bottom; ++y)
        for (int x = rcTransparent.left; x < rcTransparent.right; ++x)
            bits[static_cast<size_t>(y * stride + x / 8)] |= static_cast<BYTE>(0x80 >> (x % 8));
    mask.CreateBitmap(cx, cy, 1, 1, bits.data());
}

// A solid icon of cx x cy in one colour.
HICON MakeIcon(int cx, int cy, COLORREF c)
{
    Dib colour(cx, cy, c);
    CBitmap image;
    colour.GiveTo(image);
    CBitmap mask;
    MakeMask(mask, cx, cy, RECT{0, 0, 0, 0});
    ICONINFO ii = {TRUE, 0, 0, static_cast<HBITMAP>(mask.m_hObject),
                   static_cast<HBITMAP>(image.m_hObject)};
    return ::CreateIconIndirect(&ii);
}

using kel_test::ResourceModuleScope;

// The standard small toolbar strip that the common controls carry as a bitmap resource.
const UINT kStdSmallColorBitmap = 120;
}

TEST(ImageListOwner, DestroyingTheOwnerDestroysTheListAndItsBitmaps)
{
    const long before = ListCount();
    IMAGEINFO info = {};
    {
        CImageList images;
        ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 2, 2));
        EXPECT_EQ(before + 1, ListCount());
        EXPECT_EQ(images.m_hImageList, static_cast<HIMAGELIST>(images));
        EXPECT_EQ(images.m_hImageList, images.GetSafeHandle());

        Dib strip(16, 16, kRed);
        CBitmap bitmap;
        strip.GiveTo(bitmap);
        ASSERT_EQ(0, images.Add(&bitmap, kMagenta));
        ASSERT_TRUE(images.GetImageInfo(0, &info));
        EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), ::GetObjectType(info.hbmImage));
        EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), ::GetObjectType(info.hbmMask));
    }
    EXPECT_EQ(0u, ::GetObjectType(info.hbmImage));
    EXPECT_EQ(0u, ::GetObjectType(info.hbmMask));
    EXPECT_EQ(before, ListCount());
}

TEST(ImageListOwner, DetachLeavesTheListAlive)
{
    const long before = ListCount();
    HIMAGELIST hList = nullptr;
    {
        CImageList images;
        ASSERT_TRUE(images.Create(8, 8, ILC_COLOR24, 1, 1));
        hList = images.Detach();
        EXPECT_EQ(nullptr, images.m_hImageList);
        EXPECT_EQ(before, ListCount());
    }
    Dib image(8, 8, kBlue);
    CBitmap bitmap;
    image.GiveTo(bitmap);
    EXPECT_EQ(0, ImageList_Add(hList, static_cast<HBITMAP>(bitmap.m_hObject), nullptr));
    EXPECT_EQ(1, ImageList_GetImageCount(hList));
    EXPECT_TRUE(ImageList_Destroy(hList));
}

TEST(ImageListOwner, AttachOfForeignListTakesOwnership)
{
    const long before = ListCount();
    HIMAGELIST hRaw = ImageList_Create(8, 8, ILC_COLOR24, 1, 1);
    ASSERT_NE(hRaw, nullptr);
    IMAGEINFO info = {};
    {
        CImageList images;
        EXPECT_TRUE(images.Attach(hRaw));
        EXPECT_EQ(before + 1, ListCount());
        Dib image(8, 8, kGreen);
        CBitmap bitmap;
        image.GiveTo(bitmap);
        ASSERT_EQ(0, images.Add(&bitmap, static_cast<CBitmap*>(nullptr)));
        ASSERT_TRUE(images.GetImageInfo(0, &info));
    }
    EXPECT_EQ(0u, ::GetObjectType(info.hbmImage));
    EXPECT_EQ(before, ListCount());
}

TEST(ImageListOwner, CreatingAgainDestroysTheListHeldBefore)
{
    const long before = ListCount();
    CImageList images;
    ASSERT_TRUE(images.Create(8, 8, ILC_COLOR24, 1, 1));
    Dib image(8, 8, kGreen);
    CBitmap bitmap;
    image.GiveTo(bitmap);
    ASSERT_EQ(0, images.Add(&bitmap, static_cast<CBitmap*>(nullptr)));
    IMAGEINFO info = {};
    ASSERT_TRUE(images.GetImageInfo(0, &info));

    ASSERT_TRUE(images.Create(4, 4, ILC_COLOR24, 1, 1));
    EXPECT_EQ(0u, ::GetObjectType(info.hbmImage));
    EXPECT_EQ(0, images.GetImageCount());
    EXPECT_EQ(before + 1, ListCount());
}

TEST(ImageListOwner, AnEmptyOwnerRefusesEverything)
{
    const long before = ListCount();
    CImageList images;
    Dib target(4, 4, kWhite);
    CBitmap bitmap;
    Dib image(4, 4, kRed);
    image.GiveTo(bitmap);
    EXPECT_EQ(0, images.GetImageCount());
    EXPECT_EQ(-1, images.Add(&bitmap, kMagenta));
    EXPECT_FALSE(images.Draw(&target.DC(), 0, POINT{0, 0}, ILD_NORMAL));
    EXPECT_FALSE(images.Remove(-1));
    EXPECT_FALSE(images.DeleteImageList());
    EXPECT_FALSE(images.Attach(nullptr));
    EXPECT_EQ(before, ListCount());
}

TEST(ImageListTemporary, FromHandleBorrowsAndNeverDestroys)
{
    const long before = ListCount();
    HIMAGELIST hRaw = ImageList_Create(8, 8, ILC_COLOR24, 1, 1);
    ASSERT_NE(hRaw, nullptr);
    CImageList* pList = CImageList::FromHandle(hRaw);
    ASSERT_NE(pList, nullptr);
    EXPECT_TRUE(pList->IsTemporary());
    EXPECT_EQ(pList, CImageList::FromHandle(hRaw));
    EXPECT_EQ(nullptr, CImageList::FromHandle(nullptr));
    EXPECT_EQ(before, ListCount());

    Dib image(8, 8, kBlue);
    CBitmap bitmap;
    image.GiveTo(bitmap);
    EXPECT_EQ(0, pList->Add(&bitmap, static_cast<CBitmap*>(nullptr)));
    AfxDeleteTempGdiMap();
    EXPECT_EQ(1, ImageList_GetImageCount(hRaw));   // still alive
    EXPECT_EQ(before, ListCount());
    EXPECT_TRUE(ImageList_Destroy(hRaw));
}

TEST(ImageListDraw, MaskColourBecomesTransparent)
{
    // Two 16x16 images side by side: red and blue, each with a magenta 4x4 top-left corner.
    Dib strip(32, 16, kRed);
    strip.Fill(RECT{16, 0, 32, 16}, kBlue);
    strip.Fill(RECT{0, 0, 4, 4}, kMagenta);
    strip.Fill(RECT{16, 0, 20, 4}, kMagenta);
    CBitmap bitmap;
    strip.GiveTo(bitmap);

    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 2, 2));
    EXPECT_EQ(0, images.Add(&bitmap, kMagenta));
    EXPECT_EQ(2, images.GetImageCount());

    Dib target(40, 40, kGrey);
    ASSERT_TRUE(target.IsValid());
    EXPECT_TRUE(images.Draw(&target.DC(), 1, POINT{4, 4}, ILD_TRANSPARENT));
    EXPECT_EQ(kBlue, target.Pixel(12, 12));
    EXPECT_EQ(kBlue, target.Pixel(19, 19));
    EXPECT_EQ(kGrey, target.Pixel(5, 5));     // the magenta corner shows the background
    EXPECT_EQ(kGrey, target.Pixel(20, 12));   // right of the image
    EXPECT_EQ(16 * 16 - 16, target.Count(RECT{0, 0, 40, 40}, kBlue));
    EXPECT_EQ(0, target.Count(RECT{0, 0, 40, 40}, kMagenta));

    EXPECT_TRUE(images.Draw(&target.DC(), 0, POINT{20, 20}, ILD_TRANSPARENT));
    EXPECT_EQ(kRed, target.Pixel(30, 30));
    EXPECT_EQ(kGrey, target.Pixel(21, 21));
}

TEST(ImageListDraw, MaskBitmapDecidesWhatIsDrawn)
{
    // A green image whose left half is transparent (black under the mask, as usual).
    Dib image(16, 16, kGreen);
    image.Fill(RECT{0, 0, 8, 16}, kBlack);
    CBitmap bitmap;
    image.GiveTo(bitmap);
    CBitmap mask;
    MakeMask(mask, 16, 16, RECT{0, 0, 8, 16});

    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1));
    EXPECT_EQ(0, images.Add(&bitmap, &mask));

    Dib target(20, 20, kGrey);
    EXPECT_TRUE(images.Draw(&target.DC(), 0, POINT{2, 2}, ILD_TRANSPARENT));
    EXPECT_EQ(kGrey, target.Pixel(5, 10));
    EXPECT_EQ(kGreen, target.Pixel(12, 10));
    EXPECT_EQ(8 * 16, target.Count(RECT{0, 0, 20, 20}, kGreen));
}

TEST(ImageListDraw, BackColourFillsTheMaskedPartOfANormalDraw)
{
    Dib image(16, 16, kBlue);
    image.Fill(RECT{0, 0, 8, 8}, kMagenta);
    CBitmap bitmap;
    image.GiveTo(bitmap);
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1));
    ASSERT_EQ(0, images.Add(&bitmap, kMagenta));

    EXPECT_EQ(CLR_NONE, images.SetBkColor(kGreen));
    EXPECT_EQ(kGreen, images.GetBkColor());
    Dib target(20, 20, kGrey);
    EXPECT_TRUE(images.Draw(&target.DC(), 0, POINT{0, 0}, ILD_NORMAL));
    EXPECT_EQ(kGreen, target.Pixel(3, 3));
    EXPECT_EQ(kBlue, target.Pixel(12, 12));

    EXPECT_EQ(kGreen, images.SetBkColor(CLR_NONE));
    Dib second(20, 20, kGrey);
    EXPECT_TRUE(images.Draw(&second.DC(), 0, POINT{0, 0}, ILD_NORMAL));
    EXPECT_EQ(kGrey, second.Pixel(3, 3));
}

TEST(ImageListEdit, IconsAddReplaceAndRemove)
{
    HICON hRed = MakeIcon(16, 16, kRed);
    ASSERT_NE(hRed, nullptr);
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 2, 2));
    EXPECT_EQ(0, images.Add(hRed));

    Dib blueImage(16, 16, kBlue);
    CBitmap blue;
    blueImage.GiveTo(blue);
    EXPECT_EQ(1, images.Add(&blue, static_cast<CBitmap*>(nullptr)));
    EXPECT_EQ(2, images.GetImageCount());

    // Image 1 becomes the red icon, image 0 the blue bitmap.
    EXPECT_EQ(1, images.Replace(1, hRed));
    CBitmap noMask;
    MakeMask(noMask, 16, 16, RECT{0, 0, 0, 0});
    EXPECT_TRUE(images.Replace(0, &blue, &noMask));
    Dib target(40, 20, kWhite);
    EXPECT_TRUE(images.Draw(&target.DC(), 0, POINT{0, 0}, ILD_NORMAL));
    EXPECT_TRUE(images.Draw(&target.DC(), 1, POINT{20, 0}, ILD_NORMAL));
    EXPECT_EQ(kBlue, target.Pixel(8, 8));
    EXPECT_EQ(kRed, target.Pixel(28, 8));

    EXPECT_TRUE(images.Remove(0));
    EXPECT_EQ(1, images.GetImageCount());
    Dib after(20, 20, kWhite);
    EXPECT_TRUE(images.Draw(&after.DC(), 0, POINT{0, 0}, ILD_NORMAL));
    EXPECT_EQ(kRed, after.Pixel(8, 8));   // the red one moved down to index 0

    EXPECT_TRUE(images.Remove(-1));
    EXPECT_EQ(0, images.GetImageCount());
    EXPECT_FALSE(images.Remove(3));
    EXPECT_EQ(-1, images.Add(static_cast<HICON>(nullptr)));
    ::DestroyIcon(hRed);
}

TEST(ImageListEdit, ImageInfoGivesEachImageItsOwnCell)
{
    Dib strip(48, 16, kRed);
    CBitmap bitmap;
    strip.GiveTo(bitmap);
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24, 3, 1));
    ASSERT_EQ(0, images.Add(&bitmap, static_cast<CBitmap*>(nullptr)));
    ASSERT_EQ(3, images.GetImageCount());

    IMAGEINFO first = {};
    IMAGEINFO second = {};
    ASSERT_TRUE(images.GetImageInfo(0, &first));
    ASSERT_TRUE(images.GetImageInfo(1, &second));
    EXPECT_EQ(16, first.rcImage.right - first.rcImage.left);
    EXPECT_EQ(16, first.rcImage.bottom - first.rcImage.top);
    EXPECT_FALSE(::EqualRect(&first.rcImage, &second.rcImage));
    EXPECT_FALSE(images.GetImageInfo(3, &first));
}

TEST(ImageListResource, CreateLoadsAStripFromTheCurrentResourceModule)
{
    HMODULE hCommon = ::GetModuleHandle("comctl32.dll");
    ASSERT_NE(hCommon, nullptr);
    const long before = ListCount();
    {
        CImageList missing;   // the test program has no bitmap resources
        EXPECT_FALSE(missing.Create(kStdSmallColorBitmap, 16, 0, RGB(192, 192, 192)));
        EXPECT_EQ(before, ListCount());
    }

    ResourceModuleScope scope(hCommon);
    CBitmap strip;
    ASSERT_TRUE(strip.LoadBitmap(kStdSmallColorBitmap));
    BITMAP bm = {};
    ASSERT_GT(strip.GetBitmap(&bm), 0);

    CImageList images;
    ASSERT_TRUE(images.Create(kStdSmallColorBitmap, 16, 0, RGB(192, 192, 192)));
    EXPECT_EQ(bm.bmWidth / 16, images.GetImageCount());
    EXPECT_GT(images.GetImageCount(), 1);
    EXPECT_EQ(before + 1, ListCount());

    CImageList byName;
    EXPECT_TRUE(byName.Create(MAKEINTRESOURCE(kStdSmallColorBitmap), 16, 0, CLR_NONE));
    EXPECT_EQ(images.GetImageCount(), byName.GetImageCount());
}
