#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <initializer_list>

#include "Kxotrc.h"
#include "trcState.h"

namespace trc {
namespace {

constexpr char keyName[] = "Software\\TAVRONE\\NORIX\\" "TrcParams";
constexpr char defaultPath[] = "C:\\Tmp\\";
constexpr char defaultFileName[] = "KxFile";

// The configuration key, if there is one; its values count only as non-empty texts.
class ConfigurationKey
{
 public:
    static constexpr DWORD textSize = 260;

    ConfigurationKey() noexcept
    {
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, keyName, 0, KEY_READ, &key_) != ERROR_SUCCESS) key_ = nullptr;
    }
    ~ConfigurationKey()
    {
        if (key_) RegCloseKey(key_);
    }
    ConfigurationKey(const ConfigurationKey&) = delete;
    ConfigurationKey& operator=(const ConfigurationKey&) = delete;

    explicit operator bool() const noexcept { return key_ != nullptr; }

    bool read(const char* name, char (&text)[textSize]) const noexcept
    {
        std::memset(text, 0, sizeof text);
        DWORD type = REG_NONE;
        DWORD size = textSize - 1;
        return RegQueryValueExA(key_, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size) ==
                   ERROR_SUCCESS &&
               type == REG_SZ && text[0] != 0;
    }

 private:
    HKEY key_ = nullptr;
};

using Text = char[ConfigurationKey::textSize];

void readFilter(const ConfigurationKey& key, const char* name, FilterList& list) noexcept
{
    Text text;
    if (key.read(name, text)) list.assign(text);
}

// A number that counts only from 1 upward.
template <typename Number>
void readSize(const ConfigurationKey& key, const char* name, Number& size) noexcept
{
    Text text;
    if (!key.read(name, text)) return;
    const long value = std::strtol(text, nullptr, 10);
    if (value >= 1) size = static_cast<Number>(value);
}

int formatOf(const char* text) noexcept
{
    if (_stricmp(text, "SHORT") == 0) return formatShort;
    if (_stricmp(text, "TIME") == 0) return formatTime;
    if (_stricmp(text, "TEXT") == 0) return formatText;
    return formatLong;
}

int outputOf(const char* text) noexcept
{
    static constexpr const char* names[] = {"VXD", "COM1", "COM2", "PIPE", "FILE", "SM", "DBG", "KXTRACEENGINE"};
    for (int output = outputVxd; output <= outputEngine; ++output) {
        if (_stricmp(text, names[output]) == 0) return output;
    }
    return outputFile;
}

// Folder and name of the trace files, from whatever of the two is given.
void readFileBase(const ConfigurationKey& key, FileOutput& file) noexcept
{
    Text path;
    Text name;
    const bool havePath = key.read("Path", path);
    const bool haveName = key.read("FileName", name);
    if (!havePath && !haveName) return;
    if (!havePath) std::strcpy(path, defaultPath);
    if (haveName) {
        if (char* const dot = std::strchr(name, '.')) *dot = 0;
    } else {
        std::strcpy(name, defaultFileName);
    }
    const bool separated = path[std::strlen(path) - 1] == '\\';
    std::snprintf(file.base, sizeof file.base, "%s%s%s", path, separated ? "" : "\\", name);
}

void readValues(State& s, const ConfigurationKey& key) noexcept
{
    Text text;
    if (key.read("Consult", text)) s.consult = std::atoi(text);
    readFilter(key, "FctName", s.functions);
    readFilter(key, "Module", s.modules);
    readFilter(key, "String", s.texts);
    readFilter(key, "TraceId", s.traceIds);
    if (key.read("Format", text)) s.format = formatOf(text);
    if (key.read("Level", text)) trcLevelMask = static_cast<std::uint32_t>(std::strtoul(text, nullptr, 0));
    if (!key.read("Output", text)) return;
    s.output = outputOf(text);
    if (s.output == outputSm) readSize(key, "sm_size", s.ring.size);
    if (_stricmp(text, "FILE") == 0) {
        readSize(key, "Byte/File", s.file.limit);
        readFileBase(key, s.file);
    }
}

void prepareOutput(State& s) noexcept
{
    switch (s.output) {
        case outputVxd:
            if (const DWORD error = s.driver.open(); error != ERROR_SUCCESS) {
                TrcError(error == ERROR_NOT_SUPPORTED ? "Unable to open VxD, device does not support DeviceIOCTL"
                                                      : "Unable to open VxD, got error code !");
            }
            break;
        case outputCom1:
        case outputCom2:
        case outputDbg:
            break;
        case outputFile:
            TrcLock();
            s.file.choose();
            TrcUnlock();
            break;
        case outputSm:
            TrcLock();
            s.ring.attach(s.attributes);
            TrcUnlock();
            break;
        case outputEngine:
            s.engine.load();
            break;
        default:
            TrcError("Fehler im TALUN-Tracesystem, bitte wenden Sie sich an den Hersteller !");
    }
}

}  // namespace

void readConfiguration() noexcept
{
    State& s = state();
    openKernelObjects();

    trcLevelMask = 0;
    s.format = formatLong;
    s.consult = 0;
    s.output = outputFile;
    LARGE_INTEGER frequency;
    s.counterFrequency = QueryPerformanceFrequency(&frequency) && frequency.QuadPart != 0
                             ? static_cast<double>(frequency.QuadPart)
                             : 1.0;
    for (FilterList* list : {&s.functions, &s.modules, &s.texts, &s.traceIds}) list->clear();

    {
        const ConfigurationKey key;
        if (key) readValues(s, key);
    }
    prepareOutput(s);

    trcLastGeneration = *trcGeneration;
    if (s.consult != 0) s.lastRead = std::time(nullptr);
}

}  // namespace trc
