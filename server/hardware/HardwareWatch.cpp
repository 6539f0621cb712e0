#include "hardware/HardwareWatch.h"

#include <algorithm>
#include <mutex>

namespace srv {

namespace {

bool holds(const std::vector<HardwareDevice>& devices, const HardwareDevice& device)
{
    return std::any_of(devices.begin(), devices.end(), [&](const HardwareDevice& other) {
        return catalogue::equalNoCase(other.hardwareInstanceId, device.hardwareInstanceId);
    });
}

}  // namespace

void HardwareWatch::begin()
{
    const std::lock_guard guard(looking_);
    list_.read(seen_);
}

void HardwareWatch::look()
{
    const std::lock_guard guard(looking_);
    std::vector<HardwareDevice> now;
    if (list_.read(now) != ERROR_SUCCESS) return;
    for (const HardwareDevice& device : seen_)
        if (!holds(now, device)) tell_(false, device);
    for (const HardwareDevice& device : now)
        if (!holds(seen_, device)) tell_(true, device);
    seen_ = std::move(now);
}

}  // namespace srv
