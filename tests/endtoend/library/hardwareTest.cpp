// Boards, instances, scanning and the panel through the library.
#include "kxovaapi.h"
#include "serverProgram.h"

namespace {

struct Hardware : WithServer
{
};

// The instances, one a line: map, device id, state.
std::string instances()
{
    std::string lines;
    for (unsigned long i = 0;; ++i) {
        char texts[6][260];
        unsigned long lengths[6] = {260, 260, 260, 260, 260, 260};
        DcfgEnumInstBoardInfo info{};
        info.size = sizeof info;
        info.BoardName = texts[0];
        info.BoardNameLength = 260;
        info.BoardMap = texts[1];
        info.BoardMapLength = 260;
        info.DeviceId = texts[2];
        info.DeviceIdLength = 260;
        info.NetType = texts[3];
        info.NetTypeLength = 260;
        info.HardwareId = texts[4];
        info.HardwareIdLength = 260;
        info.HardwareInstanceId = texts[5];
        info.HardwareInstanceIdLength = lengths[5];
        const long result = DCFG_EnumInstBoardEx(i, &info);
        if (result == 259) return lines;
        if (result != 0) return lines + "#" + std::to_string(result);
        lines += std::string(info.BoardMap, info.BoardMapLength) + " " +
                 std::string(info.DeviceId, info.DeviceIdLength) + " " + std::to_string(info.State) + "\n";
    }
}

bool has(const std::string& line)
{
    return ("\n" + instances()).find("\n" + line + "\n") != std::string::npos;
}

TEST_F(Hardware, PluggedIn_isFoundByAScanAndGetsLogicalDevices)
{
    ASSERT_EQ(runServerProgram(L"hardware add *TVRA011 --id KxovaTest\\1"), 0);
    EXPECT_FALSE(has("NX3110-1 *TVRA011 0"));
    EXPECT_EQ(DCFG_Scan(), 0);
    EXPECT_TRUE(has("NX3110-1 *TVRA011 0")) << instances();
    EXPECT_EQ(DCFG_HasUninitializedInstances(), 1);
    EXPECT_EQ(DCFG_CreateAllLogdevices(), 0);
    EXPECT_EQ(DCFG_HasUninitializedInstances(), 0);
    EXPECT_EQ(LogDeviceExists("NX3110-1.MPI", 0), 0);
    ASSERT_EQ(LogDeviceSetValue("NX3110-1.MPI", "highest_adr", "15"), 0);
    EXPECT_EQ(DCFG_UpdateLogdevicesForDevice("*TVRA011", "KxovaTest\\1"), 0);
    EXPECT_NE(text([](char* b, unsigned long* l) { return LogDeviceGetValue("NX3110-1.MPI", "highest_adr", b, l); }),
              "15");
    EXPECT_EQ(DCFG_SilentRestart("NX3110-1.MPI"), 0);
    ASSERT_EQ(runServerProgram(L"hardware remove KxovaTest\\1"), 0);
    EXPECT_EQ(DCFG_Scan(), 0);
    EXPECT_TRUE(has("NX3110-1 *TVRA011 45")) << instances();
    EXPECT_EQ(DCFG_SilentRestart("NX3110-1.MPI"), 1167);
    EXPECT_EQ(Panel_SendDeinstall("*TVRA011", "NX3110-1", ""), 0);
    EXPECT_FALSE(has("NX3110-1 *TVRA011 45"));
}

TEST_F(Hardware, InstalledByHand_comesAndGoes)
{
    EXPECT_EQ(Panel_SendInstall("*TVRA075", ""), 0);
    EXPECT_TRUE(has("NX8010-1 *TVRA075 0")) << instances();
    EXPECT_EQ(Panel_SendInstall("*TVRA020", ""), 8018);
    EXPECT_EQ(Panel_SendDeinstall("*TVRA075", "NX8010-1", nullptr), 0);
    EXPECT_FALSE(has("NX8010-1 *TVRA075 0"));
}

TEST_F(Hardware, BoardsAndAdapters_areEnumerated)
{
    char name[260];
    char map[260];
    char id[260];
    unsigned long lengths[3] = {260, 260, 260};
    EXPECT_EQ(DCFG_BoardGetEnum2("*TVRA020", 1, name, &lengths[0], map, &lengths[1], id, &lengths[2], true), 0);
    EXPECT_EQ(std::string(map, lengths[1]), "NX3210-2");
    unsigned long value = 7;
    EXPECT_EQ(pair([&](char* n, unsigned long* nl, char* v, unsigned long* vl) {
                  return DCFG_EnumAvailableBoards(0, n, nl, v, vl, &value);
              }),
              "*TVRA001=NX 110 ISA");
    EXPECT_EQ(value, 0u);
    EXPECT_EQ(pair([&](char* n, unsigned long* nl, char* v, unsigned long* vl) {
                  return DCFG_EnumAdapters(3, n, nl, v, vl, &value);
              }),
              "WLAN={0F4A1E60-5B7C-4D0B-9C55-0A4E58820001}");
    EXPECT_EQ(value, 3u);
    EXPECT_EQ(
        text([](char* b, unsigned long* l) { return DCFG_BoardGetMapEx("*TVRA024", "NX 4210 PCIe", "", b, l); }),
        "NX4210-1");
}

TEST_F(Hardware, BoardInfo_isTextOrBytes)
{
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return DCFG_GetBoardInfo(6, "NX 3210 PCIe", "", "", "DE", b, l);
              }).substr(0, 8),
              "Feldbus-");
    unsigned long state = 99;
    unsigned long size = sizeof state;
    EXPECT_EQ(DCFG_GetBoardInfoEx(11, "NX 5020 USB", "NX5020-1", "", &state, &size), 0);
    EXPECT_EQ(size, sizeof state);
    EXPECT_EQ(state, 45u);
    size = 3;
    EXPECT_EQ(DCFG_GetBoardInfoEx(11, "NX 5020 USB", "NX5020-1", "", &state, &size), 234);
}

TEST_F(Hardware, Configurations_areFiltered)
{
    const auto at = [](unsigned long index, const char* protocol) {
        char texts[4][260];
        unsigned long lengths[4] = {260, 260, 260, 260};
        const long result =
            DCFG_EnumConfiguration(index, "NX 3210 PCIe", protocol, "", "", texts[0], &lengths[0], texts[1],
                                   &lengths[1], texts[2], &lengths[2], texts[3], &lengths[3]);
        return result == 0 ? std::string(texts[0], lengths[0]) : std::to_string(result);
    };
    EXPECT_EQ(at(0, ""), "NX3210.MPI");
    EXPECT_EQ(at(0, "DP"), "NX3210.DP");
    EXPECT_EQ(at(1, "DP"), "259");
}

TEST_F(Hardware, PanelList_answersWithTexts)
{
    char buffer[2048] = {};
    unsigned long length = sizeof buffer;
    EXPECT_EQ(Panel_SendGetList(static_cast<char>(164), "*TVRA010", buffer, &length), 0);
    EXPECT_EQ(std::string(buffer, length), std::string("Isochronous\0", 12));
}

}  // namespace
