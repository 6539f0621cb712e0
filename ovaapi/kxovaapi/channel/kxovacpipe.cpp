#include "channel/kxovacpipe.h"

#include <cstring>
#include <mutex>
#include <new>
#include <utility>

#include "channel/traceValues.h"
#include "Kxotrc.h"

namespace {

constexpr char pipeMutexName[] = "Global\\KXRTS_OVAAPI_64_WOW_MUTEX";
constexpr DWORD pipeLockTimeout = 20000;  // milliseconds

SECURITY_ATTRIBUTES* s_attributes = nullptr;
Kxovapipe* s_client = nullptr;
SRWLOCK s_clientLock = SRWLOCK_INIT;

}  // namespace

void setPipeSecurity(SECURITY_ATTRIBUTES* attributes) noexcept
{
    s_attributes = attributes;
}

Kxovapipe* GetPipeClient() noexcept
{
    AcquireSRWLockExclusive(&s_clientLock);
    if (!s_client) s_client = new (std::nothrow) Kxovapipe(s_attributes);
    Kxovapipe* const client = s_client;
    ReleaseSRWLockExclusive(&s_clientLock);
    return client;
}

void destroyPipeClient() noexcept
{
    delete s_client;
    s_client = nullptr;
}

// Callers go on without the lock when it cannot be had: a wedged neighbour must not stop them for good.
class Kxovapipe::LockGuard
{
 public:
    explicit LockGuard(Kxovapipe& pipe) noexcept : pipe_(pipe) { pipe_.Lock(); }
    ~LockGuard() { pipe_.Unlock(); }
    LockGuard(const LockGuard&) = delete;
    LockGuard& operator=(const LockGuard&) = delete;

 private:
    Kxovapipe& pipe_;
};

Kxovapipe::Kxovapipe(SECURITY_ATTRIBUTES* attributes, DWORD startTimeout) noexcept
    : attributes_(attributes),
      startTimeout_(startTimeout),
      mutex_(CreateMutexExA(attributes, pipeMutexName, 0, SYNCHRONIZE))
{
    if (!mutex_) {
        const DWORD error = GetLastError();
        KXTRACE_MODULE("OVASCP64", "Kxovapipe: ", TRC_DETAIL,
                       "*******ERROR on CreateMutex()!!! KXOVAAPI64_MUTEX_GLOB ******* %d", dec(error));
    }
}

Kxovapipe::~Kxovapipe()
{
    Disconnect();
    if (mutex_) ReleaseMutex(mutex_.get());
}

std::uint32_t Kxovapipe::Lock() noexcept
{
    if (!mutex_ || mutex_.get() == INVALID_HANDLE_VALUE) return ERROR_INVALID_HANDLE;
    return WaitForSingleObject(mutex_.get(), pipeLockTimeout);
}

std::uint32_t Kxovapipe::Unlock() noexcept
{
    if (!mutex_ || mutex_.get() == INVALID_HANDLE_VALUE) return 1;
    ReleaseMutex(mutex_.get());
    return 0;
}

std::uint32_t Kxovapipe::Connection::open(SECURITY_ATTRIBUTES* attributes) noexcept
{
    const HANDLE file = CreateFileA(name, GENERIC_READ | GENERIC_WRITE, 0, attributes, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return GetLastError();
    pipe.reset(file);
    return SetNamedPipeHandleState(file, nullptr, nullptr, nullptr) ? ERROR_SUCCESS : GetLastError();
}

bool Kxovapipe::Connect() noexcept
{
    if (connection_) return true;

    const LockGuard lock(*this);
    connection_.reset(new (std::nothrow) Connection());
    if (!connection_) return false;
    static_assert(sizeof wire::serverPipeName <= sizeof Connection::name);
    std::memcpy(connection_->name, wire::serverPipeName, sizeof wire::serverPipeName);
    if (connection_->open(attributes_) == ERROR_SUCCESS) return true;

    connection_->startEvent.reset(CreateEventA(attributes_, TRUE, FALSE, wire::serverStartEventName));
    const bool serverStarts = GetLastError() == ERROR_ALREADY_EXISTS;
    if (!connection_->startEvent || !serverStarts) {
        // No server: the record stays without a pipe, and the next write fails and tears it down.
        connection_->startEvent.reset();
        return true;
    }
    WaitForSingleObject(connection_->startEvent.get(), startTimeout_);
    const std::uint32_t status = connection_->open(attributes_);
    connection_->startEvent.reset();
    if (status != ERROR_SUCCESS) {
        Disconnect();
        SetLastError(status);
        return false;
    }
    return true;
}

void Kxovapipe::Disconnect() noexcept
{
    const LockGuard lock(*this);
    if (!connection_) return;
    if (connection_->pipe) DisconnectNamedPipe(connection_->pipe.get());
    connection_.reset();
}

void Kxovapipe::ResetBuffers() noexcept
{
    if (!connection_) return;
    std::memset(connection_->writeBuffer, 0, sizeof connection_->writeBuffer);
    std::memset(connection_->readBuffer, 0, sizeof connection_->readBuffer);
    connection_->writeLength = 0;
    connection_->readLength = 0;
    connection_->readPosition = 0;
}

std::uint32_t Kxovapipe::Append(const void* bytes, std::uint32_t count) noexcept
{
    if (!Connect()) return ERROR_PIPE_NOT_CONNECTED;
    Connection& connection = *connection_;
    if (std::uint64_t{connection.writeLength} + count > sizeof connection.writeBuffer) return ERROR_BUFFER_OVERFLOW;
    const LockGuard lock(*this);
    std::memcpy(connection.writeBuffer + connection.writeLength, bytes, count);
    connection.writeLength += count;
    return ERROR_SUCCESS;
}

std::uint32_t Kxovapipe::Write() noexcept
{
    if (!Connect()) return ERROR_PIPE_NOT_CONNECTED;
    const LockGuard lock(*this);

    const auto writeOnce = [this]() noexcept -> std::uint32_t {
        DWORD written = 0;
        return WriteFile(connection_->pipe.get(), connection_->writeBuffer, connection_->writeLength, &written,
                         nullptr)
                   ? DWORD{ERROR_SUCCESS}
                   : GetLastError();
    };
    std::uint32_t status = writeOnce();
    if (status == ERROR_SUCCESS) return status;

    // The server may have been restarted since the pipe was opened. The request was not delivered, so it is kept
    // across the reconnection and written once more.
    const std::unique_ptr<Connection> old = std::move(connection_);
    if (old->pipe) DisconnectNamedPipe(old->pipe.get());
    old->pipe.reset();
    if (!Connect()) return ERROR_PIPE_NOT_CONNECTED;
    if (connection_->pipe) {
        std::memcpy(connection_->writeBuffer, old->writeBuffer, old->writeLength);
        connection_->writeLength = old->writeLength;
        status = writeOnce();
    }
    if (status != ERROR_SUCCESS) Disconnect();
    return status;
}

std::uint32_t Kxovapipe::Read() noexcept
{
    if (!Connect()) return ERROR_PIPE_NOT_CONNECTED;
    connection_->readPosition = 0;
    DWORD received = 0;
    if (!ReadFile(connection_->pipe.get(), connection_->readBuffer, sizeof connection_->readBuffer, &received,
                  nullptr)) {
        const DWORD error = GetLastError();
        Disconnect();
        return error;
    }
    connection_->readLength = received;
    return ERROR_SUCCESS;
}

std::uint32_t Kxovapipe::Exchange(const sendData& request, receivedData& reply) noexcept
{
    // The machine-wide lock is given up after its time-out, so it alone would not keep two threads apart.
    const std::lock_guard oneAtATime(exchange_);
    const LockGuard lock(*this);
    ResetBuffers();
    std::uint32_t status = Append(request.data(), request.cursor());
    if (status == ERROR_SUCCESS) status = Write();
    if (status == ERROR_SUCCESS) status = Read();
    if (status == ERROR_SUCCESS) reply.Fill(connection_->readBuffer, connection_->readLength);
    return status;
}
