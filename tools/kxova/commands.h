// The groups of commands; each adds itself to the program.
#pragma once

#include <CLI/CLI.hpp>

// kxova name list|show|get|set|unset|create|bind|delete|exists
void addNameCommands(CLI::App& app);

// kxova template list|show|get
void addTemplateCommands(CLI::App& app);

// kxova meta get|set
void addMetaCommands(CLI::App& app);

// kxova board list|show|installed|adapters|scan|unsupported|restart
void addBoardCommands(CLI::App& app);

// kxova protocol list|profiles|baudrates|value
void addProtocolCommands(CLI::App& app);

// kxova profile apply
void addProfileCommands(CLI::App& app);

// kxova registry get|set|list|create|delete
void addRegistryCommands(CLI::App& app);

// kxova panel install|deinstall|list
void addPanelCommands(CLI::App& app);

// kxova lldp list|delete
void addLldpCommands(CLI::App& app);

// kxova export, kxova import
void addExportCommand(CLI::App& app);
void addImportCommand(CLI::App& app);

// kxova language, kxova ports, kxova versions
void addMachineCommands(CLI::App& app);

// kxova doctor
void addDoctorCommand(CLI::App& app);
