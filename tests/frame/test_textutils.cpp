// Tests of the text utilities: texts by number, fixed-length names, shortening, name search.
#include "kelwinctrl.h"

#include <textlib.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace
{
// The host's text table replaced by a file of the test's own for the length of a test.
class DorvatText : public ::testing::Test
{
protected:
    void SetUp() override
    {
        char folder[MAX_PATH] = {0};
        GetTempPathA(MAX_PATH, folder);
        m_path = std::string(folder) + "kelframe_texts_test.txt";
        const std::string content = "1\tHello   \n"
                                    "2\tFirst line\\nSecond line  \n"
                                    "3\tEnds with a tab\\t\n"
                                    "4\tBetween %1 and %2.  \n"
                                    "5\t  Leading blanks stay\n"
                                    "6\t" + std::string(300, 'x') + "\n"
                                    "7\t" + std::string(255, 'y') + "   \n";
        FILE* f = std::fopen(m_path.c_str(), "wb");
        ASSERT_NE(nullptr, f);
        std::fwrite(content.data(), 1, content.size(), f);
        std::fclose(f);
        ASSERT_EQ(1, ll_set_text_file(m_path.c_str()));
    }
    void TearDown() override
    {
        ll_set_text_file(nullptr);
        std::remove(m_path.c_str());
    }

    std::string m_path;
};

std::string Block(const char* a, const char* b)
{
    return std::string(a) + '\x1e' + b + '\x1e' + '\x1f' + '\x1f';
}
}

TEST_F(DorvatText, TrailingBlanksTrimmed)
{
    CString text;
    GetDorvatText(text, 1);
    EXPECT_STREQ("Hello", text.GetString());
    GetDorvatTextSingleLine(text, 1);
    EXPECT_STREQ("Hello", text.GetString());
}

TEST_F(DorvatText, LeadingBlanksAndTrailingTabsStay)
{
    CString text;
    GetDorvatText(text, 5);
    EXPECT_STREQ("  Leading blanks stay", text.GetString());
    GetDorvatText(text, 3);
    EXPECT_STREQ("Ends with a tab\t", text.GetString());
}

TEST_F(DorvatText, MultilineKeepsLineBreaksSingleLineJoins)
{
    CString text;
    GetDorvatText(text, 2);
    EXPECT_STREQ("First line\nSecond line", text.GetString());
    GetDorvatTextSingleLine(text, 2);
    EXPECT_STREQ("First line Second line", text.GetString());
}

TEST_F(DorvatText, ParameterBlockInBothForms)
{
    std::string block = Block("1.5", "7");
    CString text;
    GetDorvatText(text, 4, &block[0]);
    EXPECT_STREQ("Between 1.5 and 7.", text.GetString());
    GetDorvatTextSingleLine(text, 4, &block[0]);
    EXPECT_STREQ("Between 1.5 and 7.", text.GetString());
}

TEST_F(DorvatText, MissingNumberGivesEmptyString)
{
    CString text("previous");
    GetDorvatText(text, 999);
    EXPECT_TRUE(text.IsEmpty());
    text = "previous";
    GetDorvatTextSingleLine(text, 999);
    EXPECT_TRUE(text.IsEmpty());
}

TEST_F(DorvatText, AtMost256Characters)
{
    CString text;
    GetDorvatText(text, 6);
    EXPECT_EQ(256, text.GetLength());
    GetDorvatTextSingleLine(text, 6);
    EXPECT_EQ(256, text.GetLength());
    // Cut to 256 first, then the blanks at the cut are trimmed.
    GetDorvatText(text, 7);
    EXPECT_EQ(std::string(255, 'y'), text.GetString());
}

TEST(ShippedDorvatText, RangeMessageTakesTheTwoBounds)
{
    ASSERT_EQ(1, ll_set_text_file(nullptr));
    std::string block = Block("0", "100");
    CString text;
    GetDorvatTextSingleLine(text, 1400402, &block[0]);
    EXPECT_STREQ("Please specify a numeric value between 0 and 100.", text.GetString());
    GetDorvatText(text, 2100178);
    EXPECT_STREQ("Cancel", text.GetString());
}

TEST(FixedLengthNames, ConvertToAsciiPadsToLength)
{
    CString text("ab");
    ConvertToAscii(text, 4);
    EXPECT_STREQ("ab  ", text.GetString());
}

TEST(FixedLengthNames, ConvertToAsciiLeavesALongerTextAlone)
{
    CString text("abcdef");
    ConvertToAscii(text, 4);
    EXPECT_STREQ("abcdef", text.GetString());
    ConvertToAscii(text, 6);
    EXPECT_STREQ("abcdef", text.GetString());
    ConvertToAscii(text, -3);
    EXPECT_STREQ("abcdef", text.GetString());
    CString empty;
    ConvertToAscii(empty, 3);
    EXPECT_STREQ("   ", empty.GetString());
}

TEST(FixedLengthNames, ConvertToIsoTrimsTrailingBlanksOnly)
{
    CString text("ab  ");
    ConvertToIso(text);
    EXPECT_STREQ("ab", text.GetString());
    text = "  ab";
    ConvertToIso(text);
    EXPECT_STREQ("  ab", text.GetString());
    text = "ab\t ";
    ConvertToIso(text);
    EXPECT_STREQ("ab\t", text.GetString());
    text = "    ";
    ConvertToIso(text);
    EXPECT_STREQ("", text.GetString());
}

TEST(FixedLengthNames, RoundTripThroughAField)
{
    CString text("Wall");
    ConvertToAscii(text, 8);
    EXPECT_EQ(8, text.GetLength());
    ConvertToIso(text);
    EXPECT_STREQ("Wall", text.GetString());
}

TEST(NameCheck, TrailingBlankIsNotCorrect)
{
    EXPECT_FALSE(IsCorrectName("ab "));
    EXPECT_TRUE(IsCorrectName("ab"));
    EXPECT_FALSE(IsCorrectName(""));
}

TEST(NameCheck, OtherForms)
{
    EXPECT_TRUE(IsCorrectName(" ab"));
    EXPECT_TRUE(IsCorrectName("a b"));
    EXPECT_TRUE(IsCorrectName("ab\t"));   // only blanks count
    EXPECT_FALSE(IsCorrectName(" "));
    EXPECT_FALSE(IsCorrectName(nullptr));
}

TEST(NameSearch, PartOfTheText)
{
    EXPECT_TRUE(FindNameIsInText("wall", "Outer WALL 3", false, false));
    EXPECT_FALSE(FindNameIsInText("wall", "Outer WALL 3", true, false));
    EXPECT_TRUE(FindNameIsInText("WALL", "Outer WALL 3", true, false));
    EXPECT_FALSE(FindNameIsInText("door", "Outer WALL 3", false, false));
    EXPECT_TRUE(FindNameIsInText("", "anything", false, false));
}

TEST(NameSearch, WholeText)
{
    EXPECT_TRUE(FindNameIsInText("wall", "WALL", false, true));
    EXPECT_FALSE(FindNameIsInText("wall", "WALL", true, true));
    EXPECT_TRUE(FindNameIsInText("Wall", "Wall", true, true));
    EXPECT_FALSE(FindNameIsInText("wall", "Outer WALL", false, true));
    EXPECT_FALSE(FindNameIsInText("wall", "wall ", false, true));
    EXPECT_TRUE(FindNameIsInText("", "", true, true));
}

namespace
{
// A memory DC with the system font, for measuring.
class Shorten : public ::testing::Test
{
protected:
    void SetUp() override
    {
        HDC hdc = ::CreateCompatibleDC(nullptr);
        ASSERT_NE(nullptr, hdc);
        ::SelectObject(hdc, ::GetStockObject(SYSTEM_FONT));
        ASSERT_TRUE(m_dc.Attach(hdc));
    }
    void TearDown() override { ::DeleteDC(m_dc.Detach()); }

    int Extent(const char* text, int count) const
    {
        SIZE size = {0, 0};
        ::GetTextExtentPoint32A(m_dc.GetSafeHdc(), text, count, &size);
        return size.cx;
    }
    int Extent(const CString& text) const { return Extent(text.GetString(), text.GetLength()); }

    CDC m_dc;
};
}

TEST_F(Shorten, EmptyTextStaysEmpty)
{
    EXPECT_STREQ("", MakeShortedString(&m_dc, "", 0, 10).GetString());
}

TEST_F(Shorten, FittingTextUnchanged)
{
    const char* text = "Layer 12";
    const int full = Extent(text, 8);
    ASSERT_GT(full, 0);
    EXPECT_STREQ(text, MakeShortedString(&m_dc, text, full, 0).GetString());        // exactly fits
    EXPECT_STREQ(text, MakeShortedString(&m_dc, text, full + 5, 5).GetString());    // with the offset
    EXPECT_STREQ(text, MakeShortedString(&m_dc, text, 1000, 0).GetString());
}

TEST_F(Shorten, OffsetCanMakeItShort)
{
    const char* text = "Layer 12";
    const int full = Extent(text, 8);
    const CString result = MakeShortedString(&m_dc, text, full, 1);
    EXPECT_NE(CString(text), result);
    EXPECT_EQ(CString("..."), result.Right(3));
}

TEST_F(Shorten, WidthSmallerThanTheEllipsisGivesTheEllipsisAlone)
{
    const int ellipsis = Extent("...", 3);
    EXPECT_STREQ("...", MakeShortedString(&m_dc, "Layer 12", ellipsis - 1, 0).GetString());
    EXPECT_STREQ("...", MakeShortedString(&m_dc, "Layer 12", 0, 0).GetString());
    EXPECT_STREQ("...", MakeShortedString(&m_dc, "W", 1, 0).GetString());
}

TEST_F(Shorten, LongestPrefixThatFitsWithTheEllipsis)
{
    const CString text("The quick brown fox jumps over the lazy dog");
    // The ellipsis is measured as four characters, its terminator included.
    const int ellipsis4 = Extent("...", 4);
    for (int width = 0; width <= Extent(text) + 10; width += 7)
    {
        for (int offset : {0, 3, 20})
        {
            const CString result = MakeShortedString(&m_dc, text, width, offset);
            if (Extent(text) + offset <= width)
            {
                EXPECT_EQ(text, result) << width << "/" << offset;
                continue;
            }
            ASSERT_EQ(CString("..."), result.Right(3)) << width;
            const int n = result.GetLength() - 3;
            EXPECT_EQ(text.Left(n), result.Left(n));
            if (n > 0)
            {
                EXPECT_LE(Extent(text.GetString(), n) + ellipsis4 + offset, width) << width << "/" << offset;
            }
            // One more character would not fit (and the whole text never counts as a prefix).
            if (n + 1 < text.GetLength())
            {
                EXPECT_GT(Extent(text.GetString(), n + 1) + ellipsis4 + offset, width) << width << "/" << offset;
            }
        }
    }
}
