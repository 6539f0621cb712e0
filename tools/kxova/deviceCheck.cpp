#include <memory>

#include "calls.h"
#include "description.h"
#include "device.h"
#include "hints.h"
#include "output.h"

namespace {

void requireDevice(const std::string& name, const std::string& attempt)
{
    require(LogDeviceExists(toAnsi(name).c_str(), 0), attempt + " " + logicalDevice(name), devicesHint);
}

void check(const std::string& name, const std::string& parameter, const std::string& value)
{
    requireDevice(name, "check a value of");
    const bool described = isDescribed(name, parameter);
    const std::string meant = checkedValue(name, parameter, value);
    std::string text = inQuotes(meant) + " is allowed";
    if (!described) text += ": the parameter is not described, so every value is";
    show({{"device", name}, {"parameter", parameter}, {"value", meant}, {"allowed", true}, {"described", described}},
         text + ".\n");
}

Json asJson(const std::string& parameter, const Description& description)
{
    Json json = {{"parameter", parameter}, {"type", description.type}};
    const std::pair<const char*, const std::string&> attributes[] = {
        {"min", description.min},   {"max", description.max},          {"step", description.step},
        {"base", description.base}, {"default", description.standard}, {"unit", description.unit}};
    for (const auto& [name, text] : attributes)
        if (!text.empty()) json[name] = text;
    for (const Choice& choice : description.choices)
        json["choices"].push_back({{"value", choice.value}, {"text", choice.text}});
    return json;
}

void describeOne(const std::string& name, const std::string& parameter)
{
    requireDevice(name, "describe a parameter of");
    const std::optional<Description> description = describe(name, parameter);
    if (!description) {
        throw Failure("describe " + inQuotes(parameter) + " of " + logicalDevice(name), DCFG_ERR_NOT_FOUND,
                      "\"kxova device describe NAME\" shows what is described");
    }
    Table table({"ATTRIBUTE", "VALUE"});
    table.add({"type", description->type});
    table.add({"allowed", description->allowed()});
    if (!description->standard.empty()) table.add({"default", description->standard});
    show(asJson(parameter, *description), table.text());
}

void describeAll(const std::string& name)
{
    const std::string ansi = toAnsi(name);
    Table table({"PARAMETER", "VALUE", "TYPE", "ALLOWED"});
    Json parameters = Json::array();
    for (const Value& value : allValues([&](auto... out) { return LogDeviceGetEnumValue(ansi.c_str(), out...); },
                                        "describe " + logicalDevice(name), devicesHint)) {
        const std::optional<Description> description = describe(name, value.name);
        if (!description) continue;
        table.add({value.name, value.text, description->type, description->allowed()});
        Json json = asJson(value.name, *description);
        json["value"] = value.text;
        parameters.push_back(std::move(json));
    }
    show({{"device", name}, {"parameters", parameters}},
         parameters.empty() ? "No parameter of " + logicalDevice(name) + " is described.\n" : table.text());
}

}  // namespace

void addDeviceCheckCommands(CLI::App& device)
{
    struct Arguments
    {
        std::string name;
        std::string parameter;
        std::string value;
    };
    const auto arguments = std::make_shared<Arguments>();
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = device.add_subcommand(name, description);
        added->add_option("NAME", arguments->name, "name of the logical device")->required();
        return added;
    };

    CLI::App* const checking =
        command("check", "say whether a parameter may be set to a value, and what would be allowed");
    checking->add_option("PARAMETER", arguments->parameter, "name of the value, such as baudrate")->required();
    checking->add_option("VALUE", arguments->value, "the text; \"min\", \"max\" and \"default\" stand for numbers")
        ->required();
    checking->callback([arguments] { check(arguments->name, arguments->parameter, arguments->value); });

    CLI::App* const describing = command("describe", "type, range and choices of one parameter or of all");
    describing->add_option("PARAMETER", arguments->parameter, "name of the value; all when it is missing");
    describing->callback([arguments] {
        if (arguments->parameter.empty()) {
            describeAll(arguments->name);
        } else {
            describeOne(arguments->name, arguments->parameter);
        }
    });
}
