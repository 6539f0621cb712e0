#include "WinApp.h"

#include "CString.h"
#include "ModuleState.h"

namespace {

CString moduleHelpFile(HINSTANCE module)
{
    CString path;
    const DWORD length = GetModuleFileNameA(module, path.GetBuffer(MAX_PATH), MAX_PATH);
    path.ReleaseBuffer(static_cast<int>(length < MAX_PATH ? length : 0));
    const int dot = path.ReverseFind('.');
    if (dot > path.ReverseFind('\\')) path.Truncate(dot);
    return path + ".HLP";
}

}  // namespace

CWinApp::CWinApp(const char* name) noexcept : m_pszAppName(name)
{
    auto* module = AfxGetStaticModuleState();
    m_hInstance = module->m_hCurrentInstanceHandle;
    if (!module->m_pCurrentWinApp) module->m_pCurrentWinApp = this;
}

CWinApp::~CWinApp()
{
    auto* module = AfxGetStaticModuleState();
    if (module->m_pCurrentWinApp == this) module->m_pCurrentWinApp = nullptr;
}

void CWinApp::WinHelp(DWORD_PTR data, UINT command)
{
    const CString file = m_pszHelpFilePath ? CString(m_pszHelpFilePath) : moduleHelpFile(m_hInstance);
    ::WinHelp(m_pMainWnd ? m_pMainWnd->GetSafeHwnd() : GetActiveWindow(), file, command, data);
}
