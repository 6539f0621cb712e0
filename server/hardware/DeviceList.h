// A list of hardware in the registry, one key a device:
//
//   <root>\Hardware\<id>      what is plugged in; written by whoever plugs (see docs/server.md)
//   <root>\Instances\<id>     the instances that the server knows; its value Whole: the catalogue's are among them
//
// <id> is the hardware instance id with "#" for each backslash. REG_SZ values DeviceID, HardwareId,
// HardwareInstanceId, BoardMap, NetType, Adapter, State (decimal). HardwareInstanceId is written last and deleted
// first: a key without it is one that was never finished and does not count.
#pragma once

#include <string>
#include <vector>

#include "catalogue/Catalogue.h"
#include "store/Registry.h"

namespace srv {

using HardwareDevice = catalogue::InstalledBoard;

// Not thread-safe against itself; others may change the registry at any time. Results are Windows error numbers.
class DeviceList
{
 public:
    DeviceList(Registry& registry, std::wstring key) : registry_(registry), key_(std::move(key)) {}

    // Whether the list has once been written whole. Until then it may hold a part of what it is to hold.
    LSTATUS isWhole(bool& whole) const;
    LSTATUS markWhole();

    // By device id, then board map, then hardware instance id. Names of boards are not stored and left empty.
    LSTATUS read(std::vector<HardwareDevice>& devices) const;

    LSTATUS put(const HardwareDevice& device);
    LSTATUS setState(const HardwareDevice& device, std::uint32_t state);

    // An absent device is success.
    LSTATUS remove(std::wstring_view hardwareInstanceId);

 private:
    std::wstring pathOf(std::wstring_view hardwareInstanceId) const;

    Registry& registry_;
    std::wstring key_;
};

inline constexpr wchar_t hardwareKey[] = L"Hardware";
inline constexpr wchar_t instancesKey[] = L"Instances";

// Whether an id can name a device: 1 to 255 characters, no control characters.
bool isHardwareInstanceId(std::wstring_view id) noexcept;

}  // namespace srv
