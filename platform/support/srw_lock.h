// A slim lock held for a scope. Slim locks need no kernel object, so nothing is left to close when a DLL goes.
#pragma once

#include <windows.h>

namespace platform {

class SrwGuard
{
 public:
    explicit SrwGuard(SRWLOCK& lock) noexcept : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    ~SrwGuard() { ReleaseSRWLockExclusive(&lock_); }
    SrwGuard(const SrwGuard&) = delete;
    SrwGuard& operator=(const SrwGuard&) = delete;

 private:
    SRWLOCK& lock_;
};

}  // namespace platform
