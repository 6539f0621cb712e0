// The transport through memory that server and client share; wire/memory.h has the rules.
#pragma once

#include "pipe_transport.h"
#include "support/win_handle.h"
#include "transport.h"
#include "wire/memory.h"

namespace kxonlinx {

class MemoryTransport final : public Transport
{
 public:
    static constexpr std::size_t maxNameLength =
        PipeTransport::maxNameLength - (std::size(wire::memoryDoorSuffix) - 1);

    explicit MemoryTransport(const wchar_t* name) noexcept;  // of at most maxNameLength characters

    // SYSTEM_ERROR where the server has no memory to share with this process.
    kxonlinx_error connect(const Bounds& bounds) noexcept override;
    bool connected() const noexcept override { return static_cast<bool>(block_); }
    ExchangeResult exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                            const Bounds& bounds) noexcept override;
    void close() noexcept override;
    bool reachable() const noexcept override { return door_.reachable(); }

 private:
    bool accept(const wire::MemoryOffer& offer) noexcept;
    bool replied() const noexcept;
    kxonlinx_error awaitReply(const Bounds& bounds) noexcept;
    kxonlinx_error sleepUntilReply(const Bounds& bounds) noexcept;
    ExchangeResult take(std::span<std::uint8_t> reply) const noexcept;

    PipeTransport door_;
    platform::View<wire::MemoryBlock> block_;
    platform::KernelObject requestEvent_;
    platform::KernelObject replyEvent_;
    platform::KernelObject serverProcess_;
    std::uint32_t number_ = 0;  // of the last request
};

}  // namespace kxonlinx
