// Texts from formats and from resources.
#include <gtest/gtest.h>

#include "CString.h"
#include "Exceptions.h"
#include "ModuleState.h"
#include "strings.h"

namespace {

TEST(CStringFormat, Format_replacesText)
{
    CString text("old");
    text.Format("%s=%d (0x%x) %c", "name", 12, 0xAB, 'x');
    EXPECT_STREQ(text, "name=12 (0xab) x");
}

TEST(CStringFormat, Format_ofItself_readsTheOldText)
{
    CString text("abc");
    text.Format("<%s>", text.GetString());
    EXPECT_STREQ(text, "<abc>");
}

TEST(CStringFormat, Format_longerThanAnyBuffer_isWhole)
{
    const CString part('x', 5000);
    CString text;
    text.Format("%s|%s", part.GetString(), part.GetString());
    EXPECT_EQ(text.GetLength(), 10001);
    EXPECT_EQ(text[5000], '|');
}

TEST(CStringFormat, Format_toNothing_isEmpty)
{
    CString text("old");
    text.Format("%s", "");
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CStringFormat, Format_knowsThePlatformsSizes)
{
    CString text;
    const CString format = CString("%I") + "64d";  // a prefix that the compiler's own check does not take
    text.Format(format.GetString(), 1234567890123LL);
    EXPECT_STREQ(text, "1234567890123");
}

TEST(CStringFormat, AppendFormat_addsText)
{
    CString text("a");
    text.AppendFormat("%05.1f", 2.25);
    EXPECT_STREQ(text, "a002.3") << "the platform rounds halves away from zero";
}

TEST(CStringFormat, NullFormat_throwsAndLeavesText)
{
    CString text("abc");
    const char* format = nullptr;
    EXPECT_THROW(text.Format(format, 1), CInvalidArgException);
    EXPECT_STREQ(text, "abc");
}

TEST(CStringLoad, PresentString_isConvertedToAnsi)
{
    CString text;
    EXPECT_TRUE(text.LoadString(KXTEST_IDS_GREETING));
    EXPECT_STREQ(text,
                 "Gr\xFC\xDF"
                 "e");
    EXPECT_TRUE(text.LoadString(AfxGetInstanceHandle(), KXTEST_IDS_LAST_OF_BLOCK));
    EXPECT_STREQ(text, "last of its block");
}

TEST(CStringLoad, MissingString_leavesText)
{
    CString text("abc");
    EXPECT_FALSE(text.LoadString(KXTEST_IDS_MISSING_IN_BLOCK));
    EXPECT_FALSE(text.LoadString(60000));
    EXPECT_STREQ(text, "abc");
}

TEST(CStringLoad, NamedLanguage_isTaken)
{
    CString text;
    EXPECT_TRUE(
        text.LoadString(AfxGetInstanceHandle(), KXTEST_IDS_LANGUAGE, MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN)));
    EXPECT_STREQ(text, "deutsch");
    EXPECT_TRUE(
        text.LoadString(AfxGetInstanceHandle(), KXTEST_IDS_LANGUAGE, MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)));
    EXPECT_STREQ(text, "English");
}

}  // namespace
