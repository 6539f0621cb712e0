// The bound of one call: set once at its start, asked before every wait.
#pragma once

#include <windows.h>

#include <algorithm>

namespace kxonlinx {

class Deadline
{
 public:
    static Deadline after(DWORD milliseconds) noexcept { return Deadline(GetTickCount64() + milliseconds); }

    // Milliseconds left, 0 when the deadline has passed; never INFINITE.
    DWORD remaining() const noexcept
    {
        const ULONGLONG now = GetTickCount64();
        return now < end_ ? static_cast<DWORD>(std::min<ULONGLONG>(end_ - now, INFINITE - 1)) : 0;
    }

 private:
    explicit Deadline(ULONGLONG end) noexcept : end_(end) {}
    ULONGLONG end_;
};

}  // namespace kxonlinx
