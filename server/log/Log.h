// The server's log: one line a happening, to the console, or to a file that cannot grow without bound.
#pragma once

#include <array>
#include <atomic>
#include <cstdarg>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Lock.h"
#include "base/Owner.h"

namespace srv {

enum class Level { Error, Warning, Info, Debug };

// "error", "warning", "info", "debug", in any case.
std::optional<Level> levelFromName(std::string_view name);
std::string_view levelName(Level level);

// Where lines go. Called with whole lines, by one thread at a time.
class LogSink
{
 public:
    virtual ~LogSink() = default;
    virtual void write(Level level, std::string_view line) noexcept = 0;
};

// Lines look like "2026-11-21 14:03:07.123 warning [1234] text" in UTF-8; [..] holds the thread's id. A line longer
// than 1000 bytes is cut. Safe to use from any thread; a line is written in one piece. What is below the level costs
// one comparison (but its arguments are computed: ask enabled() before computing dear ones).
class Log
{
 public:
    explicit Log(Level level = Level::Info) : level_(level) {}

    void add(std::unique_ptr<LogSink> sink);
    void setLevel(Level level) noexcept { level_ = level; }
    bool enabled(Level level) const noexcept { return level <= level_.load(std::memory_order_relaxed); }

    void error(const char* format, ...) noexcept __attribute__((format(gnu_printf, 2, 3)));
    void warning(const char* format, ...) noexcept __attribute__((format(gnu_printf, 2, 3)));
    void info(const char* format, ...) noexcept __attribute__((format(gnu_printf, 2, 3)));
    void debug(const char* format, ...) noexcept __attribute__((format(gnu_printf, 2, 3)));

 private:
    void write(Level level, const char* format, va_list arguments) noexcept;

    std::atomic<Level> level_;
    Lock lock_;
    std::vector<std::unique_ptr<LogSink>> sinks_;
};

// Standard error.
class ConsoleSink : public LogSink
{
 public:
    void write(Level level, std::string_view line) noexcept override;
};

// A file of at most 1 MiB beside the three files before it (".1" the youngest). It is opened shared, so that it can
// be read and even deleted while the server runs. If it cannot be written, its lines are lost and nothing else.
class FileSink : public LogSink
{
 public:
    explicit FileSink(const std::filesystem::path& file, std::uint64_t largest = 1024 * 1024);

    void write(Level level, std::string_view line) noexcept override;

 private:
    bool open() noexcept;
    void rotate() noexcept;

    std::array<std::wstring, 4> paths_;  // by age
    std::uint64_t largest_;
    std::uint64_t length_ = 0;
    Handle file_;
};

}  // namespace srv
