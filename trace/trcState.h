// The trace's state: one instance per loaded library, guarded by the trace mutex. All of it is initialised before any
// code runs, since the first trace call may come from a constructor. Everything stays inside its bounds also when two
// threads work at once, which can happen after a failed wait for the mutex.
#pragma once

#include <windows.h>

#include <cstdint>

#include "trcSettings.h"

namespace trc {

inline constexpr char trcTraceId[] = "KXOVATDX";

// From the configuration
extern int trcFormat;
extern int trcOutput;
extern int trcConsult;                // seconds, 0: off
extern std::uint64_t trcConsultRead;  // when it was read last, in milliseconds; 0: not noted
extern double trcCounterFrequency;
extern std::int32_t trcBytesPerFile;
extern std::uint32_t trcSmSize;
extern char trcFileBase[fileBaseSize];
extern FilterList trcTraceIds, trcModules, trcFunctions, trcTexts;

// Of the outputs
extern std::uint32_t trcCurrentFile;  // 1 or 2
extern bool trcEngineUsable;
extern bool trcReportOnce;

// The last "E" line, for whoever looks into the process: most outputs cannot show one.
extern char trcErrorLine[maxLine + 1];

// Set by TrcStop: what is traced after that goes nowhere and opens nothing.
extern bool trcStopped;

// Everything as in a library that was just loaded.
void resetState() noexcept;

}  // namespace trc
