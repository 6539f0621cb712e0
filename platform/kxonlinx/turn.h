// Whose turn it is on one channel: one caller at a time, waiting no longer than its deadline. A turn that is free is
// taken without entering the kernel.
#pragma once

#include <windows.h>

#include "deadline.h"

namespace kxonlinx {

class Turn
{
 public:
    enum class Result { taken, timedOut, closed };

    Result take(const Deadline& deadline) noexcept;
    void give() noexcept;

    // From now on nobody gets a turn; who waits for one is told so. Who has it keeps it until give().
    void close() noexcept;

 private:
    SRWLOCK lock_ = SRWLOCK_INIT;
    CONDITION_VARIABLE freed_ = CONDITION_VARIABLE_INIT;
    bool taken_ = false;
    bool closed_ = false;
    unsigned waiting_ = 0;
};

// A turn for a scope.
class TurnHolder
{
 public:
    TurnHolder(Turn& turn, const Deadline& deadline) noexcept : turn_(turn), result_(turn.take(deadline)) {}
    ~TurnHolder()
    {
        if (result_ == Turn::Result::taken) turn_.give();
    }
    TurnHolder(const TurnHolder&) = delete;
    TurnHolder& operator=(const TurnHolder&) = delete;

    Turn::Result result() const noexcept { return result_; }

 private:
    Turn& turn_;
    Turn::Result result_;
};

}  // namespace kxonlinx
