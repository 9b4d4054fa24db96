// Tests of CString: construction, editing, searching, formatting, buffers, tokens, resources.
#include "kelfw/fwstring.h"
#include "kelfw/fwmodule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace
{
// Checks the length field against the characters actually stored.
void ExpectText(const CString& str, const char* expected)
{
    EXPECT_STREQ(expected, str.GetString());
    EXPECT_EQ(static_cast<int>(std::strlen(expected)), str.GetLength());
}

CString FormatHelper(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    CString result;
    result.FormatV(format, args);
    va_end(args);
    return result;
}

void AppendHelper(CString& str, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    str.AppendFormatV(format, args);
    va_end(args);
}
} // namespace

// --- Construction and assignment ------------------------------------------------------------

TEST(CString, DefaultIsEmptyAndTerminated)
{
    CString str;
    EXPECT_TRUE(str.IsEmpty());
    EXPECT_EQ(0, str.GetLength());
    ASSERT_NE(nullptr, str.GetString());
    EXPECT_EQ('\0', str.GetString()[0]);
}

TEST(CString, ConstructFromPointerCopiesText)
{
    char source[] = "hello";
    CString str(source);
    source[0] = 'j';
    ExpectText(str, "hello");
}

TEST(CString, ConstructFromNullPointerIsEmpty)
{
    CString str(static_cast<const char*>(nullptr));
    ExpectText(str, "");
}

TEST(CString, ConstructFromCharRepeats)
{
    ExpectText(CString('x', 4), "xxxx");
    ExpectText(CString('y'), "y");
    ExpectText(CString('z', 0), "");
    ExpectText(CString('z', -3), "");
}

TEST(CString, ConstructFromPointerAndLengthTakesThatMany)
{
    ExpectText(CString("abcdef", 3), "abc");
    ExpectText(CString("abcdef", 0), "");
    ExpectText(CString("abcdef", -1), "");
}

TEST(CString, ConstructFromPointerAndLengthKeepsEmbeddedNul)
{
    CString str("ab\0cd", 5);
    EXPECT_EQ(5, str.GetLength());
    EXPECT_EQ('\0', str.GetAt(2));
    EXPECT_EQ('d', str.GetAt(4));
}

TEST(CString, CopyIsIndependent)
{
    CString a("one");
    CString b(a);
    b.SetAt(0, 'O');
    ExpectText(a, "one");
    ExpectText(b, "One");
}

TEST(CString, MoveLeavesSourceEmpty)
{
    CString a("moved text");
    const char* buffer = a.GetString();
    CString b(std::move(a));
    ExpectText(b, "moved text");
    EXPECT_EQ(buffer, b.GetString());
    ExpectText(a, "");
    a = "usable again";
    ExpectText(a, "usable again");
}

TEST(CString, MoveAssignReplacesTarget)
{
    CString a("source");
    CString b("target");
    b = std::move(a);
    ExpectText(b, "source");
    ExpectText(a, "");
}

TEST(CString, AssignFromPointerCharAndString)
{
    CString str("start");
    str = "second";
    ExpectText(str, "second");
    str = 'c';
    ExpectText(str, "c");
    const CString other("third");
    str = other;
    ExpectText(str, "third");
    str = static_cast<const char*>(nullptr);
    ExpectText(str, "");
}

TEST(CString, SelfAssignKeepsText)
{
    CString str("self");
    const CString& alias = str;
    str = alias;
    ExpectText(str, "self");
}

TEST(CString, AssignFromOwnTailWorks)
{
    CString str("prefix-tail");
    str = str.GetString() + 7;
    ExpectText(str, "tail");
}

TEST(CString, ConvertsToConstCharPointer)
{
    const CString str("convert");
    const char* p = str;
    EXPECT_STREQ("convert", p);
    EXPECT_EQ(p, static_cast<LPCSTR>(str));
}

// --- Concatenation ------------------------------------------------------------------------------

TEST(CString, PlusEqualsAppendsAllForms)
{
    CString str("a");
    str += CString("b");
    str += "cd";
    str += 'e';
    str += static_cast<const char*>(nullptr);
    ExpectText(str, "abcde");
}

TEST(CString, PlusEqualsSelfDoublesText)
{
    CString str("ab");
    str += str;
    ExpectText(str, "abab");
    str += str.GetString() + 1;
    ExpectText(str, "ababbab");
}

TEST(CString, RepeatedAppendBuildsLongString)
{
    CString str;
    std::string expected;
    for (int i = 0; i < 5000; ++i)
    {
        const char ch = static_cast<char>('a' + i % 26);
        str += ch;
        expected += ch;
    }
    ExpectText(str, expected.c_str());
}

TEST(CString, PlusOperatorsConcatenate)
{
    const CString a("left");
    const CString b("right");
    ExpectText(a + b, "leftright");
    ExpectText(a + "-x", "left-x");
    ExpectText("x-" + b, "x-right");
    ExpectText(a + '!', "left!");
    ExpectText('<' + b, "<right");
    ExpectText(a, "left");
    ExpectText(b, "right");
}

// --- Comparison ---------------------------------------------------------------------------------

TEST(CString, EqualityWithStringAndPointer)
{
    const CString a("same");
    const CString b("same");
    const CString c("other");
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(a == "same");
    EXPECT_TRUE("same" == a);
    EXPECT_FALSE(a == "Same");
    EXPECT_TRUE(a != c);
    EXPECT_TRUE(a != "Same");
    EXPECT_TRUE("x" != a);
    EXPECT_FALSE(a != b);
}

TEST(CString, OrderingOperatorsAreByteWise)
{
    const CString apple("apple");
    const CString banana("banana");
    EXPECT_TRUE(apple < banana);
    EXPECT_TRUE(banana > apple);
    EXPECT_TRUE(apple <= banana);
    EXPECT_TRUE(apple <= "apple");
    EXPECT_TRUE(banana >= "banana");
    EXPECT_TRUE("apple" < banana);
    EXPECT_TRUE("cherry" > banana);
    EXPECT_TRUE("apple" <= apple);
    EXPECT_TRUE("apple" >= apple);
    EXPECT_FALSE(apple > "b");
    EXPECT_TRUE(CString("Zebra") < "apple"); // upper case sorts before lower case
    EXPECT_TRUE(CString("ab") < "abc");
}

TEST(CString, CompareGivesSign)
{
    const CString str("mid");
    EXPECT_EQ(0, str.Compare("mid"));
    EXPECT_LT(str.Compare("nid"), 0);
    EXPECT_GT(str.Compare("lid"), 0);
    EXPECT_GT(str.Compare("mi"), 0);
    EXPECT_LT(str.Compare("midx"), 0);
    EXPECT_GT(str.Compare(nullptr), 0);
    EXPECT_EQ(0, CString().Compare(nullptr));
}

TEST(CString, CompareTreatsHighBytesAsUnsigned)
{
    const CString high("\xE9");
    EXPECT_GT(high.Compare("z"), 0);
}

TEST(CString, CompareNoCaseIgnoresCase)
{
    const CString str("Hello World");
    EXPECT_EQ(0, str.CompareNoCase("hello world"));
    EXPECT_EQ(0, str.CompareNoCase("HELLO WORLD"));
    EXPECT_LT(str.CompareNoCase("HELLO X"), 0);
    EXPECT_GT(str.CompareNoCase("hello"), 0);
    EXPECT_NE(0, str.CompareNoCase("Hello  World"));
}

TEST(CString, CompareNoCaseFoldsToLowerCase)
{
    // '_' lies between the upper and lower case letters; folding to lower case puts it
    // before every letter.
    EXPECT_LT(CString("_").CompareNoCase("a"), 0);
    EXPECT_LT(CString("_").CompareNoCase("A"), 0);
    EXPECT_GT(CString("a").CompareNoCase("_"), 0);
}

TEST(CString, CompareNoCaseLeavesOperandsUnchanged)
{
    const CString str("MiXeD");
    EXPECT_EQ(0, str.CompareNoCase("mixed"));
    ExpectText(str, "MiXeD");
}

// --- Element access ------------------------------------------------------------------------------

TEST(CString, GetAtAndIndexReadCharacters)
{
    const CString str("abc");
    EXPECT_EQ('a', str.GetAt(0));
    EXPECT_EQ('c', str.GetAt(2));
    EXPECT_EQ('b', str[1]);
}

TEST(CString, GetAtOutOfRangeGivesNul)
{
    const CString str("abc");
    EXPECT_EQ('\0', str.GetAt(-1));
    EXPECT_EQ('\0', str.GetAt(3));
    EXPECT_EQ('\0', str[100]);
}

TEST(CString, SetAtWritesInRangeAndIgnoresOutOfRange)
{
    CString str("abc");
    str.SetAt(1, 'X');
    ExpectText(str, "aXc");
    str.SetAt(3, 'Y');
    str.SetAt(-1, 'Y');
    ExpectText(str, "aXc");
}

TEST(CString, EmptyReleasesText)
{
    CString str("something");
    str.Empty();
    EXPECT_TRUE(str.IsEmpty());
    ExpectText(str, "");
    str += "again";
    ExpectText(str, "again");
}

// --- Mid, Left, Right ----------------------------------------------------------------------------

TEST(CString, MidFromIndexTakesRest)
{
    const CString str("abcdef");
    ExpectText(str.Mid(2), "cdef");
    ExpectText(str.Mid(0), "abcdef");
    ExpectText(str.Mid(5), "f");
}

TEST(CString, MidWithNegativeFirstIsWholeString)
{
    ExpectText(CString("abcdef").Mid(-1), "abcdef");
    ExpectText(CString("abcdef").Mid(-10), "abcdef");
}

TEST(CString, MidBeyondEndIsEmpty)
{
    ExpectText(CString("abcdef").Mid(6), "");
    ExpectText(CString("abcdef").Mid(7), "");
    ExpectText(CString("abcdef").Mid(7, 2), "");
    ExpectText(CString().Mid(0, 1), "");
}

TEST(CString, MidWithCountTakesThatMany)
{
    const CString str("abcdef");
    ExpectText(str.Mid(1, 3), "bcd");
    ExpectText(str.Mid(0, 6), "abcdef");
    ExpectText(str.Mid(4, 0), "");
}

TEST(CString, MidWithNegativeCountIsEmpty)
{
    ExpectText(CString("abcdef").Mid(2, -1), "");
    ExpectText(CString("abcdef").Mid(0, -5), "");
}

TEST(CString, MidWithCountPastEndIsClamped)
{
    ExpectText(CString("abcdef").Mid(4, 10), "ef");
    ExpectText(CString("abcdef").Mid(-2, 3), "abc");
    ExpectText(CString("abcdef").Mid(1, 0x7fffffff), "bcdef");
}

TEST(CString, LeftTakesPrefixClamped)
{
    const CString str("abcdef");
    ExpectText(str.Left(2), "ab");
    ExpectText(str.Left(0), "");
    ExpectText(str.Left(-1), "");
    ExpectText(str.Left(6), "abcdef");
    ExpectText(str.Left(99), "abcdef");
}

TEST(CString, RightTakesSuffixClamped)
{
    const CString str("abcdef");
    ExpectText(str.Right(2), "ef");
    ExpectText(str.Right(0), "");
    ExpectText(str.Right(-1), "");
    ExpectText(str.Right(6), "abcdef");
    ExpectText(str.Right(99), "abcdef");
}

TEST(CString, SpanIncludingTakesLeadingMembersOfSet)
{
    const CString str("12345abc678");
    ExpectText(str.SpanIncluding("0123456789"), "12345");
    ExpectText(str.SpanIncluding("abc"), "");
    ExpectText(str.SpanIncluding(""), "");
    ExpectText(CString("aaa").SpanIncluding("a"), "aaa");
}

TEST(CString, SpanExcludingStopsAtFirstMemberOfSet)
{
    const CString str("key=value;next");
    ExpectText(str.SpanExcluding("=;"), "key");
    ExpectText(str.SpanExcluding("#"), "key=value;next");
    ExpectText(str.SpanExcluding(""), "key=value;next");
    ExpectText(str.SpanExcluding("k"), "");
}

// --- Case and order -----------------------------------------------------------------------------

TEST(CString, MakeUpperAndLowerChangeLettersOnly)
{
    CString str("Mixed Case 123_!");
    str.MakeUpper();
    ExpectText(str, "MIXED CASE 123_!");
    str.MakeLower();
    ExpectText(str, "mixed case 123_!");
}

TEST(CString, MakeUpperReturnsSelfForChaining)
{
    CString str("chain");
    CString& ref = str.MakeUpper().MakeReverse();
    EXPECT_EQ(&str, &ref);
    ExpectText(str, "NIAHC");
}

TEST(CString, MakeReverseReversesBytes)
{
    CString str("abc d");
    str.MakeReverse();
    ExpectText(str, "d cba");
    CString empty;
    empty.MakeReverse();
    ExpectText(empty, "");
    CString one("x");
    one.MakeReverse();
    ExpectText(one, "x");
}

TEST(CString, CaseChangesOnEmptyStringAreHarmless)
{
    CString str;
    str.MakeUpper();
    str.MakeLower();
    ExpectText(str, "");
}

// --- Replace, Remove, Insert, Delete -------------------------------------------------------------

TEST(CString, ReplaceCharCountsReplacements)
{
    CString str("a.b.c.");
    EXPECT_EQ(3, str.Replace('.', '/'));
    ExpectText(str, "a/b/c/");
    EXPECT_EQ(0, str.Replace('#', '+'));
    ExpectText(str, "a/b/c/");
}

TEST(CString, ReplaceCharWithItselfCountsNothing)
{
    CString str("aaa");
    EXPECT_EQ(0, str.Replace('a', 'a'));
    ExpectText(str, "aaa");
}

TEST(CString, ReplaceStringGrowsAndShrinks)
{
    CString str("one two one two one");
    EXPECT_EQ(3, str.Replace("one", "three"));
    ExpectText(str, "three two three two three");
    EXPECT_EQ(2, str.Replace("two", "2"));
    ExpectText(str, "three 2 three 2 three");
}

TEST(CString, ReplaceStringWithEmptyOrNullRemoves)
{
    CString str("a--b--c");
    EXPECT_EQ(2, str.Replace("--", ""));
    ExpectText(str, "abc");
    CString other("xyx");
    EXPECT_EQ(2, other.Replace("x", nullptr));
    ExpectText(other, "y");
}

TEST(CString, ReplaceStringIsNonOverlappingLeftToRight)
{
    CString str("aaaa");
    EXPECT_EQ(2, str.Replace("aa", "b"));
    ExpectText(str, "bb");
    CString str2("aaa");
    EXPECT_EQ(1, str2.Replace("aa", "a"));
    ExpectText(str2, "aa");
}

TEST(CString, ReplaceWithEmptyTargetDoesNothing)
{
    CString str("text");
    EXPECT_EQ(0, str.Replace("", "x"));
    EXPECT_EQ(0, str.Replace(nullptr, "x"));
    EXPECT_EQ(0, str.Replace("zz", "x"));
    ExpectText(str, "text");
}

TEST(CString, ReplaceReplacementContainingTargetDoesNotLoop)
{
    CString str("a.b");
    EXPECT_EQ(1, str.Replace(".", ".."));
    ExpectText(str, "a..b");
}

TEST(CString, RemoveDeletesEveryOccurrence)
{
    CString str("b-a-n-a-n-a");
    EXPECT_EQ(5, str.Remove('-'));
    ExpectText(str, "banana");
    EXPECT_EQ(0, str.Remove('x'));
    EXPECT_EQ(3, str.Remove('a'));
    ExpectText(str, "bnn");
    CString empty;
    EXPECT_EQ(0, empty.Remove('a'));
}

TEST(CString, InsertCharAtPositionsAndClamps)
{
    CString str("ace");
    EXPECT_EQ(4, str.Insert(1, 'b'));
    ExpectText(str, "abce");
    EXPECT_EQ(5, str.Insert(3, 'd'));
    ExpectText(str, "abcde");
    EXPECT_EQ(6, str.Insert(-3, '<'));
    ExpectText(str, "<abcde");
    EXPECT_EQ(7, str.Insert(100, '>'));
    ExpectText(str, "<abcde>");
}

TEST(CString, InsertStringAtPositionsAndClamps)
{
    CString str("held");
    EXPECT_EQ(11, str.Insert(2, "llo wor"));
    ExpectText(str, "hello world");
    EXPECT_EQ(13, str.Insert(99, "!!"));
    ExpectText(str, "hello world!!");
    EXPECT_EQ(15, str.Insert(-1, "<<"));
    ExpectText(str, "<<hello world!!");
    EXPECT_EQ(15, str.Insert(3, ""));
    EXPECT_EQ(15, str.Insert(3, nullptr));
    ExpectText(str, "<<hello world!!");
}

TEST(CString, InsertIntoEmptyString)
{
    CString str;
    EXPECT_EQ(3, str.Insert(0, "abc"));
    ExpectText(str, "abc");
    CString other;
    EXPECT_EQ(1, other.Insert(5, 'z'));
    ExpectText(other, "z");
}

TEST(CString, InsertPartOfSelf)
{
    CString str("abcdef");
    str.Insert(0, str.GetString() + 3);
    ExpectText(str, "defabcdef");
}

TEST(CString, DeleteRemovesRangeAndReturnsLength)
{
    CString str("abcdef");
    EXPECT_EQ(5, str.Delete(1));
    ExpectText(str, "acdef");
    EXPECT_EQ(3, str.Delete(1, 2));
    ExpectText(str, "aef");
}

TEST(CString, DeleteClampsRange)
{
    CString str("abcdef");
    EXPECT_EQ(2, str.Delete(2, 100));
    ExpectText(str, "ab");
    EXPECT_EQ(2, str.Delete(5, 1));
    EXPECT_EQ(2, str.Delete(0, 0));
    EXPECT_EQ(2, str.Delete(0, -4));
    ExpectText(str, "ab");
    EXPECT_EQ(1, str.Delete(-3, 1));
    ExpectText(str, "b");
}

// --- Searching -------------------------------------------------------------------------------

TEST(CString, FindCharFromStart)
{
    const CString str("a,b,c");
    EXPECT_EQ(1, str.Find(','));
    EXPECT_EQ(3, str.Find(',', 2));
    EXPECT_EQ(3, str.Find(',', 3));
    EXPECT_EQ(-1, str.Find(',', 4));
    EXPECT_EQ(0, str.Find('a'));
}

TEST(CString, FindBackslashInStringWithoutOneIsMinusOne)
{
    const CString str("C:/plain/path");
    EXPECT_EQ(-1, str.Find('\\', 0));
    EXPECT_EQ(-1, CString().Find('\\', 0));
}

TEST(CString, FindWithStartOutsideStringIsMinusOne)
{
    const CString str("abcabc");
    EXPECT_EQ(-1, str.Find('a', 6));
    EXPECT_EQ(-1, str.Find('a', 100));
    EXPECT_EQ(-1, str.Find('a', -1));
    EXPECT_EQ(-1, str.Find("abc", 7));
    EXPECT_EQ(-1, str.Find("abc", -1));
}

TEST(CString, FindSubstringFromStart)
{
    const CString str("one two one");
    EXPECT_EQ(0, str.Find("one"));
    EXPECT_EQ(8, str.Find("one", 1));
    EXPECT_EQ(4, str.Find("two"));
    EXPECT_EQ(-1, str.Find("three"));
    EXPECT_EQ(-1, str.Find("one", 9));
    EXPECT_EQ(-1, str.Find(static_cast<const char*>(nullptr)));
}

TEST(CString, FindEmptySubstringMatchesAtStart)
{
    const CString str("abc");
    EXPECT_EQ(0, str.Find(""));
    EXPECT_EQ(2, str.Find("", 2));
    EXPECT_EQ(3, str.Find("", 3));
}

TEST(CString, ReverseFindFindsLastOccurrence)
{
    const CString str("dir\\sub\\file.txt");
    EXPECT_EQ(7, str.ReverseFind('\\'));
    EXPECT_EQ(12, str.ReverseFind('.'));
    EXPECT_EQ(-1, str.ReverseFind('/'));
    EXPECT_EQ(-1, CString().ReverseFind('a'));
}

TEST(CString, FindOneOfFindsFirstOfSet)
{
    const CString str("name: value; more");
    EXPECT_EQ(4, str.FindOneOf(";:"));
    EXPECT_EQ(11, str.FindOneOf(";"));
    EXPECT_EQ(-1, str.FindOneOf("#!"));
    EXPECT_EQ(-1, str.FindOneOf(""));
    EXPECT_EQ(-1, str.FindOneOf(nullptr));
}

// --- Formatting --------------------------------------------------------------------------------

TEST(CString, FormatProducesPrintfOutput)
{
    CString str("old content");
    str.Format("%d-%s-%c-%05.2f-%x", 42, "text", 'z', 3.14159, 255);
    ExpectText(str, "42-text-z-03.14-ff");
}

TEST(CString, FormatEmptyResultEmptiesString)
{
    CString str("old");
    str.Format("%s", "");
    ExpectText(str, "");
}

TEST(CString, FormatWithLongOutput)
{
    const std::string longText(1500, 'q');
    CString str;
    str.Format("[%s]%d", longText.c_str(), 7);
    const std::string expected = "[" + longText + "]7";
    ExpectText(str, expected.c_str());
}

TEST(CString, FormatWithVeryLongOutput)
{
    const std::string part(70000, 'w');
    CString str;
    str.Format("%s|%s", part.c_str(), part.c_str());
    EXPECT_EQ(140001, str.GetLength());
    EXPECT_EQ('|', str.GetAt(70000));
    EXPECT_EQ('w', str.GetAt(140000));
}

TEST(CString, FormatMayUseItsOwnText)
{
    CString str("self");
    str.Format("%s and %s", str.GetString(), str.GetString());
    ExpectText(str, "self and self");
}

TEST(CString, FormatVTakesArgumentList)
{
    ExpectText(FormatHelper("%s=%d", "x", -5), "x=-5");
    const std::string longText(3000, 'v');
    CString str = FormatHelper("%s%s", longText.c_str(), "!");
    EXPECT_EQ(3001, str.GetLength());
    EXPECT_EQ('!', str.GetAt(3000));
}

TEST(CString, AppendFormatAddsToEnd)
{
    CString str("list:");
    for (int i = 1; i <= 3; ++i)
        str.AppendFormat(" %d", i);
    ExpectText(str, "list: 1 2 3");
    AppendHelper(str, " %s", "end");
    ExpectText(str, "list: 1 2 3 end");
}

TEST(CString, AppendFormatWithLongOutput)
{
    CString str("start");
    const std::string longText(2000, 'k');
    str.AppendFormat("%s", longText.c_str());
    EXPECT_EQ(2005, str.GetLength());
    EXPECT_EQ(0, std::strncmp(str.GetString(), "startkkk", 8));
}

TEST(CString, FormatSixtyFourBitValues)
{
    CString str;
    str.Format("%lld %llu", -9000000000LL, 18000000000ULL);
    ExpectText(str, "-9000000000 18000000000");
}

// --- Trimming ---------------------------------------------------------------------------------

TEST(CString, TrimRemovesWhiteSpaceBothEnds)
{
    CString str(" \t\r\n inner text \n\t ");
    str.Trim();
    ExpectText(str, "inner text");
}

TEST(CString, TrimLeftAndRightAreOneSided)
{
    CString left("  both  ");
    left.TrimLeft();
    ExpectText(left, "both  ");
    CString right("  both  ");
    right.TrimRight();
    ExpectText(right, "  both");
}

TEST(CString, TrimOfAllWhiteSpaceIsEmpty)
{
    CString str(" \t \n ");
    str.Trim();
    ExpectText(str, "");
    CString empty;
    empty.Trim();
    ExpectText(empty, "");
}

TEST(CString, TrimCharRemovesOnlyThatChar)
{
    CString str("xx xabcx xx");
    str.Trim('x');
    ExpectText(str, " xabcx ");
    CString left("--a--");
    left.TrimLeft('-');
    ExpectText(left, "a--");
    CString right("--a--");
    right.TrimRight('-');
    ExpectText(right, "--a");
}

TEST(CString, TrimWithSetRemovesAnyMember)
{
    CString str("<[{ value }]>");
    str.Trim("<>[]{}");
    ExpectText(str, " value ");
    CString left("0012300");
    left.TrimLeft("0");
    ExpectText(left, "12300");
    CString right("1.2500;;");
    right.TrimRight("0;");
    ExpectText(right, "1.25");
}

TEST(CString, TrimWithEmptyOrNullSetChangesNothing)
{
    CString str("  spaced  ");
    str.Trim("");
    str.TrimLeft(static_cast<const char*>(nullptr));
    str.TrimRight("");
    ExpectText(str, "  spaced  ");
}

TEST(CString, TrimWithSetCanEmptyString)
{
    CString str("abcabc");
    str.Trim("cba");
    ExpectText(str, "");
}

TEST(CString, EachOneSidedTrimCanEmptyString)
{
    CString white(" \t ");
    white.TrimRight();
    ExpectText(white, "");
    CString dashes("---");
    dashes.TrimRight('-');
    ExpectText(dashes, "");
    CString zeros("000");
    zeros.TrimRight("0");
    ExpectText(zeros, "");
    CString white2(" \t ");
    white2.TrimLeft();
    ExpectText(white2, "");
    CString dashes2("---");
    dashes2.TrimLeft('-');
    ExpectText(dashes2, "");
    CString zeros2("000");
    zeros2.TrimLeft("0");
    ExpectText(zeros2, "");
}

TEST(CString, TrimReturnsSelfForChaining)
{
    CString str("  a  ");
    CString& ref = str.Trim();
    EXPECT_EQ(&str, &ref);
    EXPECT_EQ(&str, &str.TrimLeft('a'));
    EXPECT_EQ(&str, &str.TrimRight("x"));
}

// --- Buffer access -------------------------------------------------------------------------------

TEST(CString, GetBufferReleaseBufferRoundTrip)
{
    CString str("abc");
    char* buffer = str.GetBuffer(10);
    ASSERT_NE(nullptr, buffer);
    EXPECT_STREQ("abc", buffer);
    std::strcpy(buffer, "0123456789");
    str.ReleaseBuffer();
    ExpectText(str, "0123456789");
}

TEST(CString, ReleaseBufferWithLengthTruncates)
{
    CString str;
    char* buffer = str.GetBuffer(8);
    std::memcpy(buffer, "abcdefgh", 8);
    str.ReleaseBuffer(5);
    ExpectText(str, "abcde");
}

TEST(CString, ReleaseBufferTakesLengthUpToFirstNul)
{
    CString str("long original text");
    char* buffer = str.GetBuffer(0);
    buffer[4] = '\0';
    str.ReleaseBuffer(-1);
    ExpectText(str, "long");
}

TEST(CString, GetBufferKeepsAtLeastCurrentLength)
{
    CString str("keep me");
    char* buffer = str.GetBuffer(2);
    EXPECT_STREQ("keep me", buffer);
    str.ReleaseBuffer();
    ExpectText(str, "keep me");
}

TEST(CString, GetBufferOnEmptyStringIsWritable)
{
    CString str;
    char* buffer = str.GetBuffer();
    ASSERT_NE(nullptr, buffer);
    EXPECT_EQ('\0', buffer[0]);
    str.ReleaseBuffer();
    ExpectText(str, "");
}

TEST(CString, GetBufferFilledByWin32Call)
{
    CString str;
    const DWORD written = GetCurrentDirectoryA(MAX_PATH, str.GetBuffer(MAX_PATH));
    str.ReleaseBuffer();
    ASSERT_GT(written, 0u);
    EXPECT_EQ(static_cast<int>(written), str.GetLength());
}

TEST(CString, GetBufferFullyWrittenReleasesAtCapacity)
{
    CString str;
    char* buffer = str.GetBuffer(4);
    std::memcpy(buffer, "wxyz", 4);
    buffer[4] = '\0';
    str.ReleaseBuffer();
    ExpectText(str, "wxyz");
}

TEST(CString, GetBufferSetLengthSetsLengthAndTerminates)
{
    CString str("ab");
    char* buffer = str.GetBufferSetLength(5);
    EXPECT_EQ(5, str.GetLength());
    EXPECT_EQ('\0', buffer[5]);
    std::memcpy(buffer + 2, "cde", 3);
    str.ReleaseBuffer();
    ExpectText(str, "abcde");
}

TEST(CString, GetBufferSetLengthShrinks)
{
    CString str("abcdef");
    str.GetBufferSetLength(3);
    ExpectText(str, "abc");
    str.ReleaseBuffer();
    ExpectText(str, "abc");
    str.GetBufferSetLength(-2);
    ExpectText(str, "");
}

TEST(CString, ReleaseBufferWithoutBufferIsHarmless)
{
    CString str;
    str.ReleaseBuffer();
    ExpectText(str, "");
    CString other("text");
    other.ReleaseBuffer();
    ExpectText(other, "text");
}

// --- Tokens --------------------------------------------------------------------------------------

TEST(CString, TokenizeLoopYieldsEveryToken)
{
    const CString str("%First Second#Third");
    std::vector<std::string> tokens;
    int pos = 0;
    CString token = str.Tokenize("% #", pos);
    while (pos != -1)
    {
        tokens.emplace_back(token.GetString());
        token = str.Tokenize("% #", pos);
    }
    ASSERT_EQ(3u, tokens.size());
    EXPECT_EQ("First", tokens[0]);
    EXPECT_EQ("Second", tokens[1]);
    EXPECT_EQ("Third", tokens[2]);
    ExpectText(token, "");
}

TEST(CString, TokenizeSkipsRunsOfDelimiters)
{
    const CString str(",,a,,,b,");
    int pos = 0;
    ExpectText(str.Tokenize(",", pos), "a");
    EXPECT_EQ(4, pos);
    ExpectText(str.Tokenize(",", pos), "b");
    EXPECT_EQ(8, pos);
    ExpectText(str.Tokenize(",", pos), "");
    EXPECT_EQ(-1, pos);
}

TEST(CString, TokenizeOfOnlyDelimitersEndsAtOnce)
{
    int pos = 0;
    ExpectText(CString(";;;").Tokenize(";", pos), "");
    EXPECT_EQ(-1, pos);
    pos = 0;
    ExpectText(CString().Tokenize(";", pos), "");
    EXPECT_EQ(-1, pos);
}

TEST(CString, TokenizeFromMiddleAndAfterEnd)
{
    const CString str("aa bb cc");
    int pos = 3;
    ExpectText(str.Tokenize(" ", pos), "bb");
    pos = -1;
    ExpectText(str.Tokenize(" ", pos), "");
    EXPECT_EQ(-1, pos);
    pos = 100;
    ExpectText(str.Tokenize(" ", pos), "");
    EXPECT_EQ(-1, pos);
}

TEST(CString, TokenizeWithoutDelimitersGivesRest)
{
    const CString str("a b c");
    int pos = 2;
    ExpectText(str.Tokenize("", pos), "b c");
    ExpectText(str.Tokenize("", pos), "");
    EXPECT_EQ(-1, pos);
}

// --- String resources ---------------------------------------------------------------------------

namespace
{
// A system DLL loaded as data becomes the resource module for one test; its strings are read
// with the wide API directly and compared with what CString loads. The common dialog DLL has
// many strings, some of them longer than CString's first read buffer.
class StringResourceModule
{
public:
    StringResourceModule()
        : m_module(LoadLibraryExA("comdlg32.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE)),
          m_previous(AfxGetResourceHandle())
    {
        if (m_module != nullptr)
            AfxSetResourceHandle(m_module);
    }
    ~StringResourceModule()
    {
        AfxSetResourceHandle(m_previous);
        if (m_module != nullptr)
            FreeLibrary(m_module);
    }
    StringResourceModule(const StringResourceModule&) = delete;
    StringResourceModule& operator=(const StringResourceModule&) = delete;

    HMODULE Module() const { return m_module; }

    // The string with this id in the system code page, or false when there is none.
    bool Expected(UINT id, std::string& text) const
    {
        const WCHAR* resource = nullptr;
        const int length = LoadStringW(m_module, id, reinterpret_cast<LPWSTR>(&resource), 0);
        if (length <= 0 || resource == nullptr)
            return false;
        const int bytes = WideCharToMultiByte(CP_ACP, 0, resource, length, nullptr, 0, nullptr, nullptr);
        text.assign(static_cast<size_t>(bytes), '\0');
        WideCharToMultiByte(CP_ACP, 0, resource, length, &text[0], bytes, nullptr, nullptr);
        return true;
    }

private:
    HMODULE m_module;
    HINSTANCE m_previous;
};
} // namespace

TEST(CString, LoadStringReadsEveryStringOfResourceModule)
{
    StringResourceModule resources;
    ASSERT_NE(nullptr, resources.Module());
    int found = 0;
    size_t longest = 0;
    for (UINT id = 0; id < 0x10000; ++id)
    {
        std::string expected;
        if (!resources.Expected(id, expected))
            continue;
        ++found;
        longest = std::max(longest, expected.size());
        CString str("previous");
        ASSERT_TRUE(str.LoadString(id)) << "id " << id;
        ExpectText(str, expected.c_str());
    }
    EXPECT_GT(found, 10);
    // A string that does not fit the first buffer makes LoadString read it again.
    EXPECT_GT(longest, 255u);
}

TEST(CString, LoadStringOfMissingIdFailsAndKeepsText)
{
    StringResourceModule resources;
    ASSERT_NE(nullptr, resources.Module());
    UINT missing = 0xFFFF;
    std::string unused;
    while (missing > 0 && resources.Expected(missing, unused))
        --missing;
    CString str("unchanged");
    EXPECT_FALSE(str.LoadString(missing));
    ExpectText(str, "unchanged");
}

TEST(CString, ConstructFromResourceIdLoadsString)
{
    StringResourceModule resources;
    ASSERT_NE(nullptr, resources.Module());
    UINT id = 1;
    std::string expected;
    while (id < 0x10000 && !resources.Expected(id, expected))
        ++id;
    ASSERT_LT(id, 0x10000u);
    CString str(MAKEINTRESOURCEA(id));
    ExpectText(str, expected.c_str());
}
