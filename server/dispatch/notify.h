// Notifications: who is told of what. See wire/notifications.h for the channel library's part.
//
// The subject of a registration is the name of a logical device or logical name; NULL or empty stands for all of
// them.
#pragma once

#include "dispatch/Operation.h"

namespace srv {

// A field of 16 bytes.
struct InterfaceClass
{
    GUID guid{};
};
Fields read(RequestReader& reader, InterfaceClass& field, std::string* shown);

namespace notify {

// `family` is "LogDevices" or "LogNames", else 87. Registering the same again changes nothing.
Result add(const Call& call, Required family, Text subject, Required event, std::uint32_t handle);

// Handle 0 ends the registrations with all handles. 8012: there is no such registration.
Result remove(const Call& call, Required family, Text subject, Required event, std::uint32_t handle);

// A class is counted, and told until it was removed as often. Removing one that is not there is no error: the library
// itself knows what it registered.
Result addClass(const Call& call, InterfaceClass interfaceClass);
Result removeClass(const Call& call, InterfaceClass interfaceClass);

// Its reply is headed by a number in front of the kind, and has its fields whatever the result.
Outcome hardwareChange(const Call& call, RequestReader& reader, std::string* shown);

Result channel(const Call& call, std::uint32_t low, std::uint32_t high);
Result listen(const Call& call, std::uint32_t low, std::uint32_t high);
Result beginRenewal(const Call& call);
Result renew(const Call& call, Required family, Text subject, Required event, std::uint32_t handle);
Result renewClass(const Call& call, InterfaceClass interfaceClass, std::uint32_t count);
Result endRenewal(const Call& call);

}  // namespace notify

}  // namespace srv
