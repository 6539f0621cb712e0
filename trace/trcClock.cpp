#include "trcClock.h"

#include <windows.h>

#include <atomic>
#include <cstdint>

#include "trcState.h"

namespace trc {
namespace {

constexpr std::uint64_t ticksPerSecond = 10'000'000;
constexpr std::uint64_t ticksPerMillisecond = 10'000;

// Finding the local time costs more than all the rest of a line, so it is done once a second. The second (since 1601)
// and the second of the local day that it is stand in one word, which is read and written as a whole.
constexpr unsigned daySecondBits = 17;
constinit std::atomic<std::uint64_t> lastConversion = 0;

bool convert(const FILETIME& now, std::uint64_t& daySecond) noexcept
{
    FILETIME local;
    SYSTEMTIME parts;
    if (!FileTimeToLocalFileTime(&now, &local) || !FileTimeToSystemTime(&local, &parts)) return false;
    daySecond = (parts.wHour * 60u + parts.wMinute) * 60u + parts.wSecond;
    return true;
}

}  // namespace

TimeOfDay localTimeOfDay() noexcept
{
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const std::uint64_t ticks = std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
    const std::uint64_t second = ticks / ticksPerSecond;

    std::uint64_t conversion = lastConversion.load(std::memory_order_relaxed);
    if (conversion >> daySecondBits != second) {
        std::uint64_t daySecond = 0;
        if (!convert(now, daySecond)) return {};
        conversion = second << daySecondBits | daySecond;
        lastConversion.store(conversion, std::memory_order_relaxed);
    }
    const auto daySecond = static_cast<int>(conversion & ((1u << daySecondBits) - 1));
    const auto millisecond = static_cast<int>(ticks % ticksPerSecond / ticksPerMillisecond);
    return {true, daySecond / 3600, daySecond / 60 % 60, daySecond % 60, millisecond};
}

double counterSeconds() noexcept
{
    LARGE_INTEGER counter;
    if (!QueryPerformanceCounter(&counter)) return 0;
    return static_cast<double>(counter.QuadPart) / trcCounterFrequency;
}

double counterFrequency() noexcept
{
    LARGE_INTEGER frequency;
    if (!QueryPerformanceFrequency(&frequency) || frequency.QuadPart == 0) return 1;
    return static_cast<double>(frequency.QuadPart);
}

}  // namespace trc
