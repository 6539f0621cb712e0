// What the catalogue knows of a logical device's parameters, and whether what is stored agrees with it.
#pragma once

#include "dispatch/Operation.h"

namespace srv::parameters {

// One attribute ("type", "min", "max", "step", "base", "default", "unit") of a parameter's description; 8012 for a
// parameter that is not described and for an attribute that its description does not have.
Result attribute(const Call& call, Required device, Required parameter, Required attribute, Capacity capacity);

// The possible values of an enumeration, each alone or followed by "/" and its English text; 8012 for any other
// parameter. The special list is that of the device's board; the average one leaves the board out of account.
Result specialList(const Call& call, Required device, Required parameter, Capacity capacity);
Result averageList(const Call& call, Required device, Required parameter, Capacity capacity);

// 0 when every logical device has a board and a protocol that the catalogue knows and every logical name points at a
// device that exists or at none (else 8012), and every value is one that its description allows (else 87). Each
// disagreement is logged.
Result plausibility(const Call& call);

// The five version texts of the communication runtime.
Result runtimeVersions(const Call& call);

}  // namespace srv::parameters
