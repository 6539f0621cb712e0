#include "Kxotrc.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "trcState.h"

namespace {

constexpr char traceId[] = "KXOVATDX";
constexpr std::uint32_t privateGeneration = 1;

// errno and the last error belong to the caller.
class ErrorKeeper
{
 public:
    ErrorKeeper() noexcept : errno_(errno), lastError_(GetLastError()) {}
    ~ErrorKeeper()
    {
        errno = errno_;
        SetLastError(lastError_);
    }
    ErrorKeeper(const ErrorKeeper&) = delete;
    ErrorKeeper& operator=(const ErrorKeeper&) = delete;

 private:
    int errno_;
    DWORD lastError_;
};

class TrcGuard
{
 public:
    TrcGuard() noexcept { TrcLock(); }
    ~TrcGuard() { TrcUnlock(); }
    TrcGuard(const TrcGuard&) = delete;
    TrcGuard& operator=(const TrcGuard&) = delete;
};

bool passesFilters(const trc::State& s, const trc::LineParts& parts) noexcept
{
    return s.traceIds.passes(parts.traceId, true) && s.modules.passes(parts.module, true) &&
           s.functions.passes(parts.function, true) && s.texts.passes(parts.text, false);
}

double counterSeconds(const trc::State& s) noexcept
{
    LARGE_INTEGER counter;
    if (!QueryPerformanceCounter(&counter)) return 0.0;
    return static_cast<double>(counter.QuadPart) / s.counterFrequency;
}

}  // namespace

std::uint32_t trcLevelMask = 0xFFFFFFFF;
const volatile std::uint32_t* trcGeneration = &privateGeneration;
std::uint32_t trcLastGeneration = 0;

trc::State& trc::state() noexcept
{
    static State instance;
    return instance;
}

void trc::handToOutput(char* line, std::size_t length) noexcept
{
    State& s = state();
    switch (s.output) {
        case outputVxd:
            line[length] = 0;
            s.driver.write(line, length + 1);
            break;
        case outputFile:
            line[length] = '\n';
            s.file.write(line, length + 1);
            break;
        case outputSm:
            line[length] = '\r';
            line[length + 1] = '\n';
            s.ring.write(line, length + 2);
            break;
        case outputDbg:
            line[length] = '\n';
            line[length + 1] = 0;
            OutputDebugStringA(line);
            break;
        case outputEngine:
            s.engine.write(line, length);
            break;
        default:
            break;  // the other outputs are configurable, and silent
    }
}

void TrcStart(SECURITY_ATTRIBUTES* attributes) noexcept
{
    const ErrorKeeper keeper;
    trc::State& s = trc::state();
    s.attributes = attributes;
    s.stopped = false;
    const TrcGuard guard;
    trc::readConfiguration();
}

void TrcStop() noexcept
{
    trc::State& s = trc::state();
    s.stopped = true;
    s.ring.detach();
    trc::closeMutex();
    s.engine.close();
    s.driver.close();
    trc::closeGeneration();
    trcLevelMask = 0;
    trcLastGeneration = *trcGeneration;
}

const char* TrcFormat(const char* format, ...) noexcept
{
    trc::State& s = trc::state();
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(s.text, sizeof s.text, format, arguments);
    va_end(arguments);
    return s.text;
}

void TrcWrite(const char* function, std::uint32_t level, const char* module, std::uint32_t result,
              std::uint16_t subCode, const char* sourceFile, int line, const char* text) noexcept
{
    const ErrorKeeper keeper;
    trc::State& s = trc::state();
    if (s.stopped) return;
    if (s.consult != 0 && s.lastRead != 0 && std::time(nullptr) - s.lastRead >= s.consult) trcLastGeneration = 0;
    if (*trcGeneration != trcLastGeneration) {
        trc::readConfiguration();
        if ((trcLevelMask & level) == 0) return;
    }

    trc::LineParts parts{};
    parts.traceId = traceId;
    parts.function = function;
    parts.level = level;
    parts.module = module;
    parts.result = result;
    parts.subCode = subCode;
    parts.sourceFile = sourceFile;
    parts.line = line;
    parts.text = text;
    if (!passesFilters(s, parts)) return;

    if (s.output == trc::outputFile && !s.file.openForLine()) return;
    parts.processId = GetCurrentProcessId();
    parts.threadId = GetCurrentThreadId();
    char timeOfDay[16];
    if (s.format == trc::formatTime) {
        parts.seconds = counterSeconds(s);
    } else if (s.format == trc::formatLong) {
        SYSTEMTIME now;
        GetLocalTime(&now);
        std::tm local{};
        local.tm_hour = now.wHour;
        local.tm_min = now.wMinute;
        local.tm_sec = now.wSecond;
        if (std::strftime(timeOfDay, sizeof timeOfDay, "%X", &local) != 0) {
            parts.timeOfDay = timeOfDay;
            parts.milliseconds = now.wMilliseconds;
        }
    }
    char built[trc::lineCapacity];
    const std::size_t length = trc::buildLine(built, s.format, parts);
    if (length == 0) {
        s.file.abandon();
        return;
    }
    std::memcpy(s.line, built, length);
    trc::handToOutput(s.line, length);
}

void TrcError(const char* message) noexcept
{
    const ErrorKeeper keeper;
    char line[trc::lineBufferSize];
    const int length = std::snprintf(line, trc::lineCapacity, "E %s", message);
    if (length <= 0) return;
    trc::handToOutput(line, std::strlen(line));
}

void TrcLine(const char* function, std::uint32_t level, const char* module, const char* sourceFile, int line,
             const char* format, ...) noexcept
{
    const ErrorKeeper keeper;
    trc::State& s = trc::state();
    if (s.stopped) return;
    const TrcGuard guard;
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(s.text, sizeof s.text, format, arguments);
    va_end(arguments);
    TrcWrite(function, level, module, 0, 0, sourceFile, line, s.text);
}
