#include "files.h"

#include <windows.h>

#include "results.h"
#include "text.h"

namespace {

// More than any configuration; a bound for what is read into memory.
constexpr LONGLONG largest = 256LL << 20;

class File
{
 public:
    File(const std::wstring& name, DWORD access, DWORD disposition)
        : handle_(CreateFileW(name.c_str(), access, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                              nullptr))
    {}
    ~File()
    {
        if (isOpen()) CloseHandle(handle_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool isOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return handle_; }

 private:
    HANDLE handle_;
};

[[noreturn]] void fail(const std::string& attempt)
{
    throw Failure(attempt, static_cast<long>(GetLastError()));
}

}  // namespace

std::string readFile(const std::string& name)
{
    const std::string attempt = "read the file \"" + name + "\"";
    const File file(toWide(name), GENERIC_READ, OPEN_EXISTING);
    LARGE_INTEGER size = {};
    if (!file.isOpen() || !GetFileSizeEx(file.get(), &size)) fail(attempt);
    if (size.QuadPart > largest) throw Failure(attempt, ERROR_FILE_TOO_LARGE);
    std::string text(static_cast<std::size_t>(size.QuadPart), 0);
    DWORD read = 0;
    if (!ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &read, nullptr)) fail(attempt);
    text.resize(read);
    return text;
}

void writeFile(const std::string& name, const std::string& text)
{
    const std::string attempt = "write the file \"" + name + "\"";
    const std::wstring path = toWide(name);
    const std::wstring draft = path + L".new";
    {
        const File file(draft, GENERIC_WRITE, CREATE_ALWAYS);
        DWORD written = 0;
        if (!file.isOpen() ||
            !WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ||
            written != text.size())
            fail(attempt);
    }
    if (!MoveFileExW(draft.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        const DWORD error = GetLastError();
        DeleteFileW(draft.c_str());
        throw Failure(attempt, static_cast<long>(error));
    }
}
