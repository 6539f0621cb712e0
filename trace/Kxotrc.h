// The trace: one text line per event, to the output that the machine's configuration names.
//
// Functions trace through KXTRACE, which costs one comparison when the line is not wanted. The lines of all
// processes of the machine are serialised by one mutex; see docs/trace.md for configuration, formats and outputs.
#pragma once

#include <windows.h>

#include <cstdint>

// Lets the compiler compare a format with its arguments, which are counted from 1.
#if defined(__GNUC__)
#define TRC_PRINTF(pattern, first) __attribute__((format(printf, pattern, first)))
#else
#define TRC_PRINTF(pattern, first)
#endif

// Levels that the library itself uses. The trace compares the whole value, so exactly one of them per line.
enum TrcLevel : std::uint32_t {
    TRC_PA = 1,
    TRC_PX = 2,
    TRC_PE = 4,
    TRC_ENTRY = 8,
    TRC_RESOURCE = 16,
    TRC_DETAIL = 64,
    TRC_RESULT = 128,
};

inline constexpr char TRC_MODULE[] = "CFP";  // module name of every line that does not say otherwise

extern std::uint32_t trcLevelMask;
extern const volatile std::uint32_t* trcGeneration;  // the machine-wide word, or a private one until it is mapped
extern std::uint32_t trcLastGeneration;              // its value at the last configuration read

// True when a line of this level is to be attempted: its bit is set, or the configuration has changed.
inline bool TrcEnabled(std::uint32_t level) noexcept
{
    return ((trcLevelMask & level) | (*trcGeneration ^ trcLastGeneration)) != 0;
}

// No function here fails towards its caller, and all of them keep errno and the last error. NULL counts as empty for
// every name and text.

// Reads the configuration and prepares its output. The attributes (NULL: the default ones) are those of the
// machine-wide kernel objects; what they point at must live until TrcStop. Called once per load of the library.
void TrcStart(SECURITY_ATTRIBUTES* attributes) noexcept;

// Releases everything that the trace holds. What is traced afterwards goes nowhere and opens nothing.
void TrcStop() noexcept;

// TrcLock waits for the machine's trace mutex at most 10 s and lets the caller go on in any case; always 0.
// TrcUnlock releases it. A thread that holds it may take it again.
std::uint32_t TrcLock() noexcept;
void TrcUnlock() noexcept;

// Formats into the static text buffer (1024 bytes with terminator; longer text is cut) and returns it. To be called,
// and its result to be used, under TrcLock.
TRC_PRINTF(1, 2) const char* TrcFormat(const char* format, ...) noexcept;

// Writes one line past the gate, through filters and format, to the output. Reads the configuration first when it
// has changed; the line is then dropped when its level is no longer wanted. Under TrcLock.
// `result` and `subCode` are shown for levels with bit 128 or 4. Only the file's own name is shown of `sourceFile`.
void TrcWrite(const char* function, std::uint32_t level, const char* module, std::uint32_t result,
              std::uint16_t subCode, const char* sourceFile, int line, const char* text) noexcept;

// Writes "E " and the message (at most 386 characters of it) straight to the output, past all filters. The file
// output has no file open at that time and shows none. Under TrcLock.
void TrcError(const char* message) noexcept;

// Format, lock, write, unlock: what KXTRACE does when the gate is open.
TRC_PRINTF(6, 7)
void TrcLine(const char* function, std::uint32_t level, const char* module, const char* sourceFile, int line,
             const char* format, ...) noexcept;

// KXTRACE("LogDeviceDel: ", TRC_ENTRY, "lpszLogDevice=%s ", name): arguments are evaluated only when the gate is
// open.
#define KXTRACE(function, level, ...) KXTRACE_MODULE(TRC_MODULE, function, level, __VA_ARGS__)

#define KXTRACE_MODULE(module, function, level, ...)                           \
    do {                                                                       \
        if (TrcEnabled(level)) [[unlikely]]                                    \
            TrcLine(function, level, module, __FILE__, __LINE__, __VA_ARGS__); \
    } while (false)
