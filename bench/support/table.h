// What a measurement shows: a table for people, and the same as JSON.
#pragma once

#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "nlohmann/json.hpp"

using Json = nlohmann::ordered_json;

inline void saveJson(const char* file, const Json& json)
{
    if (file) std::ofstream(file) << json.dump(2) << '\n';
}

// A bound that a figure is to keep.
struct Goal
{
    std::string what;
    double value;
    double atMost;

    bool met() const noexcept { return value <= atMost; }
};

// The goals below a table; returns them as JSON.
inline Json printGoals(const std::vector<Goal>& goals)
{
    Json json = Json::array();
    for (const Goal& goal : goals) {
        std::printf("  goal: %-58s %8.2f  at most %6.2f  %s\n", goal.what.c_str(), goal.value, goal.atMost,
                    goal.met() ? "met" : "MISSED");
        json.push_back({{"what", goal.what}, {"value", goal.value}, {"at_most", goal.atMost}, {"met", goal.met()}});
    }
    return json;
}

inline std::string orDash(std::optional<double> number, int decimals)
{
    char text[40] = "-";
    if (number) std::snprintf(text, sizeof text, "%.*f", decimals, *number);
    return text;
}
