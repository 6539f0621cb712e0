#include "timeout.h"

#include <iterator>

namespace kxonlinx {

DWORD timeoutFromText(const wchar_t* text) noexcept
{
    if (!text) return defaultTimeout;
    DWORD value = 0;
    for (; *text; ++text) {
        if (*text < L'0' || *text > L'9' || value > maxTimeout) return defaultTimeout;
        value = value * 10 + static_cast<DWORD>(*text - L'0');
    }
    return value >= 1 && value <= maxTimeout ? value : defaultTimeout;
}

DWORD configuredTimeout() noexcept
{
    wchar_t text[16];
    const DWORD length = GetEnvironmentVariableW(timeoutVariable, text, static_cast<DWORD>(std::size(text)));
    return timeoutFromText(length > 0 && length < std::size(text) ? text : nullptr);
}

}  // namespace kxonlinx
