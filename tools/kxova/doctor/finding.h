// One line of what the doctor says.
#pragma once

#include <string>
#include <vector>

enum class Verdict { Good, Note, Bad };

struct Finding
{
    Verdict verdict;
    std::string what;
    std::string detail;
    std::string remedy;
};

using Findings = std::vector<Finding>;

// The libraries that take part: found, loaded, of the right bitness.
Findings examineLibraries();

// Where the trace goes, and whether it can.
Finding examineTrace();

// The server and what is said with it, as far as it answers. Requires kxovaapi.dll.
Findings examineServer();
