// Times of something that is done many times.
#pragma once

#include <windows.h>

#include <algorithm>
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

struct Series
{
    std::vector<double> times;

    template <typename Work>
    void measure(Work work)
    {
        LARGE_INTEGER before;
        LARGE_INTEGER after;
        QueryPerformanceCounter(&before);
        work();
        QueryPerformanceCounter(&after);
        times.push_back(microseconds(before, after));
    }
    double at(double part)
    {
        std::sort(times.begin(), times.end());
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    }
};
