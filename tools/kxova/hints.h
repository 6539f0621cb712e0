// How things are called in messages, and what to do when one does not exist.
#pragma once

#include <string>

inline constexpr char devicesHint[] = "\"kxova device list\" shows the logical devices";
inline constexpr char valuesHint[] =
    "\"kxova device list\" shows the logical devices, \"kxova device show\" their values";
inline constexpr char namesHint[] = "\"kxova name list\" shows the logical names";
inline constexpr char definitionHint[] = "\"kxova template list DefaultLogdevices\" shows the definitions";

inline std::string logicalDevice(const std::string& name)
{
    return "logical device \"" + name + "\"";
}

inline std::string logicalName(const std::string& name)
{
    return "logical name \"" + name + "\"";
}
