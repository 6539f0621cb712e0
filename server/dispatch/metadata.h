// Operations on metadata: texts attached to the parameters of an item, which lies in a subfolder of a folder or in
// the folder itself (subfolder NULL or empty). NULL or empty as the folder stands for the folder "data". The item
// "LLDP" of that folder holds the LLDP settings.
#pragma once

#include "dispatch/Operation.h"

namespace srv::metadata {

Result get(const Call& call, Text folder, Text subfolder, Required item, Required parameter, Capacity capacity);
Result set(const Call& call, Text folder, Text subfolder, Required item, Required parameter, Given text);

// Deletes from the folder "data": the request names no other.
Result erase(const Call& call, Text subfolder, Required item, Required parameter);
Result getEnum(const Call& call, Text folder, Text subfolder, Required item, std::uint32_t index,
               Capacity nameCapacity, Capacity textCapacity);

}  // namespace srv::metadata
