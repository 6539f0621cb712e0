#include <windows.h>

#include <cstdlib>

#include "doctor/finding.h"
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

}  // namespace

Finding examineTrace()
{
    const Finding off = {Verdict::Good, "trace", "is off; docs/trace.md tells how to switch it on", ""};
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, R"(Software\TAVRONE\NORIX\TrcParams)", 0, KEY_READ, &key) != ERROR_SUCCESS)
        return off;
    const std::string output = traceSetting(key, "Output");
    const std::string level = traceSetting(key, "Level");
    std::string folder = traceSetting(key, "Path");
    RegCloseKey(key);
    if (std::strtoul(level.c_str(), nullptr, 0) == 0) return off;
    if (!output.empty() && output != "FILE") return {Verdict::Good, "trace", "goes to " + output, ""};
    if (folder.empty()) folder = "C:\\Tmp\\";
    char probe[MAX_PATH] = {};
    if (!GetTempFileNameA(folder.c_str(), "kxo", 0, probe)) {
        return {Verdict::Bad, "trace", "files cannot be written in " + toUtf8(folder),
                "make that folder writable, or set Path in HKLM\\Software\\TAVRONE\\NORIX\\TrcParams"};
    }
    DeleteFileA(probe);
    return {Verdict::Good, "trace", "goes to files in " + toUtf8(folder), ""};
}
