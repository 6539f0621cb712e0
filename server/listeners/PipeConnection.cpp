#include "listeners/PipeConnection.h"

namespace srv {

PipeConnection::PipeConnection(Handle pipe, std::unique_ptr<Conversation> conversation,
                               std::shared_ptr<const StopSignal> stop, DWORD writeTimeout)
    : pipe_(std::move(pipe)),
      conversation_(std::move(conversation)),
      stop_(std::move(stop)),
      writeTimeout_(writeTimeout),
      received_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      sent_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      message_(conversation_->longestRequest())
{}

const char* PipeConnection::serve() noexcept
{
    if (!received_ || !sent_) return "no event";
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

// The end of an operation that is given up or has ended; nothing of it is under way when it returns: the buffers are
// the system's until then.
PipeConnection::Done PipeConnection::result(OVERLAPPED& operation, Done givenUp, DWORD& transferred) noexcept
{
    if (givenUp != Done::Yes) CancelIoEx(pipe_.get(), &operation);
    if (GetOverlappedResult(pipe_.get(), &operation, &transferred, TRUE)) return Done::Yes;
    switch (GetLastError()) {
        case ERROR_MORE_DATA:
            return Done::More;
        case ERROR_OPERATION_ABORTED:
            return givenUp == Done::Yes ? Done::Ended : givenUp;
        default:
            return Done::Ended;
    }
}

// Reads a message or a part of one. What is to be sent meanwhile is sent.
PipeConnection::Done PipeConnection::read(std::uint8_t* space, std::size_t capacity, DWORD& received) noexcept
{
    OVERLAPPED operation{};
    operation.hEvent = received_.get();
    const BOOL atOnce = ReadFile(pipe_.get(), space, static_cast<DWORD>(capacity), nullptr, &operation);
    const DWORD error = atOnce ? ERROR_SUCCESS : GetLastError();
    if (atOnce || error == ERROR_MORE_DATA) return result(operation, Done::Yes, received);
    if (error != ERROR_IO_PENDING) return Done::Ended;
    PushSource* const source = conversation_->pushes();
    const HANDLE ends[] = {received_.get(), stop_->event.get(), source ? source->due() : nullptr};
    for (;;) {
        switch (WaitForMultipleObjects(source ? 3 : 2, ends, FALSE, INFINITE)) {
            case WAIT_OBJECT_0:
                return result(operation, Done::Yes, received);
            case WAIT_OBJECT_0 + 2:
                if (const Done done = push(*source); done != Done::Yes) return result(operation, done, received);
                break;
            default:
                return result(operation, Done::Stopped, received);
        }
    }
}

PipeConnection::Done PipeConnection::push(PushSource& source) noexcept
{
    const std::span<const std::uint8_t> message = source.next();
    if (message.empty()) return Done::Yes;
    const Done done = send(message);
    if (done != Done::Yes) source.putBack();
    return done;
}

// One message. Of one that is too long only the beginning is kept.
PipeConnection::Done PipeConnection::receive(DWORD& length, bool& cut) noexcept
{
    Done done = read(message_.data(), message_.size(), length);
    cut = done == Done::More;
    while (done == Done::More) {
        std::uint8_t rest[4096];
        DWORD dropped = 0;
        done = read(rest, sizeof rest, dropped);
    }
    return done;
}

PipeConnection::Done PipeConnection::send(std::span<const std::uint8_t> message) noexcept
{
    OVERLAPPED operation{};
    operation.hEvent = sent_.get();
    DWORD written = 0;
    if (WriteFile(pipe_.get(), message.data(), static_cast<DWORD>(message.size()), nullptr, &operation)) {
        return result(operation, Done::Yes, written);
    }
    if (GetLastError() != ERROR_IO_PENDING) return Done::Ended;
    const HANDLE ends[] = {sent_.get(), stop_->event.get()};
    Done givenUp = Done::Yes;
    switch (WaitForMultipleObjects(2, ends, FALSE, writeTimeout_)) {
        case WAIT_OBJECT_0:
            break;
        case WAIT_TIMEOUT:
            givenUp = Done::TimedOut;
            break;
        default:
            givenUp = Done::Stopped;
            break;
    }
    return result(operation, givenUp, written);
}

}  // namespace srv
