#include "listeners/PipeConnection.h"

namespace srv {

PipeConnection::PipeConnection(Handle pipe, std::unique_ptr<Conversation> conversation, HANDLE stop,
                               DWORD writeTimeout)
    : pipe_(std::move(pipe)),
      conversation_(std::move(conversation)),
      stop_(stop),
      writeTimeout_(writeTimeout),
      completed_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      message_(conversation_->longestRequest())
{}

const char* PipeConnection::serve() noexcept
{
    if (!completed_) return "no event";
    for (;;) {
        DWORD length = 0;
        bool cut = false;
        Done done = receive(length, cut);
        if (done == Done::Yes) done = send(conversation_->answer({message_.data(), length}, cut));
        switch (done) {
            case Done::Yes:
            case Done::More:
                break;
            case Done::Ended:
                return "the client left";
            case Done::Stopped:
                return "the server stops";
            case Done::TimedOut:
                return "the client does not read its replies";
        }
    }
}

// Waits for an operation, and makes sure that nothing of it is under way when it returns: the buffers are the
// system's until then.
PipeConnection::Done PipeConnection::complete(BOOL started, OVERLAPPED& operation, DWORD timeout,
                                              DWORD& transferred) noexcept
{
    Done givenUp = Done::Ended;
    if (!started) {
        const DWORD error = GetLastError();
        if (error != ERROR_IO_PENDING && error != ERROR_MORE_DATA) return Done::Ended;
        if (error == ERROR_IO_PENDING) {
            const HANDLE ends[] = {completed_.get(), stop_};
            const DWORD ended = WaitForMultipleObjects(2, ends, FALSE, timeout);
            if (ended == WAIT_OBJECT_0 + 1) givenUp = Done::Stopped;
            if (ended == WAIT_TIMEOUT) givenUp = Done::TimedOut;
            if (ended != WAIT_OBJECT_0) CancelIoEx(pipe_.get(), &operation);
        }
    }
    if (GetOverlappedResult(pipe_.get(), &operation, &transferred, TRUE)) return Done::Yes;
    switch (GetLastError()) {
        case ERROR_MORE_DATA:
            return Done::More;
        case ERROR_OPERATION_ABORTED:
            return givenUp;
        default:
            return Done::Ended;
    }
}

// One message. Of one that is too long only the beginning is kept.
PipeConnection::Done PipeConnection::receive(DWORD& length, bool& cut) noexcept
{
    const auto read = [this](std::uint8_t* space, std::size_t capacity, DWORD& received) {
        OVERLAPPED operation{};
        operation.hEvent = completed_.get();
        const BOOL started = ReadFile(pipe_.get(), space, static_cast<DWORD>(capacity), nullptr, &operation);
        return complete(started, operation, INFINITE, received);
    };
    Done done = read(message_.data(), message_.size(), length);
    cut = done == Done::More;
    while (done == Done::More) {
        std::uint8_t rest[4096];
        DWORD dropped = 0;
        done = read(rest, sizeof rest, dropped);
    }
    return done;
}

PipeConnection::Done PipeConnection::send(std::span<const std::uint8_t> reply) noexcept
{
    OVERLAPPED operation{};
    operation.hEvent = completed_.get();
    const BOOL started = WriteFile(pipe_.get(), reply.data(), static_cast<DWORD>(reply.size()), nullptr, &operation);
    DWORD written = 0;
    return complete(started, operation, writeTimeout_, written);
}

}  // namespace srv
