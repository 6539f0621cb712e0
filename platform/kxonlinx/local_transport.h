// The transport that a channel uses: shared memory where the server offers it to this process, and its pipe otherwise.
#pragma once

#include "memory_transport.h"
#include "pipe_transport.h"

namespace kxonlinx {

class LocalTransport final : public Transport
{
 public:
    // Not where the environment's KXONLINX_TRANSPORT is "pipe".
    static bool isMemoryWanted() noexcept;

    LocalTransport(const wchar_t* name, bool memoryWanted) noexcept;  // requires PipeTransport::isName(name)

    kxonlinx_error connect(const Bounds& bounds) noexcept override;
    bool connected() const noexcept override { return memory_.connected() || pipe_.connected(); }
    ExchangeResult exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                            const Bounds& bounds) noexcept override;
    void close() noexcept override;
    bool reachable() const noexcept override { return pipe_.reachable(); }

    // A pipe: only there the server can speak unasked.
    std::unique_ptr<Transport> sibling() const noexcept override { return pipe_.sibling(); }

 private:
    const bool memoryWanted_;
    MemoryTransport memory_;
    PipeTransport pipe_;
};

}  // namespace kxonlinx
