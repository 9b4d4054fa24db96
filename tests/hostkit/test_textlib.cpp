// Tests of the host's text table: the file format, parameter blocks, capacity and the file
// shipped beside the DLL.
#include <textlib.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

namespace
{
// A text file in the temporary folder, named by the host for the length of a test.
class TextFile : public ::testing::Test
{
protected:
    void Use(const std::string& content)
    {
        char folder[MAX_PATH] = {0};
        GetTempPathA(MAX_PATH, folder);
        m_path = std::string(folder) + "kelhk_texts_test.txt";
        FILE* f = std::fopen(m_path.c_str(), "wb");
        ASSERT_NE(nullptr, f);
        std::fwrite(content.data(), 1, content.size(), f);
        std::fclose(f);
        ASSERT_EQ(1, ll_set_text_file(m_path.c_str()));
    }
    void TearDown() override
    {
        ll_set_text_file(nullptr);
        if (!m_path.empty())
            std::remove(m_path.c_str());
    }

    static std::string Single(uint32_t number, const char* parameters = nullptr, int capacity = 256)
    {
        char buffer[300];
        std::memset(buffer, 'z', sizeof(buffer));
        int length = -1;
        ll_get_text(number, capacity, parameters, buffer, &length);
        EXPECT_EQ(static_cast<int>(std::strlen(buffer)), length);
        return buffer;
    }
    static std::string Multi(uint32_t number, const char* parameters = nullptr, int capacity = 256)
    {
        char buffer[300];
        int length = -1;
        ll_get_text_multiline(number, capacity, parameters, buffer, &length);
        EXPECT_EQ(static_cast<int>(std::strlen(buffer)), length);
        return buffer;
    }

    std::string m_path;
};

// The parameter block of the given values: each followed by 30, the block ended by 31, 31.
std::string Block(std::initializer_list<const char*> values)
{
    std::string block;
    for (const char* v : values)
        block += std::string(v) + '\x1e';
    return block + "\x1f\x1f";
}
}

TEST_F(TextFile, NumberTabTextLines)
{
    Use("# a comment\n\n10\tTen\r\n20\tTwenty words here  \n4294967295\tLast\n");
    EXPECT_EQ("Ten", Single(10));
    EXPECT_EQ("Twenty words here  ", Single(20));
    EXPECT_EQ("Last", Single(4294967295u));
}

TEST_F(TextFile, MissingNumberGivesEmptyTextAndZero)
{
    Use("10\tTen\n");
    char buffer[16] = "garbage";
    int length = 5;
    EXPECT_EQ(0, ll_get_text(11, 15, nullptr, buffer, &length));
    EXPECT_STREQ("", buffer);
    EXPECT_EQ(0, length);
    EXPECT_EQ(0, ll_get_text_multiline(0, 15, nullptr, buffer, &length));
    EXPECT_EQ(1, ll_get_text(10, 15, nullptr, buffer, &length));
}

TEST_F(TextFile, MalformedLinesAreSkipped)
{
    Use("abc\tNo number\n\tNo number either\n12 Twelve without tab\n99999999999\tToo large\n13\tGood\n");
    EXPECT_EQ("", Single(12));
    EXPECT_EQ("Good", Single(13));
    EXPECT_EQ("", Single(99999999999ull & 0xFFFFFFFFu));
}

TEST_F(TextFile, LaterLineWinsForTheSameNumber)
{
    Use("5\tFirst\n5\tSecond\n");
    EXPECT_EQ("Second", Single(5));
}

TEST_F(TextFile, LineBreaksKeptInMultilineAndBlankInSingleLine)
{
    Use("7\tFirst line\\nSecond line\n8\tTab\\there, backslash \\\\n stays\n");
    EXPECT_EQ("First line\nSecond line", Multi(7));
    EXPECT_EQ("First line Second line", Single(7));
    EXPECT_EQ("Tab\there, backslash \\n stays", Multi(8));
}

TEST_F(TextFile, ParametersSubstitutedInOrder)
{
    Use("1\tFrom %1 to %2.\n2\t%2 before %1\n3\t100%% of %1\n4\tNone: [%3] [%] %x\n5\tNo placeholders\n");
    EXPECT_EQ("From 1.5 to 7.", Single(1, Block({"1.5", "7"}).c_str()));
    EXPECT_EQ("b before a", Single(2, Block({"a", "b"}).c_str()));
    EXPECT_EQ("100% of x", Multi(3, Block({"x"}).c_str()));
    EXPECT_EQ("None: [] [%] %x", Single(4, Block({"a"}).c_str()));
    EXPECT_EQ("No placeholders", Single(5, Block({"a", "b"}).c_str()));
    EXPECT_EQ("From  to .", Single(1, nullptr));
    EXPECT_EQ("From  to .", Single(1, "\x1f\x1f"));
    EXPECT_EQ("From  to 2.", Single(1, Block({"", "2"}).c_str()));
}

TEST_F(TextFile, CapacityLimitsTheCharacters)
{
    Use("1\tabcdefghij\n");
    EXPECT_EQ("abcde", Single(1, nullptr, 5));
    EXPECT_EQ("", Single(1, nullptr, 0));
    EXPECT_EQ("abcdefghij", Single(1, nullptr, 10));
    EXPECT_EQ("abcdefghij", Multi(1, nullptr, 11));
}

TEST_F(TextFile, NullLengthIsAllowed)
{
    Use("1\tx\n");
    char buffer[8];
    EXPECT_EQ(1, ll_get_text(1, 7, nullptr, buffer, nullptr));
    EXPECT_STREQ("x", buffer);
}

TEST_F(TextFile, UnreadableFileGivesEmptyTable)
{
    EXPECT_EQ(0, ll_set_text_file("Z:\\no\\such\\folder\\texts.txt"));
    EXPECT_EQ("", Single(2100177));
}

TEST(ShippedTexts, FileBesideTheDllHoldsTheLibraryTexts)
{
    ASSERT_EQ(1, ll_set_text_file(nullptr));
    char buffer[257];
    int length = 0;
    ASSERT_EQ(1, ll_get_text_multiline(2100177, 256, nullptr, buffer, &length));
    EXPECT_STREQ("OK", buffer);
    const std::string block = std::string("1.5") + '\x1e' + "7" + '\x1e' + '\x1f' + '\x1f';
    ASSERT_EQ(1, ll_get_text(1400402, 254, block.c_str(), buffer, &length));
    EXPECT_STREQ("Please specify a numeric value between 1.5 and 7.", buffer);
    const uint32_t numbers[] = {55296, 700309, 1400402, 2100177, 2100178, 2100356, 2100357, 2100358};
    for (uint32_t n : numbers)
    {
        EXPECT_EQ(1, ll_get_text(n, 256, nullptr, buffer, &length)) << n;
        EXPECT_GT(length, 0) << n;
    }
}
