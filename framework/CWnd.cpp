#include "CWnd.h"

#include <utility>

BOOL CWnd::Attach(HWND window) noexcept
{
    if (!window || m_hWnd) return FALSE;
    m_hWnd = window;
    return TRUE;
}

HWND CWnd::Detach() noexcept
{
    return std::exchange(m_hWnd, nullptr);
}
