// Output to the trace engine, a separate library that takes the lines. It is found in the common program-files
// folder, may be missing, and is opened with the first line.
#include <cstdio>
#include <cstring>

#include "trcEvents.h"
#include "trcOutputs.h"
#include "trcPlatform.h"
#include "trcState.h"
#include "trcText.h"

namespace trc {
namespace {

constexpr char libraryPath[] = "\\Tavrone\\Automation\\TraceEngine\\bin\\KxTraceEngineX.dll";
constexpr char settingsPath[] = "\\Tavrone\\kxrts\\meta\\trace\\Settings\\";
constexpr char settingsFile[] = "Kxsdd_TraceSettings.xml";
constexpr char metaInfoFile[] = "Kxsdd_TraceMetaInfo.xml";
constexpr char version[] = "1.0.0.0";

using EngineHandle = void*;  // NULL: none

// Result 0: done.
using TraceOpen = int (*)(const char* metaInfoFile, const char* settingsFile, const char* settingsFolder, int,
                          const char* version, EngineHandle* handle);
using TraceWriteRecord = int (*)(EngineHandle, double, int, const void* record, int length);
using TraceCommand = int (*)(EngineHandle, int command, void* argument);
using TraceClose = int (*)(EngineHandle);

struct Engine
{
    HMODULE library;
    TraceOpen open;
    TraceWriteRecord write;
    TraceCommand command;  // wanted to be there, though nothing is asked of it
    TraceClose close;
    EngineHandle handle;
    char settingsFolder[512];
};

constinit Engine engine = {};

template <typename Function>
void resolve(const char* name, Function& function) noexcept
{
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(engine.library, name)));
    if (function) return;
    trcEngineUsable = false;
    reportToEventLog(EVENTLOG_ERROR_TYPE, eventEntryPointMissing, name);
}

// Once per start: an engine that refuses would otherwise fill the event log, one entry a line.
void reportOnce(const char* entryPoint, std::string_view line) noexcept
{
    constexpr std::size_t reportedLine = 392;
    if (!trcReportOnce) return;
    reportToEventLog(EVENTLOG_WARNING_TYPE, eventEngineCallFailed, entryPoint, line.substr(0, reportedLine));
    trcReportOnce = false;
}

}  // namespace

void loadEngine() noexcept
{
    if (engine.library) return;
    char common[MAX_PATH] = {};
    if (!trcPlatform.commonProgramFiles(common)) common[0] = 0;
    std::snprintf(engine.settingsFolder, sizeof engine.settingsFolder, "%s%s", common, settingsPath);
    char path[512];
    std::snprintf(path, sizeof path, "%s%s", common, libraryPath);
    engine.library = LoadLibraryA(path);
    if (!engine.library) {
        trcEngineUsable = false;
        reportToEventLog(EVENTLOG_ERROR_TYPE, eventEngineMissing, path);
        return;
    }
    trcEngineUsable = true;
    resolve("TraceOpenA", engine.open);
    resolve("TraceWrite", engine.write);
    resolve("TraceCommand", engine.command);
    resolve("TraceClose", engine.close);
}

void closeEngine() noexcept
{
    if (engine.handle && engine.close) engine.close(engine.handle);
    const HMODULE library = engine.library;
    engine = {};
    if (library) FreeLibrary(library);
}

bool engineLoaded() noexcept
{
    return engine.library != nullptr;
}

void writeToEngine(const char* line, std::size_t length) noexcept
{
    if (!trcEngineUsable || !engine.library) return;
    if (!engine.handle &&
        engine.open(metaInfoFile, settingsFile, engine.settingsFolder, 0, version, &engine.handle) != 0) {
        engine.handle = nullptr;
        reportOnce("TraceOpenA", {line, length});
    }
    if (!engine.handle) return;
    unsigned char record[4 + maxLine] = {0x00, 0x47, static_cast<unsigned char>(length & 0xFF),
                                         static_cast<unsigned char>(length >> 8)};
    std::memcpy(record + 4, line, length);
    if (engine.write(engine.handle, 0.0, 1, record, static_cast<int>(length + 4)) != 0) {
        reportOnce("TraceWrite", {line, length});
    }
}

}  // namespace trc
