// One client's connection, whatever carries it.
#pragma once

#include <atomic>
#include <memory>

#include "base/Owner.h"

namespace srv {

// Tells connections to end: an event for those that wait, a flag for those that do not.
struct StopSignal
{
    Handle event{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<bool> given = false;

    void give() noexcept
    {
        given = true;
        SetEvent(event.get());
    }
};

class Connection
{
 public:
    virtual ~Connection() = default;

    // Answers message after message until the client goes or the server stops. Returns why it ended, for the log.
    virtual const char* serve() noexcept = 0;
};

}  // namespace srv
