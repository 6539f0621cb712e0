#include "log/Log.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>

namespace srv {

namespace {

constexpr std::size_t longestLine = 1000;
constexpr std::array<std::string_view, 4> names = {"error", "warning", "info", "debug"};

// A cut must not leave half a character behind.
std::size_t wholeCharacters(const char* text, std::size_t length) noexcept
{
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return length;
}

}  // namespace

std::optional<Level> levelFromName(std::string_view name)
{
    for (std::size_t i = 0; i < names.size(); ++i)
        if (_stricmp(std::string(name).c_str(), names[i].data()) == 0) return static_cast<Level>(i);
    return std::nullopt;
}

std::string_view levelName(Level level)
{
    return names[static_cast<std::size_t>(level)];
}

void Log::add(std::unique_ptr<LogSink> sink)
{
    const std::lock_guard guard(lock_);
    sinks_.push_back(std::move(sink));
}

void Log::write(Level level, const char* format, va_list arguments) noexcept
{
    char line[longestLine + 2];  // one byte more than a line has, to see what a cut would separate
    SYSTEMTIME now;
    GetLocalTime(&now);
    const int head = std::snprintf(line, longestLine, "%04d-%02d-%02d %02d:%02d:%02d.%03d %-7s [%lu] ", now.wYear,
                                   now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds,
                                   levelName(level).data(), GetCurrentThreadId());
    const int text = std::vsnprintf(line + head, sizeof line - static_cast<std::size_t>(head), format, arguments);
    std::size_t length = static_cast<std::size_t>(head + std::max(text, 0));
    if (length > longestLine) length = wholeCharacters(line, longestLine);
    line[length++] = '\n';

    const std::lock_guard guard(lock_);
    for (const auto& sink : sinks_)
        sink->write(level, {line, length});
}

void Log::error(const char* format, ...) noexcept
{
    if (!enabled(Level::Error)) return;
    va_list arguments;
    va_start(arguments, format);
    write(Level::Error, format, arguments);
    va_end(arguments);
}

void Log::warning(const char* format, ...) noexcept
{
    if (!enabled(Level::Warning)) return;
    va_list arguments;
    va_start(arguments, format);
    write(Level::Warning, format, arguments);
    va_end(arguments);
}

void Log::info(const char* format, ...) noexcept
{
    if (!enabled(Level::Info)) return;
    va_list arguments;
    va_start(arguments, format);
    write(Level::Info, format, arguments);
    va_end(arguments);
}

void Log::debug(const char* format, ...) noexcept
{
    if (!enabled(Level::Debug)) return;
    va_list arguments;
    va_start(arguments, format);
    write(Level::Debug, format, arguments);
    va_end(arguments);
}

void ConsoleSink::write(Level, std::string_view line) noexcept
{
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

FileSink::FileSink(const std::filesystem::path& file, std::uint64_t largest) : largest_(largest)
{
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    paths_[0] = file.wstring();
    for (std::size_t age = 1; age < paths_.size(); ++age)
        paths_[age] = paths_[0] + L'.' + std::to_wstring(age);
}

bool FileSink::open() noexcept
{
    if (file_) return true;
    file_.reset(CreateFileW(paths_[0].c_str(), FILE_APPEND_DATA,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER length{};
    if (file_ && GetFileSizeEx(file_.get(), &length)) length_ = static_cast<std::uint64_t>(length.QuadPart);
    return static_cast<bool>(file_);
}

void FileSink::rotate() noexcept
{
    file_.reset();
    for (std::size_t age = paths_.size() - 1; age > 0; --age)
        MoveFileExW(paths_[age - 1].c_str(), paths_[age].c_str(), MOVEFILE_REPLACE_EXISTING);
}

void FileSink::write(Level, std::string_view line) noexcept
{
    if (!open()) return;
    if (length_ > 0 && length_ + line.size() > largest_) {
        rotate();
        if (!open()) return;
    }
    DWORD written = 0;
    if (WriteFile(file_.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr)) {
        length_ += written;
    } else {
        file_.reset();
    }
}

}  // namespace srv
