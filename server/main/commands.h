// The command line.
#pragma once

namespace srv {

// Does what this process' command line asks for, and returns the exit status.
int runCommandLine();

}  // namespace srv
