// Operations on templates: what the catalogue says of boards, protocols and default logical devices. Nothing here can
// be changed by clients.
#pragma once

#include "dispatch/Operation.h"

namespace srv::templates {

Result getEnum(const Call& call, Required type, std::uint32_t index, Capacity capacity);
Result getEnumNoPrefix(const Call& call, Required type, std::uint32_t index, Capacity capacity);
Result exists(const Call& call, Required type, Required name, std::uint32_t flags);

// `path` names a key or a value below the template, `value` a value in that key; both may be missing.
Result keyExists(const Call& call, Required type, Required name, Text path, Text value);

// What a parameter of a template may be, one after the other.
Result possibleValue(const Call& call, Required type, Required name, Required parameter, std::uint32_t index,
                     Capacity capacity);

Result boardEnumValue(const Call& call, Required board, std::uint32_t index, Capacity nameCapacity,
                      Capacity textCapacity);
Result defaultDeviceEnumValue(const Call& call, Required device, std::uint32_t index, Capacity nameCapacity,
                              Capacity textCapacity);
Result defaultDeviceValue(const Call& call, Required device, Required parameter, Capacity capacity, Ignored);

// Protocols are addressed by a path of up to five parts, which come as five texts, missing ones empty.
Result protocolEnumValue(const Call& call, Required protocol, Text part2, Text part3, Text part4, Text part5,
                         std::uint32_t index, Capacity nameCapacity, Capacity textCapacity);
Result protocolValue(const Call& call, Required protocol, Text part2, Text part3, Text part4, Text part5,
                     Required parameter, Capacity capacity, Ignored);

// A value below a protocol or a default logical device, by the path of its key.
Result protocolValueRaw(const Call& call, Required protocol, Text path, Required parameter, Capacity capacity);
Result definitionValueRaw(const Call& call, Required device, Text path, Required parameter, Capacity capacity);

}  // namespace srv::templates
