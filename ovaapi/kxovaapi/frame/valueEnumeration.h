// The enumeration of the values of one object: one request for all of them, handed out one pair at a time.
#pragma once

#include "frame/ListCache.h"
#include "kxovaapi.h"

// What the enumerations of two families differ in.
struct ValueEnumeration
{
    ListCache& cache;                         // name, value, name, value, …
    opcode::Code list;                        // asks for all values
    std::uint32_t capacity;                   // bytes that their list may have
    decltype(&LogDeviceGetEnumValue) single;  // asks for one, of a server that does not list them
};

// The iValue-th pair, or the end of the list, which drops it; traces either.
long enumerateValue(ApiCall& call, const ValueEnumeration& enumeration, const char* object, const char* subKey,
                    unsigned long iValue, char* name, unsigned long* nameLength, char* value,
                    unsigned long* valueLength);
