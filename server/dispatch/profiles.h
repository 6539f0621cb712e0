// Operations on bus profiles: which a protocol has, and what they set in a logical device. A profile is named by its
// key ("0" to "3", the stored value of "busparam") or its name ("dp", "std", "uni", "user").
#pragma once

#include "dispatch/Operation.h"

namespace srv::profiles {

// The keys of a protocol's profiles.
Result getEnum(const Call& call, Required protocol, std::uint32_t index, Capacity capacity);

// The baud rates of a profile; of a protocol without profiles its own, whatever the profile.
Result enumBaudrate(const Call& call, Required protocol, Given profile, std::uint32_t index, Capacity capacity);

// Whether a definition, named as below, holds something at a path. `value` is the name of a value or key there, or
// where the path names a value, its text; it may be missing.
Result collectionExists(const Call& call, Required definition, Required path, Text value);

// Sets in a device, in one step, a profile and what it prescribes at the device's baud rate.
Result setBusparams(const Call& call, Required device, Required profile);

// Sets in a device, in one step, what a definition ties to the present value of a parameter. The definition is a
// path: that of the registry key, "SOFTWARE\TAVRONE\NORIX\DefDevices\CP_TYPE\<protocol>\Params", or what follows
// CP_TYPE.
Result setProfile(const Call& call, Required device, Required definition, Required parameter);

}  // namespace srv::profiles
