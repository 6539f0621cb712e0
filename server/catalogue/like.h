// The shorthand "like": an entry that is another one with differences.
#pragma once

#include "Errors.h"

namespace catalogue {

// A section in which each entry that is "like" another has that one's members, with its own put in or exchanged,
// object by object; null takes a member away. Reports names that are not there and entries that lead back to
// themselves.
JsonValue resolveLikes(Errors& errors, const JsonValue& section);

}  // namespace catalogue
