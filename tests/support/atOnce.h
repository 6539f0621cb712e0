// How many threads were in the same place at once, at most.
#pragma once

#include <atomic>

class AtOnce
{
 public:
    void enter() noexcept
    {
        const int now = ++inside_;
        for (int most = most_; most < now && !most_.compare_exchange_weak(most, now);) {
        }
    }
    void leave() noexcept { --inside_; }
    int most() const noexcept { return most_; }

 private:
    std::atomic<int> inside_ = 0;
    std::atomic<int> most_ = 0;
};
