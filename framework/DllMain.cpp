// A library's loader entry: runs the application object's InitInstance and ExitInstance.
#include <windows.h>

#include <cstdlib>

#include "ModuleState.h"
#include "ModuleUnload.h"
#include "WinApp.h"

namespace {

bool started = false;
bool unloading = false;

void stop() noexcept
{
    const ModuleContext context;
    try {
        if (auto* app = AfxGetApp()) app->ExitInstance();
    } catch (...) {
        // There is nobody to tell, and the module goes in any case.
    }
}

bool start() noexcept
{
    const ModuleContext context;
    try {
        auto* app = AfxGetApp();
        started = !app || app->InitInstance();
    } catch (...) {
        started = false;
    }
    if (!started) stop();
    return started;
}

void attach() noexcept
{
    warmUpRuntime();
    start();
    // The module may be unloaded by another thread, which could not do this for the loading one.
    releaseRuntimeThread();
}

void detach(bool processIsEnding) noexcept
{
    if (processIsEnding) noteProcessIsEnding();
    if (started) stop();
    started = false;
    // With the process everything goes, and the threads that ended in the middle of something may have left the
    // run-time's structures half changed.
    unloading = !processIsEnding;
}

void releaseLast()
{
    if (!unloading) return;
    releaseModuleState();
    releaseRuntime();
}

// Exit functions run in the reverse order: what is registered before the first constructor runs behind the last
// destructor.
void registerFirst()
{
    std::atexit(releaseLast);
}

using Initializer = void (*)();
__attribute__((section(".CRT$XCB"), used)) const Initializer registerAtLoad = registerFirst;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* reserved)
{
    if (reason == DLL_PROCESS_ATTACH) {
        if (!prepareThreadValues()) return FALSE;
        attach();
        return started;
    }
    if (reason == DLL_PROCESS_DETACH) detach(reserved != nullptr);
    return TRUE;
}
