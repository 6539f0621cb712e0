// The keys of the configuration, as callers write them.
#pragma once

#include <string>

namespace keys {
inline const std::string logDevices = R"(SOFTWARE\TAVRONE\NORIX\LogDevices)";
inline const std::string logNames = R"(SOFTWARE\TAVRONE\NORIX\LogNames)";
inline const std::string definitions = R"(SOFTWARE\TAVRONE\NORIX\DefDevices)";
}  // namespace keys

// Texts at one level of a function's trace lines.
#include <vector>

#include "traceCapture.h"

inline std::vector<std::string> textsAt(const std::vector<TraceLine>& lines, const std::string& level)
{
    std::vector<std::string> texts;
    for (const TraceLine& line : lines) {
        if (line.level == level) texts.push_back(line.text);
    }
    return texts;
}
