// CWinApp: a module's application object. Each module defines one global object of a class derived from it.
//
// In a DLL the loader runs InitInstance when the library is loaded and ExitInstance when it is unloaded or the
// process ends, both under the loader's lock: nothing there starts or waits for a thread. In a program main() does
// so.
#pragma once

#include <windows.h>

#include "CWnd.h"

class CWinApp
{
 public:
    explicit CWinApp(const char* name = nullptr) noexcept;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp();

    // FALSE, or an exception: the library does not load. ExitInstance runs in that case too, once.
    virtual BOOL InitInstance() { return TRUE; }
    virtual int ExitInstance() { return 0; }

    // Opens help for a context. The help file is m_pszHelpFilePath or, without one, the module's file with the
    // ending .HLP; the owner is m_pMainWnd or, without one, the active window.
    virtual void WinHelp(DWORD_PTR data, UINT command = HELP_CONTEXT);

    const char* m_pszAppName;
    HINSTANCE m_hInstance;
    CWnd* m_pMainWnd = nullptr;
    const char* m_pszHelpFilePath = nullptr;
};
