// The trace's state: one per loaded library, guarded by the trace mutex.
#pragma once

#include <windows.h>

#include <cstdint>

#include "trcFilter.h"
#include "trcLine.h"
#include "trcOutputs.h"

namespace trc {

struct State
{
    // Configuration
    int format = formatLong;
    int output = outputFile;
    int consult = 0;             // seconds after which the configuration is read again; 0: never by time
    std::int64_t lastRead = 0;   // time of the last read while consult is set, in seconds; 0: none noted
    double counterFrequency = 1;
    FilterList traceIds;
    FilterList modules;
    FilterList functions;
    FilterList texts;

    // Outputs
    DriverOutput driver;
    FileOutput file;
    RingOutput ring;
    EngineOutput engine;

    // Kernel objects
    SECURITY_ATTRIBUTES* attributes = nullptr;
    HANDLE mutex = nullptr;
    HANDLE section = nullptr;
    bool stopped = false;

    // Static areas, used under the mutex
    char text[1024] = {};
    char line[lineBufferSize] = {};
};

State& state() noexcept;

// Makes the mutex and maps the generation word where they are missing.
void openKernelObjects() noexcept;
void closeMutex() noexcept;
void closeGeneration() noexcept;

// Reads the configuration from the registry and prepares the output.
void readConfiguration() noexcept;

// Hands a line of `length` characters, in a buffer with room behind it, to the configured output.
void handToOutput(char* line, std::size_t length) noexcept;

}  // namespace trc
