// The server as a Windows service, and its administration.
#pragma once

#include "main/options.h"

namespace srv {

inline constexpr wchar_t serviceName[] = L"kxovasrvx";

// What the service control manager starts: serves until it says stop. The log goes to a file only.
Exit runAsService(const RunOptions& options);

// Each says on standard output what it did, or on standard error why not.

// Registers this program, to be started with the system. The options are those that it will run with.
Exit installService(const RunOptions& options);
Exit uninstallService();
Exit startService();
Exit stopService();

// Prints whether the service is installed and runs, and whether any server serves this machine. Done if one does,
// else NotRunning.
Exit printStatus();

}  // namespace srv
