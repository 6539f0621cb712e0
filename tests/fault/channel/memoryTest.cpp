// What is particular to the transport through shared memory: the offer at the door, who owns what it names, and what
// is known of a request whose server has gone.
#include <functional>
#include <thread>

#include "channel_fixture.h"
#include "handle_count.h"

namespace {

using std::chrono_literals::operator""s;

// A door at which something else is said than a server would say, beside a channel's pipe that works.
class Offer : public testing::Test
{
 protected:
    Offer() : pipe(name, PIPE_UNLIMITED_INSTANCES, Carrier::Pipe) {}
    ~Offer() override
    {
        if (keeper.joinable()) keeper.join();
    }

    void offer(const std::function<void(HANDLE door)>& speak)
    {
        const std::wstring path = L"\\\\.\\pipe\\" + name + wire::memoryDoorSuffix;
        door.reset(CreateNamedPipeW(path.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE, 1,
                                    4096, 4096, 0, nullptr));
        ASSERT_TRUE(door);
        keeper = std::thread([this, speak] {
            ConnectNamedPipe(door.get(), nullptr);
            speak(door.get());
        });
    }

    void offer(const wire::MemoryOffer& message)
    {
        offer([message](HANDLE pipeEnd) {
            DWORD written = 0;
            WriteFile(pipeEnd, &message, sizeof message, &written, nullptr);
        });
    }

    void expectThePipeIsUsed()
    {
        const OpenChannel channel(name);
        const Bytes request = frames::request(33, {1});
        EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
        EXPECT_EQ(pipe.connections(), 1u);
    }

    const std::wstring name = L"kxonlinx-test-offer-" + std::to_wstring(GetCurrentProcessId());
    PipeServer pipe;
    platform::File door;
    std::thread keeper;
    MemorySide memory;
};

TEST_F(Offer, NoMemory_thePipeIsUsed)
{
    wire::MemoryOffer message = memory.make(GetCurrentProcess());
    message.section = 0;
    offer(message);
    expectThePipeIsUsed();
}

TEST_F(Offer, OtherMagic_thePipeIsUsed)
{
    wire::MemoryOffer message = memory.make(GetCurrentProcess());
    ++message.magic;
    offer(message);
    expectThePipeIsUsed();
}

TEST_F(Offer, OtherLayout_thePipeIsUsed)
{
    wire::MemoryOffer message = memory.make(GetCurrentProcess());
    ++message.layout;
    offer(message);
    expectThePipeIsUsed();
}

TEST_F(Offer, CutMessage_thePipeIsUsed)
{
    const wire::MemoryOffer message = memory.make(GetCurrentProcess());
    offer([message](HANDLE end) {
        DWORD written = 0;
        WriteFile(end, &message, sizeof message - 1, &written, nullptr);
    });
    expectThePipeIsUsed();
}

TEST_F(Offer, LongerMessage_thePipeIsUsed)
{
    offer([](HANDLE end) {
        DWORD written = 0;
        const Bytes message(200, 1);
        WriteFile(end, message.data(), 200, &written, nullptr);
    });
    expectThePipeIsUsed();
}

TEST_F(Offer, DoorClosedWithoutAWord_thePipeIsUsed)
{
    offer([this](HANDLE) { door.reset(); });
    expectThePipeIsUsed();
}

// A handle of the client's own that somebody guesses: it is looked at, and left alone.
TEST_F(Offer, HandleOfAnotherObject_isLeftAlone)
{
    const platform::KernelObject mine(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    wire::MemoryOffer message = memory.make(GetCurrentProcess());
    message.section = reinterpret_cast<std::uintptr_t>(mine.get());
    offer(message);
    expectThePipeIsUsed();
    EXPECT_TRUE(SetEvent(mine.get()));
}

TEST_F(Offer, MemoryWithoutTheNonce_isLeftAlone)
{
    const platform::KernelObject mine(
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(wire::MemoryBlock), nullptr));
    wire::MemoryOffer message = memory.make(GetCurrentProcess());
    message.section = reinterpret_cast<std::uintptr_t>(mine.get());
    offer(message);
    expectThePipeIsUsed();
    const platform::View<void> view(MapViewOfFile(mine.get(), FILE_MAP_READ, 0, 0, 0));
    EXPECT_TRUE(view) << "the section's handle was closed";
}

// He who stands at the door may know the name of memory that this process has open, and write there.
TEST_F(Offer, MemoryWithAName_isLeftAlone)
{
    const platform::KernelObject mine(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                         sizeof(wire::MemoryBlock), (name + L"-memory").c_str()));
    const platform::KernelObject event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    wire::MemoryOffer message = memory.make(GetCurrentProcess());
    {
        const platform::View<wire::MemoryBlock> view(
            static_cast<wire::MemoryBlock*>(MapViewOfFile(mine.get(), FILE_MAP_WRITE, 0, 0, 0)));
        view.get()->nonce = message.nonce;
        view.get()->requestEvent = reinterpret_cast<std::uintptr_t>(event.get());
    }
    message.section = reinterpret_cast<std::uintptr_t>(mine.get());
    offer(message);
    expectThePipeIsUsed();
    EXPECT_TRUE(platform::View<void>(MapViewOfFile(mine.get(), FILE_MAP_READ, 0, 0, 0))) << "its handle was closed";
    EXPECT_EQ(WaitForSingleObject(event.get(), 0), DWORD{WAIT_TIMEOUT}) << "the event was set";
}

TEST_F(Offer, NoWordAtTheDoor_thePipeIsUsedWithinTheBound)
{
    const platform::KernelObject over(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    offer([&](HANDLE) { WaitForSingleObject(over.get(), INFINITE); });
    const CallBound bound(L"2000");
    const Stopwatch watch;
    expectThePipeIsUsed();
    EXPECT_LT(watch.elapsed(), 10s);
    SetEvent(over.get());
}

TEST_F(Offer, EveryPlaceAtTheDoorTaken_thePipeIsUsedWithinTheBound)
{
    PipeServer memoryServer(name, 1, Carrier::Memory);
    const OpenChannel first(name);
    ASSERT_EQ(call(first, frames::request(33)).result, 0);
    const CallBound bound(L"2000");
    const Stopwatch watch;
    expectThePipeIsUsed();
    EXPECT_LT(watch.elapsed(), 10s);
}

TEST_F(Offer, PipeWanted_theDoorIsNotTried)
{
    SetEnvironmentVariableW(L"KXONLINX_TRANSPORT", L"pipe");
    PipeServer memoryServer(name, PIPE_UNLIMITED_INSTANCES, Carrier::Memory);
    expectThePipeIsUsed();
    EXPECT_EQ(memoryServer.connections(), 0u);
    SetEnvironmentVariableW(L"KXONLINX_TRANSPORT", nullptr);
}

TEST_F(Offer, BothOffered_memoryIsUsed)
{
    PipeServer memoryServer(name, PIPE_UNLIMITED_INSTANCES, Carrier::Memory);
    const OpenChannel channel(name);
    const Bytes request = frames::request(33, {1});
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
    EXPECT_EQ(memoryServer.connections(), 1u);
    EXPECT_EQ(pipe.connections(), 0u);
}

class Memory : public testing::Test
{
 protected:
    const std::wstring name = L"kxonlinx-test-memory-" + std::to_wstring(GetCurrentProcessId());
    PipeServer server{name, PIPE_UNLIMITED_INSTANCES, Carrier::Memory};
};

TEST_F(Memory, ManyConnections_leaveNoHandle)
{
    const auto use = [&] {
        const OpenChannel channel(name);
        EXPECT_EQ(call(channel, frames::request(33)).result, 0);
        server.restart();
        EXPECT_EQ(call(channel, frames::request(33)).result, 0);
    };
    for (int i = 0; i < 5; ++i)
        use();
    const std::size_t before = handleCount();
    for (int i = 0; i < 100; ++i)
        use();
    server.restart();  // its last connection has gone when this returns
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

TEST_F(Memory, LongestRequestAndReply_arriveWhole)
{
    const OpenChannel channel(name);
    Bytes fields(8190);
    for (std::size_t i = 0; i < fields.size(); ++i)
        fields[i] = static_cast<std::uint8_t>(i * 7);
    const Bytes request = frames::request(33, fields);
    ASSERT_EQ(request.size(), frames::largest);
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
}

TEST_F(Memory, SleepingClient_isWokenByTheReply)
{
    const OpenChannel channel(name);
    const platform::KernelObject now(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    server.then([&](PipeServer::Connection& connection, const Bytes& request) {
        connection.await(now.get());
        connection.write(frames::echo(request));
    });
    const Bytes request = frames::request(33, {3});
    Outcome outcome{};
    std::thread caller([&] { outcome = call(channel, request); });
    server.awaitReceived(1);
    SetEvent(now.get());
    caller.join();
    EXPECT_EQ(outcome, answered(frames::echo(request)));
}

}  // namespace
