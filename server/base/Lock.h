// Slim locks: a system call only when a thread really has to wait.
#pragma once

#include <windows.h>

namespace srv {

// Fits std::unique_lock, std::lock_guard and std::shared_lock. Not recursive.
class Lock
{
 public:
    Lock() noexcept = default;
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    void lock() noexcept { AcquireSRWLockExclusive(&lock_); }
    void unlock() noexcept { ReleaseSRWLockExclusive(&lock_); }
    void lock_shared() noexcept { AcquireSRWLockShared(&lock_); }
    void unlock_shared() noexcept { ReleaseSRWLockShared(&lock_); }

 private:
    SRWLOCK lock_ = SRWLOCK_INIT;
};

}  // namespace srv
