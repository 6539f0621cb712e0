// The pipe client and a server that is not there, or not yet.

#include <winternl.h>

#include <future>

#include "handle_count.h"
#include "pipeFixture.h"

namespace {

// How many handles all processes have to the object.
ULONG handlesTo(HANDLE object)
{
    struct BasicInformation
    {
        ULONG attributes;
        ACCESS_MASK access;
        ULONG handles;
        ULONG pointers;
        ULONG reserved[10];
    };
    BasicInformation information{};
    EXPECT_GE(NtQueryObject(object, ObjectBasicInformation, &information, sizeof information, nullptr), 0);
    return information.handles;
}

class PipeServerAbsent : public testing::Test
{
 protected:
    // The server is about to start: its start event is there.
    HANDLE announceServer()
    {
        event_.emplace(CreateEventA(nullptr, TRUE, FALSE, startEventName));
        EXPECT_NE(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
        return *event_;
    }

    // The client has tried the pipe in vain when it opens the event.
    void awaitWaitingClient()
    {
        const ULONGLONG end = GetTickCount64() + 30000;
        while (handlesTo(*event_) < 2 && GetTickCount64() < end)
            SwitchToThread();
        ASSERT_EQ(handlesTo(*event_), 2u);
    }

 private:
    std::optional<Owned> event_;
};

TEST_F(PipeServerAbsent, NoStartEvent_isTheErrorOfTheWriteAtOnce)
{
    Kxovapipe client(nullptr);
    EXPECT_EQ(exchange(client), DWORD{ERROR_INVALID_HANDLE});
}

TEST_F(PipeServerAbsent, StartedLater_theNextRequestFindsIt)
{
    Kxovapipe client(nullptr);
    EXPECT_NE(exchange(client), 0u);
    ScriptedPipe server;
    EXPECT_EQ(exchange(client, {22, 0}), 0u);
    EXPECT_EQ(server.requests(), (std::vector<Bytes>{{22, 0}}));
}

TEST_F(PipeServerAbsent, AskingForIt_doesNotLeaveAStartEventBehind)
{
    Kxovapipe client(nullptr);
    exchange(client);
    EXPECT_EQ(OpenEventA(SYNCHRONIZE, FALSE, startEventName), nullptr);
}

TEST_F(PipeServerAbsent, Starting_theRequestWaitsForItAndIsServed)
{
    const HANDLE started = announceServer();
    Kxovapipe client(nullptr);
    auto result = std::async(std::launch::async, [&] { return exchange(client, {22, 0, 5}); });
    awaitWaitingClient();
    ScriptedPipe server;
    SetEvent(started);
    EXPECT_EQ(result.get(), 0u);
    EXPECT_EQ(server.requests(), (std::vector<Bytes>{{22, 0, 5}}));
    EXPECT_EQ(handlesTo(started), 1u) << "the client has closed the event";
}

TEST_F(PipeServerAbsent, StartsButNeverReadyInTime_is233)
{
    const HANDLE started = announceServer();
    Kxovapipe client(nullptr, 50);
    EXPECT_EQ(exchange(client), DWORD{ERROR_PIPE_NOT_CONNECTED});
    EXPECT_EQ(handlesTo(started), 1u) << "the client has closed the event";
}

TEST_F(PipeServerAbsent, SaysItStartedButHasNoPipe_is233)
{
    SetEvent(announceServer());
    Kxovapipe client(nullptr);
    EXPECT_EQ(exchange(client), DWORD{ERROR_PIPE_NOT_CONNECTED});
}

TEST_F(PipeServerAbsent, ReadyJustAfterTheWait_isServedAllTheSame)
{
    announceServer();
    Kxovapipe client(nullptr, 0);
    EXPECT_EQ(exchange(client), DWORD{ERROR_PIPE_NOT_CONNECTED});
    ScriptedPipe server;
    EXPECT_EQ(exchange(client), 0u);
}

TEST_F(PipeServerAbsent, GoneBetweenTwoRequests_isAnErrorAndTheThirdFindsTheNewOne)
{
    Kxovapipe client(nullptr);
    {
        ScriptedPipe first;
        EXPECT_EQ(exchange(client), 0u);
    }
    EXPECT_NE(exchange(client), 0u);
    ScriptedPipe second;
    EXPECT_EQ(exchange(client), 0u);
}

TEST_F(PipeServerAbsent, GoneAndStartingAgainButNotInTime_is233)
{
    Kxovapipe client(nullptr, 0);
    {
        ScriptedPipe first;
        EXPECT_EQ(exchange(client), 0u);
    }
    announceServer();
    EXPECT_EQ(exchange(client), DWORD{ERROR_PIPE_NOT_CONNECTED});
}

TEST_F(PipeServerAbsent, ThousandClients_leaveNoHandle)
{
    const auto use = [] {
        Kxovapipe client(nullptr);
        ASSERT_NE(exchange(client), 0u);
    };
    for (int i = 0; i < 5; ++i)
        use();
    const std::size_t before = handleCount();
    for (int i = 0; i < 1000 && !testing::Test::HasFatalFailure(); ++i)
        use();
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

TEST_F(PipeServerAbsent, StartingForAThousandClients_leavesNoHandle)
{
    announceServer();
    const auto use = [] {
        Kxovapipe client(nullptr, 0);
        ASSERT_EQ(exchange(client), DWORD{ERROR_PIPE_NOT_CONNECTED});
    };
    for (int i = 0; i < 5; ++i)
        use();
    const std::size_t before = handleCount();
    for (int i = 0; i < 1000 && !testing::Test::HasFatalFailure(); ++i)
        use();
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

}  // namespace
