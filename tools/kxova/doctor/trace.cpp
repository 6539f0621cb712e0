#include <windows.h>

#include <cstdlib>

#include "doctor/finding.h"
#include "platform/support/win_handle.h"
#include "text.h"

namespace {

std::string traceSetting(HKEY key, const char* name)
{
    char text[260] = {};
    DWORD size = sizeof text - 1;
    if (RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size) != ERROR_SUCCESS)
        return {};
    return text;
}

// What keeps a line from being written there, in words to go before the folder's name; NULL if nothing does.
const char* obstacleIn(const std::string& folder)
{
    char probe[MAX_PATH] = {};
    if (!GetTempFileNameA(folder.c_str(), "kxo", 0, probe)) return "files cannot be written in ";
    // Under Wine the name alone says little; and a disk may have room for a new file, but none for what is in it. Little
    // of it may lie in the folder itself.
    const std::string lines(64 * 1024, 'x');
    DWORD written = 0;
    platform::File file(CreateFileA(probe, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    const bool opened = static_cast<bool>(file);
    if (opened) WriteFile(file.get(), lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
    file.reset();
    DeleteFileA(probe);
    if (!opened) return "files cannot be written in ";
    return written == lines.size() ? nullptr : "has no room for its files in ";
}

}  // namespace

Finding examineTrace()
{
    const Finding off = {Verdict::Good, "trace", "is off; docs/trace.md tells how to switch it on", ""};
    HKEY key = nullptr;
    const LSTATUS opened =
        RegOpenKeyExA(HKEY_LOCAL_MACHINE, R"(Software\TAVRONE\NORIX\TrcParams)", 0, KEY_READ, &key);
    if (opened == ERROR_ACCESS_DENIED) {
        return {Verdict::Bad, "trace", "is off for this user: its configuration may not be read",
                "give all users the right to read HKLM\\Software\\TAVRONE\\NORIX\\TrcParams"};
    }
    if (opened != ERROR_SUCCESS) return off;
    const std::string output = traceSetting(key, "Output");
    const std::string level = traceSetting(key, "Level");
    std::string folder = traceSetting(key, "Path");
    RegCloseKey(key);
    if (std::strtoul(level.c_str(), nullptr, 0) == 0) return off;
    if (!output.empty() && output != "FILE") return {Verdict::Good, "trace", "goes to " + output, ""};
    if (folder.empty()) folder = "C:\\Tmp\\";
    if (const char* const obstacle = obstacleIn(folder)) {
        return {Verdict::Bad, "trace", obstacle + toUtf8(folder),
                "make that folder writable and room on its disk, or set Path in "
                "HKLM\\Software\\TAVRONE\\NORIX\\TrcParams"};
    }
    return {Verdict::Good, "trace", "goes to files in " + toUtf8(folder), ""};
}
