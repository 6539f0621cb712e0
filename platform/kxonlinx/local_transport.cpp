#include "local_transport.h"

#include <cwchar>
#include <iterator>

namespace kxonlinx {

namespace {

bool fits(const wchar_t* name) noexcept
{
    return std::wcslen(name) <= MemoryTransport::maxNameLength;
}

// Whether the pipe would fare no better: the bound is used up, or the channel closed.
bool isFinal(kxonlinx_error error) noexcept
{
    return error == KXONLINX_TIMED_OUT || error == KXONLINX_SERVER_BUSY || error == KXONLINX_NOT_OPEN;
}

}  // namespace

bool LocalTransport::isMemoryWanted() noexcept
{
    wchar_t text[8];
    const DWORD length = GetEnvironmentVariableW(L"KXONLINX_TRANSPORT", text, static_cast<DWORD>(std::size(text)));
    return length == 0 || length >= std::size(text) || std::wcscmp(text, L"pipe") != 0;
}

LocalTransport::LocalTransport(const wchar_t* name, bool memoryWanted) noexcept
    : memoryWanted_(memoryWanted && fits(name)), memory_(fits(name) ? name : L""), pipe_(name)
{}

kxonlinx_error LocalTransport::connect(const Bounds& bounds) noexcept
{
    if (memoryWanted_) {
        kxonlinx_error error = memory_.connect(bounds);
        // A door that closes in the client's face was that of a server just ending; there may be another by now.
        if (error == KXONLINX_CONNECTION_LOST) error = memory_.connect(bounds);
        if (error == KXONLINX_OK || isFinal(error)) return error;
    }
    return pipe_.connect(bounds);
}

ExchangeResult LocalTransport::exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                                        const Bounds& bounds) noexcept
{
    return memory_.connected() ? memory_.exchange(request, reply, bounds) : pipe_.exchange(request, reply, bounds);
}

void LocalTransport::close() noexcept
{
    memory_.close();
    pipe_.close();
}

}  // namespace kxonlinx
