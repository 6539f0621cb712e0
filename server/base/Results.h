// The result codes that this server answers with. Below 8000 they are the system's error numbers with their usual
// meaning, from 8000 upward the configuration component's own.
#pragma once

#include <cstdint>

namespace srv {

using Result = std::uint32_t;

namespace result {

inline constexpr Result ok = 0;
inline constexpr Result noSuchKey = 2;  // of registry requests
inline constexpr Result refused = 5;    // of registry requests: not among the keys that clients may touch
inline constexpr Result outOfMemory = 8;
inline constexpr Result invalidParameter = 87;  // a field is missing, malformed, or no valid name or value
inline constexpr Result alreadyExists = 183;
inline constexpr Result moreData = 234;        // what was asked for does not fit the capacity that the client sent
inline constexpr Result noMoreItems = 259;     // an enumeration's index lies past the last item
inline constexpr Result notConnected = 1167;   // the hardware is not there
inline constexpr Result quotaExceeded = 1816;  // temporary devices of a client, or maps of a board: none is left
inline constexpr Result notWorking = 4319;     // the hardware is there, but does not work
inline constexpr Result notFound = 8012;
inline constexpr Result notSupported = 8018;    // no such operation here
inline constexpr Result profileNoValue = 8062;  // the protocol has no such bus profile

}  // namespace result

}  // namespace srv
