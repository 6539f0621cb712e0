#include <cstdio>

#include "trcOutputs.h"

namespace trc {
namespace {

constexpr std::uint32_t other(std::uint32_t file) noexcept
{
    return 3 - file;
}

// The time of the last write; false when the file cannot be opened or asked.
bool lastWrite(const char* name, FILETIME& time) noexcept
{
    const HANDLE file = CreateFileA(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const BOOL known = GetFileTime(file, nullptr, nullptr, &time);
    CloseHandle(file);
    return known;
}

}  // namespace

FileOutput::Name FileOutput::name(std::uint32_t file) const noexcept
{
    Name name;
    std::snprintf(name.text, sizeof name.text, "%s%d.TRC", base, static_cast<int>(file));
    return name;
}

void FileOutput::choose() noexcept
{
    FILETIME first;
    FILETIME second;
    const bool haveFirst = lastWrite(name(1).text, first);
    const bool haveSecond = lastWrite(name(2).text, second);
    if (haveFirst && haveSecond) {
        current_ = CompareFileTime(&second, &first) > 0 ? 2 : 1;
    } else {
        current_ = haveSecond ? 2 : 1;
    }
}

bool FileOutput::append(std::uint32_t file) noexcept
{
    close();
    file_ = CreateFileA(name(file).text, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
    return file_ != INVALID_HANDLE_VALUE;
}

bool FileOutput::size(std::int64_t& bytes) const noexcept
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file_, &size)) return false;
    bytes = size.QuadPart;
    return true;
}

void FileOutput::close() noexcept
{
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
}

void FileOutput::abandon() noexcept
{
    close();
    state_ = -1;
}

bool FileOutput::openForLine() noexcept
{
    std::int64_t bytes = 0;
    state_ = -1;
    bool opened = append(current_) && size(bytes);
    if (opened && bytes > limit) {
        current_ = other(current_);
        opened = append(current_) && size(bytes);
        if (opened && bytes > limit) {
            // Both are full: the first one starts afresh.
            current_ = other(current_);
            close();
            DeleteFileA(name(current_).text);
            opened = append(current_);
        }
    }
    if (opened) {
        state_ = 1;
    } else {
        close();
    }
    return opened;
}

void FileOutput::write(const char* line, std::size_t length) noexcept
{
    if (!isOpen()) return;
    state_ = -1;
    DWORD written = 0;
    WriteFile(file_, line, static_cast<DWORD>(length), &written, nullptr);

    std::int64_t bytes = 0;
    if (size(bytes) && bytes > limit) {
        current_ = other(current_);
        if (append(current_) && size(bytes) && bytes > limit) {
            close();
            DeleteFileA(name(current_).text);
        }
    }
    close();
}

}  // namespace trc
