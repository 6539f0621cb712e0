// Entries in the machine's event log.
#pragma once

#include <windows.h>

#include <string_view>

namespace trc {

inline constexpr DWORD eventEngineMissing = 0xC0001400;
inline constexpr DWORD eventEntryPointMissing = 0xC0001401;
inline constexpr DWORD eventEngineCallFailed = 0x80001402;

// One or two texts, each cut to 255 characters; an empty second one is left out.
void reportToEventLog(WORD type, DWORD event, std::string_view first, std::string_view second = {}) noexcept;

}  // namespace trc
