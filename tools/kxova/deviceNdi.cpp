#include <memory>

#include "calls.h"
#include "device.h"
#include "hints.h"
#include "output.h"

namespace {

constexpr char ndiHint[] =
    "\"kxova device list\" shows the logical devices, \"kxova device ndi list\" their Ndi values";

std::string ndiValue(const std::string& parameter, const std::string& device)
{
    return "the Ndi value " + inQuotes(parameter) + " of " + logicalDevice(device);
}

void list(const std::string& device)
{
    const Values values =
        allValues([&](auto... out) { return LogDeviceGetEnumNdiValue(toAnsi(device).c_str(), out...); },
                  "list the Ndi values of " + logicalDevice(device), devicesHint);
    Table table({"PARAMETER", "VALUE"});
    Json json = Json::array();
    for (const Value& value : values) {
        table.add({value.name, value.text});
        json.push_back({{"parameter", value.name}, {"value", value.text}});
    }
    show({{"device", device}, {"ndi", json}}, values.empty() ? device + " has no Ndi values.\n" : table.text());
}

void get(const std::string& device, const std::string& parameter)
{
    const std::string value = textOf(
        [&](auto... out) { return LogDeviceGetNdiValue(toAnsi(device).c_str(), toAnsi(parameter).c_str(), out...); },
        "read " + ndiValue(parameter, device), ndiHint);
    show({{"device", device}, {"parameter", parameter}, {"value", value}}, value + "\n");
}

void set(const std::string& device, const std::string& parameter, const std::string& value)
{
    require(LogDeviceSetNdiValue(toAnsi(device).c_str(), toAnsi(parameter).c_str(), toAnsi(value).c_str()),
            "set " + ndiValue(parameter, device) + " to " + inQuotes(value), devicesHint);
    show({{"device", device}, {"parameter", parameter}, {"value", value}},
         device + ": Ndi value " + parameter + " is now " + inQuotes(value) + ".\n");
}

void unset(const std::string& device, const std::string& parameter)
{
    require(LogDeviceDelNdiValue(toAnsi(device).c_str(), toAnsi(parameter).c_str()),
            "unset " + ndiValue(parameter, device), ndiHint);
    show({{"device", device}, {"parameter", parameter}, {"unset", true}},
         device + ": Ndi value " + parameter + " is no longer set.\n");
}

}  // namespace

void addDeviceNdiCommands(CLI::App& device)
{
    struct Arguments
    {
        std::string device;
        std::string parameter;
        std::string value;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = device.add_subcommand("ndi", "the driver-level (Ndi) values of a logical device");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        added->add_option("NAME", arguments->device, "name of the logical device")->required();
        return added;
    };
    const auto commandOnValue = [&](const char* name, const char* description) {
        CLI::App* const added = command(name, description);
        added->add_option("PARAMETER", arguments->parameter, "name of the Ndi value, such as PropSheet")->required();
        return added;
    };

    command("list", "all Ndi values of a logical device")->callback([arguments] { list(arguments->device); });
    commandOnValue("get", "one Ndi value")->callback([arguments] { get(arguments->device, arguments->parameter); });

    CLI::App* const setting = commandOnValue("set", "store one Ndi value");
    setting->add_option("VALUE", arguments->value, "the text to store")->required();
    setting->callback([arguments] { set(arguments->device, arguments->parameter, arguments->value); });

    commandOnValue("unset", "delete one Ndi value")->callback([arguments] {
        unset(arguments->device, arguments->parameter);
    });
}
