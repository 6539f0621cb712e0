#include "scriptedPipe.h"

#include <stdexcept>
#include <string>

#include "wire/frame.h"

namespace {

constexpr DWORD room = 4 * wire::maxPayload;  // more than any request holds, so that one that is too long is seen

struct EventHandle
{
    EventHandle() : handle(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {}
    ~EventHandle() { CloseHandle(handle); }
    EventHandle(const EventHandle&) = delete;
    EventHandle& operator=(const EventHandle&) = delete;
    HANDLE handle;
};

}  // namespace

ScriptedPipe::ScriptedPipe()
    : stop_(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
      responder_([](const Bytes&) { return Bytes{4, 0, 0, 0, 0, 0}; })
{
    for (int i = 0; i < instances; ++i) {
        const HANDLE pipe = CreateNamedPipeA(
            wire::serverPipeName,
            PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | (i == 0 ? FILE_FLAG_FIRST_PIPE_INSTANCE : 0),
            PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, instances, room, room, 0, nullptr);
        if (pipe == INVALID_HANDLE_VALUE) {
            throw std::runtime_error("the pipe cannot be served: " + std::to_string(GetLastError()));
        }
        pipes_.push_back(pipe);
    }
    for (const HANDLE pipe : pipes_)
        threads_.emplace_back([this, pipe] { serve(pipe); });
}

ScriptedPipe::~ScriptedPipe()
{
    SetEvent(stop_);
    for (std::thread& thread : threads_)
        thread.join();
    for (const HANDLE pipe : pipes_)
        CloseHandle(pipe);
    CloseHandle(stop_);
}

void ScriptedPipe::answer(const Bytes& reply)
{
    const std::lock_guard guard(mutex_);
    script_.emplace_back(reply);
}

void ScriptedPipe::hangUp()
{
    const std::lock_guard guard(mutex_);
    script_.emplace_back(std::nullopt);
}

void ScriptedPipe::answerAll(std::function<Bytes(const Bytes&)> responder)
{
    const std::lock_guard guard(mutex_);
    responder_ = std::move(responder);
}

std::vector<ScriptedPipe::Bytes> ScriptedPipe::requests() const
{
    const std::lock_guard guard(mutex_);
    return requests_;
}

// Waits for an operation or for the end of the test; false: there is nothing more to do on this connection.
bool ScriptedPipe::finished(HANDLE pipe, BOOL started, OVERLAPPED& operation, DWORD& count)
{
    if (!started && GetLastError() != ERROR_IO_PENDING) return GetLastError() == ERROR_PIPE_CONNECTED;
    const HANDLE events[] = {operation.hEvent, stop_};
    if (WaitForMultipleObjects(2, events, FALSE, INFINITE) != WAIT_OBJECT_0) {
        CancelIo(pipe);
        GetOverlappedResult(pipe, &operation, &count, TRUE);
        return false;
    }
    return GetOverlappedResult(pipe, &operation, &count, FALSE);
}

void ScriptedPipe::serve(HANDLE pipe)
{
    const EventHandle event;
    while (WaitForSingleObject(stop_, 0) == WAIT_TIMEOUT) {
        OVERLAPPED operation{};
        operation.hEvent = event.handle;
        DWORD count = 0;
        const BOOL started = ConnectNamedPipe(pipe, &operation);
        const DWORD error = GetLastError();
        changeFree(1);
        SetLastError(error);
        const bool connected = finished(pipe, started, operation, count);
        changeFree(-1);
        if (connected) {
            ++connections_;
            while (serveRequest(pipe, event.handle)) {
            }
        }
        DisconnectNamedPipe(pipe);
    }
}

void ScriptedPipe::changeFree(int by)
{
    const std::lock_guard guard(mutex_);
    free_ += by;
    freeChanged_.notify_all();
}

void ScriptedPipe::awaitFreeInstance()
{
    std::unique_lock guard(mutex_);
    freeChanged_.wait(guard, [this] { return free_ > 0; });
}

bool ScriptedPipe::serveRequest(HANDLE pipe, HANDLE event)
{
    Bytes request(room);
    OVERLAPPED operation{};
    operation.hEvent = event;
    DWORD count = 0;
    BOOL started = ReadFile(pipe, request.data(), room, nullptr, &operation);
    if (!finished(pipe, started, operation, count)) return false;
    request.resize(count);

    underWay_.enter();
    const std::optional<Bytes> reply = nextReply(request);
    underWay_.leave();  // before the reply, with which the next request may come
    if (!reply) return false;

    operation = {};
    operation.hEvent = event;
    started = WriteFile(pipe, reply->data(), static_cast<DWORD>(reply->size()), nullptr, &operation);
    return finished(pipe, started, operation, count);
}

std::optional<ScriptedPipe::Bytes> ScriptedPipe::nextReply(const Bytes& request)
{
    std::function<Bytes(const Bytes&)> responder;
    {
        const std::lock_guard guard(mutex_);
        requests_.push_back(request);
        if (!script_.empty()) {
            std::optional<Bytes> reply = std::move(script_.front());
            script_.pop_front();
            return reply;
        }
        responder = responder_;
    }
    return responder(request);
}
