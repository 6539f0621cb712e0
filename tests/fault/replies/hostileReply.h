// Replies of a server that is broken or means ill.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fakeChannel.h"
#include "support/fuzzing.h"

// The payload of a reply to a request of this operation: mostly of the right shape with contents that nobody expects,
// or such a one damaged; else any fields in any order.
// Texts are often just as long as one of the caller's buffers, or nearly so.
Bytes hostilePayload(std::uint16_t opcode, const std::vector<std::size_t>& capacities, fuzzing::Random& random);

// The same as what the channel library hands over: its length may lie, or the exchange fails.
FakeChannel::Exchange hostileExchange(std::uint16_t opcode, const std::vector<std::size_t>& capacities,
                                      fuzzing::Random& random);
