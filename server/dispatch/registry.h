// Operations on registry keys by their path; they come over the server pipe.
#pragma once

#include "dispatch/Operation.h"

namespace srv::registry {

Result createKey(const Call& call, Required key);
Result setValue(const Call& call, Required key, Given name, Given text);
Result enumKey(const Call& call, Required key, std::uint32_t index);
Result getValue(const Call& call, Required key, Given name);
Result enumValue(const Call& call, Required key, std::uint32_t index);

// Deleting a key and deleting a value have one operation code: a second text makes it a value.
Outcome deleteKeyOrValue(const Call& call, RequestReader& reader, std::string* shown);

}  // namespace srv::registry
