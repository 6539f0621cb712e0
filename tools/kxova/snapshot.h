// What a family of objects holds, and what is different from before.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "output.h"

// Values by name, objects by name; all UTF-8.
using Values = std::map<std::string, std::string>;
using Objects = std::map<std::string, Values>;

// All logical devices, or all logical names, with their stored values. Throws a Failure.
Objects readDevices();
Objects readNames();

// One difference: a line for people, an object for machines.
struct Difference
{
    std::string text;
    Json json;
};

// `kind` is "device" or "name".
std::vector<Difference> differences(const std::string& kind, const Objects& before, const Objects& now);
