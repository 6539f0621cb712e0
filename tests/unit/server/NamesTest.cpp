#include "store/Names.h"

#include <gtest/gtest.h>

using srv::isObjectName;
using srv::isValueName;
using srv::isValueText;

TEST(Names, ObjectName_isWhatARegistryKeyCanBeCalled)
{
    EXPECT_TRUE(isObjectName(L"NX1611.MPI.1"));
    EXPECT_TRUE(isObjectName(L"Anlage \u00DCberlauf / 2"));
    EXPECT_TRUE(isObjectName(std::wstring(255, L'x')));
    EXPECT_FALSE(isObjectName(L""));
    EXPECT_FALSE(isObjectName(std::wstring(256, L'x')));
    EXPECT_FALSE(isObjectName(L"a\\b"));
    EXPECT_FALSE(isObjectName(L"a\nb"));
    EXPECT_FALSE(isObjectName(std::wstring_view(L"a\0b", 3)));
    EXPECT_FALSE(isObjectName(L"a\x7F"));
}

TEST(Names, ValueName_mayHoldBackslashes)
{
    EXPECT_TRUE(isValueName(L"busparam\\0"));
    EXPECT_FALSE(isValueName(L""));
    EXPECT_FALSE(isValueName(L"a\tb"));
    EXPECT_FALSE(isValueName(std::wstring(256, L'x')));
}

TEST(Names, ValueText_isWhatAClientCanReadBack)
{
    EXPECT_TRUE(isValueText(L""));
    EXPECT_TRUE(isValueText(L"line\r\nline"));
    EXPECT_TRUE(isValueText(std::wstring(259, L'x')));
    EXPECT_FALSE(isValueText(std::wstring(260, L'x')));
    EXPECT_FALSE(isValueText(std::wstring_view(L"a\0b", 3)));
}
