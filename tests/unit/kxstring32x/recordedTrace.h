// The trace's interface, keeping the lines in memory instead of writing them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct RecordedLine
{
    std::string function;
    std::uint32_t level;
    std::string module;
    std::string sourceFile;  // without its folder
    std::string text;
};

// Opens the gate for every level and keeps what comes through it until the object goes.
class RecordedTrace
{
 public:
    RecordedTrace();
    RecordedTrace(const RecordedTrace&) = delete;
    RecordedTrace& operator=(const RecordedTrace&) = delete;
    ~RecordedTrace();

    const std::vector<RecordedLine>& lines() const;
};
