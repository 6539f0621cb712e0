// Hardware changes that the system reports to the server.
#include <gtest/gtest.h>
#include <windows.h>

#include <dbt.h>

#include <array>
#include <cstring>
#include <cwchar>

#include "notifications/SystemHardware.h"
#include "wire/notifications.h"

namespace {

const GUID usb = {0xA5DCBF10, 0x6530, 0x11D2, {0x90, 0x1F, 0x00, 0xC0, 0x4F, 0xB9, 0x51, 0xED}};

struct Report
{
    DEV_BROADCAST_DEVICEINTERFACE_W head;
    wchar_t more[32];
};

Report reportOf(const wchar_t* name)
{
    Report report{};
    report.head.dbcc_size = sizeof report;
    report.head.dbcc_devicetype = DBT_DEVTYP_DEVICEINTERFACE;
    report.head.dbcc_classguid = usb;
    std::wcscpy(report.head.dbcc_name, name);
    return report;
}

struct SystemHardwareTest : testing::Test
{
    srv::Log log{srv::Level::Error};
    srv::Notifications notifications{log};
    srv::SystemHardware hardware{notifications, log};
    std::shared_ptr<srv::Subscriber> subscriber = notifications.subscriber(1, 1);
    std::unique_ptr<srv::Listener> listener = notifications.listen(subscriber);

    void SetUp() override
    {
        ASSERT_TRUE(hardware.start());
        ASSERT_EQ(notifications.addClass(*subscriber, usb), 0u);
    }
    void report(WPARAM what, const wchar_t* name)
    {
        Report report = reportOf(name);
        SendMessageW(hardware.window(), WM_DEVICECHANGE, what, reinterpret_cast<LPARAM>(&report));
    }
};

TEST_F(SystemHardwareTest, ArrivalAndRemoval_areTold)
{
    report(DBT_DEVICEARRIVAL, L"stick");
    report(DBT_DEVICEREMOVECOMPLETE, L"stick");
    const auto message = listener->next();
    ASSERT_EQ(message.size(), 82u + 16);
    std::array<std::uint32_t, 4> items;
    std::memcpy(items.data(), message.data() + 82, sizeof items);
    EXPECT_EQ(items[0], 0x219u);
    const auto arrived = notifications.hardwareChange(items[1]);
    const auto removed = notifications.hardwareChange(items[3]);
    ASSERT_TRUE(arrived && removed);
    EXPECT_EQ(arrived->code, 1);
    EXPECT_EQ(removed->code, 2);
    EXPECT_EQ(arrived->name, L"stick");
    EXPECT_TRUE(IsEqualGUID(arrived->interfaceClass, usb));
}

TEST_F(SystemHardwareTest, OtherReports_areNotTold)
{
    report(DBT_DEVICEQUERYREMOVE, L"stick");
    SendMessageW(hardware.window(), WM_DEVICECHANGE, 7, 0);
    Report volume = reportOf(L"");
    volume.head.dbcc_devicetype = DBT_DEVTYP_VOLUME;
    SendMessageW(hardware.window(), WM_DEVICECHANGE, DBT_DEVICEARRIVAL, reinterpret_cast<LPARAM>(&volume));
    EXPECT_TRUE(listener->next().empty());
}

TEST_F(SystemHardwareTest, Stop_takesTheWindowAway)
{
    const HWND window = hardware.window();
    hardware.stop();
    EXPECT_FALSE(IsWindow(window));
}

}  // namespace
