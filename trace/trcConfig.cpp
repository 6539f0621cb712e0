#include "trcConfig.h"

#include <windows.h>

#include <cstring>

#include "Kxotrc.h"
#include "trcClock.h"
#include "trcObjects.h"
#include "trcOutputs.h"
#include "trcPlatform.h"
#include "trcState.h"

namespace trc {
namespace {

constexpr char keyName[] = "Software\\TAVRONE\\NORIX\\TrcParams";

class ConfigurationKey
{
 public:
    ConfigurationKey() noexcept
    {
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, keyName, 0, KEY_QUERY_VALUE, &key_) != ERROR_SUCCESS) key_ = nullptr;
    }
    ~ConfigurationKey()
    {
        if (key_) RegCloseKey(key_);
    }
    ConfigurationKey(const ConfigurationKey&) = delete;
    ConfigurationKey& operator=(const ConfigurationKey&) = delete;

    Settings settings() noexcept { return key_ ? readSettings(read, key_) : Settings(); }

 private:
    static bool read(void* source, const char* name, Value& value)
    {
        std::memset(value, 0, sizeof value);
        DWORD type = REG_NONE;
        DWORD size = valueSize;
        return RegQueryValueExA(static_cast<HKEY>(source), name, nullptr, &type, reinterpret_cast<BYTE*>(value),
                                &size) == ERROR_SUCCESS &&
               type == REG_SZ && value[0] != 0;
    }

    HKEY key_ = nullptr;
};

void take(const Settings& settings) noexcept
{
    trcTraceIds = settings.traceIds;
    trcModules = settings.modules;
    trcFunctions = settings.functions;
    trcTexts = settings.texts;
    trcFormat = settings.format;
    trcConsult = settings.consult;
    if (settings.bytesPerFile != 0) trcBytesPerFile = settings.bytesPerFile;
    if (settings.smSize != 0) trcSmSize = settings.smSize;
    if (settings.fileBase[0] != 0) std::memcpy(trcFileBase, settings.fileBase, sizeof trcFileBase);
    trcOutput = settings.output;
    // In one step: a moment with no level at all would cost other threads' lines.
    trcLevelMask = settings.level;
}

// What an output holds already it keeps; only what is missing is opened.
void prepareOutput() noexcept
{
    switch (trcOutput) {
        case outputVxd:
            if (const DWORD error = openDriver(); error == ERROR_NOT_SUPPORTED) {
                TrcError("Unable to open VxD, device does not support DeviceIOCTL");
            } else if (error != ERROR_SUCCESS) {
                TrcError("Unable to open VxD, got error code !");
            }
            break;
        case outputCom1:
        case outputCom2:
        case outputDbg:
            break;
        case outputFile:
            chooseFile();
            break;
        case outputSm:
            attachRing();
            break;
        case outputEngine:
            loadEngine();
            break;
        default:
            TrcError("Fehler im TALUN-Tracesystem, bitte wenden Sie sich an den Hersteller !");
    }
}

}  // namespace

void readConfiguration() noexcept
{
    openObjects();
    // Taken before the registry is read: a change that comes meanwhile leads to another read.
    const std::uint32_t generation = *trcGeneration;
    trcCounterFrequency = counterFrequency();
    take(ConfigurationKey().settings());
    prepareOutput();
    trcLastGeneration = generation;
    trcConsultRead = trcConsult != 0 ? trcPlatform.milliseconds() : 0;
}

bool consultIsDue() noexcept
{
    if (trcConsult == 0 || trcConsultRead == 0) return false;
    return trcPlatform.milliseconds() - trcConsultRead >= static_cast<std::uint64_t>(trcConsult) * 1000;
}

}  // namespace trc
