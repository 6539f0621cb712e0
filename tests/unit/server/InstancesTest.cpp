// Instances of boards: scanning, installing, restarting, in bytes.
#include <gtest/gtest.h>

#include "MachineTest.h"

using namespace bytes;

namespace {

TEST_F(MachineTest, Scan_makesAnInstanceOfWhatIsPluggedIn)
{
    EXPECT_EQ(instanceAt(0), reply(259));
    EXPECT_EQ(scan(), reply(0));
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
    EXPECT_EQ(instanceAt(1), reply(259));
}

TEST_F(MachineTest, ScanAgain_changesNothing)
{
    scan();
    EXPECT_EQ(scan(), reply(0));
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
    EXPECT_EQ(instanceAt(1), reply(259));
}

TEST_F(MachineTest, WhatIsPulledOut_keepsItsInstanceAsNotConnected)
{
    scan();
    unplug(firstId);
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
    EXPECT_EQ(scan(), reply(0));
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1", 45));
    plug(firstId);
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
}

TEST_F(MachineTest, EachInstance_getsTheFirstFreeMap)
{
    scan();
    plug(secondId);
    scan();
    EXPECT_EQ(instanceAt(1), instance(u"ACPI\\TVRA010\\1", u"NX200-2"));
    EXPECT_EQ(deinstall(u"*TVRA010", u"NX200-1", u""), reply(0));
    unplug(firstId);
    plug(L"ACPI\\TVRA010\\2");
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\2", u"NX200-1"));
}

TEST_F(MachineTest, Scan_takesMapNetTypeAndStateOfTheHardware)
{
    srv::HardwareDevice wished = device(firstId);
    wished.boardMap = L"nx200-2";
    wished.netType = L"iso";
    wished.state = 22;
    plug(wished);
    scan();
    EXPECT_EQ(instanceAt(0),
              reply(0, replyStr(u"NX 200") + replyStr(u"*TVRA010") + replyStr(u"ISO") + replyStr(u"ACPI\\TVRA010") +
                           replyStr(u"ACPI\\TVRA010\\0") + replyStr(u"NX200-2") + u32(22)));
}

TEST_F(MachineTest, MoreHardwareThanMaps_is1816AndTheRestIsFound)
{
    plug(secondId);
    plug(L"ACPI\\TVRA010\\2");
    EXPECT_EQ(scan(), reply(1816));
    EXPECT_EQ(instanceAt(1), instance(u"ACPI\\TVRA010\\1", u"NX200-2"));
    EXPECT_EQ(instanceAt(2), reply(259));
}

TEST_F(MachineTest, HardwareThatTheCatalogueDoesNotKnow_isLeftAlone)
{
    srv::HardwareDevice foreign = device(secondId);
    foreign.deviceId = L"*TVRA999";
    plug(foreign);
    EXPECT_EQ(scan(), reply(0));
    EXPECT_EQ(instanceAt(1), reply(259));
}

TEST_F(MachineTest, EnumInstBoard_eachTextHasItsOwnCapacity)
{
    scan();
    const std::uint32_t enough[] = {7, 9, 4, 13, 15, 8};
    for (int shortOne = -1; shortOne < 6; ++shortOne) {
        Bytes request = u16(192) + u32(0);
        for (int i = 0; i < 6; ++i)
            request = request + u32(enough[i] - (i == shortOne ? 1 : 0));
        EXPECT_EQ(ask(request), shortOne < 0 ? instance(u"ACPI\\TVRA010\\0", u"NX200-1") : reply(234)) << shortOne;
    }
}

TEST_F(MachineTest, BoardGetEnum2_walksTheInstancesOfABoardAndTheNextMap)
{
    const auto at = [&](std::u16string_view board, std::uint32_t index, std::uint32_t newMap) {
        return ask(u16(193) + str(board) + u32(index) + u32(260) + u32(260) + u32(260) + u32(newMap));
    };
    scan();
    const Bytes first = reply(0, replyStr(u"NX 200") + replyStr(u"NX200-1") + replyStr(u"ACPI\\TVRA010\\0"));
    EXPECT_EQ(at(u"*TVRA010", 0, 0), first);
    EXPECT_EQ(at(u"", 0, 1), first);
    EXPECT_EQ(at(u"*TVRA010", 1, 0), reply(259));
    EXPECT_EQ(at(u"*TVRA010", 1, 1), reply(0, replyStr(u"NX 200") + replyStr(u"NX200-2") + replyStr(u"")));
    EXPECT_EQ(at(u"*TVRA010", 2, 1), reply(259));
    EXPECT_EQ(at(u"", 1, 1), reply(259));
    EXPECT_EQ(at(u"none", 0, 1), reply(8012));
}

TEST_F(MachineTest, AvailableBoards_areThoseWithAMapLeft)
{
    const auto at = [&](std::uint32_t index) { return ask(u16(194) + u32(index) + u32(260) + u32(260)); };
    const Bytes plugAndPlay = reply(0, replyStr(u"*TVRA010") + replyStr(u"NX 200") + u32(1));
    const Bytes byHand = reply(0, replyStr(u"*TVRA081") + replyStr(u"NX Simulation") + u32(0));
    EXPECT_EQ(at(0), plugAndPlay);
    EXPECT_EQ(at(1), byHand);
    EXPECT_EQ(at(2), reply(259));
    plug(secondId);
    scan();
    EXPECT_EQ(at(0), byHand);
    EXPECT_EQ(at(1), reply(259));
    EXPECT_EQ(ask(u16(194) + u32(0) + u32(8) + u32(260)), reply(234));
}

TEST_F(MachineTest, Adapters_areToldWithTheirFlag)
{
    EXPECT_EQ(ask(u16(197) + u32(1) + u32(260) + u32(260)), reply(0, replyStr(u"WLAN") + replyStr(u"{2}") + u8(3)));
    EXPECT_EQ(ask(u16(197) + u32(2) + u32(260) + u32(260)), reply(259));
    EXPECT_EQ(ask(u16(197) + u32(1) + u32(4) + u32(260)), reply(234));
    EXPECT_EQ(ask(u16(197) + u32(1) + u32(5) + u32(3)), reply(234));
}

TEST_F(MachineTest, MapEx_findsTheInstanceOnAnAdapter)
{
    const auto map = [&](std::u16string_view board, const Bytes& adapter, const Bytes& id) {
        return ask(u16(163) + str(board) + adapter + id + u32(260));
    };
    srv::HardwareDevice second = device(secondId);
    second.adapter = L"{2}";
    plug(second);
    scan();
    EXPECT_EQ(map(u"*TVRA010", null(), null()), reply(0, replyStr(u"NX200-1")));
    EXPECT_EQ(map(u"*TVRA010", str(u"{2}"), str(u"")), reply(0, replyStr(u"NX200-2")));
    EXPECT_EQ(map(u"*TVRA010", str(u"wlan"), null()), reply(0, replyStr(u"NX200-2")));
    EXPECT_EQ(map(u"*TVRA010", null(), str(u"acpi\\tvra010\\1")), reply(0, replyStr(u"NX200-2")));
    EXPECT_EQ(map(u"*TVRA010", str(u"{1}"), null()), reply(8012));
    EXPECT_EQ(map(u"none", null(), null()), reply(8012));
}

TEST_F(MachineTest, BoardInfo_isToldAsText)
{
    const auto info = [&](std::uint32_t what, const Bytes& map, std::u16string_view language = u"") {
        return ask(u16(195) + u32(what) + str(u"NX 200") + map + null() + str(language) + u32(260));
    };
    EXPECT_EQ(info(0, null()), reply(0, replyStr(u"NX 200")));
    EXPECT_EQ(info(1, null()), reply(0, replyStr(u"*TVRA010")));
    EXPECT_EQ(info(3, null()), reply(8012));  // this board has no such value
    EXPECT_EQ(info(6, null(), u"DE"), reply(0, replyStr(u"Eingebaut")));
    EXPECT_EQ(info(9, null()), reply(8012));
    EXPECT_EQ(info(12, null()), reply(0, replyStr(u"0")));
    scan();
    EXPECT_EQ(info(9, null()), reply(0, replyStr(u"ACPI\\TVRA010\\0")));
    EXPECT_EQ(info(7, str(u"NX200-1")), reply(0, replyStr(u"NX200-1")));
    EXPECT_EQ(info(7, str(u"NX200-2")), reply(8012));
    EXPECT_EQ(info(11, null()), reply(0, replyStr(u"0")));
    EXPECT_EQ(info(12, null()), reply(0, replyStr(u"1")));
    EXPECT_EQ(info(13, null()), reply(87));
    EXPECT_EQ(ask(u16(195) + u32(0) + str(u"none") + null() + null() + null() + u32(260)), reply(8012));
    EXPECT_EQ(ask(u16(195) + u32(0) + str(u"NX 200") + null() + null() + null() + u32(6)), reply(234));
}

TEST_F(MachineTest, BoardInfoEx_isToldAsBytesWithinTheCapacity)
{
    const auto info = [&](std::uint32_t what, std::uint32_t capacity) {
        return ask(u16(207) + u32(what) + str(u"NX 200") + str(u"") + str(u"") + u32(capacity));
    };
    const Bytes name{'N', 'X', ' ', '2', '0', '0', 0};
    EXPECT_EQ(info(0, 7), reply(0, u32(7) + name));
    EXPECT_EQ(info(0, 6), reply(234));
    EXPECT_EQ(info(12, 4), reply(0, u32(4) + u32(0)));
    EXPECT_EQ(info(12, 3), reply(234));
    EXPECT_EQ(info(99, 4), reply(87));
}

TEST_F(MachineTest, Install_givesABoardThatIsNoPlugAndPlayAnInstance)
{
    EXPECT_EQ(install(u"*tvra081", u""), reply(0));
    EXPECT_EQ(install(u"*TVRA081", u"nxsim-2"), reply(0));
    EXPECT_EQ(instanceAt(1),
              reply(0, replyStr(u"NX Simulation") + replyStr(u"*TVRA081") + replyStr(u"ISO") + replyStr(u"*TVRA081") +
                           replyStr(u"ROOT\\TVRA081\\0001") + replyStr(u"NXSIM-2") + u32(0)));
    EXPECT_EQ(install(u"*TVRA081", u""), reply(1816));
    EXPECT_EQ(install(u"*TVRA081", u"NXSIM-1"), reply(183));
    EXPECT_EQ(install(u"*TVRA081", u"NXSIM-3"), reply(8012));
    EXPECT_EQ(install(u"*TVRA010", u""), reply(8018));
    EXPECT_EQ(install(u"none", u""), reply(8012));
}

TEST_F(MachineTest, InstalledByHand_isNotConcernedByAScan)
{
    install(u"*TVRA081", u"");
    unplug(firstId);
    const Bytes before = instanceAt(0);
    scan();
    EXPECT_EQ(instanceAt(0), before);
}

TEST_F(MachineTest, Deinstall_needsToBeUnambiguous)
{
    plug(secondId);
    scan();
    EXPECT_EQ(deinstall(u"*TVRA010", u"", u""), reply(87));
    EXPECT_EQ(deinstall(u"*TVRA010", u"NX200-1", u"ACPI\\TVRA010\\1"), reply(8012));
    EXPECT_EQ(deinstall(u"*TVRA010", u"", u"acpi\\tvra010\\1"), reply(0));
    EXPECT_EQ(deinstall(u"*TVRA010", u"", u""), reply(0));
    EXPECT_EQ(deinstall(u"*TVRA010", u"", u""), reply(8012));
    EXPECT_EQ(instanceAt(0), reply(259));
}

TEST_F(MachineTest, Restart_startsWhatWaitsForIt)
{
    srv::HardwareDevice waiting = device(firstId);
    waiting.state = 14;
    plug(waiting);
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1", 14));
    EXPECT_EQ(ask(u16(288) + str(u"nx200-1")), reply(0));
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
}

TEST_F(MachineTest, Restart_isAskedForByLogicalDeviceMapOrHardwareInstance)
{
    scan();
    ask(u16(201));
    for (const char16_t* const name : {u"NX200-1.MPI", u"NX200-1", u"ACPI\\TVRA010\\0"})
        EXPECT_EQ(ask(u16(288) + str(name)), reply(0));
    EXPECT_EQ(ask(u16(288) + str(u"none")), reply(8012));
    EXPECT_EQ(ask(u16(288) + str(u"")), reply(87));
}

TEST_F(MachineTest, Restart_ofWhatDoesNotWork_isTold)
{
    srv::HardwareDevice disabled = device(firstId);
    disabled.state = 22;
    plug(disabled);
    scan();
    EXPECT_EQ(ask(u16(288) + str(u"NX200-1")), reply(4319));
    unplug(firstId);
    EXPECT_EQ(ask(u16(288) + str(u"NX200-1")), reply(1167));
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1", 45));
}

TEST_F(MachineTest, CreateAllLogdevices_makesOneForEachUseOfEachInstance)
{
    scan();
    EXPECT_EQ(ask(u16(88)), reply(1));
    EXPECT_EQ(ask(u16(201)), reply(0));
    EXPECT_EQ(ask(u16(88)), reply(0));
    EXPECT_EQ(ask(u16(208) + u32(4080)), reply(0, list(item(u"NX200-1.ISO") + item(u"NX200-1.MPI"))));
    EXPECT_EQ(value(u"NX200-1.MPI", u"BoardMap"), reply(0, replyStr(u"NX200-1")));
    EXPECT_EQ(value(u"NX200-1.MPI", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(ask(u16(114) + str(u"NX200-1.MPI") + str(u"PropSheet") + u32(260) + u32(1)),
              reply(0, replyStr(u"nxprop.dll,ShowSheet")));
}

TEST_F(MachineTest, CreateAllLogdevices_leavesWhatIsThereAndWhatIsNotConnected)
{
    scan();
    ask(u16(201));
    set(u"NX200-1.MPI", u"busparam", u"3");
    ask(u16(50) + str(u"NX200-1.ISO") + u32(0));
    EXPECT_EQ(ask(u16(201)), reply(0));
    EXPECT_EQ(value(u"NX200-1.MPI", u"busparam"), reply(0, replyStr(u"3")));
    EXPECT_EQ(exists(u"NX200-1.ISO"), reply(8012));
    plug(secondId);
    scan();
    unplug(secondId);
    scan();
    EXPECT_EQ(ask(u16(88)), reply(0));
    EXPECT_EQ(ask(u16(201)), reply(0));
    EXPECT_EQ(exists(u"NX200-2.MPI"), reply(8012));
}

TEST_F(MachineTest, UpdateLogdevices_makesThoseOfTheDeviceAnew)
{
    const auto update = [&](const Bytes& deviceId, const Bytes& hardwareId) {
        return ask(u16(200) + deviceId + hardwareId);
    };
    plug(secondId);
    scan();
    ask(u16(201));
    for (const char16_t* const name : {u"NX200-1.MPI", u"NX200-2.MPI"})
        set(name, u"busparam", u"3");
    EXPECT_EQ(update(str(u"*TVRA010"), str(u"acpi\\tvra010\\1")), reply(0));
    EXPECT_EQ(value(u"NX200-1.MPI", u"busparam"), reply(0, replyStr(u"3")));
    EXPECT_EQ(value(u"NX200-2.MPI", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(update(null(), str(u"ACPI\\TVRA010")), reply(0));
    EXPECT_EQ(value(u"NX200-1.MPI", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(update(str(u"*TVRA081"), null()), reply(8012));
    EXPECT_EQ(update(str(u"*TVRA010"), str(u"none")), reply(8012));
}

TEST_F(MachineTest, UpdateLogdevices_keepsAnotherBoardsDeviceOfTheSameName)
{
    createDevice(u"NX200-1.MPI");
    set(u"NX200-1.MPI", u"DeviceID", u"*TVRA081");
    scan();
    EXPECT_EQ(ask(u16(200) + str(u"*TVRA010") + null()), reply(0));
    EXPECT_EQ(value(u"NX200-1.MPI", u"DeviceID"), reply(0, replyStr(u"*TVRA081")));
    EXPECT_EQ(exists(u"NX200-1.ISO"), reply(0));
}

TEST_F(MachineTest, CataloguesHardware_isThereOnTheFirstStartAlone)
{
    unplug(firstId);
    srv::HardwareDevice first = device(firstId);
    first.boardMap = L"NX200-2";
    first.netType = L"MPI";
    srv::HardwareDevice simulated;
    simulated.deviceId = L"*TVRA081";
    simulated.boardMap = L"NXSIM-1";
    simulated.netType = L"ISO";
    simulated.hardwareInstanceId = L"ROOT\\TVRA081\\0000";
    catalogue.installedBoards = {first, simulated};
    EXPECT_EQ(machine.open(), 0u);
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-2"));
    EXPECT_EQ(deinstall(u"*TVRA081", u"", u""), reply(0));
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-2"));

    srv::Machine later(registry, catalogue, now.log);
    EXPECT_EQ(later.open(), 0u);
    EXPECT_EQ(instanceAt(1), reply(259));
}

TEST_F(MachineTest, CataloguesHardwareThatIsNotConnected_isNotPluggedIn)
{
    unplug(firstId);
    srv::HardwareDevice away = device(firstId);
    away.boardMap = L"NX200-1";
    away.netType = L"MPI";
    away.state = 45;
    catalogue.installedBoards = {away};
    ASSERT_EQ(machine.open(), 0u);
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1", 45));
    plug(firstId);
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
}

TEST_F(MachineTest, InstanceThatWasNeverFinished_doesNotCount)
{
    ASSERT_EQ(registry.createKey(L"Instances\\ACPI#TVRA010#7"), ERROR_SUCCESS);
    EXPECT_EQ(instanceAt(0), reply(259));
    scan();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
}

}  // namespace
