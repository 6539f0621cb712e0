// The bound of a call: 20 seconds, unless the environment says otherwise.
#pragma once

#include <windows.h>

namespace kxonlinx {

inline constexpr DWORD defaultTimeout = 20'000;  // milliseconds; well below the 30 s that callers wait for each other
inline constexpr DWORD maxTimeout = 86'400'000;  // a day
inline constexpr wchar_t timeoutVariable[] = L"KXONLINX_TIMEOUT_MS";

// Milliseconds from the variable's text: decimal digits, 1 to maxTimeout; NULL or anything else gives the default.
DWORD timeoutFromText(const wchar_t* text) noexcept;

// From the environment of the process as it is now.
DWORD configuredTimeout() noexcept;

}  // namespace kxonlinx
