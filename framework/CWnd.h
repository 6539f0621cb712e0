// CWnd: names a window. It neither makes nor destroys one: who attached the handle owns the window.
#pragma once

#include <windows.h>

class CWnd
{
 public:
    CWnd() noexcept = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd() = default;

    HWND GetSafeHwnd() const noexcept { return m_hWnd; }
    operator HWND() const noexcept { return m_hWnd; }

    // FALSE, and nothing attached: no handle, or one is attached already.
    BOOL Attach(HWND window) noexcept;
    HWND Detach() noexcept;  // the handle that was attached

    HWND m_hWnd = nullptr;
};
