// A server that is killed while it writes instances, at every step.
#include <gtest/gtest.h>

#include "MachineTest.h"

namespace {

// What is done to a machine whose registry is its own; returns whether it was done to the end before the kill.
template <typename What>
bool killedAfter(unsigned calls, srv::Registry& registry, const catalogue::Catalogue& catalogue, srv::Log& log,
                 What what)
{
    WatchedRegistry dying(registry, [calls](unsigned call) -> LSTATUS {
        if (call == calls) throw Killed{};
        return ERROR_SUCCESS;
    });
    srv::Machine machine(dying, catalogue, log);
    try {
        what(machine);
        return true;
    } catch (const Killed&) {
        return false;
    }
}

struct MachineKilled : MachineTest
{
    MachineKilled()
    {
        unplug(firstId);
        srv::HardwareDevice first = device(firstId);
        first.boardMap = L"NX200-1";
        first.netType = L"MPI";
        srv::HardwareDevice simulated;
        simulated.deviceId = L"*TVRA081";
        simulated.boardMap = L"NXSIM-1";
        simulated.netType = L"ISO";
        simulated.hardwareInstanceId = L"ROOT\\TVRA081\\0000";
        catalogue.installedBoards = {first, simulated};
    }
    std::size_t instances()
    {
        std::vector<srv::HardwareDevice> devices;
        EXPECT_EQ(machine.instances(devices), 0u);
        return devices.size();
    }
};

TEST_F(MachineKilled, FirstStart_isFinishedByTheNextServer)
{
    bool done = false;
    for (unsigned calls = 0; !done; ++calls) {
        registry.deleteKey(L"Hardware");
        registry.deleteKey(L"Instances");
        done = killedAfter(calls, registry, catalogue, now.log, [](srv::Machine& first) { first.open(); });
        srv::Machine later(registry, catalogue, now.log);
        ASSERT_EQ(later.open(), 0u);
        ASSERT_EQ(instances(), 2u) << "killed before call " << calls;
    }
}

TEST_F(MachineKilled, InstallingAndRemoving_leavesTheInstanceWholeOrNotThere)
{
    ASSERT_EQ(machine.open(), 0u);
    bool done = false;
    for (unsigned calls = 0; !done; ++calls) {
        done = killedAfter(calls, registry, catalogue, now.log,
                           [](srv::Machine& dying) { dying.install(L"*TVRA081", L"NXSIM-2"); });
        ASSERT_EQ(instances(), done ? 3u : 2u) << "killed before call " << calls;
    }
    const auto remove = [](srv::Machine& dying) { dying.deinstall(L"*TVRA081", L"NXSIM-2", {}); };
    EXPECT_FALSE(killedAfter(0, registry, catalogue, now.log, remove));
    EXPECT_EQ(instances(), 3u);
    EXPECT_FALSE(killedAfter(1, registry, catalogue, now.log, remove));
    EXPECT_EQ(instances(), 2u);
}

TEST_F(MachineKilled, Removing_canBeFollowedByInstallingAgain)
{
    ASSERT_EQ(machine.open(), 0u);
    ASSERT_EQ(machine.install(L"*TVRA081", L"NXSIM-2"), 0u);
    killedAfter(1, registry, catalogue, now.log,
                [](srv::Machine& dying) { dying.deinstall(L"*TVRA081", L"NXSIM-2", {}); });
    EXPECT_EQ(machine.install(L"*TVRA081", L"NXSIM-2"), 0u);
    EXPECT_EQ(instances(), 3u);
}

}  // namespace
