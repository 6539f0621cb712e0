// The command line.
#pragma once

namespace srv {

// Exit statuses, documented in docs/server.md.
enum class Exit : int {
    Done = 0,
    Failed = 1,  // the sentence on standard error says what
    Usage = 2,
    AlreadyRunning = 3,  // a server serves this machine already
    NotRunning = 4,      // status: no server runs
    NotInstalled = 5,    // there is no such service
    Refused = 6,         // the system does not let this user do that
};

// Does what this process' command line asks for, and returns the exit status.
int runCommandLine();

}  // namespace srv
