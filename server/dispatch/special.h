// Operations on special values, which the server keeps itself, and on its state.
#pragma once

#include "dispatch/Operation.h"

namespace srv::special {

// What was set, else what the catalogue says.
Result get(const Call& call, Required parameter, Capacity capacity);
Result set(const Call& call, Required parameter, Given text);

// 0: what is set now can be stored; else the registry's error.
Result canSave(const Call& call);

}  // namespace srv::special
