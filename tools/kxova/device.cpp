#include "device.h"

#include <memory>
#include <optional>

#include "calls.h"
#include "description.h"
#include "hints.h"
#include "output.h"

namespace {

std::vector<std::string> deviceNames(const std::optional<std::string>& netType)
{
    const std::string filter = netType ? toAnsi(*netType) : std::string();
    return allTexts([&](auto... out) { return LogDeviceGetEnum(netType ? filter.c_str() : nullptr, out...); },
                    "list the logical devices");
}

// A value that a listing shows where it exists.
std::string valueOf(const std::string& device, const std::string& parameter)
{
    return textIfAny(
               [&](auto... out) {
                   return LogDeviceGetValue(toAnsi(device).c_str(), toAnsi(parameter).c_str(), out...);
               },
               "read " + inQuotes(parameter) + " of " + logicalDevice(device))
        .value_or("");
}

void list(const std::optional<std::string>& netType)
{
    Table table({"NAME", "PROTOCOL", "BOARD", "UNIT"});
    Json devices = Json::array();
    for (const std::string& name : deviceNames(netType)) {
        const std::string protocol = valueOf(name, "CP_TYPE");
        const std::string board = valueOf(name, "DeviceID");
        const std::string unit = valueOf(name, "Unit");
        table.add({name, protocol, board, unit});
        devices.push_back({{"name", name}, {"protocol", protocol}, {"board", board}, {"unit", unit}});
    }
    show({{"devices", devices}}, devices.empty() ? "There are no logical devices.\n" : table.text());
}

void showDevice(const std::string& name)
{
    const std::string ansi = toAnsi(name);
    Table table({"PARAMETER", "VALUE", "STORED AS"});
    Json values = Json::array();
    for (const Value& stored : allValues([&](auto... out) { return LogDeviceGetEnumValue(ansi.c_str(), out...); },
                                         "show " + logicalDevice(name), devicesHint)) {
        const std::string shown = valueOf(name, stored.name);
        table.add({stored.name, shown, shown == stored.text ? "" : stored.text});
        values.push_back({{"parameter", stored.name}, {"value", shown}, {"stored", stored.text}});
    }
    show({{"device", name}, {"values", values}}, table.text());
}

void getValue(const std::string& name, const std::string& parameter)
{
    const std::string value = textOf(
        [&](auto... out) { return LogDeviceGetValue(toAnsi(name).c_str(), toAnsi(parameter).c_str(), out...); },
        "read " + inQuotes(parameter) + " of " + logicalDevice(name), valuesHint);
    show({{"device", name}, {"parameter", parameter}, {"value", value}}, value + "\n");
}

void setValue(const std::string& name, const std::string& parameter, const std::string& value)
{
    require(LogDeviceSetValue(toAnsi(name).c_str(), toAnsi(parameter).c_str(), toAnsi(value).c_str()),
            "set " + inQuotes(parameter) + " of " + logicalDevice(name) + " to " + inQuotes(value), devicesHint);
    show({{"device", name}, {"parameter", parameter}, {"value", value}},
         name + ": " + parameter + " is now " + inQuotes(value) + ".\n");
}

void unsetValue(const std::string& name, const std::string& parameter)
{
    require(LogDeviceDelValue(toAnsi(name).c_str(), toAnsi(parameter).c_str()),
            "unset " + inQuotes(parameter) + " of " + logicalDevice(name), valuesHint);
    show({{"device", name}, {"parameter", parameter}, {"unset", true}},
         name + ": " + parameter + " is no longer set.\n");
}

void create(const std::string& name, const std::string& definition)
{
    require(LogDeviceCreateFromDef(toAnsi(name).c_str(), toAnsi(definition).c_str()),
            "create " + logicalDevice(name) + " from " + inQuotes(definition), definitionHint);
    show({{"device", name}, {"definition", definition}, {"created", true}},
         "Created " + logicalDevice(name) + " from " + inQuotes(definition) + ".\n");
}

void copy(const std::string& name, const std::string& newName)
{
    require(LogDeviceCopy(toAnsi(name).c_str(), toAnsi(newName).c_str()),
            "copy " + logicalDevice(name) + " to " + inQuotes(newName), devicesHint);
    show({{"device", newName}, {"copyOf", name}, {"created", true}},
         "Created " + logicalDevice(newName) + " as a copy of " + inQuotes(name) + ".\n");
}

void remove(const std::string& name)
{
    require(LogDeviceDel(toAnsi(name).c_str()), "delete " + logicalDevice(name), devicesHint);
    show({{"device", name}, {"deleted", true}}, "Deleted " + logicalDevice(name) + ".\n");
}

// Whether there is a device, also of the name for which the usual question means something else.
bool isThere(const std::string& name)
{
    const std::string attempt = "look for " + logicalDevice(name);
    if (name != "Dummy") return found(LogDeviceExists(toAnsi(name).c_str(), 0), attempt);
    Text parameter;
    Text value;
    const long result =
        LogDeviceGetEnumValue(name.c_str(), 0, parameter.buffer, &parameter.length, value.buffer, &value.length);
    return result == DCFG_ERR_NO_MORE_ITEMS || found(result, attempt);
}

// The one question whose "no" is an answer: it is printed, and told by the exit status too.
void exists(const std::string& name)
{
    const bool there = isThere(name);
    show({{"device", name}, {"exists", there}}, there ? "yes\n" : "no\n");
    if (!there) throw CLI::RuntimeError(exitNotFound);
}

}  // namespace

void addDeviceCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string name;
        std::string newName;
        std::string parameter;
        std::string value;
        std::string definition;
        std::optional<std::string> netType;
        bool check = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("device", "logical devices and their values");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        added->add_option("NAME", arguments->name, "name of the logical device")->required();
        return added;
    };
    const auto commandOnValue = [&](const char* name, const char* description) {
        CLI::App* const added = command(name, description);
        added->add_option("PARAMETER", arguments->parameter, "name of the value, such as busparam")->required();
        return added;
    };

    CLI::App* const listing = group->add_subcommand("list", "the logical devices, with protocol, board and unit");
    listing->add_option("--net-type", arguments->netType, "only devices of this net type, such as MPI");
    listing->callback([arguments] { list(arguments->netType); });

    command("show", "all values of a logical device")->callback([arguments] { showDevice(arguments->name); });
    commandOnValue("get", "one value of a logical device")->callback([arguments] {
        getValue(arguments->name, arguments->parameter);
    });

    CLI::App* const set = commandOnValue("set", "store one value of a logical device");
    set->add_option("VALUE", arguments->value, "the text to store")->required();
    set->add_flag("--check", arguments->check, "refuse a value that its parameter must not have");
    set->callback([arguments] {
        setValue(arguments->name, arguments->parameter,
                 arguments->check ? checkedValue(arguments->name, arguments->parameter, arguments->value)
                                  : arguments->value);
    });

    commandOnValue("unset", "delete one value of a logical device")->callback([arguments] {
        unsetValue(arguments->name, arguments->parameter);
    });

    CLI::App* const creation = command("create", "create a logical device from a definition");
    creation->add_option("--from", arguments->definition, "name of the default logical device to copy")->required();
    creation->callback([arguments] { create(arguments->name, arguments->definition); });

    CLI::App* const copying = command("copy", "create a logical device as a copy of another one");
    copying->add_option("NEW_NAME", arguments->newName, "name of the copy")->required();
    copying->callback([arguments] { copy(arguments->name, arguments->newName); });

    command("delete", "delete a logical device")->callback([arguments] { remove(arguments->name); });
    command("exists", "print yes or no; exit status 4 for no")->callback([arguments] { exists(arguments->name); });

    addDeviceCheckCommands(*group);
    addDeviceNdiCommands(*group);
    addDeviceTempCommand(*group);
}
