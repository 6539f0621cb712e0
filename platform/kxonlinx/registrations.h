// What a channel has registered with the server, kept so that it can be registered again.
#pragma once

#include <cstdint>

#include "frame_check.h"
#include "kxonlinx.h"
#include "own_frame.h"
#include "wire/frame.h"

namespace kxonlinx {

// Not safe for several threads at once.
class Registrations
{
 public:
    Registrations() noexcept = default;
    ~Registrations();
    Registrations(const Registrations&) = delete;
    Registrations& operator=(const Registrations&) = delete;

    // Whether a request (a valid one) registers or unregisters something, or renews that.
    static bool concern(Bytes request) noexcept;

    // Before a request is sent: makes room for what it registers. False: out of memory.
    bool prepare(Bytes request) noexcept;

    // After it: one of these.
    void accepted(Bytes request) noexcept;
    void refused() noexcept;

    bool empty() const noexcept { return !first_; }

    // Sends a renewal of all that is registered by `send`, which takes a frame and returns KXONLINX_OK, or an error,
    // which ends it.
    template <typename Send>
    kxonlinx_error renew(Send send) noexcept
    {
        kxonlinx_error error = send(OwnFrame<0>(wire::opcode::NotifyRenewBegin).bytes());
        for (const Entry* entry = first_; entry && error == KXONLINX_OK; entry = entry->next)
            error = send(renewal(*entry));
        return error == KXONLINX_OK ? send(OwnFrame<0>(wire::opcode::NotifyRenewEnd).bytes()) : error;
    }

 private:
    // The payload of the request that made it lies behind it.
    struct Entry
    {
        Entry* next;
        std::uint32_t count;  // how often it was made
        std::uint32_t length;

        std::uint8_t* payload() noexcept { return reinterpret_cast<std::uint8_t*>(this + 1); }
        Bytes bytes() const noexcept { return {reinterpret_cast<const std::uint8_t*>(this + 1), length}; }
    };

    static Entry* make(Bytes payload) noexcept;
    static void free(Entry* entry) noexcept;
    static bool ends(Bytes request, Bytes registration) noexcept;
    Entry** find(Bytes payload) noexcept;
    Bytes renewal(const Entry& entry) noexcept;

    Entry* first_ = nullptr;
    Entry* prepared_ = nullptr;
    std::uint8_t frame_[wire::replyFrameCapacity];
};

}  // namespace kxonlinx
