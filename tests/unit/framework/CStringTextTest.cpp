// Comparing, searching, taking parts and editing.
#include <gtest/gtest.h>

#include "AnsiCodePage.h"
#include "CString.h"

namespace {

TEST(CStringCompare, Operators_compareByCharacterValue)
{
    const CString text("abc");
    EXPECT_TRUE(text == CString("abc"));
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE("abc" == text);
    EXPECT_TRUE(text != "ABC");
    EXPECT_TRUE(text < "abd");
    EXPECT_TRUE("abb" < text);
    EXPECT_TRUE(text > "ABD");
    EXPECT_TRUE(text <= CString("abc"));
    EXPECT_TRUE(text >= "ab");
    EXPECT_TRUE(CString("x") == 'x');
    EXPECT_FALSE(CString("xy") == 'x');
}

TEST(CStringCompare, NullText_equalsEmpty)
{
    EXPECT_TRUE(CString() == static_cast<const char*>(nullptr));
    EXPECT_EQ(CString("a").Compare(nullptr), 1);
}

TEST(CStringCompare, CharactersAbove127_areGreater)
{
    EXPECT_EQ(CString("\xE4").Compare("z"), 1);
    EXPECT_EQ(CString("z").Compare("\xE4"), -1);
}

TEST(CStringCompare, NoCase_foldsLettersOfTheCodePage)
{
    EXPECT_EQ(CString("LogDevices").CompareNoCase("LOGDEVICES"), 0);
    EXPECT_EQ(CString("ger\xE4t").CompareNoCase("GER\xC4T"), 0);
    EXPECT_EQ(CString("abc").CompareNoCase("ABD"), -1);
    EXPECT_EQ(CString("ABD").CompareNoCase("abc"), 1);
    EXPECT_EQ(CString("a").CompareNoCase("ab"), -1);
}

TEST(CStringCompare, NoCase_comparesLowerCase)
{
    EXPECT_EQ(CString("_").CompareNoCase("A"), -1) << "the underscore lies between the two cases";
}

TEST(CStringCompare, Collate_followsTheUsersOrder)
{
    EXPECT_EQ(CString("a").Collate("B"), -1);
    EXPECT_EQ(CString("a").CollateNoCase("A"), 0);
}

TEST(CStringFind, Character_fromStart)
{
    const CString text("a,b,c");
    EXPECT_EQ(text.Find(','), 1);
    EXPECT_EQ(text.Find(',', 1), 1);
    EXPECT_EQ(text.Find(',', 2), 3);
    EXPECT_EQ(text.Find(',', 4), -1);
    EXPECT_EQ(text.Find('x'), -1);
    EXPECT_EQ(text.Find(',', -1), -1);
    EXPECT_EQ(text.Find(',', 99), -1);
    EXPECT_EQ(CString().Find('\0'), -1);
}

TEST(CStringFind, Text_fromStart)
{
    const CString text("one two one");
    EXPECT_EQ(text.Find("one"), 0);
    EXPECT_EQ(text.Find("one", 1), 8);
    EXPECT_EQ(text.Find("three"), -1);
    EXPECT_EQ(text.Find(""), 0);
    EXPECT_EQ(text.Find("", 11), 11);
    EXPECT_EQ(text.Find("one", 12), -1);
    EXPECT_EQ(text.Find(static_cast<const char*>(nullptr)), -1);
}

TEST(CStringFind, Reverse_findsLast)
{
    EXPECT_EQ(CString("a\\b\\c").ReverseFind('\\'), 3);
    EXPECT_EQ(CString("abc").ReverseFind('\\'), -1);
}

TEST(CStringFind, OneOf_findsFirstOfSet)
{
    EXPECT_EQ(CString("dll;function").FindOneOf(", ;"), 3);
    EXPECT_EQ(CString("dll").FindOneOf(", ;"), -1);
    EXPECT_EQ(CString("dll").FindOneOf(""), -1);
    EXPECT_EQ(CString("dll").FindOneOf(nullptr), -1);
}

TEST(CStringParts, Outside_areCutToTheText)
{
    const CString text("abcdef");
    EXPECT_STREQ(text.Mid(2), "cdef");
    EXPECT_STREQ(text.Mid(2, 2), "cd");
    EXPECT_STREQ(text.Mid(-2, 2), "ab");
    EXPECT_STREQ(text.Mid(4, 99), "ef");
    EXPECT_STREQ(text.Mid(6), "");
    EXPECT_STREQ(text.Mid(99, 1), "");
    EXPECT_STREQ(text.Mid(2, -1), "");
    EXPECT_STREQ(text.Left(2), "ab");
    EXPECT_STREQ(text.Left(-1), "");
    EXPECT_STREQ(text.Right(2), "ef");
    EXPECT_STREQ(text.Right(99), "abcdef");
}

TEST(CStringParts, WholeText_isShared)
{
    const CString text("abcdef");
    EXPECT_EQ(text.Mid(0).GetString(), text.GetString());
    EXPECT_EQ(text.Left(6).GetString(), text.GetString());
    EXPECT_EQ(text.Right(7).GetString(), text.GetString());
}

TEST(CStringParts, Spans_endWhereTheSetBeginsOrEnds)
{
    EXPECT_STREQ(CString("123abc").SpanIncluding("0123456789"), "123");
    EXPECT_STREQ(CString("abc").SpanIncluding("0123456789"), "");
    EXPECT_STREQ(CString("abc,def").SpanExcluding(",;"), "abc");
    EXPECT_STREQ(CString("abc").SpanExcluding(",;"), "abc");
}

TEST(CStringParts, Tokenize_yieldsEachTokenAndEndsWithMinusOne)
{
    const CString text("  App=Talun  LangExt=C");
    int at = 0;
    EXPECT_STREQ(text.Tokenize(" ", at), "App=Talun");
    EXPECT_STREQ(text.Tokenize(" ", at), "LangExt=C");
    EXPECT_STREQ(text.Tokenize(" ", at), "");
    EXPECT_EQ(at, -1);
}

TEST(CStringEdit, Case_changesLettersOfTheCodePage)
{
    CString text("Ger\xE4t 1\xDF");
    const CString copy(text);
    EXPECT_STREQ(text.MakeUpper(), "GER\xC4T 1\xDF");
    EXPECT_STREQ(text.MakeLower(), "ger\xE4t 1\xDF");
    EXPECT_STREQ(copy, "Ger\xE4t 1\xDF");
}

TEST(CStringEdit, Reverse_turnsText)
{
    EXPECT_STREQ(CString("abc").MakeReverse(), "cba");
}

TEST(CStringEdit, Trim_removesOnlyAtTheEnds)
{
    EXPECT_STREQ(CString(" \t\r\n a b \v\f").Trim(), "a b");
    EXPECT_STREQ(CString("  a  ").TrimLeft(), "a  ");
    EXPECT_STREQ(CString("  a  ").TrimRight(), "  a");
    EXPECT_STREQ(CString("\"\"x\"y\"").TrimLeft('"'), "x\"y\"");
    EXPECT_STREQ(CString("x\"y\"\"").TrimRight('"'), "x\"y");
    EXPECT_STREQ(CString("--x--").Trim('-'), "x");
    EXPECT_STREQ(CString("-+x+-").Trim("+-"), "x");
    EXPECT_STREQ(CString("   ").Trim(), "");
    EXPECT_STREQ(CString(" x ").Trim(static_cast<const char*>(nullptr)), " x ");
}

TEST(CStringEdit, Replace_countsReplacements)
{
    CString text("a.b.c");
    EXPECT_EQ(text.Replace('.', ','), 2);
    EXPECT_STREQ(text, "a,b,c");
    EXPECT_EQ(text.Replace(",", "::"), 2);
    EXPECT_STREQ(text, "a::b::c");
    EXPECT_EQ(text.Replace("::", ""), 2);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text.Replace("x", "y"), 0);
    EXPECT_EQ(text.Replace("", "y"), 0);
    EXPECT_EQ(text.Replace("b", nullptr), 1);
    EXPECT_STREQ(text, "ac");
}

TEST(CStringEdit, ReplaceWithPartOfItself_usesTheOldText)
{
    CString text("aba");
    EXPECT_EQ(text.Replace("a", text), 2);
    EXPECT_STREQ(text, "abababa");
}

TEST(CStringEdit, Remove_countsCharacters)
{
    CString text("\"a\"b\"");
    EXPECT_EQ(text.Remove('"'), 3);
    EXPECT_STREQ(text, "ab");
}

TEST(CStringEdit, Insert_yieldsNewLengthAndCutsPosition)
{
    CString text("bd");
    EXPECT_EQ(text.Insert(1, 'c'), 3);
    EXPECT_EQ(text.Insert(-5, "a"), 4);
    EXPECT_EQ(text.Insert(99, "ef"), 6);
    EXPECT_STREQ(text, "abcdef");
    EXPECT_EQ(text.Insert(3, text), 12);
    EXPECT_STREQ(text, "abcabcdefdef");
}

TEST(CStringEdit, Delete_yieldsNewLengthAndCutsCount)
{
    CString text("abcdef");
    EXPECT_EQ(text.Delete(0), 5);
    EXPECT_EQ(text.Delete(3, 99), 3);
    EXPECT_STREQ(text, "bcd");
    EXPECT_EQ(text.Delete(5, 1), 3);
    EXPECT_EQ(text.Delete(0, -1), 3);
}

// In this code page 0x83 begins a character of two bytes, and 0x5C, its second byte here, alone is the backslash.
class TwoByteCodePage : public testing::Test
{
 protected:
    void SetUp() override
    {
        if (!IsValidCodePage(932)) GTEST_SKIP() << "code page 932 is not installed";
    }
    const AnsiCodePage page{932};
    static constexpr const char* text =
        "a\x83\x5C"
        "b\\c";
};

TEST_F(TwoByteCodePage, SecondByte_isNoCharacter)
{
    EXPECT_EQ(page.findChar(text, '\\'), text + 4);
    EXPECT_EQ(page.findOneOf(text, "\\"), text + 4);
    EXPECT_EQ(page.findText(text, "\\"), text + 4);
    EXPECT_EQ(page.findLastChar("\x83\x5C", '\\'), nullptr);
}

TEST_F(TwoByteCodePage, WholeCharacter_isFound)
{
    EXPECT_EQ(page.findOneOf(text, "\x83\x5C"), text + 1);
    EXPECT_EQ(page.findText(text,
                            "\x83\x5C"
                            "b"),
              text + 1);
    EXPECT_EQ(page.skip(text, "a\x83\x5C"), text + 3);
}

TEST_F(TwoByteCodePage, SecondByte_keepsItsCase)
{
    char changed[] = "a\x83\x61";
    page.makeUpper(changed);
    EXPECT_STREQ(changed, "A\x83\x61");
    EXPECT_EQ(page.compareNoCase("a\x83\x61", "A\x83\x61"), 0);
    EXPECT_NE(page.compareNoCase("\x83\x61", "\x83\x41"), 0);
}

TEST_F(TwoByteCodePage, LeadingByteAtTheEnd_endsTheText)
{
    EXPECT_EQ(page.findChar("a\x83", 'x'), nullptr);
    EXPECT_EQ(page.compareNoCase("\x83", "\x83"), 0);
}

}  // namespace
