// The pipe client: the second way to the configuration server, for the path-based registry requests alone. A request
// is the bare payload in one write, its reply one read. A machine-wide mutex keeps the clients of all processes
// apart.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <mutex>

#include "buffers/receivedData.h"
#include "buffers/sendData.h"
#include "platform/support/win_handle.h"

inline constexpr DWORD serverStartTimeout = 20000;  // milliseconds

class Kxovapipe
{
 public:
    // startTimeout: how long a request waits for a server that is starting.
    explicit Kxovapipe(SECURITY_ATTRIBUTES* attributes, DWORD startTimeout = serverStartTimeout) noexcept;
    ~Kxovapipe();
    Kxovapipe(const Kxovapipe&) = delete;
    Kxovapipe& operator=(const Kxovapipe&) = delete;

    // One request and its reply. 0, or 233 without a connection, 111 when the request exceeds 8192 bytes, else the
    // Windows error of the transfer; the connection is then torn down and made anew by the next request.
    std::uint32_t Exchange(const sendData& request, receivedData& reply) noexcept;

 private:
    struct Connection
    {
        platform::File pipe;
        platform::KernelObject startEvent;
        char name[260];
        std::uint8_t writeBuffer[wire::maxPayload];
        std::uint8_t readBuffer[wire::maxPayload];
        std::uint32_t writeLength;
        std::uint32_t readLength;
        std::uint32_t readPosition;

        std::uint32_t open(SECURITY_ATTRIBUTES* attributes) noexcept;
    };
    class LockGuard;

    std::uint32_t Lock() noexcept;
    std::uint32_t Unlock() noexcept;
    bool Connect() noexcept;  // true: there is a connection record, though perhaps without a pipe
    void Disconnect() noexcept;
    void ResetBuffers() noexcept;
    std::uint32_t Append(const void* bytes, std::uint32_t count) noexcept;
    std::uint32_t Write() noexcept;
    std::uint32_t Read() noexcept;

    SECURITY_ATTRIBUTES* attributes_;
    DWORD startTimeout_;
    platform::KernelObject mutex_;
    std::mutex exchange_;
    std::unique_ptr<Connection> connection_;
};

// The process's pipe client, made on first use with the library's security attributes; NULL when memory is exhausted.
Kxovapipe* GetPipeClient() noexcept;

// Library start and stop.
void setPipeSecurity(SECURITY_ATTRIBUTES* attributes) noexcept;
void destroyPipeClient() noexcept;
