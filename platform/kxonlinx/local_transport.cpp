#include "local_transport.h"

#include <cwchar>
#include <iterator>

namespace kxonlinx {

namespace {

bool fits(const wchar_t* name) noexcept
{
    return std::wcslen(name) <= MemoryTransport::maxNameLength;
}

// The door gets a fourth of a call's bound: where others hold all its places the pipe may still have one.
constexpr DWORD partForDoor = 4;

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
    kxonlinx_error atDoor = KXONLINX_SERVER_ABSENT;
    if (memoryWanted_) {
        const Bounds door{Deadline::after(bounds.deadline.remaining() / partForDoor), bounds.closing};
        atDoor = memory_.connect(door);
        // A door that closes in the client's face was that of a server just ending; there may be another by now.
        if (atDoor == KXONLINX_CONNECTION_LOST) atDoor = memory_.connect(door);
        if (atDoor == KXONLINX_OK || atDoor == KXONLINX_NOT_OPEN) return atDoor;
    }
    const kxonlinx_error error = pipe_.connect(bounds);
    // Without a pipe what happened at the door says more.
    return error == KXONLINX_SERVER_ABSENT ? atDoor : error;
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
