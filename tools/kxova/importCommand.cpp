#include <windows.h>

#include <algorithm>
#include <memory>

#include "calls.h"
#include "commands.h"
#include "configuration/File.h"
#include "configuration/Import.h"
#include "configuration/ServerStore.h"
#include "files.h"
#include "output.h"

namespace {

// One value that differs.
struct Difference
{
    std::string parameter;
    std::optional<std::string> before;
    std::optional<std::string> after;
};

std::vector<Difference> differences(const Values& before, const Values& after)
{
    const auto text = [](const Values& values, const std::string& name) {
        const auto at =
            std::find_if(values.begin(), values.end(), [&](const Value& value) { return value.name == name; });
        return at == values.end() ? std::optional<std::string>() : at->text;
    };
    std::vector<Difference> all;
    for (const Value& value : before)
        if (const std::optional<std::string> now = text(after, value.name); now != value.text)
            all.push_back({value.name, value.text, now});
    for (const Value& value : after)
        if (!text(before, value.name)) all.push_back({value.name, std::nullopt, value.text});
    return all;
}

Json differencesJson(const Values& before, const Values& after)
{
    const auto orNull = [](const std::optional<std::string>& text) { return text ? Json(*text) : Json(); };
    Json json = Json::array();
    for (const Difference& each : differences(before, after))
        json.push_back(
            {{"parameter", each.parameter}, {"before", orNull(each.before)}, {"after", orNull(each.after)}});
    return json;
}

void addDifferences(Table& table, const std::string& what, const std::string& prefix, const Values& before,
                    const Values& after)
{
    const auto orNothing = [](const std::optional<std::string>& text) { return text ? inQuotes(*text) : ""; };
    for (const Difference& each : differences(before, after))
        table.add({"change", what, prefix + each.parameter, orNothing(each.before), orNothing(each.after)});
}

std::string changesText(const std::vector<Change>& changes)
{
    Table table({"CHANGE", "OBJECT", "PARAMETER", "BEFORE", "AFTER"});
    for (const Change& change : changes) {
        const std::string what = described(change.after);
        if (!change.before) {
            table.add({"create", what, counted(change.after.values.size() + change.after.ndi.size(), "value")});
            continue;
        }
        addDifferences(table, what, "", change.before->values, change.after.values);
        addDifferences(table, what, "Ndi ", change.before->ndi, change.after.ndi);
    }
    return changes.empty() ? "" : table.text();
}

Json changesJson(const std::vector<Change>& changes)
{
    Json json = Json::array();
    for (const Change& change : changes) {
        const Entry before = change.before.value_or(Entry{});
        Json each = {{"action", change.before ? "change" : "create"},
                     {"kind", change.after.family == Family::Device ? "device" : "name"},
                     {"name", change.after.name},
                     {"values", differencesJson(before.values, change.after.values)}};
        if (change.after.family == Family::Device) each["ndi"] = differencesJson(before.ndi, change.after.ndi);
        json.push_back(std::move(each));
    }
    return json;
}

// Ctrl-C waits: an import is whole or not at all.
class WithoutInterruption
{
 public:
    WithoutInterruption() { SetConsoleCtrlHandler(nullptr, TRUE); }
    ~WithoutInterruption() { SetConsoleCtrlHandler(nullptr, FALSE); }
    WithoutInterruption(const WithoutInterruption&) = delete;
    WithoutInterruption& operator=(const WithoutInterruption&) = delete;
};

// What could not be undone is kept in a file, so that it can be undone later.
[[noreturn]] void reportLeft(const NotUndone& failure, const std::string& fileName)
{
    Configuration before;
    std::string left;
    std::string created;
    for (const Change& change : failure.left()) {
        std::string& list = change.before ? left : created;
        list.append(list.empty() ? "" : ", ").append(described(change.after));
        if (change.before) before.push_back(*change.before);
    }
    Failure reported = failure;
    if (!created.empty()) reported.advise("this may have been created and could not be deleted: " + created);
    if (!before.empty()) {
        const std::string saved = fileName + ".before.json";
        writeFile(saved, fileText(before));
        reported.advise("this could not be put back: " + left + "; when the cause is mended, \"kxova import " +
                        saved + "\" does it");
    }
    throw reported;
}

void import(const std::string& fileName, bool dryRun)
{
    const Configuration wanted = readFileText(readFile(fileName), fileName);
    ServerStore store;
    const std::vector<Change> changes = changesFor(wanted, store);
    if (!dryRun) {
        const WithoutInterruption guard;
        try {
            carryOut(changes, store);
        } catch (const NotUndone& failure) {
            reportLeft(failure, fileName);
        }
    }
    const auto created =
        std::count_if(changes.begin(), changes.end(), [](const Change& change) { return !change.before; });
    const auto changed = static_cast<std::ptrdiff_t>(changes.size()) - created;
    const auto same = wanted.size() - changes.size();
    show({{"dryRun", dryRun}, {"changes", changesJson(changes)}, {"unchanged", same}},
         changesText(changes) + (dryRun ? "Nothing was changed. An import would create " : "Created ") +
             std::to_string(created) + (dryRun ? ", change " : ", changed ") + std::to_string(changed) + " and " +
             (dryRun ? "leave " : "left ") + std::to_string(same) + " as " +
             (same == 1 ? "it is.\n" : "they are.\n"));
}

}  // namespace

void addImportCommand(CLI::App& app)
{
    struct Arguments
    {
        std::string file;
        bool dryRun = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand(
        "import", "make the logical devices and names of a file what the file says, all of them or none");
    command->add_option("FILE", arguments->file, "a file that \"kxova export\" has written")->required();
    command->add_flag("--dry-run", arguments->dryRun, "check the file and show what would change");
    command->callback([arguments] { import(arguments->file, arguments->dryRun); });
}
