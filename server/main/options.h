// What the server is told by its command line.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/Catalogue.h"
#include "log/Log.h"

namespace srv {

// Exit statuses, documented in docs/server.md.
enum class Exit : int {
    Done = 0,
    Failed = 1,  // the sentence on standard error says what
    Usage = 2,
    AlreadyRunning = 3,  // a server serves this machine already
    NotRunning = 4,      // no server runs, or the service does not
    NotInstalled = 5,    // there is no such service
    Refused = 6,         // the system does not let this user do that
};

struct RunOptions
{
    std::filesystem::path catalogueFile;
    std::filesystem::path logFile;  // empty: none
    Level level = Level::Info;
    bool quiet = false;
};

// catalogue.json beside the program.
std::filesystem::path defaultCatalogue();

// Where the service logs: %ProgramData%\TAVRONE\NORIX\kxovasrvx.log.
std::filesystem::path serviceLogFile();

// This program's file.
std::filesystem::path programFile();

// Reads a catalogue. If it cannot be used, nothing is returned and `errors` gets one line an error.
std::shared_ptr<const catalogue::Catalogue> loadCatalogue(const std::filesystem::path& file,
                                                          std::vector<std::string>& errors);

// One sentence on standard error, after the program's name.
void complain(const std::string& sentence);

}  // namespace srv
