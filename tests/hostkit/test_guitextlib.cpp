// Tests of cropping text to a pixel width and finding the caret position at a pixel.
#include <guitextlib.h>

#include <gtest/gtest.h>

#include <string>

namespace
{
class PixelText : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_hdc = ::CreateCompatibleDC(nullptr);
        ASSERT_NE(nullptr, m_hdc);
        m_old = ::SelectObject(m_hdc, ::GetStockObject(SYSTEM_FONT));
    }
    void TearDown() override
    {
        ::SelectObject(m_hdc, m_old);
        ::DeleteDC(m_hdc);
    }
    int Extent(const std::string& text, int count) const
    {
        SIZE size = {0, 0};
        ::GetTextExtentPoint32A(m_hdc, text.c_str(), count, &size);
        return size.cx;
    }

    HDC m_hdc = nullptr;
    HGDIOBJ m_old = nullptr;
};
}

TEST_F(PixelText, CropKeepsTheLongestPrefixThatFits)
{
    const std::string text = "Ground floor walls";
    const int length = static_cast<int>(text.size());
    for (int width = 0; width <= Extent(text, length) + 5; ++width)
    {
        const CString cropped = CropTextToPixelWidth(m_hdc, text.c_str(), width);
        const int n = cropped.GetLength();
        EXPECT_EQ(text.substr(0, static_cast<size_t>(n)), cropped.GetString());
        EXPECT_LE(Extent(text, n), width) << width;
        if (n < length)
        {
            EXPECT_GT(Extent(text, n + 1), width) << width;
        }
    }
    EXPECT_STREQ(text.c_str(), CropTextToPixelWidth(m_hdc, text.c_str(), 10000).GetString());
    EXPECT_STREQ("", CropTextToPixelWidth(m_hdc, text.c_str(), -1).GetString());
    EXPECT_STREQ("", CropTextToPixelWidth(m_hdc, "", 100).GetString());
    EXPECT_STREQ("", CropTextToPixelWidth(m_hdc, nullptr, 100).GetString());
}

TEST_F(PixelText, MiddleCharIndexSplitsEachCharacterAtItsMiddle)
{
    const std::string text = "WiW";
    const int w = Extent(text, 1);
    const int wi = Extent(text, 2);
    const int all = Extent(text, 3);
    ASSERT_GT(w, 1);
    EXPECT_EQ(0, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), -5));
    EXPECT_EQ(0, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), 0));
    EXPECT_EQ(0, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), (w - 1) / 2));
    EXPECT_EQ(1, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), (w + 1) / 2));
    EXPECT_EQ(1, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), w));
    EXPECT_EQ(2, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), wi));
    EXPECT_EQ(3, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), all));
    EXPECT_EQ(3, GetMiddleCharIndex_ByPixels(m_hdc, text.c_str(), all + 100));
    EXPECT_EQ(0, GetMiddleCharIndex_ByPixels(m_hdc, "", 10));
    EXPECT_EQ(0, GetMiddleCharIndex_ByPixels(m_hdc, nullptr, 10));
}
