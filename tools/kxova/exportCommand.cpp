#include <algorithm>
#include <map>
#include <memory>
#include <optional>

#include "calls.h"
#include "commands.h"
#include "configuration/File.h"
#include "configuration/ServerStore.h"
#include "files.h"
#include "output.h"

namespace {

struct Selection
{
    bool devices = false;
    bool names = false;
    std::vector<std::string> only;

    bool has(Family family) const
    {
        const bool all = !devices && !names;
        return all || (family == Family::Device ? devices : names);
    }
};

// The entries with these names, or all when none is named, in the server's order and spelling. One that others delete
// while the list is read is left out.
Configuration read(const Selection& selection)
{
    std::map<std::wstring, std::string> missing;
    for (const std::string& name : selection.only)
        missing.emplace(folded(name), name);
    const auto asked = missing;

    Configuration configuration;
    for (const Family family : {Family::Device, Family::Name}) {
        if (!selection.has(family)) continue;
        for (const std::string& name : entryNames(family)) {
            if (!asked.empty() && asked.count(folded(name)) == 0) continue;
            std::optional<Entry> entry = readEntry(family, name);
            if (!entry) continue;
            missing.erase(folded(name));
            configuration.push_back(*std::move(entry));
        }
    }
    if (!missing.empty())
        throw Failure("export " + inQuotes(missing.begin()->second), DCFG_ERR_NOT_FOUND,
                      "\"kxova device list\" and \"kxova name list\" show what there is");
    return configuration;
}

void exportTo(const std::string& file, const Selection& selection)
{
    const Configuration configuration = read(selection);
    const std::string text = fileText(configuration);
    if (file.empty()) return print(text);
    writeFile(file, text);
    const auto devices = std::count_if(configuration.begin(), configuration.end(),
                                       [](const Entry& entry) { return entry.family == Family::Device; });
    const auto names = static_cast<std::ptrdiff_t>(configuration.size()) - devices;
    show({{"file", file}, {"devices", devices}, {"names", names}}, "Exported to " + inQuotes(file) + ": " +
                                                                       counted(devices, "logical device") + ", " +
                                                                       counted(names, "logical name") + ".\n");
}

}  // namespace

void addExportCommand(CLI::App& app)
{
    struct Arguments
    {
        std::string file;
        Selection selection;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command =
        app.add_subcommand("export", "write logical devices and logical names as JSON, for \"kxova import\"");
    command->add_option("NAME", arguments->selection.only, "devices and names to export; all when none is given");
    command->add_flag("--devices", arguments->selection.devices, "only logical devices");
    command->add_flag("--names", arguments->selection.names, "only logical names");
    command->add_option("--file", arguments->file, "file to write instead of the standard output");
    command->callback([arguments] { exportTo(arguments->file, arguments->selection); });
}
