// Notices what comes and goes among the hardware that is plugged in.
#pragma once

#include <functional>
#include <vector>

#include "base/Lock.h"
#include "hardware/DeviceList.h"

namespace srv {

// Safe to use from any thread.
class HardwareWatch
{
 public:
    // Gets one device that came or went.
    using Tell = std::function<void(bool came, const HardwareDevice& device)>;

    HardwareWatch(Registry& registry, Tell tell) : list_(registry, hardwareKey), tell_(std::move(tell)) {}

    // What is there now is not told.
    void begin();

    // Looks again. To be called when something may have changed.
    void look();

 private:
    DeviceList list_;
    Tell tell_;
    Lock looking_;
    std::vector<HardwareDevice> seen_;
};

}  // namespace srv
