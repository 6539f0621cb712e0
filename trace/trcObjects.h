// The machine-wide kernel objects that the trace of every process shares: the mutex around every line, and the
// generation word that tells of a changed configuration.
#pragma once

#include <windows.h>

namespace trc {

inline constexpr char mutexName[] = "Global\\KXTRACE_MUTEX";
inline constexpr char generationName[] = "Global\\KXTRACE_SECTION";

// What TrcStart was given; NULL before.
extern SECURITY_ATTRIBUTES* trcAttributes;

// NULL while it could not be made. Opened with SYNCHRONIZE access, which is enough to wait and to release.
HANDLE traceMutex() noexcept;

// Makes both where they are missing; a failure is told to the debugger and the trace goes on without.
void openObjects() noexcept;

void closeMutex() noexcept;

// The gate reads a private word again.
void closeGeneration() noexcept;

}  // namespace trc
