// A library like any that this framework is for, and nothing in it but what a test of loading and unloading needs.
#include "probe.h"

#include <map>
#include <mutex>
#include <new>
#include <string>

#include "kxframework.h"

namespace {

ProbeReport* report = nullptr;

struct StaticObject
{
    StaticObject() { values["made"] = 1; }
    ~StaticObject()
    {
        // Late use of what is released behind it: exceptions and the module state.
        const ModuleContext context;
        try {
            throw std::bad_alloc();
        } catch (const std::bad_alloc&) {
            if (report) report->destroyed = true;
        }
    }
    std::recursive_mutex mutex;
    std::map<std::string, int> values;
} object;

thread_local int threadValue = 7;

class ProbeApp : public CWinApp
{
 public:
    BOOL InitInstance() override
    {
        char start[16] = "";
        GetEnvironmentVariableA(probeStartVariable, start, sizeof start);
        const CString what(start);
        if (what == "throw") throw std::bad_alloc();
        return what != "refuse";
    }
    int ExitInstance() override
    {
        const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, probeReportSection);
        if (section) {
            if (auto* shared = static_cast<ProbeReport*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 0))) {
                ++shared->exits;
                shared->ending = ProcessIsEnding();
                UnmapViewOfFile(shared);
            }
            CloseHandle(section);
        }
        // Whoever held the mutex when the process began to end does not give it back.
        if (!ProcessIsEnding()) std::lock_guard(object.mutex);
        if (report) {
            ++report->exits;
            report->ending = ProcessIsEnding();
        }
        return 0;
    }
} app;

}  // namespace

extern "C" {

__declspec(dllexport) void probeSetReport(ProbeReport* to)
{
    report = to;
}

// Uses what leaves traces in the run-time: an exception, a mutex, a local static, a thread-local variable.
__declspec(dllexport) int probeUse()
{
    const ModuleContext context;
    const std::lock_guard lock(object.mutex);
    static const std::string prefix(3, 'x');
    try {
        object.values[prefix + std::to_string(++threadValue)] = 1;
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        return static_cast<int>(object.values.size());
    }
}

// Adds to the calling thread's own value and yields it.
__declspec(dllexport) int probeThreadValue(int add)
{
    return threadValue += add;
}

__declspec(dllexport) HINSTANCE probeInstance()
{
    const ModuleContext context;
    return AfxGetApp() == &app ? AfxGetInstanceHandle() : nullptr;
}

// Takes the library's lock and keeps it.
__declspec(dllexport) void probeHold()
{
    object.mutex.lock();
}

// True when nobody holds the lock.
__declspec(dllexport) bool probeTryLock()
{
    const std::unique_lock lock(object.mutex, std::try_to_lock);
    return lock.owns_lock();
}

__declspec(dllexport) void probeText(CString* text)
{
    *text += " written by the library, too long for what was there before";
}

__declspec(dllexport) void probeList(CStringList* list)
{
    list->RemoveHead();
    list->AddTail("from the library");
}

}  // extern "C"

__declspec(dllexport) CString probeMake()
{
    return CString("made by the library");
}
