#include "device.h"

#include <memory>
#include <optional>

#include "kxovaapi.h"
#include "output.h"
#include "results.h"
#include "text.h"

namespace {

// A buffer of the interface's largest text.
struct Text
{
    char buffer[260] = {};
    unsigned long length = sizeof buffer;

    std::string utf8() const { return toUtf8({buffer, length}); }
};

std::string quoted(const std::string& utf8)
{
    return "\"" + utf8 + "\"";
}

std::string device(const std::string& name)
{
    return "logical device " + quoted(name);
}

constexpr char devicesHint[] = "\"kxova device list\" shows the logical devices";
constexpr char valuesHint[] = "\"kxova device list\" shows the logical devices, \"kxova device show\" their values";
constexpr char definitionHint[] = "the server's catalogue names the definitions, such as NX3110.MPI";

std::vector<std::string> deviceNames(const std::optional<std::string>& netType)
{
    const std::string filter = netType ? toAnsi(*netType) : std::string();
    std::vector<std::string> names;
    for (unsigned long i = 0;; ++i) {
        Text name;
        const long result = LogDeviceGetEnum(netType ? filter.c_str() : nullptr, i, name.buffer, &name.length);
        if (result == DCFG_ERR_NO_MORE_ITEMS) return names;
        require(result, "list the logical devices");
        names.push_back(name.utf8());
    }
}

// A value that a listing shows where it exists.
std::optional<std::string> valueOf(const std::string& deviceName, const char* parameter)
{
    Text value;
    const long result = LogDeviceGetValue(toAnsi(deviceName).c_str(), parameter, value.buffer, &value.length);
    if (result == DCFG_ERR_NOT_FOUND) return std::nullopt;
    require(result, "read " + quoted(parameter) + " of " + device(deviceName));
    return value.utf8();
}

void list(const std::optional<std::string>& netType)
{
    Table table({"NAME", "PROTOCOL", "BOARD", "UNIT"});
    Json devices = Json::array();
    for (const std::string& name : deviceNames(netType)) {
        const std::string protocol = valueOf(name, "CP_TYPE").value_or("");
        const std::string board = valueOf(name, "DeviceID").value_or("");
        const std::string unit = valueOf(name, "Unit").value_or("");
        table.add({name, protocol, board, unit});
        devices.push_back({{"name", name}, {"protocol", protocol}, {"board", board}, {"unit", unit}});
    }
    show({{"devices", devices}}, devices.empty() ? "There are no logical devices.\n" : table.text());
}

void showDevice(const std::string& name)
{
    const std::string ansi = toAnsi(name);
    require(LogDeviceExists(ansi.c_str(), 0), "show " + device(name), devicesHint);

    Table table({"PARAMETER", "VALUE", "STORED AS"});
    Json values = Json::array();
    for (unsigned long i = 0;; ++i) {
        Text parameter;
        Text stored;
        const long result = LogDeviceGetEnumValue(ansi.c_str(), i, parameter.buffer, &parameter.length, stored.buffer,
                                                  &stored.length);
        if (result == DCFG_ERR_NO_MORE_ITEMS) break;
        require(result, "list the values of " + device(name));
        const std::string value = valueOf(name, parameter.buffer).value_or("");
        const bool translated = value != stored.utf8();
        table.add({parameter.utf8(), value, translated ? stored.utf8() : ""});
        values.push_back({{"parameter", parameter.utf8()}, {"value", value}, {"stored", stored.utf8()}});
    }
    show({{"device", name}, {"values", values}}, table.text());
}

void getValue(const std::string& name, const std::string& parameter)
{
    Text value;
    require(LogDeviceGetValue(toAnsi(name).c_str(), toAnsi(parameter).c_str(), value.buffer, &value.length),
            "read " + quoted(parameter) + " of " + device(name), valuesHint);
    show({{"device", name}, {"parameter", parameter}, {"value", value.utf8()}}, value.utf8() + "\n");
}

void setValue(const std::string& name, const std::string& parameter, const std::string& value)
{
    require(LogDeviceSetValue(toAnsi(name).c_str(), toAnsi(parameter).c_str(), toAnsi(value).c_str()),
            "set " + quoted(parameter) + " of " + device(name) + " to " + quoted(value), devicesHint);
    show({{"device", name}, {"parameter", parameter}, {"value", value}},
         name + ": " + parameter + " is now " + quoted(value) + ".\n");
}

void create(const std::string& name, const std::string& definition)
{
    require(LogDeviceCreateFromDef(toAnsi(name).c_str(), toAnsi(definition).c_str()),
            "create " + device(name) + " from " + quoted(definition), definitionHint);
    show({{"device", name}, {"definition", definition}, {"created", true}},
         "Created " + device(name) + " from " + quoted(definition) + ".\n");
}

void remove(const std::string& name)
{
    require(LogDeviceDel(toAnsi(name).c_str()), "delete " + device(name), devicesHint);
    show({{"device", name}, {"deleted", true}}, "Deleted " + device(name) + ".\n");
}

// The one question whose "no" is an answer: it is printed, and told by the exit status too.
void exists(const std::string& name)
{
    const long result = LogDeviceExists(toAnsi(name).c_str(), 0);
    if (result != DCFG_ERR_NOT_FOUND) require(result, "look for " + device(name));
    const bool found = result == ERROR_SUCCESS;
    show({{"device", name}, {"exists", found}}, found ? "yes\n" : "no\n");
    if (!found) throw CLI::RuntimeError(exitNotFound);
}

}  // namespace

void addDeviceCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string name;
        std::string parameter;
        std::string value;
        std::string definition;
        std::optional<std::string> netType;
    };
    const auto arguments = std::make_shared<Arguments>();
    const auto named = [arguments](CLI::App* command) {
        command->add_option("NAME", arguments->name, "name of the logical device")->required();
        return command;
    };

    CLI::App* const group = app.add_subcommand("device", "logical devices and their values");
    group->require_subcommand(1);

    CLI::App* const listing = group->add_subcommand("list", "the logical devices, with protocol, board and unit");
    listing->add_option("--net-type", arguments->netType, "only devices of this net type, such as MPI");
    listing->callback([arguments] { list(arguments->netType); });

    named(group->add_subcommand("show", "all values of a logical device"))->callback([arguments] {
        showDevice(arguments->name);
    });

    CLI::App* const get = named(group->add_subcommand("get", "one value of a logical device"));
    get->add_option("PARAMETER", arguments->parameter, "name of the value, such as busparam")->required();
    get->callback([arguments] { getValue(arguments->name, arguments->parameter); });

    CLI::App* const set = named(group->add_subcommand("set", "store one value of a logical device"));
    set->add_option("PARAMETER", arguments->parameter, "name of the value, such as busparam")->required();
    set->add_option("VALUE", arguments->value, "the text to store")->required();
    set->callback([arguments] { setValue(arguments->name, arguments->parameter, arguments->value); });

    CLI::App* const creation = named(group->add_subcommand("create", "create a logical device from a definition"));
    creation->add_option("--from", arguments->definition, "name of the default logical device to copy")->required();
    creation->callback([arguments] { create(arguments->name, arguments->definition); });

    named(group->add_subcommand("delete", "delete a logical device"))->callback([arguments] {
        remove(arguments->name);
    });
    named(group->add_subcommand("exists", "print yes or no; exit status 4 for no"))->callback([arguments] {
        exists(arguments->name);
    });
}
