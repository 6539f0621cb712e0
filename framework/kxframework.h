// The application framework: the platform's own with Visual C++, this folder elsewhere.
#pragma once

#if defined(_MSC_VER)

#include <afxwin.h>

#include <afxcoll.h>
#include <afxdlgs.h>
#include <afxmt.h>

// Makes the module's own state current until the block ends.
class ModuleContext
{
 public:
    ModuleContext() : state_(AfxGetStaticModuleState()) {}

 private:
    AFX_MAINTAIN_STATE2 state_;
};

// True while the process ends and takes this module with it.
inline bool ProcessIsEnding() noexcept
{
    using Query = BOOLEAN(WINAPI*)();
    const auto query =
        reinterpret_cast<Query>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlDllShutdownInProgress"));
    return query && query();
}

#else

#include "CPropertySheet.h"
#include "CString.h"
#include "CStringList.h"
#include "CWnd.h"
#include "Exceptions.h"
#include "ModuleState.h"
#include "SyncObjects.h"
#include "WinApp.h"

#endif
