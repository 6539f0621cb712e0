// The outputs of the trace. All calls are made under the trace mutex.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "trcLine.h"

namespace trc {

enum Output : int
{
    outputVxd = 0,
    outputCom1 = 1,
    outputCom2 = 2,
    outputPipe = 3,
    outputFile = 4,
    outputSm = 5,
    outputDbg = 6,
    outputEngine = 7,
};

// Room for a line and what an output adds to it: "\r\n" or "\n" and a terminator.
inline constexpr std::size_t lineBufferSize = lineCapacity + 2;

// Kernel driver
class DriverOutput
{
 public:
    DWORD open() noexcept;  // 0 or the Windows error
    void write(const char* lineWithTerminator, std::size_t length) noexcept;
    void close() noexcept;

 private:
    HANDLE driver_ = INVALID_HANDLE_VALUE;
};

// Two files, base 1 and 2 with ".TRC", of which one is written until it exceeds the limit. Opened and closed for
// each line, so that several processes share them.
class FileOutput
{
 public:
    static constexpr std::int32_t defaultLimit = 0x200000;

    char base[MAX_PATH] = "C:\\TMP\\KXFILE";
    std::int32_t limit = defaultLimit;

    // The file that was written last becomes the current one.
    void choose() noexcept;
    // Opens the current file for one line, changing files where it is full. False: the line is not written.
    bool openForLine() noexcept;
    bool isOpen() const noexcept { return state_ == 1; }
    // Writes the line and closes; starts the other file when this one is full now.
    void write(const char* line, std::size_t length) noexcept;
    void abandon() noexcept;

    std::uint32_t current() const noexcept { return current_; }

 private:
    struct Name
    {
        char text[MAX_PATH + 8];
    };
    Name name(std::uint32_t file) const noexcept;
    bool append(std::uint32_t file) noexcept;
    bool size(std::int64_t& bytes) const noexcept;
    void close() noexcept;

    std::uint32_t current_ = 1;
    int state_ = -1;  // 1: the current file is open for this line
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

// The machine-wide ring in shared memory. Header fields are u32: 0 write position, 4 capacity, 8 wrap count,
// 12 enabled, 16 users, 20 layout; data from 64.
class RingOutput
{
 public:
    static constexpr std::uint32_t defaultSize = 2000000;
    static constexpr char name[] = "Global\\KXSDD_Trace";

    std::uint32_t size = defaultSize;  // capacity of a ring that this process makes

    void attach(SECURITY_ATTRIBUTES* attributes) noexcept;
    void write(const char* line, std::size_t length) noexcept;
    void detach() noexcept;

 private:
    HANDLE section_ = nullptr;
    std::uint8_t* view_ = nullptr;
    std::uint32_t capacity_ = 0;  // of the mapped view, whatever the header says later
};

// A separate library that takes the lines.
class EngineOutput
{
 public:
    void load() noexcept;
    void write(const char* line, std::size_t length) noexcept;
    void close() noexcept;

 private:
    using Open = int (*)(const char* metaInfo, const char* settings, const char* folder, int, const char* version,
                         void** handle);
    using Write = int (*)(void* handle, double, int, const void* record, int length);
    using Command = int (*)(void* handle, int command, void* argument);
    using Close = int (*)(void* handle);

    void complain(const char* entryPoint, const char* line) noexcept;

    HMODULE library_ = nullptr;
    Open open_ = nullptr;
    Write write_ = nullptr;
    Command command_ = nullptr;
    Close close_ = nullptr;
    void* handle_ = nullptr;
    bool usable_ = true;
    bool reportOnce_ = true;
    char folder_[512] = {};
    char settings_[512] = {};
    char metaInfo_[512] = {};
    char version_[512] = {};
};

}  // namespace trc
