// errno and the last error belong to the caller of a trace call: whatever happens in between, both are as before.
#pragma once

#include <windows.h>

#include <cerrno>

namespace trc {

class ErrorKeeper
{
 public:
    ErrorKeeper() noexcept : errno_(errno), lastError_(GetLastError()) {}
    ~ErrorKeeper()
    {
        errno = errno_;
        SetLastError(lastError_);
    }
    ErrorKeeper(const ErrorKeeper&) = delete;
    ErrorKeeper& operator=(const ErrorKeeper&) = delete;

 private:
    int errno_;
    DWORD lastError_;
};

}  // namespace trc
