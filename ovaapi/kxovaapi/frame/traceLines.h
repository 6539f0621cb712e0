// Trace lines of one call, by what they tell; `call` has the call's trace name.
#pragma once

#include <cstring>

#include "channel/traceValues.h"
#include "Kxotrc.h"

// Traces the arguments at the start of a call, a detail in its course, or its result.
#define KX_ENTRY(call, ...) KXTRACE((call).name(), TRC_ENTRY, __VA_ARGS__)
#define KX_DETAIL(call, ...) KXTRACE((call).name(), TRC_DETAIL, __VA_ARGS__)
#define KX_RESULT(call, ...) KXTRACE((call).name(), TRC_RESULT, __VA_ARGS__)

// How much of a caller's buffer a trace line may show, for "%.*s": a buffer that the caller never wrote to, or that is
// exactly full, has no terminator. NULL is shown as such.
inline int textLength(const char* buffer, const unsigned long* capacity) noexcept
{
    if (!buffer) return -1;
    return capacity ? static_cast<int>(strnlen(buffer, *capacity)) : 0;
}

// A text that was read, for a trace line: an empty one is not even terminated in a buffer without room.
inline const char* readText(const char* buffer, const unsigned long* length) noexcept
{
    return *length > 0 ? buffer : "";
}
