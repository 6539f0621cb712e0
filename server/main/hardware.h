// Plugging simulated hardware in and pulling it out.
#pragma once

#include <cstdint>

#include "main/options.h"

namespace srv {

struct HardwareToPlug
{
    std::wstring deviceId;
    std::wstring hardwareInstanceId;  // empty: one is made up
    std::wstring boardMap;            // empty: the scan chooses
    std::wstring netType;             // empty: the scan chooses
    std::wstring adapter;             // id; empty: none
    std::uint32_t state = 0;
};

// Prints what is plugged in, one device a line: hardware instance id, device id, board name, state, separated by
// tabs.
Exit listHardware(const std::filesystem::path& catalogueFile);

// Plugs a plug-and-play board of the catalogue in and prints its hardware instance id. What is plugged in already
// gets the new properties.
Exit addHardware(const std::filesystem::path& catalogueFile, const HardwareToPlug& what);

// Pulls a device out.
Exit removeHardware(const std::wstring& hardwareInstanceId);

}  // namespace srv
