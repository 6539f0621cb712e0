#include "listeners/PipeListener.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <new>
#include <utility>

#include "base/Text.h"
#include "listeners/MemoryConnection.h"
#include "listeners/PipeConnection.h"
#include "wire/frame.h"

namespace srv {

// What connections' threads own a share of: they may end after the listener.
struct PipeListener::Shared
{
    std::shared_ptr<StopSignal> stop = std::make_shared<StopSignal>();
    std::shared_ptr<Lookout> lookout;                              // at a door to memory
    Handle noneLeft{CreateEventW(nullptr, TRUE, TRUE, nullptr)};   // set while nobody is connected
    Handle oneLeft{CreateEventW(nullptr, FALSE, FALSE, nullptr)};  // set when a client has gone
    Lock lock;
    std::size_t connected = 0;

    void enter()
    {
        const std::lock_guard guard(lock);
        if (connected++ == 0) ResetEvent(noneLeft.get());
    }
    void leave()
    {
        const std::lock_guard guard(lock);
        if (--connected == 0) SetEvent(noneLeft.get());
        SetEvent(oneLeft.get());
    }
};

// A pipe instance that waits for its client.
struct PipeListener::Instance
{
    Handle pipe;
    Handle connected{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    OVERLAPPED operation{};

    Instance() = default;
    Instance(const Instance&) = delete;
    ~Instance()
    {
        DWORD ignored = 0;
        if (pipe && CancelIoEx(pipe.get(), &operation)) GetOverlappedResult(pipe.get(), &operation, &ignored, TRUE);
    }

    // Begins to wait. A client that is faster than that is there already.
    DWORD listen() noexcept
    {
        operation = {};
        operation.hEvent = connected.get();
        if (ConnectNamedPipe(pipe.get(), &operation)) return ERROR_SUCCESS;
        const DWORD error = GetLastError();
        if (error == ERROR_IO_PENDING) return ERROR_SUCCESS;
        // A client that came and went in between gets its turn too: its connection ends at the first read.
        if (error != ERROR_PIPE_CONNECTED && error != ERROR_NO_DATA) return error;
        SetEvent(connected.get());
        return ERROR_SUCCESS;
    }
};

PipeListener::PipeListener(PipeOptions options, ConversationMaker maker, Log& log)
    : options_(std::move(options)),
      maker_(std::move(maker)),
      log_(log),
      shownName_(utf8(options_.name)),
      security_(Security::withOwnUser(options_.rights)),
      shared_(std::make_shared<Shared>())
{
    if (options_.memory) shared_->lookout = std::make_shared<Lookout>(options_.mostConnections);
    options_.waiting = std::clamp(options_.waiting, 1u, static_cast<unsigned>(MAXIMUM_WAIT_OBJECTS - 2));
}

DWORD PipeListener::start()
{
    std::vector<std::unique_ptr<Instance>> waiting;
    if (const DWORD error = takeName(waiting)) return error;
    while (waiting.size() < options_.waiting)
        if (const DWORD error = addInstance(waiting, makeInstance(0))) return error;
    auto handedOver = std::make_shared<std::vector<std::unique_ptr<Instance>>>(std::move(waiting));
    return acceptor_.start([this, handedOver] { accept(std::move(*handedOver)); }) ? ERROR_SUCCESS
                                                                                   : ERROR_NOT_ENOUGH_MEMORY;
}

Handle PipeListener::makeInstance(DWORD flags)
{
    // Room for one message each way, so that a reply never waits for its client.
    constexpr DWORD bufferSize = ::wire::replyFrameCapacity;
    return Handle(CreateNamedPipeW(options_.name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | flags,
                                   PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_REJECT_REMOTE_CLIENTS,
                                   PIPE_UNLIMITED_INSTANCES, bufferSize, bufferSize, 0, security_.attributes()));
}

// An instance whose client is this server itself. It keeps the name in being while there is no other instance:
// clients then find a pipe that is busy, not one that is missing. And as the first instance it shows that the name is
// ours. A client that waited for the server can get into an instance before the server itself does: then that is one of
// those that serve, and the next is tried.
DWORD PipeListener::takeName(std::vector<std::unique_ptr<Instance>>& waiting)
{
    constexpr std::size_t mostClientsBefore = 32;
    DWORD flags = FILE_FLAG_FIRST_PIPE_INSTANCE;
    while (waiting.size() < mostClientsBefore) {
        placeholder_ = makeInstance(std::exchange(flags, 0));
        if (!placeholder_) return GetLastError();
        placeholderClient_.reset(
            CreateFileW(options_.name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        if (placeholderClient_) return ERROR_SUCCESS;
        if (GetLastError() != ERROR_PIPE_BUSY) return GetLastError();
        if (const DWORD error = addInstance(waiting, std::move(placeholder_))) return error;
    }
    return ERROR_PIPE_BUSY;
}

DWORD PipeListener::addInstance(std::vector<std::unique_ptr<Instance>>& waiting, Handle pipe)
{
    if (!pipe) return GetLastError();
    auto instance = std::make_unique<Instance>();
    instance->pipe = std::move(pipe);
    if (const DWORD error = instance->listen()) return error;
    waiting.push_back(std::move(instance));
    return ERROR_SUCCESS;
}

void PipeListener::accept(std::vector<std::unique_ptr<Instance>> waiting) noexcept
{
    for (;;) {
        try {
            if (!acceptOne(waiting)) return;
        } catch (const std::exception& error) {
            log_.error("%s: a client is turned away: %s", shownName_.c_str(), error.what());
        }
    }
}

// Waits for one client and hands it over; false when the listener is to stop.
bool PipeListener::acceptOne(std::vector<std::unique_ptr<Instance>>& waiting)
{
    constexpr DWORD retryAfter = 1'000;  // when the system refused an instance
    HANDLE ends[MAXIMUM_WAIT_OBJECTS] = {shared_->stop->event.get(), shared_->oneLeft.get()};
    DWORD count = 2;
    for (const auto& instance : waiting)
        ends[count++] = instance->connected.get();
    const DWORD ended = WaitForMultipleObjects(count, ends, FALSE, complained_ ? retryAfter : INFINITE);
    if (ended == WAIT_OBJECT_0 || ended == WAIT_FAILED) return false;
    Handle pipe;
    if (ended >= WAIT_OBJECT_0 + 2 && ended < WAIT_OBJECT_0 + count) {
        const auto at = waiting.begin() + (ended - WAIT_OBJECT_0 - 2);
        pipe = std::move((*at)->pipe);
        waiting.erase(at);
    }
    // The successor first, so that the next client finds the door open.
    replenish(waiting, pipe ? 1 : 0);
    if (pipe) serve(std::move(pipe));
    return true;
}

// `arriving` are let in already but not counted among the connections yet.
void PipeListener::replenish(std::vector<std::unique_ptr<Instance>>& waiting, std::size_t arriving)
{
    while (waiting.size() < options_.waiting &&
           connections() + arriving + waiting.size() < options_.mostConnections) {
        const DWORD error = addInstance(waiting, makeInstance(0));
        if (error != ERROR_SUCCESS && !complained_) {
            log_.error("%s: no further instance: %s", shownName_.c_str(), systemMessage(error).c_str());
        }
        complained_ = error != ERROR_SUCCESS;
        if (complained_) return;
    }
}

std::unique_ptr<Connection> PipeListener::makeConnection(Handle pipe, std::uint64_t id, DWORD process)
{
    auto conversation = maker_(id, process);
    if (options_.memory)
        return std::make_unique<MemoryConnection>(std::move(pipe), std::move(conversation), shared_->stop,
                                                  shared_->lookout, process);
    return std::make_unique<PipeConnection>(std::move(pipe), std::move(conversation), shared_->stop,
                                            options_.writeTimeout);
}

void PipeListener::serve(Handle pipe)
{
    DWORD process = 0;
    GetNamedPipeClientProcessId(pipe.get(), &process);
    const std::uint64_t id = nextId_++;
    std::shared_ptr<Connection> connection = makeConnection(std::move(pipe), id, process);
    log_.debug("connection %llu: client %lu", static_cast<unsigned long long>(id), process);
    auto body = [shared = shared_, connection, &log = log_, id, process]() mutable {
        const char* const reason = connection->serve();
        log.debug("connection %llu: client %lu: ended: %s", static_cast<unsigned long long>(id), process, reason);
        connection.reset();
        shared->leave();
    };
    shared_->enter();
    try {
        if (Thread::startDetached(std::move(body))) return;
        log_.error("no thread for a connection");
    } catch (const std::bad_alloc&) {
        log_.error("no memory for a connection");
    }
    shared_->leave();
}

void PipeListener::tellToStop() noexcept
{
    shared_->stop->give();
}

bool PipeListener::stop(DWORD milliseconds) noexcept
{
    tellToStop();
    const DWORD started = GetTickCount();
    if (!acceptor_.join(milliseconds)) return false;
    placeholderClient_.reset();
    placeholder_.reset();
    const DWORD spent = GetTickCount() - started;
    return WaitForSingleObject(shared_->noneLeft.get(), milliseconds > spent ? milliseconds - spent : 0) ==
           WAIT_OBJECT_0;
}

std::size_t PipeListener::connections() const noexcept
{
    const std::lock_guard guard(shared_->lock);
    return shared_->connected;
}

}  // namespace srv
