// The table of all operations that this server carries out.
#pragma once

#include <span>

#include "dispatch/Operation.h"

namespace srv {

std::span<const Operation> allOperations() noexcept;

}  // namespace srv
