// Entry points kept for old callers: each returns the constant of its group, sends nothing and touches nothing.

#include <gmock/gmock.h>

#include "fakeChannel.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "traceCapture.h"

namespace {

struct Retired
{
    const char* name;
    long result;
};

std::ostream& operator<<(std::ostream& out, const Retired& row)
{
    return out << row.name;
}

class RetiredTest : public testing::TestWithParam<Retired>
{
 protected:
    RetiredTest() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
};

// The C calling convention leaves the arguments to the caller, so any list of them will do.
TEST_P(RetiredTest, Call_returnsItsConstantAndSendsNothing)
{
    using Function = long (*)(void*, void*, void*, void*, void*, void*, void*, void*);
    const auto function = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kxovaapi.dll"), GetParam().name)));
    ASSERT_NE(function, nullptr);
    const TraceCapture capture;
    char untouched[64];
    std::fill(std::begin(untouched), std::end(untouched), 'U');
    void* const out = untouched;
    EXPECT_EQ(function(out, out, out, out, out, out, out, out), GetParam().result);
    EXPECT_EQ(std::count(std::begin(untouched), std::end(untouched), 'U'), 64);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_TRUE(capture.lines().empty());
}

std::string retiredName(const testing::TestParamInfo<Retired>& info)
{
    std::string name;
    for (const char c : std::string(info.param.name)) {
        if (isalnum(static_cast<unsigned char>(c)) || c == '_') name.push_back(c);
    }
    return name;
}

std::vector<Retired> group(long result, std::initializer_list<const char*> names)
{
    std::vector<Retired> rows;
    for (const char* name : names)
        rows.push_back({name, result});
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Zero, RetiredTest,
                         testing::ValuesIn(group(0, {"DeviceIDGetEnum", "LogDeviceCreateTempFromDef", "DCFG_ExeStart",
                                                     "DCFG_IsServer2008", "DCFG_IsW2K", "DCFG_IsWNT4",
                                                     "DCFG_LogDeviceLink_bAnyLocks", "DCFG_LogDevice_bAnyLocks",
                                                     "DCFG_RegHasChanged", "DCFG_StartServer", "DCFG_StopServer"})),
                         retiredName);

INSTANTIATE_TEST_SUITE_P(NotSupported, RetiredTest,
                         testing::ValuesIn(group(8018, {"DCFG_GetProtocolAttribute",
                                                        "DCFG_LogDeviceCreateFromDef",
                                                        "DCFG_LogDeviceSetLinkedValue",
                                                        "DCFG_LogDeviceSetParamDesc",
                                                        "DCFG_RegCopyKey",
                                                        "DCFG_RegCopyKeyEx",
                                                        "DCFG_RegCopyKeyTyped",
                                                        "DCFG_RegCreateKey",
                                                        "DCFG_RegDelKey",
                                                        "DCFG_RegDelValue",
                                                        "DCFG_RegGetEnumValueTyped",
                                                        "_Z16DCFG_RegGetValuePKcS0_PmPvS1_",
                                                        "DCFG_RegGetValueTyped",
                                                        "DCFG_RegOpen",
                                                        "_Z16DCFG_RegSetValuePKcS0_PKvm",
                                                        "DCFG_RegSetValueTyped",
                                                        "DCFG_RestoreRunOnce",
                                                        "DCFG_SaveRunOnce",
                                                        "KxBRegDelKey",
                                                        "KxBRegEnumKey",
                                                        "_Z13KxBRegEnumKeyP6HKEY__PKcmR7CString",
                                                        "KxBRegEnumValue",
                                                        "_Z15KxBRegEnumValueP6HKEY__PKcmR7CStringS4_",
                                                        "KxBRegGetValueTyped",
                                                        "KxRegCopyKey",
                                                        "KxRegCopyKeyTyped",
                                                        "_Z14KxRegCreateKeyP6HKEY__PKc",
                                                        "KxRegEnumValueTyped",
                                                        "KxRegGetValueTyped",
                                                        "KxRegGetValueWord",
                                                        "KxRegKeyExists",
                                                        "KxRegOpen",
                                                        "KxRegSetValueTyped"})),
                         retiredName);

INSTANTIATE_TEST_SUITE_P(One, RetiredTest,
                         testing::ValuesIn(group(1, {"DCFG_IsPnPOs", "DCFG_IsVista", "DCFG_IsW2KPOrGreater"})),
                         retiredName);

INSTANTIATE_TEST_SUITE_P(NotImplemented, RetiredTest,
                         testing::ValuesIn(group(120, {"_Z17DCFG_BoardFindNewPKcP7CStringS2_",
                                                       "_Z17DCFG_BoardGetEnumPKcmP7CStringS2_iS2_",
                                                       "DCFG_ProtocolGetEnum"})),
                         retiredName);

INSTANTIATE_TEST_SUITE_P(Libraries, RetiredTest,
                         testing::Values(Retired{"DCFG_LogDeviceCallDLL", 8104}, Retired{"DCFG_DllLoad", 8102}),
                         retiredName);

// Each group is one function under many names.
TEST(RetiredGroups, ShareOneFunction)
{
    const HMODULE library = GetModuleHandleA("kxovaapi.dll");
    EXPECT_EQ(GetProcAddress(library, "DCFG_RegOpen"), GetProcAddress(library, "KxRegSetValueTyped"));
    EXPECT_EQ(GetProcAddress(library, "DCFG_IsW2K"), GetProcAddress(library, "DCFG_StopServer"));
    EXPECT_EQ(GetProcAddress(library, "DCFG_BoardGetMap"), nullptr);
}

TEST(RetiredStrings, BoardMaps_areEmpty)
{
    EXPECT_TRUE(DCFG_BoardGetMap("a", "b", 1).IsEmpty());
    EXPECT_TRUE(DCFG_BoardGetBoard("a", "b").IsEmpty());
    EXPECT_TRUE(DCFG_BoardSetNewMap("a", "b", 1).IsEmpty());
}

TEST(RetiredStrings, BoardQueries_are120AndLeaveTheirReferences)
{
    const CString board("board");
    CString first("one");
    CString second("two");
    EXPECT_EQ(DCFG_BoardGetDriverMap(board, first, second), 120);
    EXPECT_EQ(DCFG_BoardGetNetcardWithBinding(board, "p", "s", first, second, first, second), 120);
    EXPECT_STREQ(first, "one");
    EXPECT_STREQ(second, "two");
}

}  // namespace
