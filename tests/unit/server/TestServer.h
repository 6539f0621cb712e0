// The dispatcher over a store and a small catalogue, asked in bytes.
#pragma once

#include <gtest/gtest.h>

#include "Bytes.h"
#include "dispatch/Dispatcher.h"
#include "dispatch/operations.h"
#include "TestRegistry.h"

inline catalogue::Catalogue smallCatalogue()
{
    catalogue::Catalogue result;
    catalogue::Protocol mpi;
    mpi.name = L"MPI";
    mpi.busProfiles = {{L"0", L"dp", {{L"tslot", L"300"}}, {{L"1500000", {{L"tqui", L"0"}}}}},
                       {L"1", L"std", {{L"tslot", L"415"}}, {}}};
    mpi.tree.values = {{L"Alias", L"Multipoint"}, {L"CP_TYPE", L"MPI"}};
    catalogue::Node& params = mpi.tree.keys[L"Params"];
    params.values = {{L"highest_adr", L"31"}};
    params.keys[L"busparam"].keys[L"0"] = {{{L"tslot", L"300"}}, {{L"1500000", {{{L"tqui", L"0"}}, {}}}}};
    params.keys[L"busparam"].keys[L"1"].values = {{L"tslot", L"415"}};
    mpi.texts.byId[L"BusparamResource\\1"] = {{catalogue::Language::De, L"Normal"},
                                              {catalogue::Language::En, L"Standard"}};
    result.protocols.emplace(mpi.name, mpi);
    result.protocols[L"ISO"].name = L"ISO";

    catalogue::Board& board = result.boards[L"*TVRA010"];
    board.deviceId = L"*TVRA010";
    board.name = L"NX 200";
    board.tree.values = {{L"Alias", L"NX200"},
                         {L"BoardName", L"NX 200"},
                         {L"DescText", L"Built-in"},
                         {L"DeviceID", L"*TVRA010"},
                         {L"HardwareId", L"ACPI\\TVRA010"}};
    board.tree.keys[L"Resources"].values = {{L"IRQ", L"5,10, 11"}};
    board.texts.byId[L"DescText"] = {{catalogue::Language::De, L"Eingebaut"}, {catalogue::Language::En, L"Built-in"}};
    board.plugAndPlay = true;
    board.maps = {L"NX200-1", L"NX200-2"};
    board.notSupported = {L"Isochronous", L"DP"};
    board.configurations = {{L"NX1611.MPI", L"MPI", L"", L"1"}, {L"NX1611.ISO", L"ISO", L"TCP", L"2"}};

    catalogue::DefaultLogicalDevice device;
    device.name = L"NX1611.MPI";
    device.deviceId = L"*TVRA010";
    device.protocol = L"MPI";
    device.values = {
        {L"CP_TYPE", L"MPI"}, {L"DeviceID", L"*TVRA010"}, {L"baudrate", L"1500000"}, {L"busparam", L"1"}};
    device.ndiValues = {{L"PropSheet", L"nxprop.dll,ShowSheet"}};
    result.defaultLogicalDevices.emplace(device.name, device);
    catalogue::DefaultLogicalDevice plain;
    plain.name = L"ISO";
    plain.values = {{L"CP_TYPE", L"ISO"}};
    result.defaultLogicalDevices.emplace(plain.name, plain);
    result.logicalNames[L"NXVISU"].values = {{L"LogDevice", L""}};
    return result;
}

// A dispatcher and all that it works on.
struct DispatcherOver
{
    OpenStore now;
    catalogue::Catalogue catalogue = smallCatalogue();
    srv::Settings settings;
    srv::Machine machine;
    srv::Keys keys;
    srv::Dispatcher dispatcher;
    srv::Session session{1, srv::Via::Channel, 4711};

    DispatcherOver(srv::Registry& registry, srv::Registry& product, srv::Registry& system)
        : now(registry),
          settings(registry),
          machine(registry, catalogue, now.log),
          keys(now.store, product, system),
          dispatcher({now.store, catalogue, now.log, settings, machine, keys}, srv::allOperations())
    {}
};

struct TestRegistries
{
    TestKey key;
    srv::WindowsRegistry product = key.registry();
    srv::WindowsRegistry system{HKEY_CURRENT_USER, key.path() + L"\\Machine"};
    srv::WindowsRegistry registry{HKEY_CURRENT_USER, key.path() + L"\\NORIX"};
};

struct TestServer : testing::Test, TestRegistries, DispatcherOver
{
    using Bytes = bytes::Bytes;

    TestServer() : DispatcherOver(registry, product, system) {}

    void SetUp() override { now.open(); }

    Bytes ask(srv::Session& from, const Bytes& request)
    {
        Bytes space(8192, 0xEE);
        const auto answer = dispatcher.handle(from, request, space);
        return {answer.begin(), answer.end()};
    }
    Bytes ask(const Bytes& request) { return ask(session, request); }

    // A device made of the catalogue's first definition.
    void createDevice(std::u16string_view name)
    {
        using namespace bytes;
        ASSERT_EQ(ask(u16(43) + str(name) + str(u"NX1611.MPI")), reply(0));
    }
    Bytes value(std::u16string_view device, std::u16string_view parameter)
    {
        using namespace bytes;
        return ask(u16(33) + str(device) + str(parameter) + u32(260));
    }
    Bytes set(std::u16string_view device, std::u16string_view parameter, std::u16string_view text)
    {
        using namespace bytes;
        return ask(u16(34) + str(device) + str(parameter) + str(text));
    }
};
