// The pipe client and a server that is there, restarts, hangs up or serves many.

#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <thread>

#include "handle_count.h"
#include "Kxotrc.h"
#include "pipeFixture.h"
#include "traceCapture.h"

namespace {

TEST(PipeClient, Request_arrivesAsItIsAndItsReplyComesBack)
{
    ScriptedPipe server;
    server.answer({4, 0, 7, 0, 0, 0, 1, 2, 3});
    Kxovapipe client(nullptr);
    receivedData reply;
    EXPECT_EQ(client.Exchange(requestOf({22, 0, 0xAA, 0xBB}), reply), 0u);
    EXPECT_EQ(server.requests(), (std::vector<Bytes>{{22, 0, 0xAA, 0xBB}}));
    EXPECT_EQ(contentOf(reply), (Bytes{4, 0, 7, 0, 0, 0, 1, 2, 3}));
}

TEST(PipeClient, SecondRequest_usesTheSameConnectionAndHoldsNothingOfTheFirst)
{
    ScriptedPipe server;
    Kxovapipe client(nullptr);
    EXPECT_EQ(exchange(client, {1, 0, 9, 9, 9}), 0u);
    EXPECT_EQ(exchange(client, {2, 0}), 0u);
    EXPECT_EQ(server.requests(), (std::vector<Bytes>{{1, 0, 9, 9, 9}, {2, 0}}));
    EXPECT_EQ(server.connections(), 1);
}

TEST(PipeClient, ShortReplyAfterALongOne_holdsNothingOfTheLongOne)
{
    ScriptedPipe server;
    server.answer(Bytes(500, 0x55));
    server.answer({4, 0});
    Kxovapipe client(nullptr);
    EXPECT_EQ(exchange(client), 0u);
    receivedData reply;
    EXPECT_EQ(client.Exchange(requestOf({2, 0}), reply), 0u);
    EXPECT_EQ(contentOf(reply), (Bytes{4, 0}));
}

TEST(PipeClient, Creation_connectsNobody)
{
    ScriptedPipe server;
    const Kxovapipe client(nullptr);
    EXPECT_EQ(server.connections(), 0);
}

TEST(PipeClient, RequestAndReplyOf8192Bytes_goThroughWhole)
{
    ScriptedPipe server;
    server.answerAll([](const Bytes& request) { return request; });
    Bytes bytes(8192);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    Kxovapipe client(nullptr);
    receivedData reply;
    EXPECT_EQ(client.Exchange(requestOf(bytes), reply), 0u);
    EXPECT_EQ(server.requests(), (std::vector<Bytes>{bytes}));
    EXPECT_EQ(contentOf(reply), bytes);
}

// A text that is refused leaves its length in the request, which thus becomes longer than its buffer.
TEST(PipeClient, RequestOf8193Bytes_is111AndNothingIsSent)
{
    ScriptedPipe server;
    sendData request;
    const std::uint8_t byte = 1;
    request.PutBytes(&byte, 1);
    EXPECT_EQ(request.PutWideString(std::wstring(4094, L'x').c_str()), 111u);
    ASSERT_EQ(request.cursor(), 8193u);
    Kxovapipe client(nullptr);
    receivedData reply;
    EXPECT_EQ(client.Exchange(request, reply), 111u);
    EXPECT_TRUE(server.requests().empty());
    EXPECT_EQ(exchange(client), 0u) << "the next request";
}

TEST(PipeClient, ServerRestartedBetweenTwoRequests_theSecondIsServedByTheNewOne)
{
    Kxovapipe client(nullptr);
    {
        ScriptedPipe first;
        EXPECT_EQ(exchange(client, {1, 0}), 0u);
    }
    ScriptedPipe second;
    EXPECT_EQ(exchange(client, {22, 0, 7}), 0u);
    EXPECT_EQ(second.requests(), (std::vector<Bytes>{{22, 0, 7}}));
}

TEST(PipeClient, ServerClosesInsteadOfAnswering_isItsErrorAndTheNextRequestConnectsAnew)
{
    ScriptedPipe server;
    server.hangUp();
    Kxovapipe client(nullptr);
    const std::uint32_t result = exchange(client, {1, 0});
    EXPECT_TRUE(result == ERROR_BROKEN_PIPE || result == ERROR_PIPE_NOT_CONNECTED) << result;
    EXPECT_EQ(server.requests().size(), 1u) << "what may have arrived is not sent again";
    EXPECT_EQ(exchange(client, {2, 0}), 0u);
    EXPECT_EQ(server.connections(), 2);
}

TEST(PipeClient, FailedRequest_leavesTheReplyEmpty)
{
    ScriptedPipe server;
    server.hangUp();
    Kxovapipe client(nullptr);
    receivedData reply;
    EXPECT_NE(client.Exchange(requestOf({1, 0}), reply), 0u);
    EXPECT_EQ(reply.length(), 0u);
}

TEST(PipeClient, ThreadsOfOneProcess_areServedOneAtATime)
{
    ScriptedPipe server;
    server.answerAll([](const Bytes& request) { return request; });
    Kxovapipe client(nullptr);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (std::uint8_t number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            for (std::uint8_t i = 0; i < 50; ++i) {
                receivedData reply;
                if (client.Exchange(requestOf({number, i}), reply) != 0 || contentOf(reply) != Bytes{number, i})
                    ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(server.mostAtOnce(), 1);
}

PROCESS_INFORMATION startClient(int number, int count)
{
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    const std::string folder(program, std::string(program).rfind('\\') + 1);
    std::string command = "\"" + folder + "pipe_client.exe\" " + std::to_string(number) + " " + std::to_string(count);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        << command << ": " << GetLastError();
    return process;
}

DWORD endOf(const PROCESS_INFORMATION& process)
{
    DWORD code = ~0u;
    if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0) GetExitCodeProcess(process.hProcess, &code);
    TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

TEST(PipeClient, TwoProcessesAtOnce_eachGetsItsOwnRepliesAndRequestsNeverMeet)
{
    constexpr int count = 100;
    ScriptedPipe server;
    // Every request takes its time, so that two that are not kept apart do meet.
    server.answerAll([](const Bytes& request) {
        Sleep(1);
        return request;
    });
    const PROCESS_INFORMATION first = startClient(1, count);
    const PROCESS_INFORMATION second = startClient(2, count);
    EXPECT_EQ(endOf(first), 0u);
    EXPECT_EQ(endOf(second), 0u);
    EXPECT_EQ(server.requests().size(), 2u * count);
    EXPECT_EQ(server.connections(), 2);
    EXPECT_EQ(server.mostAtOnce(), 1) << "the machine-wide mutex keeps the processes apart";
}

TEST(PipeClient, NameOfTheMutexTakenByAnotherKindOfObject_worksWithoutAMutexAndTracesWhy)
{
    const Owned other(CreateEventA(nullptr, FALSE, FALSE, pipeMutexName));
    ScriptedPipe server;
    TrcStart(nullptr);
    {
        const TraceCapture capture("0x40");
        Kxovapipe client(nullptr);
        EXPECT_EQ(exchange(client), 0u);
        EXPECT_THAT(
            capture.lines(),
            testing::ElementsAre(TraceLine{
                "FM", "Kxovapipe:", "*******ERROR on CreateMutex()!!! KXOVAAPI64_MUTEX_GLOB ******* 6", "OVA"}));
    }
    TrcStop();
}

TEST(PipeClient, LockHeldByAnotherProcess_theRequestWaitsForIt)
{
    ScriptedPipe server;
    server.answerAll([](const Bytes& request) { return request; });
    const Owned mutex(CreateMutexA(nullptr, TRUE, pipeMutexName));
    const PROCESS_INFORMATION other = startClient(1, 1);
    EXPECT_EQ(WaitForSingleObject(other.hProcess, 500), DWORD{WAIT_TIMEOUT});
    EXPECT_TRUE(server.requests().empty());
    ReleaseMutex(mutex);
    EXPECT_EQ(endOf(other), 0u);
}

TEST(PipeClient, LockAbandonedByAnEndedThread_isTakenOver)
{
    ScriptedPipe server;
    server.answerAll([](const Bytes& request) { return request; });
    const Owned mutex(CreateMutexA(nullptr, FALSE, pipeMutexName));
    std::thread([&] { WaitForSingleObject(mutex, INFINITE); }).join();
    Kxovapipe client(nullptr);
    EXPECT_EQ(exchange(client), 0u);
    EXPECT_EQ(exchange(client), 0u);
}

// Counted while no server is there, whose own handles come and go.
TEST(PipeClient, ThousandClients_leaveNoHandle)
{
    const auto use = [](int times) {
        ScriptedPipe server;
        for (int i = 0; i < times; ++i) {
            server.awaitFreeInstance();
            Kxovapipe client(nullptr);
            ASSERT_EQ(exchange(client), 0u);
        }
    };
    use(20);
    const std::size_t before = handleCount();
    use(1000);
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

}  // namespace
