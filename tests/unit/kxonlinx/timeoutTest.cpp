#include "timeout.h"

#include <gtest/gtest.h>

namespace {

using kxonlinx::timeoutFromText;

TEST(Timeout, NotConfigured_is20Seconds)
{
    EXPECT_EQ(timeoutFromText(nullptr), 20000u);
}

TEST(Timeout, Number_isMilliseconds)
{
    EXPECT_EQ(timeoutFromText(L"1"), 1u);
    EXPECT_EQ(timeoutFromText(L"0500"), 500u);
    EXPECT_EQ(timeoutFromText(L"86400000"), 86400000u);
}

TEST(Timeout, AnythingElse_is20Seconds)
{
    for (const wchar_t* text : {L"", L"0", L"-1", L"+5", L" 5", L"5 ", L"5s", L"1.5", L"0x10", L"86400001",
                                L"4294967295", L"4294967301", L"99999999999999999999"}) {
        EXPECT_EQ(timeoutFromText(text), 20000u) << testing::PrintToString(std::wstring(text));
    }
}

TEST(Timeout, Environment_isReadWhenAsked)
{
    SetEnvironmentVariableW(L"KXONLINX_TIMEOUT_MS", L"1234");
    EXPECT_EQ(kxonlinx::configuredTimeout(), 1234u);
    SetEnvironmentVariableW(L"KXONLINX_TIMEOUT_MS", std::wstring(100, L'1').c_str());
    EXPECT_EQ(kxonlinx::configuredTimeout(), 20000u);
    SetEnvironmentVariableW(L"KXONLINX_TIMEOUT_MS", nullptr);
    EXPECT_EQ(kxonlinx::configuredTimeout(), 20000u);
}

}  // namespace
