#include "memory_transport.h"

#include <winternl.h>

#include <algorithm>
#include <cstring>
#include <cwchar>

namespace kxonlinx {

namespace {

struct DoorName
{
    explicit DoorName(const wchar_t* name) noexcept
    {
        std::wcscpy(text, name);
        std::wcscat(text, wire::memoryDoorSuffix);
    }
    wchar_t text[PipeTransport::maxNameLength + 1];
};

HANDLE handleOf(std::uint64_t value) noexcept
{
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(value));
}

// Others can open what has a name, and write into it. What cannot be asked counts as named.
bool hasName(HANDLE object) noexcept
{
    constexpr auto nameInformation = static_cast<OBJECT_INFORMATION_CLASS>(1);
    alignas(UNICODE_STRING) BYTE information[1024];
    ULONG length = 0;
    if (NtQueryObject(object, nameInformation, information, sizeof information, &length) < 0) return true;
    return reinterpret_cast<const UNICODE_STRING*>(information)->Length != 0;
}

}  // namespace

MemoryTransport::MemoryTransport(const wchar_t* name) noexcept : door_(DoorName(name).text) {}

kxonlinx_error MemoryTransport::connect(const Bounds& bounds) noexcept
{
    if (const kxonlinx_error error = door_.connect(bounds)) return error;
    wire::MemoryOffer offer;
    std::uint8_t message[sizeof offer];
    std::size_t length = 0;
    kxonlinx_error error = door_.receive(message, length, nullptr, bounds);
    if (error == KXONLINX_OK) {
        std::memcpy(&offer, message, sizeof offer);
        if (length != sizeof offer || !accept(offer)) error = KXONLINX_SYSTEM_ERROR;
    }
    if (error != KXONLINX_OK) close();
    return error;
}

// Somebody else at the door could guess a handle of something that this process has already. The nonce in the memory
// shows that he who offers it can write there, and its having no name that it was given to this process by him.
bool MemoryTransport::accept(const wire::MemoryOffer& offer) noexcept
{
    if (offer.magic != wire::MemoryOffer::expectedMagic || offer.layout != wire::MemoryOffer::expectedLayout ||
        offer.section == 0)
        return false;
    const HANDLE section = handleOf(offer.section);
    if (hasName(section)) return false;
    block_.reset(static_cast<wire::MemoryBlock*>(
        MapViewOfFile(section, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, sizeof(wire::MemoryBlock))));
    if (!block_) return false;
    wire::MemoryBlock& block = *block_.get();
    if (block.nonce != offer.nonce) return false;
    CloseHandle(section);
    requestEvent_.reset(handleOf(block.requestEvent));
    replyEvent_.reset(handleOf(block.replyEvent));
    serverProcess_.reset(handleOf(block.serverProcess));
    number_ = block.replyNumber;
    return true;
}

void MemoryTransport::close() noexcept
{
    block_.reset();
    requestEvent_.reset();
    replyEvent_.reset();
    serverProcess_.reset();
    door_.close();
}

ExchangeResult MemoryTransport::exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                                         const Bounds& bounds) noexcept
{
    wire::MemoryBlock& block = *block_.get();
    // A reply that lies there already answers nothing: this connection is out of step, and as good as broken.
    if (block.closed || block.replyNumber != number_) return {KXONLINX_CONNECTION_LOST, 0, false};
    if (request.size() > sizeof block.request) return {KXONLINX_BAD_FRAME, 0, false};

    std::copy(request.begin(), request.end(), block.request);
    block.requestLength = static_cast<std::uint32_t>(request.size());
    block.requestNumber = ++number_;
    if (block.serverSleeps) SetEvent(requestEvent_.get());

    const kxonlinx_error error = awaitReply(bounds);
    if (error == KXONLINX_OK) return take(reply);
    // A server that has gone without beginning this request never will.
    return {error, 0, error != KXONLINX_CONNECTION_LOST || block.takenNumber == number_};
}

bool MemoryTransport::replied() const noexcept
{
    return block_.get()->replyNumber != number_ - 1;
}

kxonlinx_error MemoryTransport::awaitReply(const Bounds& bounds) noexcept
{
    for (int i = 0; i < wire::looksBeforeSleep; ++i) {
        if (replied()) return KXONLINX_OK;
        SwitchToThread();
    }
    wire::MemoryBlock& block = *block_.get();
    block.clientSleeps = 1;
    const kxonlinx_error error = sleepUntilReply(bounds);
    block.clientSleeps = 0;
    return error;
}

kxonlinx_error MemoryTransport::sleepUntilReply(const Bounds& bounds) noexcept
{
    const HANDLE ends[] = {replyEvent_.get(), bounds.closing, serverProcess_.get()};
    kxonlinx_error error = KXONLINX_OK;
    while (!replied()) {
        // What ended the wait last time came before this look.
        if (error != KXONLINX_OK) return error;
        if (block_.get()->closed) {
            error = KXONLINX_CONNECTION_LOST;
            continue;
        }
        switch (WaitForMultipleObjects(3, ends, FALSE, bounds.deadline.remaining())) {
            case WAIT_OBJECT_0:
                break;
            case WAIT_OBJECT_0 + 1:
                error = KXONLINX_NOT_OPEN;
                break;
            case WAIT_OBJECT_0 + 2:
                error = KXONLINX_CONNECTION_LOST;
                break;
            case WAIT_TIMEOUT:
                error = KXONLINX_TIMED_OUT;
                break;
            default:
                error = KXONLINX_SYSTEM_ERROR;
        }
    }
    return KXONLINX_OK;
}

ExchangeResult MemoryTransport::take(std::span<std::uint8_t> reply) const noexcept
{
    const wire::MemoryBlock& block = *block_.get();
    const std::size_t length = block.replyLength;
    if (block.replyNumber != number_ || length > sizeof block.reply || length > reply.size())
        return {KXONLINX_BAD_REPLY, 0, true};
    std::copy_n(block.reply, length, reply.data());
    return {KXONLINX_OK, length, true};
}

}  // namespace kxonlinx
