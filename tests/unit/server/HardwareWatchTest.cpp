// What is told of hardware that comes and goes.
#include "hardware/HardwareWatch.h"

#include <gtest/gtest.h>

#include "MachineTest.h"

namespace {

struct HardwareWatchTest : MachineTest
{
    std::vector<std::wstring> told;
    srv::HardwareWatch watch{registry, [this](bool came, const srv::HardwareDevice& device) {
                                 told.push_back((came ? L"+" : L"-") + device.hardwareInstanceId);
                             }};
};

TEST_F(HardwareWatchTest, WhatWasThereBefore_isNotTold)
{
    watch.begin();
    watch.look();
    EXPECT_TRUE(told.empty());
}

TEST_F(HardwareWatchTest, WhatComesAndGoes_isToldOnce)
{
    watch.begin();
    plug(secondId);
    unplug(firstId);
    watch.look();
    watch.look();
    EXPECT_EQ(told, (std::vector<std::wstring>{L"-ACPI\\TVRA010\\0", L"+ACPI\\TVRA010\\1"}));
}

TEST_F(HardwareWatchTest, ChangeOfState_isNotTold)
{
    watch.begin();
    srv::HardwareDevice disabled = device(firstId);
    disabled.state = 22;
    plug(disabled);
    watch.look();
    EXPECT_TRUE(told.empty());
}

}  // namespace
