// One client that shares memory with the server; wire/memory.h has the rules.
#pragma once

#include <memory>
#include <vector>

#include "base/Owner.h"
#include "listeners/Connection.h"
#include "listeners/Conversation.h"
#include "listeners/Lookout.h"
#include "wire/memory.h"

namespace srv {

struct ViewPolicy
{
    using Type = ::wire::MemoryBlock*;
    static bool isNone(Type) noexcept { return false; }
    static void close(Type view) noexcept { UnmapViewOfFile(view); }
};

class MemoryConnection : public Connection, private Lookout::Place
{
 public:
    // `door` is the pipe over which the client has come.
    MemoryConnection(Handle door, std::unique_ptr<Conversation> conversation, std::shared_ptr<const StopSignal> stop,
                     std::shared_ptr<Lookout> lookout, DWORD clientProcess);
    ~MemoryConnection() override;

    const char* serve() noexcept override;

 private:
    std::uint64_t share() noexcept;
    std::uint64_t give(HANDLE object, DWORD access) noexcept;
    void takeBack() noexcept;
    bool offer(std::uint64_t section) noexcept;
    const char* answerRequests() noexcept;
    void answer() noexcept;
    void reply(std::span<const std::uint8_t> message) noexcept;

    bool asked() const noexcept override;
    bool attend() noexcept override;
    void sleeps(bool) noexcept override;
    void wake() noexcept override;

    Handle door_;
    std::unique_ptr<Conversation> conversation_;
    std::shared_ptr<const StopSignal> stop_;
    std::shared_ptr<Lookout> lookout_;
    DWORD clientProcess_;
    Handle client_;  // while its process is given handles
    std::vector<std::uint64_t> given_;
    Handle requested_;
    Handle replied_;
    Handle doorEvent_;
    Owner<ViewPolicy> block_;
    std::uint64_t nonce_ = 0;

    // The request that was taken last.
    std::uint32_t taken_ = 0;
    std::vector<std::uint8_t> message_;
    std::size_t length_ = 0;
    bool cut_ = false;
};

}  // namespace srv
