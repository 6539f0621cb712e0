// A temporary copy of a logical device: values are changed in it without anybody seeing it, then it replaces a device
// in one step. It is gone when this object is, or when the process ends.
#pragma once

#include <optional>
#include <string>

class TemporaryDevice
{
 public:
    // Throws a Failure, also when there is no such device.
    explicit TemporaryDevice(const std::string& device);
    ~TemporaryDevice();
    TemporaryDevice(const TemporaryDevice&) = delete;
    TemporaryDevice& operator=(const TemporaryDevice&) = delete;

    // The copy's own name, by which it is read and written like any device.
    const std::string& name() const noexcept { return name_; }

    // Puts what the copy holds in the place of what the device holds.
    void replace(const std::string& device) const;

 private:
    std::string name_;
};
