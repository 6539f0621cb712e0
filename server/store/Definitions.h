// The catalogue's definitions as registry keys, for those who read the registry themselves:
//
//   <root>\DefDevices\DeviceID\<device id>            boards
//   <root>\DefDevices\CP_TYPE\<protocol>              protocols
//   <root>\DefDevices\DefaultLogDevices\<name>        default logical devices, with their Ndi values below "Ndi"
//
// They are written anew when the catalogue has changed since the last time, and are not read by this server: the
// value Catalogue of the key DefDevices, a checksum, is written last and tells what is there.
#pragma once

#include <windows.h>

#include <string>

#include "base/Results.h"
#include "catalogue/Catalogue.h"

namespace srv {

// Returns 0 or the registry's error.
Result publishDefinitions(HKEY hive, const std::wstring& root, const catalogue::Catalogue& catalogue);

}  // namespace srv
