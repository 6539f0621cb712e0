#include "main/commands.h"

#include <windows.h>

#include <shellapi.h>

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "base/Owner.h"
#include "base/Text.h"
#include "main/console.h"
#include "main/hardware.h"
#include "main/Service.h"

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

// What is said of a board that is plugged in.
struct Hardware
{
    std::string board;
    std::string id;
    std::string map;
    std::string netType;
    std::string adapter;
    std::uint32_t state = 0;

    HardwareToPlug toPlug() const
    {
        return {fromUtf8(board), fromUtf8(id), fromUtf8(map), fromUtf8(netType), fromUtf8(adapter), state};
    }
};

// The options as they are typed.
struct Typed
{
    std::string catalogue;
    std::string logFile;
    std::string level = "info";
    std::string checked;
    bool quiet = false;
    Hardware hardware;

    RunOptions options() const
    {
        RunOptions result;
        result.catalogueFile = catalogue.empty() ? defaultCatalogue() : absolute(catalogue);
        if (!logFile.empty()) result.logFile = absolute(logFile);
        result.level = levelFromName(level).value_or(Level::Info);
        result.quiet = quiet;
        return result;
    }

    // The service runs in another folder than the one in which it is installed.
    static std::filesystem::path absolute(const std::string& file)
    {
        std::error_code ignored;
        const std::filesystem::path path = fromUtf8(file);
        const std::filesystem::path full = std::filesystem::absolute(path, ignored);
        return ignored ? path : full;
    }
};

void addCatalogueFile(CLI::App* command, Typed& typed)
{
    command
        ->add_option("--catalogue", typed.catalogue, "The catalogue; without it catalogue.json beside the program.")
        ->type_name("FILE");
}

void addCatalogue(CLI::App* command, Typed& typed)
{
    addCatalogueFile(command, typed);
    command->add_option("--log-level", typed.level, "error, warning, info, or debug, which names every request.")
        ->check(CLI::IsMember({"error", "warning", "info", "debug"}, CLI::ignore_case))
        ->type_name("LEVEL");
}

// Simulated hardware: what a scan finds.
void addHardwareCommands(CLI::App& app, Typed& typed, std::function<Exit()>& chosen)
{
    CLI::App* const hardware = app.add_subcommand(
        "hardware",
        "Simulate hardware. What is changed here is found by the next scan, whether a server runs now or not.");
    hardware->require_subcommand(1);
    Hardware& what = typed.hardware;

    CLI::App* const list =
        hardware->add_subcommand("list", "Print what is plugged in: hardware instance id, device id, board, state.");
    addCatalogueFile(list, typed);
    list->callback([&] { chosen = [&] { return listHardware(typed.options().catalogueFile); }; });

    CLI::App* const plug = hardware->add_subcommand("add", "Plug a board in and print its hardware instance id.");
    plug->add_option("board", what.board,
                     "The device id of a plug-and-play board of the catalogue, such as *TVRA020.")
        ->required()
        ->type_name("DEVICE-ID");
    plug->add_option("--id", what.id, "The hardware instance id; without it one is made up.")->type_name("ID");
    plug->add_option("--map", what.map, "The board map that it should get, if that is free.")->type_name("MAP");
    plug->add_option("--net-type", what.netType, "The protocol that it is used with.")->type_name("PROTOCOL");
    plug->add_option("--adapter", what.adapter, "The id of the network adapter that it is.")->type_name("ID");
    plug->add_option("--state", what.state,
                     "Its plug-and-play problem number, such as 14 (needs a restart). 0: works.")
        ->type_name("NUMBER");
    addCatalogueFile(plug, typed);
    plug->callback([&] { chosen = [&] { return addHardware(typed.options().catalogueFile, what.toPlug()); }; });

    CLI::App* const pull = hardware->add_subcommand("remove", "Pull a board out.");
    pull->add_option("id", what.id, "Its hardware instance id.")->required()->type_name("ID");
    pull->callback([&] { chosen = [&] { return removeHardware(fromUtf8(what.id)); }; });
}

}  // namespace

int runCommandLine()
{
    Typed typed;
    std::function<Exit()> chosen = [] { return Exit::Usage; };
    CLI::App app("Configuration server for industrial communication interfaces.", "kxovasrvx");
    app.set_version_flag("--version", "kxovasrvx " KXOVA_VERSION);
    app.allow_windows_style_options(false);  // a file may begin with "/"
    app.require_subcommand(1);
    app.footer(
        "Exit statuses: 0 done, 1 failed, 2 wrong use, 3 already running, 4 not running, 5 not installed,\n"
        "6 refused by the system.");
    const auto add = [&](const char* name, const char* description, std::function<Exit()> action) {
        CLI::App* const command = app.add_subcommand(name, description);
        command->callback([&chosen, action = std::move(action)] { chosen = action; });
        return command;
    };

    CLI::App* const run = add("run", "Serve until Ctrl-C.", [&] { return runOnConsole(typed.options()); });
    addCatalogue(run, typed);
    run->add_option("--log-file", typed.logFile, "Log to this file too.")->type_name("FILE");
    run->add_flag("--quiet", typed.quiet, "Do not log to the console; only the line that it is ready is printed.");

    addCatalogue(add("install", "Register the service, to start with the system.",
                     [&] { return installService(typed.options()); }),
                 typed);
    add("uninstall", "Stop the service and remove it.", uninstallService);
    add("start", "Start the service.", startService);
    add("stop", "Stop the service.", stopService);
    add("status", "Say whether the service and a server run.", printStatus);
    add("check-catalogue", "Say what is wrong with a catalogue.",
        [&] { return checkCatalogue(Typed::absolute(typed.checked)); })
        ->add_option("file", typed.checked, "The catalogue.")
        ->required()
        ->type_name("FILE");

    addHardwareCommands(app, typed, chosen);

    CLI::App* const service =
        add("service", "For the service control manager.", [&] { return runAsService(typed.options()); });
    service->group("");
    addCatalogue(service, typed);

    try {
        app.parse(arguments());
    } catch (const CLI::ParseError& error) {
        return static_cast<int>(app.exit(error) == 0 ? Exit::Done : Exit::Usage);
    }
    return static_cast<int>(chosen());
}

}  // namespace srv
