// How the server tells clients of changes, beside the requests of the library itself.
//
// A channel has a number that its process gives it. On the connection of the channel's requests, NotifyChannel (u32
// u32: low and high half) says which channel it is, before the first registration. A second connection asks
// NotifyListen (the same fields): from its answer on, the server sends frames on it that answer nothing, headed
// NotifyPush:
//
//   u16 NotifyPush, then 1 to 1023 times: u32 what, u32 value
//
// what: hardwarePushed, the value being a change's handle; or eventPushed, the value being an event handle of the
// client.
//
// A channel whose listening connection was made anew says what it had registered, on the connection of its requests:
// NotifyRenewBegin (no fields), NotifyRenew (the fields of NotifyRegister) and HardwareChangeRenew (bytes(16) class,
// u32 how often) for each registration, NotifyRenewEnd (no fields). What was not named is forgotten.
#pragma once

#include <cstddef>
#include <cstdint>

#include "wire/frame.h"

namespace wire {

inline constexpr std::uint32_t hardwarePushed = 0x0219;
inline constexpr std::uint32_t eventPushed = 0x0500;

inline constexpr std::size_t pushedItemLength = 8;
inline constexpr std::size_t mostPushedItems = (maxPayload - sizeof(std::uint16_t)) / pushedItemLength;

// What happened to a piece of hardware; 0 is no change.
inline constexpr std::uint8_t hardwareArrived = 1;
inline constexpr std::uint8_t hardwareRemoved = 2;

// The interface class of communication boards; a registration for a class of zeros is told of every class.
inline constexpr std::uint8_t boardInterfaceClass[16] = {0x3A, 0x7B, 0x51, 0xC4, 0x0E, 0x92, 0xD6, 0x4B,
                                                         0xA1, 0x3F, 0x6C, 0x58, 0x27, 0xE9, 0x04, 0xBD};

// In front of the name of an event that other sessions can see.
inline constexpr wchar_t globalPrefix[] = L"Global\\";
inline constexpr std::size_t globalPrefixLength = 7;

}  // namespace wire
