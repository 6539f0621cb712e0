#include "listeners/StartEvent.h"

#include <gtest/gtest.h>

#include <optional>

#include "RunningServer.h"

namespace {

struct StartEventTest : testing::Test
{
    std::wstring name = L"KxovaTestEvent" + std::to_wstring(GetCurrentProcessId());

    // As clients do it: nothing if the event was not there before.
    srv::Handle asClient()
    {
        srv::Handle event(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
        if (GetLastError() != ERROR_ALREADY_EXISTS) event.reset();
        return event;
    }
    static bool isSet(const srv::Handle& event) { return WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0; }
};

TEST_F(StartEventTest, WhileTheServerStarts_clientsWait)
{
    srv::StartEvent event(name);
    const srv::Handle client = asClient();
    ASSERT_TRUE(client);
    EXPECT_FALSE(isSet(client));
    event.ready();
    EXPECT_TRUE(isSet(client));
    EXPECT_TRUE(isSet(client));  // it stays so
}

TEST_F(StartEventTest, ServerThatEndsBeforeItIsReady_letsItsClientsGo)
{
    std::optional<srv::StartEvent> event(name);
    const srv::Handle client = asClient();
    ASSERT_TRUE(client);
    event.reset();
    EXPECT_TRUE(isSet(client));
}

TEST_F(StartEventTest, WithoutServer_thereIsNoEvent)
{
    EXPECT_FALSE(asClient());
    {
        srv::StartEvent event(name);
    }
    EXPECT_FALSE(asClient());
}

TEST_F(StartEventTest, EventKeptByAClientOfADeadServer_isUsedAgain)
{
    const srv::Handle left(CreateEventW(nullptr, TRUE, TRUE, name.c_str()));
    srv::StartEvent event(name);
    EXPECT_FALSE(isSet(left));
    event.ready();
    EXPECT_TRUE(isSet(left));
}

struct ServerStartEvent : RunningServer
{
};

TEST_F(ServerStartEvent, IsSetWhileTheServerServesAndGoneAfter)
{
    const auto open = [&] { return srv::Handle(OpenEventW(SYNCHRONIZE, FALSE, places.startEvent.c_str())); };
    EXPECT_EQ(WaitForSingleObject(open().get(), 0), WAIT_OBJECT_0);
    ASSERT_TRUE(server->stop(5000));
    EXPECT_FALSE(open());
}

}  // namespace
