// The channel lock: a process-local mutex that serialises every use of the channel handle, of the event buffer and
// of the pointer to the channel client.
#pragma once

#include <windows.h>

#include <cstdint>

inline constexpr std::uint32_t ovaScpLockTimeout = 30000;  // milliseconds

// Library start and stop.
void createOvaScpLock() noexcept;
void closeOvaScpLock() noexcept;

// 0 when the lock was taken; otherwise the result of the wait, or 6 when there is no lock. A lock whose owner died
// counts as not taken although this thread owns it from then on. `giveUp`: an event that ends the wait, with 1.
std::uint32_t OvaScpLock(HANDLE giveUp = nullptr) noexcept;

// Always 0.
std::uint32_t OvaScpUnLock() noexcept;

// Holds the channel lock for a scope, if it could be taken.
class OvaScpLockGuard
{
 public:
    explicit OvaScpLockGuard(HANDLE giveUp = nullptr) noexcept : result_(OvaScpLock(giveUp)) {}
    ~OvaScpLockGuard()
    {
        if (result_ == 0) OvaScpUnLock();
    }
    OvaScpLockGuard(const OvaScpLockGuard&) = delete;
    OvaScpLockGuard& operator=(const OvaScpLockGuard&) = delete;

    explicit operator bool() const noexcept { return result_ == 0; }
    std::uint32_t result() const noexcept { return result_; }

 private:
    std::uint32_t result_;
};
