// The logical devices that belong to instances of boards.
//
// One of them is made for each way to use the board, from the default logical device of that way. It is called
// <board map>.<what follows the first full stop in the default logical device's name>, "NX3210-1.MPI", and has the
// value BoardMap beside those of the default logical device. Any logical device with the DeviceID and BoardMap of an
// instance belongs to it.
#pragma once

#include <vector>

#include "hardware/DeviceList.h"
#include "store/Store.h"

namespace srv {

bool hasLogicalDevices(const Configuration& configuration, const HardwareDevice& instance);

// The instance to which a logical device belongs; nullptr if there is none. Without BoardMap: the board's first.
const HardwareDevice* instanceOf(const Content& logicalDevice, const std::vector<HardwareDevice>& instances);

enum class Existing { Keep, MakeAnew };

// What makes an instance's logical devices. A logical device of another board or instance that has the name of one is
// always kept.
std::vector<Step> makeLogicalDevices(const catalogue::Catalogue& catalogue, const Configuration& configuration,
                                     const HardwareDevice& instance, Existing existing);

}  // namespace srv
