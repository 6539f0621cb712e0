// A trace that formats every line and writes none: what is traced is read, too.
#include <cstdarg>
#include <cstdio>

#include "Kxotrc.h"

namespace {

const volatile std::uint32_t noGeneration = 0;

}  // namespace

std::uint32_t trcLevelMask = 0xFFFFFFFF;
const volatile std::uint32_t* trcGeneration = &noGeneration;
std::uint32_t trcLastGeneration = 0;

void TrcLine(const char*, std::uint32_t, const char*, const char*, int, const char* format, ...) noexcept
{
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
}
