// Times of something that is done many times.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <vector>

inline double microseconds(LARGE_INTEGER from, LARGE_INTEGER to)
{
    static const double frequency = [] {
        LARGE_INTEGER ticks;
        QueryPerformanceFrequency(&ticks);
        return static_cast<double>(ticks.QuadPart);
    }();
    return static_cast<double>(to.QuadPart - from.QuadPart) * 1e6 / frequency;
}

// How long it takes once.
template <typename Work>
double microsecondsOf(Work work)
{
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    QueryPerformanceCounter(&before);
    work();
    QueryPerformanceCounter(&after);
    return microseconds(before, after);
}

struct Series
{
    std::vector<double> times;

    template <typename Work>
    void measure(Work work)
    {
        times.push_back(microsecondsOf(work));
    }
    // The time of one of `count`, done in a row: for what is over before the clock has moved.
    template <typename Work>
    void measureEach(int count, Work work)
    {
        const double total = microsecondsOf([&] {
            for (int i = 0; i < count; ++i)
                work();
        });
        times.push_back(total / count);
    }
    double at(double part)
    {
        if (times.empty()) return 0;
        std::sort(times.begin(), times.end());
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    }
    double median() { return at(0.5); }
};

// What `of` gives for most turns. A machine has slow moments, which last longer than a turn and meet all that is measured in
// it.
template <typename Of>
double inMostTurns(std::size_t turns, Of of)
{
    Series each;
    for (std::size_t turn = 0; turn < turns; ++turn)
        each.times.push_back(of(turn));
    return each.median();
}
