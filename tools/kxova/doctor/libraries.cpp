#include <windows.h>

#include <filesystem>
#include <fstream>

#include "doctor/finding.h"
#include "library/bind.h"
#include "peMachine.h"
#include "text.h"

namespace {

namespace fs = std::filesystem;

std::string pathOf(HMODULE module)
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, sizeof path);
    return toUtf8(path);
}

// Where the system would load it from.
fs::path searched(const char* name)
{
    char path[MAX_PATH] = {};
    return SearchPathA(nullptr, name, nullptr, sizeof path, path, nullptr) ? path : name;
}

// A library that was found in a file.
Finding inFile(const fs::path& file, std::istream& stream, const std::string& name)
{
    const std::string path = toUtf8(file.string());
    switch (machineOf(stream)) {
        case Machine::X86:
            return {Verdict::Good, name, path + ", 32-bit", ""};
        case Machine::X64:
            return {Verdict::Bad, name, path + " is a 64-bit library",
                    "put the 32-bit library there; 32-bit programs cannot load this one"};
        default:
            return {Verdict::Bad, name, path + " is no library for this machine", "install it again"};
    }
}

// A library that nothing works without.
Finding required(const char* name)
{
    if (const HMODULE module = GetModuleHandleA(name)) return {Verdict::Good, name, pathOf(module) + ", 32-bit", ""};
    const fs::path file = searched(name);
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return {Verdict::Bad, name, "is missing", "put it beside kxova.exe"};
    return inFile(file, stream, name);
}

// The library itself: found, and more than that.
Finding kxovaapi()
{
    Finding finding = required("kxovaapi.dll");
    if (finding.verdict != Verdict::Good || bindingFault().empty()) return finding;
    return {
        Verdict::Bad, finding.what, bindingFault() + " (" + finding.detail + ")",
        "a library that it needs may be missing: see the others; or install kxova and kxovaapi.dll of one version"};
}

// A library that the others load by its name when they need it.
Finding optional(const fs::path& file, const std::string& name, const std::string& purpose)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return {Verdict::Note, name, "is not installed; only " + purpose + " needs it", ""};
    return inFile(file, stream, name);
}

fs::path traceEngine()
{
    char common[MAX_PATH] = {};
    const DWORD length = GetEnvironmentVariableA("CommonProgramFiles(x86)", common, sizeof common);
    return fs::path(length > 0 && length < sizeof common ? common : "C:\\Program Files (x86)\\Common Files") /
           "Tavrone" / "Automation" / "TraceEngine" / "bin" / "KxTraceEngineX.dll";
}

}  // namespace

Findings examineLibraries()
{
    return {kxovaapi(), required("KXONLINX.dll"), required("kxepromapi.dll"),
            optional(searched("KXOSOINX.DLL"), "KXOSOINX.DLL", "the state of devices"),
            optional(traceEngine(), "KxTraceEngineX.dll", "the trace's output KXTRACEENGINE")};
}
