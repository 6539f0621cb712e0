// Frames there and back.
#include <atomic>
#include <thread>

#include "channel_fixture.h"

namespace {

using Exchange = ChannelTest;

Bytes counting(std::size_t count)
{
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 7);
    return bytes;
}

TEST_F(Exchange, Request_arrivesByteForByte)
{
    const OpenChannel channel(name);
    const Bytes request = frames::request(0x0122, counting(100));
    ASSERT_EQ(call(channel, request).result, 0);
    EXPECT_EQ(server.received(), std::vector<Bytes>{request});
}

TEST_F(Exchange, SmallestRequest_isAnswered)
{
    const OpenChannel channel(name);
    const Bytes request = frames::request(33);
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
}

TEST_F(Exchange, LargestRequestAndReply_areCarriedWhole)
{
    const OpenChannel channel(name);
    const Bytes request = frames::request(33, counting(8190));
    ASSERT_EQ(request.size(), frames::largest);
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
}

TEST_F(Exchange, ReplyWithoutPayload_isDelivered)
{
    const OpenChannel channel(name);
    server.thenReply([](const Bytes&) { return frames::frame(33, {}); });
    EXPECT_EQ(call(channel, frames::request(33)), answered(frames::frame(33, {})));
}

TEST_F(Exchange, ReplyIntoTheRequestsMemory_isDelivered)
{
    const OpenChannel channel(name);
    const Bytes request = frames::request(33, counting(10));
    Bytes memory = request;
    memory.resize(frames::largest);
    unsigned short length = 0;
    ASSERT_EQ(SCP_send_receive(channel, static_cast<unsigned short>(request.size()), memory.data(), frames::largest,
                               memory.data(), &length),
              0);
    memory.resize(length);
    EXPECT_EQ(memory, frames::echo(request));
}

TEST_F(Exchange, ManyCalls_useOneConnection)
{
    const OpenChannel channel(name);
    for (unsigned i = 0; i < 200; ++i) {
        const Bytes request = frames::request(i, counting(i));
        ASSERT_EQ(call(channel, request), answered(frames::echo(request)));
    }
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(Exchange, TwoHandles_haveAConnectionEach)
{
    const OpenChannel first(name);
    const OpenChannel second(name);
    EXPECT_NE(int{first}, int{second});
    const Bytes one = frames::request(33, {1});
    const Bytes two = frames::request(34, {2});
    EXPECT_EQ(call(first, one), answered(frames::echo(one)));
    EXPECT_EQ(call(second, two), answered(frames::echo(two)));
    EXPECT_EQ(server.connections(), 2u);
}

// Every thread has requests that no other has, so a reply that reaches the wrong one is seen.
void callFromThreads(const std::vector<int>& handles)
{
    constexpr int calls = 100;
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < handles.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < calls; ++i) {
                const Bytes request = frames::request(33, {frames::low(t), frames::low(static_cast<std::size_t>(i))});
                if (call(handles[t], request) == answered(frames::echo(request))) ++right;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, static_cast<int>(handles.size()) * calls);
}

TEST_F(Exchange, EightThreadsOnOneHandle_eachGetsItsOwnReplies)
{
    const OpenChannel channel(name);
    callFromThreads(std::vector<int>(8, channel));
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(Exchange, EightThreadsOnTwoHandles_eachGetsItsOwnReplies)
{
    const OpenChannel first(name);
    const OpenChannel second(name);
    callFromThreads({first, second, first, second, first, second, first, second});
}

}  // namespace
