// What the probe library and the tests agree on.
#pragma once

#include <windows.h>

#include "CString.h"
#include "CStringList.h"

// Environment variable that tells InitInstance what to do.
inline constexpr char probeStartVariable[] = "KXPROBE_START";  // "refuse", "throw"; anything else: start

// Filled by the library while it is unloaded; lives in the test.
struct ProbeReport
{
    int exits;       // calls of ExitInstance
    bool ending;     // ProcessIsEnding at the last of them
    bool destroyed;  // the library's static object was destroyed
};

// A section with a report of its own, for when no pointer can be handed over.
inline constexpr char probeReportSection[] = "Local\\kxframework probe report";

extern "C" {
using ProbeSetReport = void (*)(ProbeReport*);
using ProbeUse = int (*)();
using ProbeThreadValue = int (*)(int);
using ProbeInstance = HINSTANCE (*)();
using ProbeHold = void (*)();
using ProbeTryLock = bool (*)();
using ProbeText = void (*)(CString*);
using ProbeList = void (*)(CStringList*);
}
using ProbeMake = CString (*)();
