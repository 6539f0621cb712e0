// "kxova watch": what changes, as it changes.
#pragma once

#include <CLI/CLI.hpp>

void addWatchCommand(CLI::App& app);
