#include "turn.h"

#include "support/srw_lock.h"

namespace kxonlinx {

Turn::Result Turn::take(const Deadline& deadline) noexcept
{
    const platform::SrwGuard guard(lock_);
    while (taken_ && !closed_) {
        const DWORD remaining = deadline.remaining();
        if (remaining == 0) return Result::timedOut;
        ++waiting_;
        SleepConditionVariableSRW(&freed_, &lock_, remaining, 0);
        --waiting_;
    }
    if (closed_) return Result::closed;
    taken_ = true;
    return Result::taken;
}

void Turn::give() noexcept
{
    const platform::SrwGuard guard(lock_);
    taken_ = false;
    if (waiting_ > 0) WakeConditionVariable(&freed_);
}

void Turn::close() noexcept
{
    const platform::SrwGuard guard(lock_);
    closed_ = true;
    WakeAllConditionVariable(&freed_);
}

}  // namespace kxonlinx
