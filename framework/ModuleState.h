// Module state: which module's application, instance and resources the running code belongs to.
//
// Each module has one state of its own, and each thread has a current state per module: that of the module until
// another is set. An exported function constructs a ModuleContext first, so that whatever it calls back into, and
// whatever called it, finds the state it had:
//
//     long LogDeviceDel(const char* lpszLogDevice)
//     {
//         const ModuleContext context;
//         …
//     }
#pragma once

#include <windows.h>

class CWinApp;

struct AFX_MODULE_STATE
{
    CWinApp* m_pCurrentWinApp;           // NULL: the module has no application object
    HINSTANCE m_hCurrentInstanceHandle;  // the module itself
    HINSTANCE m_hCurrentResourceHandle;  // where its resources are
};

AFX_MODULE_STATE* AfxGetStaticModuleState() noexcept;                   // this module's own
AFX_MODULE_STATE* AfxGetModuleState() noexcept;                         // the thread's current one
AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) noexcept;  // yields the one before

inline CWinApp* AfxGetApp() noexcept
{
    return AfxGetModuleState()->m_pCurrentWinApp;
}
inline HINSTANCE AfxGetInstanceHandle() noexcept
{
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}
inline HINSTANCE AfxGetResourceHandle() noexcept
{
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}
inline void AfxSetResourceHandle(HINSTANCE resources) noexcept
{
    AfxGetModuleState()->m_hCurrentResourceHandle = resources;
}

// Makes the module's own state current on this thread and puts the one before back on every way out. Nests; keeps the
// thread's last error; costs two stores into the thread's own slots, no system call and no memory.
class ModuleContext
{
 public:
    ModuleContext() noexcept : previous_(AfxSetModuleState(AfxGetStaticModuleState())) {}
    ModuleContext(const ModuleContext&) = delete;
    ModuleContext& operator=(const ModuleContext&) = delete;
    ~ModuleContext() { AfxSetModuleState(previous_); }

 private:
    AFX_MODULE_STATE* previous_;
};

// True while the process ends and takes this module with it: the other threads are gone, wherever they were, so there
// is nobody left to wait for, and the locks they held stay taken.
bool ProcessIsEnding() noexcept;
