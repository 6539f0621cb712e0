// The state of devices through the setup interface, and the programmer library.

#include <gmock/gmock.h>

#include "kxovaapi.h"
#include "libraries/report.h"
#include "registryText.h"
#include "traceCapture.h"

using testing::ElementsAre;
using testing::MatchesRegex;

namespace {

constexpr long answered = 0x77;
constexpr char hardwareId[] = R"(PCI\VEN_110A&DEV_4003)";

// The setup interface that the system finds while the object lives; an empty folder name: none.
class SetupInterface
{
 public:
    explicit SetupInterface(const char* folder)
    {
        char path[MAX_PATH];
        GetModuleFileNameA(nullptr, path, sizeof path);
        const std::string own(path);
        SetDllDirectoryA((own.substr(0, own.rfind('\\') + 1) + folder).c_str());
        clearReport();
    }
    ~SetupInterface() { SetDllDirectoryA(nullptr); }
};

class DeviceState : public testing::Test
{
 protected:
    void expectAnswer() const
    {
        EXPECT_EQ(status, 0x0180200Au);
        EXPECT_EQ(problem, 22u);
        EXPECT_EQ(GetModuleHandleA("KXOSOINX.DLL"), nullptr) << "unloaded";
    }
    void expectUntouched() const
    {
        EXPECT_EQ(status, 1u);
        EXPECT_EQ(problem, 2u);
        EXPECT_EQ(GetModuleHandleA("KXOSOINX.DLL"), nullptr) << "unloaded";
    }

    unsigned long status = 1;
    unsigned long problem = 2;
};

TEST_F(DeviceState, Extended_passesItsArgumentsOn)
{
    const SetupInterface setup("setup");
    unsigned char record[44] = {99};
    EXPECT_EQ(DCFG_GetDeviceStateEx(hardwareId, record, &status, &problem), answered);
    EXPECT_EQ(reported(), std::string("Ex2 ") + hardwareId + " 99;");
    expectAnswer();
}

TEST_F(DeviceState, Extended_passesNullOn)
{
    const SetupInterface setup("setup");
    EXPECT_EQ(DCFG_GetDeviceStateEx(nullptr, nullptr, nullptr, nullptr), answered);
    EXPECT_EQ(reported(), "Ex2 NULL NULL;");
}

TEST_F(DeviceState, Plain_passesItsArgumentsOn)
{
    const SetupInterface setup("setup");
    EXPECT_EQ(DCFG_GetDeviceState("MCP 7", &status, &problem), answered);
    EXPECT_EQ(reported(), "State MCP 7;");
    expectAnswer();
}

TEST_F(DeviceState, Board_asksWithARecordOfItsOwn)
{
    const SetupInterface setup("setup");
    EXPECT_EQ(DCFG_GetBoardState(hardwareId, 0x12345678, &status, &problem), answered);
    EXPECT_EQ(reported(), std::string("Ex2 ") + hardwareId + " record 44 6 texts 260 260 rest 0;");
    expectAnswer();
}

TEST_F(DeviceState, MissingLibrary_is8102)
{
    const SetupInterface setup("no such folder");
    EXPECT_EQ(DCFG_GetDeviceStateEx(hardwareId, nullptr, &status, &problem), 8102);
    EXPECT_EQ(DCFG_GetDeviceState(hardwareId, &status, &problem), 8102);
    EXPECT_EQ(DCFG_GetBoardState(hardwareId, 0, &status, &problem), 8102);
    expectUntouched();
}

TEST_F(DeviceState, MissingFunction_is8104)
{
    const SetupInterface setup("nothing");
    EXPECT_EQ(DCFG_GetDeviceStateEx(hardwareId, nullptr, &status, &problem), 8104);
    EXPECT_EQ(DCFG_GetDeviceState(hardwareId, &status, &problem), 8104);
    expectUntouched();
}

std::vector<std::string> traced(const TraceCapture& capture, const char* function)
{
    std::vector<std::string> lines;
    for (const TraceLine& line : capture.of(function))
        lines.push_back(line.level + " " + line.text);
    return lines;
}

TEST_F(DeviceState, Trace_extended)
{
    const SetupInterface setup("setup");
    const TraceCapture capture;
    DCFG_GetDeviceStateEx("id", nullptr, &status, &problem);
    EXPECT_THAT(traced(capture, "DCFG_GetDeviceStateEx:"),
                ElementsAre("FA >>lpszHardwareId=id", "FM ## vor DLL_Load ",
                            MatchesRegex("FM ##hiDll=0x\\w+ lpGetDevStateExFkt=0x\\w+ "),
                            "FM lRet=0x77 dwStatus=0x180200a dwProblem=0x16", "FM ## vor FreeDllDLL_Load ",
                            "FM ## nach FreeDllDLL_Load ", "FE <<return lRet=0x77"));
}

TEST_F(DeviceState, Trace_extendedWithoutLibrary)
{
    const SetupInterface setup("no such folder");
    const TraceCapture capture;
    DCFG_GetDeviceStateEx("id", nullptr, &status, &problem);
    EXPECT_THAT(traced(capture, "DCFG_GetDeviceStateEx:"),
                ElementsAre("FA >>lpszHardwareId=id", "FM ## vor DLL_Load ", "FE error loading library 7e"));
}

TEST_F(DeviceState, Trace_plain)
{
    const SetupInterface setup("setup");
    const TraceCapture capture;
    DCFG_GetDeviceState("id", &status, &problem);
    EXPECT_THAT(traced(capture, "DCFG_GetDeviceState:"),
                ElementsAre("FA >>lpszHardwareId=id ", MatchesRegex("FM hiDll=0x\\w+ lpGetDevStateFkt=0x\\w+ "),
                            "FM lRet=0x77 dwStatus=0x180200a dwProblem=0x16", "FE <<return lRet=0x77"));
}

TEST_F(DeviceState, Trace_plainWithoutLibrary)
{
    const SetupInterface setup("no such folder");
    const TraceCapture capture("0x80");
    DCFG_GetDeviceState("id", &status, &problem);
    EXPECT_THAT(traced(capture, "DCFG_GetDeviceState:"), ElementsAre("FE <<return DCFG_ERR_CANT_FIND_DLL"));
}

TEST_F(DeviceState, Trace_missingFunction)
{
    const SetupInterface setup("nothing");
    const TraceCapture capture("0x80");
    DCFG_GetDeviceStateEx("id", nullptr, &status, &problem);
    DCFG_GetDeviceState("id", &status, &problem);
    EXPECT_THAT(traced(capture, "DCFG_GetDeviceStateEx:"), ElementsAre("FE <<return lRet=0x1fa8"));
    EXPECT_THAT(traced(capture, "DCFG_GetDeviceState:"), ElementsAre("FE <<return lRet=0x1fa8"));
}

// The programmer library answers from the registry.
class Programmer : public testing::Test
{
 protected:
    static RegistryText setting(const char* name, DWORD value)
    {
        return RegistryText(R"(SOFTWARE\TAVRONE\NORIX\Prommer)", name, REG_DWORD, &value, sizeof value);
    }
    const TraceCapture capture;
};

TEST_F(Programmer, None_isNeitherThereNorActive)
{
    EXPECT_EQ(DCFGM_IsPgWithInternalPrommer(), 0);
    EXPECT_EQ(DCFGM_IsInternalPrommerActive(), 0);
}

TEST_F(Programmer, Present_isForwarded)
{
    const RegistryText present = setting("InternalPrommer", 1);
    EXPECT_EQ(DCFGM_IsPgWithInternalPrommer(), 1);
    EXPECT_EQ(DCFGM_IsInternalPrommerActive(), 0);
}

TEST_F(Programmer, Active_isForwarded)
{
    const RegistryText present = setting("InternalPrommer", 1);
    const RegistryText active = setting("InternalPrommerActive", 1);
    EXPECT_EQ(DCFGM_IsInternalPrommerActive(), 1);
}

}  // namespace
