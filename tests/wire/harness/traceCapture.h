// The trace lines of this process: its trace is configured for the debugger output, and a vectored exception handler
// sees what goes there. The machine's own trace configuration stays as it is.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

struct TraceLine
{
    std::string level;     // the level's tag: FA entry, FM detail, FE result, FR resource, PE, PX
    std::string function;  // trace name, without the blank at its end
    std::string text;
    std::string module = "CFP";

    bool operator==(const TraceLine&) const = default;
};

std::ostream& operator<<(std::ostream& out, const TraceLine& line);

class TraceCapture
{
 public:
    // levels: a value for the trace's "Level".
    explicit TraceCapture(const char* levels = "0xFFFFFFFF");
    ~TraceCapture();
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    // All lines so far, and those of one function.
    std::vector<TraceLine> lines() const;
    std::vector<TraceLine> of(const std::string& function) const;
    void clear() const;
};
