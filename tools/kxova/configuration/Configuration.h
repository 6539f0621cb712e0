// Logical devices and logical names with all that is stored in them, as they are exported and imported.
#pragma once

#include <string>
#include <vector>

#include "values.h"

enum class Family { Device, Name };

// Texts are as they are stored, not as they are shown. Logical names have no Ndi values.
struct Entry
{
    Family family = Family::Device;
    std::string name;
    Values values;
    Values ndi;
};

using Configuration = std::vector<Entry>;

// "logical device "Line 1""
std::string described(const Entry& entry);
