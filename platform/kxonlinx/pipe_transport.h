// The transport over a message pipe: \\.\pipe\ and the channel's name; one message is one frame.
#pragma once

#include "support/win_handle.h"
#include "transport.h"

namespace kxonlinx {

class PipeTransport final : public Transport
{
 public:
    static constexpr wchar_t prefix[] = L"\\\\.\\pipe\\";
    static constexpr std::size_t prefixLength = std::size(prefix) - 1;
    static constexpr std::size_t maxNameLength = 256 - prefixLength;  // 256: the longest pipe name that Windows takes

    // 1 to maxNameLength characters without slash and backslash: neither another machine nor another kind of object
    // can be reached.
    static bool isName(const wchar_t* name) noexcept;

    explicit PipeTransport(const wchar_t* name) noexcept;  // requires isName(name)

    kxonlinx_error connect(const Bounds& bounds) noexcept override;
    bool connected() const noexcept override { return static_cast<bool>(pipe_); }
    ExchangeResult exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                            const Bounds& bounds) noexcept override;
    void close() noexcept override { pipe_.reset(); }
    bool reachable() const noexcept override;
    std::unique_ptr<Transport> sibling() const noexcept override;
    kxonlinx_error receive(std::span<std::uint8_t> message, std::size_t& length, HANDLE wake,
                           const Bounds& bounds) noexcept override;

 private:
    kxonlinx_error open(const Bounds& bounds) noexcept;
    ExchangeResult awaitReply(OVERLAPPED& operation, const Bounds& bounds) noexcept;

    wchar_t pipeName_[prefixLength + maxNameLength + 1];
    platform::File pipe_;
    platform::KernelObject completed_;
};

}  // namespace kxonlinx
