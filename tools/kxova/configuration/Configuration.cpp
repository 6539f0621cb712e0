#include "configuration/Configuration.h"

std::string described(const Entry& entry)
{
    return (entry.family == Family::Device ? "logical device \"" : "logical name \"") + entry.name + "\"";
}
