#include "main/commands.h"

#include <windows.h>

#include <shellapi.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/Text.h"
#include "catalogue/load.h"
#include "main/console.h"

namespace srv {

namespace {

// The arguments as UTF-8, whatever the ANSI code page can hold.
std::vector<std::string> arguments()
{
    int count = 0;
    const LocalMemory list(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> result;
    for (int i = count - 1; i > 0; --i)  // the parser takes them backwards
        result.push_back(utf8(static_cast<wchar_t**>(list.get())[i]));
    return result;
}

std::filesystem::path fromArgument(const std::string& text)
{
    return fromUtf8(text);
}

}  // namespace

int runCommandLine()
{
    CLI::App app("Configuration server for industrial communication interfaces.", "kxovasrvx");
    app.set_version_flag("--version", "kxovasrvx " KXOVA_VERSION);
    app.require_subcommand(1);
    app.footer(
        "Exit statuses: 0 done, 1 failed, 2 wrong use, 3 already running, 4 not running, 5 not installed,\n"
        "6 refused.");

    RunOptions run;
    std::string catalogueFile;
    std::string level = "info";
    CLI::App* const runCommand = app.add_subcommand("run", "Serve until Ctrl-C.");
    runCommand
        ->add_option("--catalogue", catalogueFile, "The catalogue; without it catalogue.json beside the program.")
        ->type_name("FILE");
    runCommand->add_option("--log-level", level, "error, warning, info or debug (which names every request).")
        ->check(CLI::IsMember({"error", "warning", "info", "debug"}, CLI::ignore_case));
    runCommand->add_flag("--quiet", run.quiet, "Log nothing; only the line that says that it serves is printed.");

    std::string checked;
    CLI::App* const checkCommand = app.add_subcommand("check-catalogue", "Say what is wrong with a catalogue.");
    checkCommand->add_option("file", checked, "The catalogue.")->required()->type_name("FILE");

    try {
        app.parse(arguments());
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? static_cast<int>(Exit::Done) : static_cast<int>(Exit::Usage);
    }

    run.catalogueFile = catalogueFile.empty() ? defaultCatalogue() : fromArgument(catalogueFile);
    run.level = levelFromName(level).value_or(Level::Info);
    if (runCommand->parsed()) return static_cast<int>(runOnConsole(run));
    if (checkCommand->parsed()) return static_cast<int>(checkCatalogue(fromArgument(checked)));
    return static_cast<int>(Exit::Usage);
}

}  // namespace srv
