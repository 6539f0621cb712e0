#include "scriptedEngine.h"

#include <cstdio>
#include <cstring>

#define EXPORT extern "C" __declspec(dllexport)

namespace {

EngineScript script;

}  // namespace

EXPORT EngineScript* Script()
{
    return &script;
}

EXPORT int TraceOpenA(const char* metaInfo, const char* settings, const char* folder, int number, const char* version,
                      void** handle)
{
    ++script.opens;
    std::snprintf(script.metaInfo, sizeof script.metaInfo, "%s", metaInfo);
    std::snprintf(script.settings, sizeof script.settings, "%s", settings);
    std::snprintf(script.folder, sizeof script.folder, "%s", folder);
    std::snprintf(script.version, sizeof script.version, "%s", version);
    script.openNumber = number;
    script.handleAtOpen = *handle;
    *handle = script.openHandle;
    return script.openResult;
}

EXPORT int TraceWrite(void* handle, double time, int number, const void* record, int length)
{
    ++script.writes;
    script.writeHandle = handle;
    script.writeTime = time;
    script.writeNumber = number;
    script.recordLength = length;
    if (length >= 0 && length <= static_cast<int>(sizeof script.record)) std::memcpy(script.record, record, length);
    return script.writeResult;
}

#ifndef SCRIPTED_ENGINE_INCOMPLETE
EXPORT int TraceCommand(void*, int, void*)
{
    return 0;
}

EXPORT int TraceClose(void* handle)
{
    ++script.closes;
    script.closeHandle = handle;
    return 0;
}
#endif
