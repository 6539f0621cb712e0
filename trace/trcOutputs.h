// The outputs of the trace. All calls are made under the trace mutex.
#pragma once

#include <windows.h>

#include <cstddef>

#include "trcLine.h"

namespace trc {

// A line with room for what an output adds: "\r\n" and a terminator.
struct OutputLine
{
    char text[maxLine + 3];
    std::size_t length;  // without what is added
};

// A trace file, open for one line. Files are opened and closed for each line, so that several processes share them.
class LineFile
{
 public:
    LineFile() noexcept = default;
    ~LineFile() { close(); }
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;

    // Opens the current file, changing files where it is above the limit. False: the line is not written.
    bool open() noexcept;

    // Writes and closes; a line for which there is no room leaves nothing behind. When that took the file above the
    // limit, the other one is current from now on.
    void write(const char* bytes, std::size_t count) noexcept;

 private:
    bool append(DWORD disposition) noexcept;
    bool askSize() noexcept;
    bool takeBack(DWORD written) noexcept;
    bool isAboveLimit() const noexcept;
    void close() noexcept;

    HANDLE file_ = INVALID_HANDLE_VALUE;
    LONGLONG size_ = 0;
};

// The file that was written last becomes the current one.
void chooseFile() noexcept;

void attachRing() noexcept;
void detachRing() noexcept;
void writeToRing(const char* bytes, std::size_t count) noexcept;

// 0, or the Windows error that kept the driver from being opened.
DWORD openDriver() noexcept;
void closeDriver() noexcept;
void writeToDriver(const char* bytes, std::size_t count) noexcept;

void loadEngine() noexcept;
void closeEngine() noexcept;
void writeToEngine(const char* line, std::size_t length) noexcept;

// True while an output holds something that TrcStop must not take away under a writer.
bool ringAttached() noexcept;
bool driverOpen() noexcept;
bool engineLoaded() noexcept;

// Hands the line to the configured output; `file` is open, or NULL when there is none for this line.
void handToOutput(OutputLine& line, LineFile* file) noexcept;

}  // namespace trc
