#include "recordedTrace.h"

#include <cstdarg>
#include <cstdio>

#include "Kxotrc.h"

namespace {

const volatile std::uint32_t noGeneration = 0;
std::vector<RecordedLine> recorded;

}  // namespace

std::uint32_t trcLevelMask = 0;
const volatile std::uint32_t* trcGeneration = &noGeneration;
std::uint32_t trcLastGeneration = 0;

void TrcLine(const char* function, std::uint32_t level, const char* module, const char* sourceFile, int,
             const char* format, ...) noexcept
{
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    const std::string path(sourceFile);
    recorded.push_back({function, level, module, path.substr(path.find_last_of("/\\") + 1), text});
}

RecordedTrace::RecordedTrace()
{
    recorded.clear();
    trcLevelMask = 0xFFFFFFFF;
}

RecordedTrace::~RecordedTrace()
{
    trcLevelMask = 0;
}

const std::vector<RecordedLine>& RecordedTrace::lines() const
{
    return recorded;
}
