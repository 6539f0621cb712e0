// The server as a console program.
#pragma once

#include "main/options.h"

namespace srv {

// Serves until Ctrl-C, Ctrl-Break or the end of the session.
Exit runOnConsole(const RunOptions& options);

// Prints what is wrong with a catalogue.
Exit checkCatalogue(const std::filesystem::path& file);

}  // namespace srv
