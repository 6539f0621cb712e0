#include "temporary.h"

#include "calls.h"
#include "hints.h"

TemporaryDevice::TemporaryDevice(const std::string& device)
    : name_(textOf([&](auto... out) { return LogDeviceCreateTemp(toAnsi(device).c_str(), out...); },
                   "make a temporary copy of " + logicalDevice(device), devicesHint))
{}

TemporaryDevice::~TemporaryDevice()
{
    LogDeviceDelTemp(toAnsi(name_).c_str());
}

void TemporaryDevice::replace(const std::string& device) const
{
    require(LogDeviceUpdateWithTemp(toAnsi(name_).c_str(), toAnsi(device).c_str()),
            "replace " + logicalDevice(device) + " by its changed copy", devicesHint);
}
