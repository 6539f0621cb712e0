// A thread of this program's own.
#pragma once

#include <functional>

#include "Owner.h"

namespace srv {

// Joined by its destructor. The function must not throw.
class Thread
{
 public:
    Thread() noexcept = default;
    Thread(Thread&&) noexcept = default;
    Thread& operator=(Thread&&) = delete;
    ~Thread() { join(); }

    // False if the system has no thread to give. Requires that none runs.
    bool start(std::function<void()> body);

    // A thread that nobody joins: whatever it uses, it must own a share of.
    static bool startDetached(std::function<void()> body);

    bool running() const noexcept { return static_cast<bool>(handle_); }
    HANDLE handle() const noexcept { return handle_.get(); }

    // Waits for its end; false when it has not ended in time.
    bool join(DWORD milliseconds = INFINITE) noexcept;

 private:
    Handle handle_;
};

}  // namespace srv
