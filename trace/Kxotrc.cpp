#include "Kxotrc.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "trcClock.h"
#include "trcConfig.h"
#include "trcErrorKeeper.h"
#include "trcObjects.h"
#include "trcOutputs.h"
#include "trcState.h"
#include "trcText.h"

namespace {

constexpr std::size_t textSize = 1024;         // of a formatted text, with terminator
constexpr std::size_t longestArgument = 1024;  // characters of a name or text that are looked at

constinit char trcText[textSize] = {};

// The last byte is never anything but 0, so that a text that another thread is changing still ends inside.
void format(char (&text)[textSize], const char* pattern, va_list arguments) noexcept
{
    if (std::vsnprintf(text, sizeof text, pattern, arguments) < 0) text[0] = 0;
}

class TraceLock
{
 public:
    TraceLock() noexcept { TrcLock(); }
    ~TraceLock() { TrcUnlock(); }
    TraceLock(const TraceLock&) = delete;
    TraceLock& operator=(const TraceLock&) = delete;
};

bool passesFilters(const trc::LineParts& parts) noexcept
{
    using trc::Match;
    return trc::trcTraceIds.passes(parts.traceId, Match::whole) &&
           trc::trcModules.passes(parts.module, Match::whole) &&
           trc::trcFunctions.passes(parts.function, Match::whole) &&
           trc::trcTexts.passes(parts.text, Match::beginning);
}

}  // namespace

void TrcStart(SECURITY_ATTRIBUTES* attributes) noexcept
{
    const trc::ErrorKeeper keeper;
    trc::trcAttributes = attributes;
    trc::resetState();
    const TraceLock lock;
    trc::readConfiguration();
}

void TrcStop() noexcept
{
    const trc::ErrorKeeper keeper;
    // A writer of this process is let finish before its output goes; with nothing to take away there is no wait.
    const bool holdsOutput = trc::ringAttached() || trc::driverOpen() || trc::engineLoaded();
    if (holdsOutput) TrcLock();
    trc::trcStopped = true;
    trcLevelMask = 0;
    trc::detachRing();
    if (holdsOutput) TrcUnlock();
    trc::closeMutex();
    trc::closeEngine();
    trc::closeDriver();
    trc::closeGeneration();
    trcLastGeneration = *trcGeneration;  // which shuts the gate
    trc::trcAttributes = nullptr;
}

const char* TrcFormat(const char* pattern, ...) noexcept
{
    const trc::ErrorKeeper keeper;
    va_list arguments;
    va_start(arguments, pattern);
    format(trcText, pattern, arguments);
    va_end(arguments);
    return trcText;
}

void TrcWrite(const char* function, std::uint32_t level, const char* module, std::uint32_t result,
              std::uint16_t subCode, const char* sourceFile, int line, const char* text) noexcept
{
    const trc::ErrorKeeper keeper;
    if (trc::trcStopped) return;
    const bool consult = trc::consultIsDue();
    if (consult) trcLastGeneration = 0;
    // A machine whose generation was never changed has the word 0 too, so the time alone must be enough.
    if (consult || *trcGeneration != trcLastGeneration) {
        trc::readConfiguration();
        if ((trcLevelMask & level) == 0) return;
    }

    trc::LineParts parts{};
    parts.traceId = trc::trcTraceId;
    parts.function = trc::bounded(function, longestArgument);
    parts.module = trc::bounded(module, longestArgument);
    parts.text = trc::bounded(text, longestArgument);
    if (!passesFilters(parts)) return;

    const int shape = trc::trcFormat;
    trc::LineFile file;
    if (trc::trcOutput == trc::outputFile && !file.open()) return;
    parts.level = level;
    parts.result = result;
    parts.subCode = subCode;
    parts.sourceFile = trc::bounded(sourceFile, longestArgument);
    parts.line = line;
    if (shape == trc::formatLong) parts.time = trc::localTimeOfDay();
    if (shape == trc::formatTime) parts.seconds = trc::counterSeconds();

    trc::Record record;
    trc::buildRecord(record, shape, parts);
    trc::OutputLine out;
    out.length =
        trc::buildLine({out.text, trc::maxLine + 1}, shape, record, GetCurrentProcessId(), GetCurrentThreadId());
    if (out.length != 0) trc::handToOutput(out, &file);
}

void TrcError(const char* message) noexcept
{
    const trc::ErrorKeeper keeper;
    if (trc::trcStopped) return;
    trc::OutputLine line;
    const std::string_view text = trc::bounded(message, trc::maxLine - 2);
    std::memcpy(line.text, "E ", 2);
    std::copy(text.begin(), text.end(), line.text + 2);
    line.length = text.size() + 2;
    trc::copyCut(trc::trcErrorLine, {line.text, line.length});
    // There is no file for it: files are open for the time of a line only.
    trc::handToOutput(line, nullptr);
}

void TrcLine(const char* function, std::uint32_t level, const char* module, const char* sourceFile, int line,
             const char* pattern, ...) noexcept
{
    const trc::ErrorKeeper keeper;
    if (trc::trcStopped) return;
    // In a buffer of its own and before the lock, so that other processes do not wait for the formatting.
    char text[textSize];
    va_list arguments;
    va_start(arguments, pattern);
    format(text, pattern, arguments);
    va_end(arguments);
    const TraceLock lock;
    TrcWrite(function, level, module, 0, 0, sourceFile, line, text);
}
