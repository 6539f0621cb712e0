// Changes of logical devices and names, made in one process and told in another.
#include "Clients.h"
#include "handle_count.h"
#include "kxonlinx.h"

namespace {

using Changes = Clients;

TEST_F(Changes, ChangeByAnotherProcess_wakesTheEvent)
{
    const Registered event("e2e");
    ASSERT_EQ(event.result(), 0u);
    EXPECT_FALSE(event.wakes(0));
    otherSets(L"1");
    EXPECT_TRUE(event.wakes());
}

TEST_F(Changes, OwnChange_wakesTheEvent)
{
    const Registered event("e2e");
    ASSERT_EQ(LogDeviceSetValue(device, "note", "own"), 0);
    EXPECT_TRUE(event.wakes());
}

TEST_F(Changes, ChangedName_wakesTheEventOfNamesAlone)
{
    const Registered devices("e2e d");
    const Registered names("e2e n", nullptr, LogNameNotifyChange, LogNameUnregisterNotifyChange);
    LogNameCreate("e2e name");
    ASSERT_TRUE(names.wakes());
    ASSERT_EQ(other(L"name \"e2e name\" \"e2e device\""), "result 0");
    EXPECT_TRUE(names.wakes());
    EXPECT_FALSE(devices.wakes(0));
    LogNameSetValue("e2e name", "enable_delete", "true");
    LogNameDel("e2e name");
}

TEST_F(Changes, Unregistered_isNotWoken)
{
    const Registered ended("e2e a");
    const Registered behind("e2e b");
    ASSERT_EQ(ended.unregister(), 0u);
    otherSets(L"2");
    ASSERT_TRUE(behind.wakes());
    EXPECT_FALSE(ended.wakes(0)) << "it was registered first and would have been told first";
    EXPECT_EQ(ended.unregister(), 8012u);
}

TEST_F(Changes, UnregisteredName_isNotWoken)
{
    const Registered ended("e2e a", nullptr, LogNameNotifyChange, LogNameUnregisterNotifyChange);
    const Registered behind("e2e b", nullptr, LogNameNotifyChange, LogNameUnregisterNotifyChange);
    ASSERT_EQ(ended.unregister(), 0u) << "the two requests name the event differently";
    LogNameCreate("e2e name");
    ASSERT_TRUE(behind.wakes());
    EXPECT_FALSE(ended.wakes(0));
    LogNameSetValue("e2e name", "enable_delete", "true");
    LogNameDel("e2e name");
}

TEST_F(Changes, Subject_isTheOnlyDeviceThatWakes)
{
    const Registered another("e2e a", "another device");
    const Registered this_("e2e b", "E2E DEVICE");
    otherSets(L"3");
    ASSERT_TRUE(this_.wakes());
    EXPECT_FALSE(another.wakes(0));
}

TEST_F(Changes, TenThousandChanges_endWithAWakeUpThatShowsTheLast)
{
    const Registered event("e2e");
    Process changing(L"notify_client.exe", L"burst \"e2e device\" note 10000");
    char value[260] = {};
    int wakeUps = 0;
    while (std::string(value) != "10000" && event.wakes()) {
        ++wakeUps;
        unsigned long length = sizeof value;
        ASSERT_EQ(LogDeviceGetValue(device, "note", value, &length), 0);
    }
    EXPECT_STREQ(value, "10000");
    EXPECT_LE(wakeUps, 10'000);
    EXPECT_EQ(changing.exitStatus(), 0);
}

TEST_F(Changes, ClientThatDied_costsNobodyAnything)
{
    Process client(L"notify_client.exe", L"listen");
    ASSERT_TRUE(client.prints("listening 0"));
    client.kill();
    const Registered event("e2e");
    otherSets(L"4");
    EXPECT_TRUE(event.wakes());
}

TEST_F(Changes, ClientThatHangs_delaysNobody)
{
    Process client(L"notify_client.exe", L"listen");
    ASSERT_TRUE(client.prints("listening 0"));
    client.suspend();
    const Registered event("e2e");
    for (int i = 0; i < 500; ++i)
        ASSERT_EQ(LogDeviceSetValue(device, "note", std::to_string(i).c_str()), 0);
    EXPECT_TRUE(event.wakes());
}

TEST_F(Changes, ChannelsThatListenAndClose_leaveNoHandleAndNoThread)
{
    const HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const auto cycle = [&] {
        const int channel = SCP_openW(L"KXOVASCP");
        ASSERT_EQ(SetNorixHWndMsg(channel, window, 1036), 0);
        ASSERT_EQ(SCP_close(channel), 0);
    };
    const auto settled = [](std::size_t count) {
        for (const DWORD start = GetTickCount(); handleCount() > count; Sleep(1))
            if (GetTickCount() - start > longest) return false;
        return true;
    };
    const std::size_t before = handleCount();
    cycle();
    ASSERT_TRUE(settled(before + 2)) << "the library's own, for the rest of its life";
    const std::size_t first = handleCount();
    for (int i = 0; i < 50; ++i)
        cycle();
    EXPECT_TRUE(settled(first)) << first << " first, now " << handleCount();
    DestroyWindow(window);
}

TEST_F(Changes, Flush_isAnsweredByTheServer)
{
    EXPECT_EQ(LogDeviceFlush(), 0u);
    otherSets(L"5");
    EXPECT_EQ(LogDeviceFlush(), 0u);
}

TEST_F(Changes, RestartedServer_tellsAgain)
{
    const Registered event("e2e");
    server->stop();
    EXPECT_EQ(LogDeviceFlush(), 8012u);
    server->start();
    ASSERT_TRUE(event.wakes()) << "what changed meanwhile is unknown";
    otherSets(L"6");
    EXPECT_TRUE(event.wakes());
    EXPECT_EQ(event.unregister(), 0u) << "the server knows the registration";
}

TEST_F(Changes, KilledServer_tellsAgainWhenThereIsAnother)
{
    const Registered event("e2e");
    server->kill();
    server->start();
    ASSERT_TRUE(event.wakes());
    otherSets(L"7");
    EXPECT_TRUE(event.wakes());
}

}  // namespace
