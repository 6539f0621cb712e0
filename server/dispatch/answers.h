// Pieces of replies that several operations share.
#pragma once

#include "dispatch/Operation.h"

namespace srv {

// The value of a name.
Result answerValue(const Call& call, const ValueTable& values, std::wstring_view name, Capacity capacity);

// The name and text of the value at a position; 259 past the last.
Result answerValueAt(const Call& call, const ValueTable& values, std::uint32_t index, Capacity nameCapacity,
                     Capacity textCapacity);

// All values as one list: name, text, name, text, ...
Result answerValueList(const Call& call, const ValueTable& values, Capacity capacity);

// All names of a family as one list.
Result answerNameList(const Call& call, Family family, Capacity capacity);

}  // namespace srv
