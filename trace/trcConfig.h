// The configuration in the registry.
#pragma once

namespace trc {

// Reads it and prepares the output that it names. Under the trace mutex.
void readConfiguration() noexcept;

// True when the configuration is to be read again because Consult seconds have passed.
bool consultIsDue() noexcept;

}  // namespace trc
