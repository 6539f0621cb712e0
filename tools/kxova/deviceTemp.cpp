#include <memory>
#include <optional>

#include "calls.h"
#include "device.h"
#include "hints.h"
#include "output.h"
#include "temporary.h"

namespace {

struct Edit
{
    std::string device;
    Values set;
    std::vector<std::string> unset;
    bool commit = false;
};

std::optional<std::string> valueIfAny(const std::string& device, const std::string& parameter)
{
    return textIfAny(
        [&](auto... out) { return LogDeviceGetValue(toAnsi(device).c_str(), toAnsi(parameter).c_str(), out...); },
        "read " + inQuotes(parameter) + " of " + logicalDevice(device));
}

Json orNull(const std::optional<std::string>& text)
{
    return text ? Json(*text) : Json();
}

std::string orNothing(const std::optional<std::string>& text)
{
    return text ? inQuotes(*text) : "";
}

void change(const TemporaryDevice& copy, const Edit& edit)
{
    const std::string ansi = toAnsi(copy.name());
    const std::string where = " of the copy of " + logicalDevice(edit.device);
    for (const std::string& parameter : edit.unset)
        require(LogDeviceDelValue(ansi.c_str(), toAnsi(parameter).c_str()), "unset " + inQuotes(parameter) + where,
                valuesHint);
    for (const Value& value : edit.set)
        require(LogDeviceSetValue(ansi.c_str(), toAnsi(value.name).c_str(), toAnsi(value.text).c_str()),
                "set " + inQuotes(value.name) + where + " to " + inQuotes(value.text));
}

// The copy shows what the server makes of the values before anything is stored.
void tryOut(const Edit& edit)
{
    const TemporaryDevice copy(edit.device);
    std::vector<std::string> parameters = edit.unset;
    for (const Value& value : edit.set)
        parameters.push_back(value.name);
    std::vector<std::optional<std::string>> before;
    for (const std::string& parameter : parameters)
        before.push_back(valueIfAny(copy.name(), parameter));

    change(copy, edit);
    Table table({"PARAMETER", "BEFORE", "AFTER"});
    Json changes = Json::array();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const std::optional<std::string> after = valueIfAny(copy.name(), parameters[i]);
        table.add({parameters[i], orNothing(before[i]), orNothing(after)});
        changes.push_back({{"parameter", parameters[i]}, {"before", orNull(before[i])}, {"after", orNull(after)}});
    }
    if (edit.commit) copy.replace(edit.device);
    show({{"device", edit.device}, {"changes", changes}, {"stored", edit.commit}},
         table.text() + (edit.commit ? "Stored in one step.\n" : "Nothing was stored; --commit stores it.\n"));
}

Values assignments(const std::vector<std::string>& texts)
{
    Values values;
    for (const std::string& text : texts) {
        const std::size_t sign = text.find('=');
        if (sign == std::string::npos || sign == 0)
            throw CLI::ValidationError("--set", "must be PARAMETER=VALUE, not " + text);
        values.push_back({text.substr(0, sign), text.substr(sign + 1)});
    }
    return values;
}

}  // namespace

void addDeviceTempCommand(CLI::App& device)
{
    struct Arguments
    {
        Edit edit;
        std::vector<std::string> set;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command =
        device.add_subcommand("temp", "change several values in a temporary copy, and store them in one step");
    command->add_option("NAME", arguments->edit.device, "name of the logical device")->required();
    command->add_option("--set", arguments->set, "PARAMETER=VALUE to set in the copy; may be repeated")
        ->allow_extra_args(false);
    command->add_option("--unset", arguments->edit.unset, "PARAMETER to delete in the copy; may be repeated")
        ->allow_extra_args(false);
    command->add_flag("--commit", arguments->edit.commit,
                      "replace the logical device by the copy; without it nothing is stored");
    command->callback([arguments] {
        arguments->edit.set = assignments(arguments->set);
        if (arguments->edit.set.empty() && arguments->edit.unset.empty())
            throw CLI::RequiredError("--set or --unset");
        tryOut(arguments->edit);
    });
}
