// A run through everything that can be wrong between a program and its server.
#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "calls.h"
#include "commands.h"
#include "output.h"
#include "peMachine.h"

namespace {

enum class Verdict { Good, Note, Bad };

struct Finding
{
    Verdict verdict;
    std::string what;
    std::string detail;
    std::string remedy;
};

constexpr const char* word(Verdict verdict)
{
    return verdict == Verdict::Good ? "ok" : verdict == Verdict::Note ? "note" : "FAILED";
}

std::string resultText(long result)
{
    const Failure failure("", result);
    return failure.resultName() + ", " + std::to_string(result);
}

std::string pathOf(HMODULE module)
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, sizeof path);
    return toUtf8(path);
}

// A library that this program could not have started without.
Finding loaded(const char* name)
{
    const HMODULE module = GetModuleHandleA(name);
    return {module ? Verdict::Good : Verdict::Bad, name, module ? pathOf(module) + ", 32-bit" : "is not loaded",
            "put it beside the program"};
}

// A library that the others load by its name when they need it.
Finding optional(const std::filesystem::path& file, const std::string& name, const std::string& purpose)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return {Verdict::Note, name, "is not installed; only " + purpose + " needs it", ""};
    switch (machineOf(stream)) {
        case Machine::X86:
            return {Verdict::Good, name, toUtf8(file.string()) + ", 32-bit", ""};
        case Machine::X64:
            return {Verdict::Bad, name, toUtf8(file.string()) + " is a 64-bit library",
                    "put the 32-bit library there; 32-bit programs cannot load this one"};
        default:
            return {Verdict::Bad, name, toUtf8(file.string()) + " is no library for this machine",
                    "install it again"};
    }
}

std::filesystem::path searched(const char* name)
{
    char path[MAX_PATH] = {};
    return SearchPathA(nullptr, name, nullptr, sizeof path, path, nullptr) ? path : name;
}

std::filesystem::path traceEngine()
{
    char common[MAX_PATH] = {};
    const DWORD length = GetEnvironmentVariableA("CommonProgramFiles(x86)", common, sizeof common);
    return std::filesystem::path(length > 0 && length < sizeof common ? common
                                                                      : "C:\\Program Files (x86)\\Common Files") /
           "Tavrone" / "Automation" / "TraceEngine" / "bin" / "KxTraceEngineX.dll";
}

constexpr char logRemedy[] = "look into the server's log; \"kxovasrvx run --log-level debug\" shows each request";

Finding channel()
{
    Text name;
    const long result = LogDeviceGetEnum(nullptr, 0, name.buffer, &name.length);
    const bool good = result == ERROR_SUCCESS || result == DCFG_ERR_NO_MORE_ITEMS;
    return {good ? Verdict::Good : Verdict::Bad, "channel", good ? "answers" : resultText(result), logRemedy};
}

Finding pipe()
{
    Text name;
    const long result = KxRegEnumKey(R"(SOFTWARE\TAVRONE\NORIX\DefDevices)", 0, name.buffer, &name.length);
    const bool good = result == ERROR_SUCCESS || result == DCFG_ERR_NO_MORE_ITEMS;
    return {good ? Verdict::Good : Verdict::Bad, "registry pipe", good ? "answers" : resultText(result), logRemedy};
}

// How many items an enumeration has; `result` is what ended it.
template <typename Ask>
long countOf(Ask ask, long& result)
{
    for (unsigned long i = 0;; ++i) {
        Text name;
        result = ask(i, name.buffer, &name.length);
        if (result != ERROR_SUCCESS) return static_cast<long>(i);
    }
}

Finding store()
{
    long devicesEnd = 0;
    long namesEnd = 0;
    const long devices = countOf([](auto... out) { return LogDeviceGetEnum(nullptr, out...); }, devicesEnd);
    const long names = countOf([](auto... out) { return LogNameGetEnum(out...); }, namesEnd);
    for (const long end : {devicesEnd, namesEnd})
        if (end != DCFG_ERR_NO_MORE_ITEMS) return {Verdict::Bad, "store", resultText(end), logRemedy};
    return {Verdict::Good, "store",
            counted(static_cast<std::size_t>(devices), "logical device") + ", " +
                counted(static_cast<std::size_t>(names), "logical name"),
            ""};
}

Finding plausibility()
{
    const long result = Ova_Plausibilitaet();
    if (result == ERROR_SUCCESS) return {Verdict::Good, "plausibility", "the configuration is consistent", ""};
    return {Verdict::Note, "plausibility", "the configuration is not consistent (" + resultText(result) + ")",
            "the server's log names each disagreement"};
}

std::string traceSetting(HKEY key, const char* name)
{
    char text[260] = {};
    DWORD size = sizeof text - 1;
    if (RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size) != ERROR_SUCCESS)
        return {};
    return text;
}

Finding trace()
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

Finding notifications()
{
    constexpr DWORD bound = 5'000;
    LogDeviceExists("Dummy", 0);  // starts the window that notifications need
    HANDLE event = nullptr;
    const std::string name = "kxova doctor " + std::to_string(GetCurrentProcessId());
    unsigned long result = 0;
    for (const DWORD start = GetTickCount();; Sleep(10)) {
        result = LogDeviceNotifyChange(nullptr, 0, 0, name.c_str(), &event, &event);
        if (result == ERROR_SUCCESS || GetTickCount() - start > bound) break;
        if (event) CloseHandle(event);
        event = nullptr;
    }
    if (result == ERROR_SUCCESS) result = LogDeviceUnregisterNotifyChange(nullptr, name.c_str(), &event);
    if (event) CloseHandle(event);
    if (result == ERROR_SUCCESS) return {Verdict::Good, "notifications", "can be registered", ""};
    return {Verdict::Bad, "notifications", resultText(static_cast<long>(result)), logRemedy};
}

std::vector<Finding> examine()
{
    std::vector<Finding> findings = {
        loaded("kxovaapi.dll"),
        loaded("KXONLINX.dll"),
        loaded("kxepromapi.dll"),
        optional(searched("KXOSOINX.DLL"), "KXOSOINX.DLL", "the state of devices"),
        optional(traceEngine(), "KxTraceEngineX.dll", "the trace's output KXTRACEENGINE"),
        trace()};
    if (!serverIsRunning()) {
        findings.push_back({Verdict::Bad, "server", "is not running", "start it with \"kxovasrvx run\""});
        return findings;
    }
    findings.push_back({Verdict::Good, "server", "is running", ""});
    for (Finding (*const ask)() : {channel, pipe, store, plausibility, notifications})
        findings.push_back(ask());
    return findings;
}

void doctor()
{
    Table table({"VERDICT", "WHAT", "FOUND"});
    Json list = Json::array();
    std::string remedies;
    bool bad = false;
    for (const Finding& finding : examine()) {
        table.add({word(finding.verdict), finding.what, finding.detail});
        Json json = {{"verdict", word(finding.verdict)}, {"what", finding.what}, {"found", finding.detail}};
        if (finding.verdict != Verdict::Good && !finding.remedy.empty()) {
            remedies += finding.what + ": " + finding.remedy + "\n";
            json["remedy"] = finding.remedy;
        }
        list.push_back(std::move(json));
        bad = bad || finding.verdict == Verdict::Bad;
    }
    show({{"findings", list}}, table.text() + (remedies.empty() ? "" : "\n" + remedies));
    if (bad) throw CLI::RuntimeError(exitFailed);
}

}  // namespace

void addDoctorCommand(CLI::App& app)
{
    app.add_subcommand("doctor", "examine everything between a program and its server, with a remedy for what fails")
        ->callback(doctor);
}
