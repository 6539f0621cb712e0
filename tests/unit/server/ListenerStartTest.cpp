// Clients that wait for a server are there before it, and try all the time.
#include <atomic>
#include <thread>

#include "listeners/PipeListener.h"
#include "PipeClient.h"
#include "TestServer.h"

namespace {

struct Echo : srv::Conversation
{
    using Conversation::Conversation;
    std::size_t longestRequest() const noexcept override { return 16; }
    std::span<const std::uint8_t> answer(std::span<const std::uint8_t> message, bool) noexcept override
    {
        return message;
    }
};

struct ListenerStart : TestServer
{
    srv::PipeOptions options{L"\\\\.\\pipe\\KxovaTestStart" + std::to_wstring(GetCurrentProcessId()), 2, 100, 1000};
    std::atomic<bool> over = false;
    std::atomic<int> served = 0;

    std::unique_ptr<srv::PipeListener> make()
    {
        return std::make_unique<srv::PipeListener>(
            options,
            [this](std::uint64_t id, DWORD process) {
                return std::make_unique<Echo>(dispatcher, id, srv::Via::Channel, process);
            },
            now.log);
    }

    // Opens the pipe whenever it is there, and says something.
    void beImpatient()
    {
        while (!over) {
            PipeClient client(options.name);
            if (client.connected() && client.ask({1, 2}).size() == 2) ++served;
        }
    }
};

TEST_F(ListenerStart, WhileClientsTryToGetIn_succeedsAndServesThem)
{
    std::vector<std::thread> clients;
    for (int i = 0; i < 4; ++i)
        clients.emplace_back([this] { beImpatient(); });
    for (int start = 0; start < 60 && !HasFailure(); ++start) {
        const auto listener = make();
        const int before = served;
        EXPECT_EQ(listener->start(), 0u) << "start " << start;
        while (!HasFailure() && served < before + 4)
            std::this_thread::yield();
        EXPECT_TRUE(listener->stop(5000));
    }
    over = true;
    for (std::thread& client : clients)
        client.join();
}

}  // namespace
