// Output to the pair of trace files, "<base>1.TRC" and "<base>2.TRC", of which one is written until it is full.
#include <cstring>

#include "trcOutputs.h"
#include "trcPlatform.h"
#include "trcState.h"
#include "trcText.h"

namespace trc {
namespace {

constexpr DWORD shareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::uint32_t otherFile(std::uint32_t file) noexcept
{
    return 3 - file;
}

class FileName
{
 public:
    explicit FileName(std::uint32_t file) noexcept
    {
        // "%s%d.TRC"
        const std::size_t length = copyCut(text_, bounded(trcFileBase, fileBaseSize - 1));
        text_[length] = file == 1 ? '1' : '2';
        std::memcpy(text_ + length + 1, ending, sizeof ending);
    }

    operator const char*() const noexcept { return text_; }

 private:
    static constexpr char ending[] = ".TRC";

    char text_[fileBaseSize + sizeof ending];
};

// When the file was written last; false when it cannot be opened or asked.
bool askLastWrite(std::uint32_t number, FILETIME& time) noexcept
{
    const HANDLE file = CreateFileA(FileName(number), GENERIC_READ, shareWithAll, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const BOOL known = GetFileTime(file, nullptr, nullptr, &time);
    CloseHandle(file);
    return known;
}

}  // namespace

void chooseFile() noexcept
{
    FILETIME first;
    FILETIME second;
    const bool haveFirst = askLastWrite(1, first);
    const bool haveSecond = askLastWrite(2, second);
    if (haveFirst && haveSecond) {
        trcCurrentFile = CompareFileTime(&second, &first) > 0 ? 2 : 1;
    } else {
        trcCurrentFile = haveSecond ? 2 : 1;
    }
}

bool LineFile::append(DWORD disposition) noexcept
{
    close();
    // Access to append only: each write goes to the end, wherever another process has moved it.
    file_ = CreateFileA(FileName(trcCurrentFile), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, shareWithAll,
                        nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file_ != INVALID_HANDLE_VALUE && askSize();
}

bool LineFile::askSize() noexcept
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file_, &size)) return false;
    size_ = size.QuadPart;
    return true;
}

bool LineFile::isAboveLimit() const noexcept
{
    return size_ > trcBytesPerFile;
}

void LineFile::close() noexcept
{
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
}

bool LineFile::open() noexcept
{
    bool opened = append(OPEN_ALWAYS);
    if (opened && isAboveLimit()) {
        trcCurrentFile = otherFile(trcCurrentFile);
        opened = append(OPEN_ALWAYS);
        if (opened && isAboveLimit()) {
            // Both are full: the first one starts afresh, emptied where somebody keeps it from being deleted.
            close();
            trcCurrentFile = otherFile(trcCurrentFile);
            DeleteFileA(FileName(trcCurrentFile));
            opened = append(CREATE_ALWAYS);
        }
    }
    if (!opened) close();
    return opened;
}

// A disk that fills up in the middle of a line keeps its beginning, which the next line would be glued to. It goes again,
// unless somebody who did not get the mutex either has written behind it.
bool LineFile::takeBack(DWORD written) noexcept
{
    LARGE_INTEGER now;
    if (!GetFileSizeEx(file_, &now) || now.QuadPart != size_ + written) return false;
    // The line's own handle may append only.
    const HANDLE file = ReOpenFile(file_, FILE_WRITE_DATA, shareWithAll, 0);
    if (file == INVALID_HANDLE_VALUE) return false;
    FILE_END_OF_FILE_INFO end;
    end.EndOfFile.QuadPart = size_;
    const BOOL shortened = SetFileInformationByHandle(file, FileEndOfFileInfo, &end, sizeof end);
    CloseHandle(file);
    return shortened;
}

void LineFile::write(const char* bytes, std::size_t count) noexcept
{
    if (file_ == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    trcPlatform.writeFile(file_, bytes, static_cast<DWORD>(count), &written, nullptr);
    if (written != 0 && written < count && takeBack(written)) written = 0;
    size_ += written;  // nobody else writes while this process has the mutex, so there is no need to ask
    close();
    if (!isAboveLimit()) return;
    trcCurrentFile = otherFile(trcCurrentFile);
    const bool otherIsFull = append(OPEN_ALWAYS) && isAboveLimit();
    close();
    if (otherIsFull) DeleteFileA(FileName(trcCurrentFile));
}

}  // namespace trc
