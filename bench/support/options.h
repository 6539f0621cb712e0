// The command line that all measurements share: [--json FILE] [--log FILE] [--requests FILE] [--rounds N] [--on TEXT].
#pragma once

#include <cstdlib>
#include <cstring>

struct Options
{
    const char* json = nullptr;        // where the figures go as JSON
    const char* log = nullptr;         // the log of Wine's server: requests are counted, and nothing is timed
    const char* requests = nullptr;    // where the counted requests are written to, or read from
    const char* on = "one processor";  // where this runs, for the table
    int rounds = 0;                    // 0: the measurement's own number

    Options(int count, char** arguments)
    {
        for (int i = 1; i + 1 < count; i += 2) {
            const char* const value = arguments[i + 1];
            if (std::strcmp(arguments[i], "--json") == 0) json = value;
            if (std::strcmp(arguments[i], "--log") == 0) log = value;
            if (std::strcmp(arguments[i], "--requests") == 0) requests = value;
            if (std::strcmp(arguments[i], "--on") == 0) on = value;
            if (std::strcmp(arguments[i], "--rounds") == 0) rounds = std::atoi(value);
        }
    }
    bool counts() const noexcept { return log != nullptr; }
};
