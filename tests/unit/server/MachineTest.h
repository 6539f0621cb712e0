// The dispatcher over a machine with some hardware.
#pragma once

#include "TestServer.h"

struct MachineTest : TestServer
{
    static constexpr wchar_t firstId[] = L"ACPI\\TVRA010\\0";
    static constexpr wchar_t secondId[] = L"ACPI\\TVRA010\\1";

    MachineTest()
    {
        catalogue::DefaultLogicalDevice iso = catalogue.defaultLogicalDevices[L"NX1611.MPI"];
        iso.name = L"NX1611.ISO";
        iso.protocol = L"ISO";
        iso.values[L"CP_TYPE"] = L"ISO";
        catalogue.defaultLogicalDevices.emplace(iso.name, iso);
        catalogue::Board& simulation = catalogue.boards[L"*TVRA081"];
        simulation.deviceId = L"*TVRA081";
        simulation.name = L"NX Simulation";
        simulation.tree.values = {{L"Alias", L"NXSIM"}};
        simulation.maps = {L"NXSIM-1", L"NXSIM-2"};
        simulation.configurations = {{L"ISO", L"ISO", L"", L""}};
        catalogue.adapters = {{L"Ethernet", L"{1}", 1}, {L"WLAN", L"{2}", 3}};
        plug(firstId);
    }

    static srv::HardwareDevice device(std::wstring_view hardwareInstanceId)
    {
        srv::HardwareDevice result;
        result.deviceId = L"*TVRA010";
        result.hardwareId = L"ACPI\\TVRA010";
        result.hardwareInstanceId = hardwareInstanceId;
        return result;
    }
    srv::DeviceList hardware() { return {registry, srv::hardwareKey}; }
    void plug(const srv::HardwareDevice& device) { EXPECT_EQ(hardware().put(device), ERROR_SUCCESS); }
    void plug(std::wstring_view hardwareInstanceId) { plug(device(hardwareInstanceId)); }
    void unplug(std::wstring_view hardwareInstanceId)
    {
        EXPECT_EQ(hardware().remove(hardwareInstanceId), ERROR_SUCCESS);
    }

    Bytes scan()
    {
        using namespace bytes;
        return ask(u16(199));
    }
    Bytes instanceAt(std::uint32_t index)
    {
        using namespace bytes;
        return ask(u16(192) + u32(index) + u32(260) + u32(260) + u32(260) + u32(260) + u32(260) + u32(260));
    }
    static Bytes instance(std::u16string_view id, std::u16string_view map, std::uint32_t state = 0)
    {
        using namespace bytes;
        return reply(0, replyStr(u"NX 200") + replyStr(u"*TVRA010") + replyStr(u"MPI") + replyStr(u"ACPI\\TVRA010") +
                            replyStr(id) + replyStr(map) + u32(state));
    }
    Bytes install(std::u16string_view deviceId, std::u16string_view map)
    {
        using namespace bytes;
        return ask(u16(5) + str(deviceId) + str(map));
    }
    Bytes deinstall(std::u16string_view deviceId, std::u16string_view map, std::u16string_view id)
    {
        using namespace bytes;
        return ask(u16(6) + str(deviceId) + str(map) + str(id));
    }
    Bytes exists(std::u16string_view device)
    {
        using namespace bytes;
        return ask(u16(42) + str(device) + u32(0));
    }
};
