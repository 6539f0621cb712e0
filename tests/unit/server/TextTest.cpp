#include "base/Text.h"

#include <gtest/gtest.h>

TEST(Text, Utf8_goesBothWays)
{
    EXPECT_EQ(srv::utf8(L"Ger\u00E4t \u20AC"), "Ger\xC3\xA4t \xE2\x82\xAC");
    EXPECT_EQ(srv::fromUtf8("Ger\xC3\xA4t \xE2\x82\xAC"), L"Ger\u00E4t \u20AC");
    EXPECT_EQ(srv::utf8(L""), "");
}

TEST(Text, AnsiLength_countsBytesOfTheCodePage)
{
    EXPECT_EQ(srv::ansiLength(L""), 0u);
    EXPECT_EQ(srv::ansiLength(L"abc"), 3u);
    EXPECT_EQ(srv::ansiLength(L"\u00E4bc"), 3u);
}

TEST(Text, InQuotes_showsControlCharactersAndCutsLongText)
{
    EXPECT_EQ(srv::inQuotes(L"a\r\nb\x7F"), "\"a\\x0D\\x0Ab\\x7F\"");
    EXPECT_EQ(srv::inQuotes(std::wstring(81, L'x')), "\"" + std::string(80, 'x') + "...\"");
    EXPECT_EQ(srv::inQuotes(std::wstring(80, L'x')), "\"" + std::string(80, 'x') + "\"");
}

TEST(Text, SystemMessage_hasTheNumberAndNoLineEnd)
{
    const std::string text = srv::systemMessage(5);
    EXPECT_EQ(text.substr(text.size() - 4), " (5)");
    EXPECT_EQ(text.find('\n'), std::string::npos);
    EXPECT_EQ(srv::systemMessage(0x2FFFFFFF), "system error (805306367)");
}
