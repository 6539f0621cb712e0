// How frames get to the server. A transport knows nothing of frames, handles or retries; Channel uses it from one
// thread at a time (reachable() from any).
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "deadline.h"
#include "kxonlinx.h"

namespace kxonlinx {

// What ends a wait: the deadline, or the event that is set when the channel is closed.
struct Bounds
{
    Deadline deadline;
    HANDLE closing;
};

struct ExchangeResult
{
    kxonlinx_error error;
    std::size_t replyLength;
    // False: certain that nobody has begun with the request or ever will. Only then it may be sent again.
    bool maybeSent;
};

class Transport
{
 public:
    Transport() noexcept = default;
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;
    virtual ~Transport() = default;

    // Connects; requires that it is not connected.
    virtual kxonlinx_error connect(const Bounds& bounds) noexcept = 0;
    virtual bool connected() const noexcept = 0;

    // Sends `request` and receives one message; requires that it is connected. A message longer than `reply` is
    // BAD_REPLY. After an error the connection is of no more use, but still to be closed; nothing touches the two
    // buffers any more.
    virtual ExchangeResult exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                                    const Bounds& bounds) noexcept = 0;

    // Ends the connection, so that nothing of it can be taken for a part of the next one. Safe at any time.
    virtual void close() noexcept = 0;

    // Whether a server offers this channel now; makes no connection.
    virtual bool reachable() const noexcept = 0;

    // Another transport to the same channel, not connected. None: out of memory, or there is no such thing.
    virtual std::unique_ptr<Transport> sibling() const noexcept { return nullptr; }

    // Waits for one message that nobody asked for; requires that it is connected. When `wake`, which may be NULL, is
    // set first, `length` is 0. A connection on which messages come so is used for nothing else. After TIMED_OUT it
    // still stands.
    virtual kxonlinx_error receive(std::span<std::uint8_t>, std::size_t& length, HANDLE, const Bounds&) noexcept
    {
        length = 0;
        return KXONLINX_SYSTEM_ERROR;
    }
};

}  // namespace kxonlinx
