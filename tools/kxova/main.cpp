#include <windows.h>

#include <shellapi.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "commands.h"
#include "configuration/File.h"
#include "device.h"
#include "library/bind.h"
#include "output.h"
#include "results.h"
#include "text.h"
#include "watch.h"

namespace {

constexpr char footer[] =
    "Exit status: 0 done; 1 failed; 2 wrong command line; 3 the configuration server is not running;\n"
    "4 not found; 5 the server does not answer; 6 refused.\n"
    "KXONLINX_TIMEOUT_MS sets how long a request may take (milliseconds).";

// The arguments as UTF-8, whatever code page the C run-time would have used.
std::vector<std::string> arguments()
{
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> all;
    for (int i = count - 1; i > 0; --i) {  // CLI11 takes them in reverse order
        char text[8192];
        const int length = WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, text, sizeof text, nullptr, nullptr);
        all.emplace_back(text, length > 0 ? static_cast<std::size_t>(length - 1) : 0);
    }
    LocalFree(wide);
    return all;
}

int report(const Failure& failure)
{
    if (jsonOutput) {
        Json error = {{"code", failure.result()}, {"name", failure.resultName()}, {"message", failure.what()}};
        if (!failure.hint().empty()) error["hint"] = failure.hint();
        printError(Json{{"error", error}}.dump(2) + "\n");
    } else {
        printError(std::string("kxova: ") + failure.what() + "\n");
        if (!failure.hint().empty()) printError("       " + failure.hint() + "\n");
    }
    return failure.status();
}

int report(const BadFile& file)
{
    if (jsonOutput) {
        printError(Json{{"error", {{"message", file.what()}, {"problems", file.problems()}}}}.dump(2) + "\n");
    } else {
        printError(std::string("kxova: ") + file.what() + "\n");
        for (const std::string& problem : file.problems())
            printError("       " + problem + "\n");
    }
    return exitRefused;
}

int report(const LibraryFailure& failure)
{
    constexpr char hint[] = "\"kxova doctor\" examines the libraries";
    if (jsonOutput) {
        printError(Json{{"error", {{"message", failure.what()}, {"hint", hint}}}}.dump(2) + "\n");
    } else {
        printError(std::string("kxova: ") + failure.what() + "\n       " + hint + "\n");
    }
    return exitFailed;
}

int usage(const CLI::App& app, const CLI::ParseError& error)
{
    if (error.get_exit_code() == 0) {  // help and version are no failures
        print(error.get_name() == "CallForVersion" ? std::string(error.what()) + "\n"
                                                   : app.help("", CLI::AppFormatMode::All));
        return exitOk;
    }
    const std::vector<std::string> unknown = app.remaining(true);
    const std::string what = unknown.empty() ? error.what() : "there is no command or option " + unknown.front();
    printError("kxova: " + what + "\n       \"kxova --help\" shows the commands\n");
    return exitUsage;
}

}  // namespace

int main()
{
    CLI::App app("kxova reads and writes the configuration of industrial communication interfaces.", "kxova");
    app.footer(footer);
    app.set_version_flag("--version", "kxova " KXOVA_VERSION);
    app.add_flag("--json", jsonOutput, "print JSON instead of columns");
    app.require_subcommand(1);
    app.fallthrough();
    addDeviceCommands(app);
    addNameCommands(app);
    addTemplateCommands(app);
    addMetaCommands(app);
    addBoardCommands(app);
    addProtocolCommands(app);
    addProfileCommands(app);
    addRegistryCommands(app);
    addPanelCommands(app);
    addLldpCommands(app);
    addExportCommand(app);
    addImportCommand(app);
    addMachineCommands(app);
    addDoctorCommand(app);
    addWatchCommand(app);

    try {
        bindLibrary();
        app.parse(arguments());
        return exitOk;
    } catch (const Failure& failure) {
        return report(failure);
    } catch (const BadFile& file) {
        return report(file);
    } catch (const LibraryFailure& failure) {
        return report(failure);
    } catch (const CLI::RuntimeError& answered) {
        return answered.get_exit_code();
    } catch (const CLI::ParseError& error) {
        return usage(app, error);
    } catch (const std::exception& error) {
        printError(std::string("kxova: ") + error.what() + "\n");
        return exitFailed;
    }
}
