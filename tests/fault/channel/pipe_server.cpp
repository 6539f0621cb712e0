#include "pipe_server.h"

#include <chrono>
#include <stdexcept>
#include <utility>

namespace {

constexpr DWORD bufferSize = 64 * 1024;

platform::KernelObject makeEvent(bool manualReset)
{
    return platform::KernelObject(CreateEventW(nullptr, manualReset, FALSE, nullptr));
}

}  // namespace

PipeServer::Connection::Connection(platform::File pipe, Carrier by, HANDLE stopping)
    : pipe_(std::move(pipe)), done_(makeEvent(true)), stopping_(stopping)
{
    if (by == Carrier::Memory && !memory_.offer(pipe_.get())) pipe_.reset();
}

void PipeServer::Connection::close()
{
    memory_.close();
    pipe_.reset();
}

// Ends an operation that was begun; false when it failed or the server stops.
bool PipeServer::Connection::finish(OVERLAPPED& operation, DWORD& length)
{
    const HANDLE ends[] = {done_.get(), stopping_};
    if (WaitForMultipleObjects(2, ends, FALSE, INFINITE) != WAIT_OBJECT_0) CancelIoEx(pipe_.get(), &operation);
    return GetOverlappedResult(pipe_.get(), &operation, &length, TRUE);
}

// Of memory the reading waits until a request lies there, or the client leaves the door.
bool PipeServer::Connection::read(Bytes& message)
{
    if (!pipe_) return false;
    return memory_ ? memory_.read(message, pipe_.get(), stopping_) : readPipe(message);
}

bool PipeServer::Connection::readPipe(Bytes& message)
{
    message.resize(bufferSize);
    OVERLAPPED operation{};
    operation.hEvent = done_.get();
    DWORD length = 0;
    if (!ReadFile(pipe_.get(), message.data(), bufferSize, nullptr, &operation) &&
        GetLastError() != ERROR_IO_PENDING) {
        return false;
    }
    if (!finish(operation, length)) return false;
    message.resize(length);
    return true;
}

bool PipeServer::Connection::write(const Bytes& message)
{
    if (memory_) return memory_.write(message);
    OVERLAPPED operation{};
    operation.hEvent = done_.get();
    DWORD length = 0;
    if (!WriteFile(pipe_.get(), message.data(), static_cast<DWORD>(message.size()), nullptr, &operation) &&
        GetLastError() != ERROR_IO_PENDING) {
        return false;
    }
    return finish(operation, length);
}

void PipeServer::Connection::await(HANDLE event) const
{
    const HANDLE ends[] = {event, stopping_};
    WaitForMultipleObjects(2, ends, FALSE, INFINITE);
}

PipeServer::PipeServer(const std::wstring& name, DWORD instances, Carrier by)
    : carrier_(by),
      pipeName_(L"\\\\.\\pipe\\" + name + (by == Carrier::Memory ? wire::memoryDoorSuffix : L"")),
      instances_(instances),
      stopping_(makeEvent(true)),
      clientLeft_(makeEvent(false)),
      otherwise_([](Connection& connection, const Bytes& request) { connection.write(frames::echo(request)); })
{
    start();
}

platform::File PipeServer::makeInstance() const
{
    return platform::File(CreateNamedPipeW(pipeName_.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                           PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, instances_,
                                           bufferSize, bufferSize, 0, nullptr));
}

void PipeServer::start()
{
    ResetEvent(stopping_.get());
    platform::File first = makeInstance();
    if (!first) throw std::runtime_error("the test's pipe cannot be made");
    acceptor_ = std::thread([this, instance = std::move(first)]() mutable { accept(std::move(instance)); });
}

void PipeServer::stop()
{
    if (!acceptor_.joinable()) return;
    SetEvent(stopping_.get());
    acceptor_.join();
}

void PipeServer::restart()
{
    stop();
    start();
}

void PipeServer::accept(platform::File instance)
{
    const HANDLE ends[] = {clientLeft_.get(), stopping_.get()};
    for (;;) {
        if (!instance) {
            if (instances_ == PIPE_UNLIMITED_INSTANCES) break;
            // As many clients as there may be: the instance of one that leaves is offered again.
            if (WaitForMultipleObjects(2, ends, FALSE, INFINITE) != WAIT_OBJECT_0) break;
            const std::lock_guard guard(mutex_);
            instance = std::move(freed_);
            continue;
        }
        if (!awaitClient(instance.get())) break;
        // The next instance comes before this one is served, so that there always is a pipe to be found.
        platform::File next = makeInstance();
        servers_.emplace_back([this, pipe = std::move(instance)]() mutable { serve(std::move(pipe)); });
        instance = std::move(next);
    }
    instance.reset();
    for (std::thread& server : servers_)
        server.join();
    servers_.clear();
    freed_.reset();
}

bool PipeServer::awaitClient(HANDLE instance) const
{
    const platform::KernelObject connected = makeEvent(true);
    OVERLAPPED operation{};
    operation.hEvent = connected.get();
    if (ConnectNamedPipe(instance, &operation)) return true;
    const DWORD error = GetLastError();
    // A client may come, and even go again, before it is waited for.
    if (error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA) return true;
    if (error != ERROR_IO_PENDING) return false;

    const HANDLE ends[] = {connected.get(), stopping_.get()};
    const bool stopped = WaitForMultipleObjects(2, ends, FALSE, INFINITE) != WAIT_OBJECT_0;
    if (stopped) CancelIoEx(instance, &operation);
    DWORD length = 0;
    const bool accepted = GetOverlappedResult(instance, &operation, &length, TRUE);
    return accepted && !stopped;
}

void PipeServer::serve(platform::File pipe)
{
    {
        const std::lock_guard guard(mutex_);
        ++connections_;
    }
    Connection connection(std::move(pipe), carrier_, stopping_.get());
    Bytes request;
    while (connection.read(request)) {
        const Step step = nextStep(request);
        step(connection, request);
    }
    if (instances_ == PIPE_UNLIMITED_INSTANCES) return;

    DisconnectNamedPipe(connection.pipe_.get());
    {
        const std::lock_guard guard(mutex_);
        freed_ = std::move(connection.pipe_);
    }
    SetEvent(clientLeft_.get());
}

PipeServer::Step PipeServer::nextStep(const Bytes& request)
{
    const std::lock_guard guard(mutex_);
    received_.push_back(request);
    arrived_.notify_all();
    if (script_.empty()) return otherwise_;
    Step step = std::move(script_.front());
    script_.pop_front();
    return step;
}

void PipeServer::then(Step step)
{
    const std::lock_guard guard(mutex_);
    script_.push_back(std::move(step));
}

void PipeServer::otherwise(Step step)
{
    const std::lock_guard guard(mutex_);
    otherwise_ = std::move(step);
}

void PipeServer::thenReply(std::function<Bytes(const Bytes& request)> reply)
{
    then([reply = std::move(reply)](Connection& connection, const Bytes& request) {
        connection.write(reply(request));
    });
}

std::vector<frames::Bytes> PipeServer::received() const
{
    const std::lock_guard guard(mutex_);
    return received_;
}

void PipeServer::awaitReceived(std::size_t requests) const
{
    std::unique_lock lock(mutex_);
    arrived_.wait(lock, [&] { return received_.size() >= requests; });
}

std::size_t PipeServer::connections() const
{
    const std::lock_guard guard(mutex_);
    return connections_;
}
