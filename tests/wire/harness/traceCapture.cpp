#include "traceCapture.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <ostream>

namespace {

constexpr char privateRoot[] = "Software\\kxova-test";

void* s_handler = nullptr;
std::mutex s_mutex;
std::vector<std::string> s_raw;

LONG CALLBACK seeDebugOutput(EXCEPTION_POINTERS* pointers)
{
    constexpr DWORD debugPrint = 0x40010006;
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != debugPrint || record.NumberParameters < 2) return EXCEPTION_CONTINUE_SEARCH;
    const std::lock_guard guard(s_mutex);
    s_raw.emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
    return EXCEPTION_CONTINUE_EXECUTION;
}

void setText(HKEY key, const char* name, const char* text)
{
    RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), static_cast<DWORD>(strlen(text) + 1));
}

// Makes every process of the machine read its trace configuration again.
void raiseGeneration()
{
    const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, "Global\\KXTRACE_SECTION");
    if (!section) return;
    if (auto* const word = static_cast<volatile LONG*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, sizeof(LONG)))) {
        InterlockedIncrement(word);
        UnmapViewOfFile(const_cast<LONG*>(word));
    }
    CloseHandle(section);
}

// The fields of the short format: letter, trace id, level, module, result and sub-code, function, text. No trace name
// holds a blank but at its end, which is shown here without it.
TraceLine parse(const std::string& raw)
{
    constexpr std::size_t levelColumn = 11;
    constexpr std::size_t moduleColumn = 14;
    constexpr std::size_t functionColumn = 27;
    constexpr std::size_t functionWidth = 34;

    TraceLine line;
    line.level = raw.substr(levelColumn, 2);
    line.module = raw.substr(moduleColumn, 3);
    const std::string rest = raw.substr(functionColumn);
    line.function = rest.substr(0, rest.find(' '));
    // A name of the field's whole width has lost its blank.
    const bool blankAtItsEnd =
        line.function.size() < functionWidth && (line.function.back() == ':' || line.function == "ReadString()");
    line.text = rest.substr(std::min(rest.size(), line.function.size() + (blankAtItsEnd ? 2 : 1)));
    if (!line.text.empty() && line.text.back() == '\n') line.text.pop_back();
    return line;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const TraceLine& line)
{
    return out << line.level << ' ' << line.module << ' ' << line.function << " | " << line.text;
}

TraceCapture::TraceCapture(const char* levels)
{
    HKEY root = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, privateRoot, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &root, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, root);
    RegCloseKey(root);

    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, "Software\\TAVRONE\\NORIX\\TrcParams", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &key, nullptr);
    setText(key, "Output", "DBG");
    setText(key, "Format", "SHORT");
    setText(key, "Level", levels);
    RegCloseKey(key);

    s_handler = AddVectoredExceptionHandler(1, seeDebugOutput);
    clear();
    raiseGeneration();
}

TraceCapture::~TraceCapture()
{
    RemoveVectoredExceptionHandler(s_handler);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    raiseGeneration();
}

std::vector<TraceLine> TraceCapture::lines() const
{
    const std::lock_guard guard(s_mutex);
    std::vector<TraceLine> all;
    for (const std::string& raw : s_raw) {
        if (raw.rfind("S KXOVATDX", 0) == 0) all.push_back(parse(raw));
    }
    return all;
}

std::vector<TraceLine> TraceCapture::of(const std::string& function) const
{
    std::vector<TraceLine> all = lines();
    std::erase_if(all, [&](const TraceLine& line) { return line.function != function; });
    return all;
}

void TraceCapture::clear() const
{
    const std::lock_guard guard(s_mutex);
    s_raw.clear();
}
