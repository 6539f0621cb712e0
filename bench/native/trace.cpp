// The trace is off, and stays so.
#include "Kxotrc.h"

namespace {

const volatile std::uint32_t noGeneration = 0;

}  // namespace

std::uint32_t trcLevelMask = 0;
std::uint32_t trcLastGeneration = 0;
const volatile std::uint32_t* trcGeneration = &noGeneration;

void TrcLine(const char*, std::uint32_t, const char*, const char*, int, const char*, ...) noexcept {}
