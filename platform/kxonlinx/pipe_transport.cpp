#include "pipe_transport.h"

#include <algorithm>
#include <cwchar>
#include <new>

namespace kxonlinx {

namespace {

// Waiting for a free pipe cannot be interrupted, so it is done in pieces, with a look at the closing event between.
constexpr DWORD connectSlice = 250;

bool isShortage(DWORD error) noexcept
{
    return error == ERROR_NOT_ENOUGH_MEMORY || error == ERROR_OUTOFMEMORY || error == ERROR_NO_SYSTEM_RESOURCES ||
           error == ERROR_NOT_ENOUGH_QUOTA || error == ERROR_TOO_MANY_OPEN_FILES;
}

// The other end has gone.
bool isBroken(DWORD error) noexcept
{
    return error == ERROR_BROKEN_PIPE || error == ERROR_PIPE_NOT_CONNECTED || error == ERROR_BAD_PIPE ||
           error == ERROR_NO_DATA;
}

kxonlinx_error connectFailure(DWORD error) noexcept
{
    if (isBroken(error)) return KXONLINX_CONNECTION_LOST;
    if (isShortage(error)) return KXONLINX_OUT_OF_MEMORY;
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return KXONLINX_SERVER_ABSENT;
        case ERROR_ACCESS_DENIED:
            return KXONLINX_ACCESS_DENIED;
        default:
            return KXONLINX_SYSTEM_ERROR;
    }
}

// A failure that is reported at once, before the operation was begun, so that nothing was sent.
ExchangeResult refused(DWORD error) noexcept
{
    // A busy pipe holds a message that nobody asked for: this connection is out of step, and as good as broken.
    if (isBroken(error) || error == ERROR_PIPE_BUSY) return {KXONLINX_CONNECTION_LOST, 0, false};
    // These may also arise half way.
    return {isShortage(error) ? KXONLINX_OUT_OF_MEMORY : KXONLINX_SYSTEM_ERROR, 0, true};
}

bool isSet(HANDLE event) noexcept
{
    return WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

}  // namespace

bool PipeTransport::isName(const wchar_t* name) noexcept
{
    if (!name) return false;
    const std::size_t length = std::wcslen(name);
    return length > 0 && length <= maxNameLength && !std::wcspbrk(name, L"\\/");
}

PipeTransport::PipeTransport(const wchar_t* name) noexcept
{
    std::copy_n(prefix, prefixLength, pipeName_);
    std::copy_n(name, std::wcslen(name) + 1, pipeName_ + prefixLength);
}

kxonlinx_error PipeTransport::connect(const Bounds& bounds) noexcept
{
    if (!completed_) completed_.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!completed_) return KXONLINX_OUT_OF_MEMORY;

    if (const kxonlinx_error error = open(bounds)) return error;

    DWORD mode = PIPE_READMODE_MESSAGE;
    if (SetNamedPipeHandleState(pipe_.get(), &mode, nullptr, nullptr)) return KXONLINX_OK;
    const DWORD error = GetLastError();
    close();
    // A pipe of bytes cannot be read in messages: whoever made it is no server of ours.
    return error == ERROR_INVALID_PARAMETER ? KXONLINX_NOT_A_CHANNEL : connectFailure(error);
}

// Opens first and waits only when every instance is taken. Where there is no pipe there is no server, which is an
// answer and nothing to wait for.
kxonlinx_error PipeTransport::open(const Bounds& bounds) noexcept
{
    for (;;) {
        // The server may learn who calls, but not act in the caller's name.
        constexpr DWORD flags = FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION;
        // Generic rights to write include making instances, which a server grants to nobody.
        constexpr DWORD access = GENERIC_READ | FILE_WRITE_DATA | FILE_WRITE_ATTRIBUTES;
        pipe_.reset(CreateFileW(pipeName_, access, 0, nullptr, OPEN_EXISTING, flags, nullptr));
        if (pipe_) return KXONLINX_OK;
        if (const DWORD error = GetLastError(); error != ERROR_PIPE_BUSY) return connectFailure(error);

        const DWORD remaining = bounds.deadline.remaining();
        if (remaining == 0) return KXONLINX_SERVER_BUSY;
        if (isSet(bounds.closing)) return KXONLINX_NOT_OPEN;
        if (!WaitNamedPipeW(pipeName_, std::min(remaining, connectSlice))) {
            const DWORD error = GetLastError();
            if (error != ERROR_SEM_TIMEOUT) return connectFailure(error);
        }
    }
}

// One transaction writes the request and reads the reply, and is refused when a message lies in the pipe already: no
// leftover of the server's can be taken for the reply.
ExchangeResult PipeTransport::exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                                       const Bounds& bounds) noexcept
{
    OVERLAPPED operation{};
    operation.hEvent = completed_.get();
    // Windows does this itself; Wine's transaction leaves the field alone, and a fresh one would pass for completed.
    operation.Internal = static_cast<ULONG_PTR>(STATUS_PENDING);
    // The function takes the request without const, but only reads it.
    if (!TransactNamedPipe(pipe_.get(), const_cast<std::uint8_t*>(request.data()), static_cast<DWORD>(request.size()),
                           reply.data(), static_cast<DWORD>(reply.size()), nullptr, &operation)) {
        const DWORD error = GetLastError();
        if (error == ERROR_MORE_DATA) return {KXONLINX_BAD_REPLY, 0, true};
        if (error != ERROR_IO_PENDING) return refused(error);
    }
    return awaitReply(operation, bounds);
}

ExchangeResult PipeTransport::awaitReply(OVERLAPPED& operation, const Bounds& bounds) noexcept
{
    const HANDLE ends[] = {completed_.get(), bounds.closing};
    const DWORD ended = WaitForMultipleObjects(2, ends, FALSE, bounds.deadline.remaining());
    kxonlinx_error givenUp = KXONLINX_SYSTEM_ERROR;
    if (ended == WAIT_TIMEOUT) givenUp = KXONLINX_TIMED_OUT;
    if (ended == WAIT_OBJECT_0 + 1) givenUp = KXONLINX_NOT_OPEN;
    if (ended != WAIT_OBJECT_0) CancelIoEx(pipe_.get(), &operation);

    // After a cancellation too: the buffers are the system's until the operation has ended. A reply that came in just
    // before is taken.
    DWORD length = 0;
    if (GetOverlappedResult(pipe_.get(), &operation, &length, TRUE)) return {KXONLINX_OK, length, true};
    const DWORD error = GetLastError();
    if (error == ERROR_OPERATION_ABORTED) return {givenUp, 0, true};
    if (error == ERROR_MORE_DATA) return {KXONLINX_BAD_REPLY, 0, true};
    if (isShortage(error)) return {KXONLINX_OUT_OF_MEMORY, 0, true};
    return {isBroken(error) ? KXONLINX_CONNECTION_LOST : KXONLINX_SYSTEM_ERROR, 0, true};
}

bool PipeTransport::reachable() const noexcept
{
    // Pipes that are all taken are a server's too; it is just busy.
    return WaitNamedPipeW(pipeName_, 1) || GetLastError() == ERROR_SEM_TIMEOUT;
}

std::unique_ptr<Transport> PipeTransport::sibling() const noexcept
{
    return std::unique_ptr<Transport>(new (std::nothrow) PipeTransport(pipeName_ + prefixLength));
}

kxonlinx_error PipeTransport::receive(std::span<std::uint8_t> message, std::size_t& length, HANDLE wake,
                                      const Bounds& bounds) noexcept
{
    length = 0;
    OVERLAPPED operation{};
    operation.hEvent = completed_.get();
    kxonlinx_error givenUp = KXONLINX_SYSTEM_ERROR;
    if (!ReadFile(pipe_.get(), message.data(), static_cast<DWORD>(message.size()), nullptr, &operation)) {
        const DWORD error = GetLastError();
        if (error == ERROR_MORE_DATA) return KXONLINX_BAD_REPLY;
        if (error != ERROR_IO_PENDING) return isBroken(error) ? KXONLINX_CONNECTION_LOST : KXONLINX_SYSTEM_ERROR;
        const HANDLE ends[] = {completed_.get(), bounds.closing, wake};
        const DWORD ended = WaitForMultipleObjects(wake ? 3 : 2, ends, FALSE, bounds.deadline.remaining());
        if (ended == WAIT_OBJECT_0 + 1) givenUp = KXONLINX_NOT_OPEN;
        if (ended == WAIT_OBJECT_0 + 2) givenUp = KXONLINX_OK;
        if (ended == WAIT_TIMEOUT) givenUp = KXONLINX_TIMED_OUT;
        if (ended != WAIT_OBJECT_0) CancelIoEx(pipe_.get(), &operation);
    }
    // A message that came in just before the cancellation is taken.
    DWORD received = 0;
    if (GetOverlappedResult(pipe_.get(), &operation, &received, TRUE)) {
        length = received;
        return KXONLINX_OK;
    }
    const DWORD error = GetLastError();
    if (error == ERROR_OPERATION_ABORTED) return givenUp;
    if (error == ERROR_MORE_DATA) return KXONLINX_BAD_REPLY;
    return isBroken(error) ? KXONLINX_CONNECTION_LOST : KXONLINX_SYSTEM_ERROR;
}

}  // namespace kxonlinx
