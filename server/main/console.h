// The server as a console program.
#pragma once

#include <filesystem>

#include "catalogue/Catalogue.h"
#include "log/Log.h"
#include "main/commands.h"

namespace srv {

struct RunOptions
{
    std::filesystem::path catalogueFile;
    Level level = Level::Info;
    bool quiet = false;
};

// catalogue.json beside the program.
std::filesystem::path defaultCatalogue();

// Reads a catalogue; prints its errors to standard error and returns nothing if there are any.
std::shared_ptr<const catalogue::Catalogue> loadCatalogue(const std::filesystem::path& file);

// Serves until Ctrl-C, Ctrl-Break or the end of the session.
Exit runOnConsole(const RunOptions& options);

Exit checkCatalogue(const std::filesystem::path& file);

}  // namespace srv
