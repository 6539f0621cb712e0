#pragma once

#include <CLI/CLI.hpp>

// kxova device list|show|get|set|create|delete|exists
void addDeviceCommands(CLI::App& app);
