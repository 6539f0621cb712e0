// Which registry keys clients may ask this server for by their path, and what they may do there.
//
// The server runs with more rights than its clients. So a path is never passed on: it is taken apart, what it names
// is looked up in the list of what is allowed, and the key is opened by a path that is put together anew.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace srv {

struct KeyPath
{
    enum class Place {
        Product,  // below SOFTWARE\WOW6432Node\TAVRONE, the product's key in the 32-bit view
        Machine,  // a key of the system's that may be read
    };
    enum class Rights { Read, Write, All };  // All: the key itself may be deleted

    Place place = Place::Product;
    Rights rights = Rights::Read;
    std::vector<std::wstring> parts;  // below the product's key, or below HKEY_LOCAL_MACHINE

    std::wstring joined() const;
};

// A path below HKEY_LOCAL_MACHINE, in any case; backslashes at its ends and doubled ones do not count. Nothing for
// a path that clients may not touch: anything but the product's keys in the 32-bit view (only there, as clients name
// that view themselves), the maps of serial and parallel ports, and the instances of the USB adapter's driver.
std::optional<KeyPath> allowedPath(std::wstring_view path);

}  // namespace srv
