#include <cstdio>
#include <cstring>

#include "trcOutputs.h"
#include "trcPlatform.h"

namespace trc {
namespace {

constexpr char libraryPath[] = R"(\Tavrone\Automation\TraceEngine\bin\KxTraceEngineX.dll)";
constexpr char settingsPath[] = R"(\Tavrone\kxrts\meta\trace\Settings\)";

constexpr DWORD eventLibraryMissing = 0xC0001400;
constexpr DWORD eventEntryPointMissing = 0xC0001401;
constexpr DWORD eventCallFailed = 0x80001402;
constexpr std::size_t maxEventText = 255;
constexpr std::size_t maxReportedLine = 392;

void report(WORD type, DWORD event, const char* first, const char* second = nullptr) noexcept
{
    char texts[2][maxEventText + 1];
    const char* pointers[2] = {texts[0], texts[1]};
    std::snprintf(texts[0], sizeof texts[0], "%s", first);
    if (second) std::snprintf(texts[1], sizeof texts[1], "%s", second);
    platform().reportEvent(type, event, pointers, second ? 2 : 1);
}

template <typename Function>
bool resolve(HMODULE library, const char* name, Function& function) noexcept
{
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    if (!function) report(EVENTLOG_ERROR_TYPE, eventEntryPointMissing, name);
    return function != nullptr;
}

}  // namespace

void EngineOutput::load() noexcept
{
    if (library_) return;

    char common[MAX_PATH] = {};
    platform().commonProgramFiles(common);
    std::snprintf(folder_, sizeof folder_, "%s%s", common, settingsPath);
    std::snprintf(settings_, sizeof settings_, "Kxsdd_TraceSettings.xml");
    std::snprintf(metaInfo_, sizeof metaInfo_, "Kxsdd_TraceMetaInfo.xml");
    std::snprintf(version_, sizeof version_, "1.0.0.0");

    char path[512];
    std::snprintf(path, sizeof path, "%s%s", common, libraryPath);
    library_ = LoadLibraryA(path);
    if (!library_) {
        usable_ = false;
        report(EVENTLOG_ERROR_TYPE, eventLibraryMissing, path);
        return;
    }
    // Each that is missing is reported.
    const bool resolved[] = {resolve(library_, "TraceOpenA", open_), resolve(library_, "TraceWrite", write_),
                             resolve(library_, "TraceCommand", command_), resolve(library_, "TraceClose", close_)};
    for (const bool found : resolved) usable_ = usable_ && found;
}

void EngineOutput::complain(const char* entryPoint, const char* line) noexcept
{
    if (!reportOnce_) return;
    char cut[maxReportedLine + 1];
    std::snprintf(cut, sizeof cut, "%s", line);
    report(EVENTLOG_WARNING_TYPE, eventCallFailed, entryPoint, cut);
    reportOnce_ = false;
}

void EngineOutput::write(const char* line, std::size_t length) noexcept
{
    if (!usable_ || !library_) return;
    if (!handle_ && open_(metaInfo_, settings_, folder_, 0, version_, &handle_) != 0) {
        handle_ = nullptr;
        complain("TraceOpenA", line);
    }
    if (!handle_) return;

    std::uint8_t record[4 + lineCapacity];
    record[0] = 0x00;
    record[1] = 0x47;
    record[2] = static_cast<std::uint8_t>(length & 0xFF);
    record[3] = static_cast<std::uint8_t>(length >> 8);
    std::memcpy(record + 4, line, length);
    if (write_(handle_, 0.0, 1, record, static_cast<int>(length + 4)) != 0) complain("TraceWrite", line);
}

void EngineOutput::close() noexcept
{
    if (handle_ && close_) close_(handle_);
    handle_ = nullptr;
    if (library_) FreeLibrary(library_);
    library_ = nullptr;
    usable_ = true;
    reportOnce_ = true;
}

}  // namespace trc
