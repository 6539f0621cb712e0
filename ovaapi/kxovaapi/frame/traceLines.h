// Trace lines of one call, by what they tell; `call` has the call's trace name.
#pragma once

#include "channel/traceValues.h"
#include "Kxotrc.h"

// Traces the arguments at the start of a call, a detail in its course, or its result.
#define KX_ENTRY(call, ...) KXTRACE((call).name(), TRC_ENTRY, __VA_ARGS__)
#define KX_DETAIL(call, ...) KXTRACE((call).name(), TRC_DETAIL, __VA_ARGS__)
#define KX_RESULT(call, ...) KXTRACE((call).name(), TRC_RESULT, __VA_ARGS__)
