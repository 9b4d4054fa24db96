// The host kit's attributes and images that the property tree imports.
#include <gtest/gtest.h>

#include "ck_attrib.h"
#include "kx_bitmapcontainer.h"

TEST(HostAttribs, LayersOfTheSampleDrawing)
{
    CK_AttribSet set;
    ASSERT_TRUE(GetAttrsByLayer(1, set));
    EXPECT_EQ(5, set.GetCount());
    ASSERT_NE(nullptr, set.Find(KX_ATTR_HATCH));
    EXPECT_EQ(12, set.Find(KX_ATTR_HATCH)->m_nValue);
    EXPECT_EQ(1, set.Find(KX_ATTR_HATCH)->m_nSwitched);
    EXPECT_EQ(nullptr, set.Find(KX_ATTR_HEIGHT));
    EXPECT_FALSE(GetAttrsByLayer(99, set));
    EXPECT_EQ(0, set.GetCount());
}

TEST(HostAttribs, LayerNumberIsNotChangeable)
{
    EXPECT_FALSE(isAttributChangeable(KX_ATTR_LAYER_NUMBER));
    EXPECT_TRUE(isAttributChangeable(KX_ATTR_COLOUR));
}

TEST(HostBitmaps, ContainerGivesIconsForItsNumbersOnly)
{
    KX_BitmapContainer& images = KX_BitmapContainer::instance();
    for (int id : {8538, 8539, 8548, 8549, 14982})
    {
        HICON icon = images.getGDIIcon(id, KX_BMPSIZE_16, 1);
        ASSERT_NE(nullptr, icon) << id;
        ICONINFO info = {};
        ASSERT_TRUE(GetIconInfo(icon, &info));
        BITMAP bm = {};
        GetObject(info.hbmColor, sizeof(bm), &bm);
        EXPECT_EQ(16, bm.bmWidth);
        EXPECT_EQ(16, bm.bmHeight);
        DeleteObject(info.hbmColor);
        DeleteObject(info.hbmMask);
        DestroyIcon(icon);
    }
    EXPECT_EQ(nullptr, images.getGDIIcon(1, KX_BMPSIZE_16, 1));
}
