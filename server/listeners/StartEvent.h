// Tells clients that come while the server starts to wait for it.
#pragma once

#include <string>

#include "base/Owner.h"

namespace srv {

// A client that finds no pipe creates-or-opens this event, and if it exists already waits until it is set. So it
// exists exactly while the server runs, and is set from when the server can be reached; when the server ends it is
// set once more for those who wait, and goes.
class StartEvent
{
 public:
    explicit StartEvent(const std::wstring& name);
    ~StartEvent();

    bool exists() const noexcept { return static_cast<bool>(event_); }

    // From now on clients need not wait.
    void ready() noexcept;

 private:
    Handle event_;
};

}  // namespace srv
