#pragma once

#include <CLI/CLI.hpp>

// kxova device list|show|get|set|unset|create|copy|delete|exists|check|describe|ndi|temp
void addDeviceCommands(CLI::App& app);

// kxova device ndi list|get|set|unset
void addDeviceNdiCommands(CLI::App& device);

// kxova device check|describe
void addDeviceCheckCommands(CLI::App& device);

// kxova device temp
void addDeviceTempCommand(CLI::App& device);
