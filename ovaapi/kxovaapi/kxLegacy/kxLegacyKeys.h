// Registry keys of the configuration, below HKEY_LOCAL_MACHINE.
#pragma once

namespace keys {

inline constexpr char logDevices[] = R"(SOFTWARE\TAVRONE\NORIX\LogDevices)";
inline constexpr char logNames[] = R"(SOFTWARE\TAVRONE\NORIX\LogNames)";
inline constexpr char definitions[] = R"(SOFTWARE\TAVRONE\NORIX\DefDevices)";
inline constexpr char boardDefinitions[] = R"(SOFTWARE\TAVRONE\NORIX\DefDevices\DeviceID)";
inline constexpr char protocolDefinitions[] = R"(SOFTWARE\TAVRONE\NORIX\DefDevices\CP_TYPE)";
inline constexpr char logDeviceDefinitions[] = R"(SOFTWARE\TAVRONE\NORIX\DefDevices\DefaultLogDevices)";

}  // namespace keys
