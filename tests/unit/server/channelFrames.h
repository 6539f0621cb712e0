// A question on the channel that changes nothing, and what it can be answered.
#pragma once

#include "Bytes.h"

namespace bytes {

inline const Bytes existsDev = frame(u16(42) + str(u"Dev") + u32(0));
inline const Bytes notThere = frame(reply(8012), 42);
inline const Bytes refused = frame(reply(87), 42);

}  // namespace bytes
