// Operations on logical names.
#pragma once

#include "dispatch/Operation.h"

namespace srv::names {

Result exists(const Call& call, Required name, std::uint32_t flags);
Result create(const Call& call, Required name);
Result remove(const Call& call, Required name);
Result getEnum(const Call& call, std::uint32_t index, Capacity capacity);
Result getValue(const Call& call, Required name, Required parameter, Capacity capacity);
Result setValue(const Call& call, Required name, Required parameter, Given text);
Result deleteValue(const Call& call, Required name, Required parameter);
Result getEnumValue(const Call& call, Required name, std::uint32_t index, Capacity nameCapacity,
                    Capacity textCapacity);
Result list(const Call& call, Capacity capacity);
Result valueList(const Call& call, Required name, Text subkey, Text, Ignored, Capacity capacity);

}  // namespace srv::names
