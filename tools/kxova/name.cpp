#include <memory>
#include <optional>

#include "calls.h"
#include "commands.h"
#include "hints.h"
#include "output.h"

namespace {

constexpr char nameValuesHint[] = "\"kxova name list\" shows the logical names, \"kxova name show\" their values";

std::string valueOf(const std::string& name, const char* parameter)
{
    return textIfAny([&](auto... out) { return LogNameGetValue(toAnsi(name).c_str(), parameter, out...); },
                     "read " + inQuotes(parameter) + " of " + logicalName(name))
        .value_or("");
}

bool isThere(const std::string& name)
{
    return found(LogNameExists(toAnsi(name).c_str()), "look for " + logicalName(name));
}

void list()
{
    Table table({"NAME", "DEVICE", "PROTOCOL"});
    Json names = Json::array();
    for (const std::string& name :
         allTexts([](auto... out) { return LogNameGetEnum(out...); }, "list the logical names")) {
        const std::string device = valueOf(name, "LogDevice");
        const std::string protocol = valueOf(name, "CP_TYPE");
        table.add({name, device, protocol});
        names.push_back({{"name", name}, {"device", device}, {"protocol", protocol}});
    }
    show({{"names", names}}, names.empty() ? "There are no logical names.\n" : table.text());
}

void showName(const std::string& name)
{
    Table table({"PARAMETER", "VALUE"});
    Json values = Json::array();
    for (const Value& value :
         allValues([&](auto... out) { return LogNameGetEnumValue(toAnsi(name).c_str(), out...); },
                   "show " + logicalName(name), namesHint)) {
        table.add({value.name, value.text});
        values.push_back({{"parameter", value.name}, {"value", value.text}});
    }
    show({{"name", name}, {"values", values}}, table.text());
}

void get(const std::string& name, const std::string& parameter)
{
    const std::string value =
        textOf([&](auto... out) { return LogNameGetValue(toAnsi(name).c_str(), toAnsi(parameter).c_str(), out...); },
               "read " + inQuotes(parameter) + " of " + logicalName(name), nameValuesHint);
    show({{"name", name}, {"parameter", parameter}, {"value", value}}, value + "\n");
}

void set(const std::string& name, const std::string& parameter, const std::string& value)
{
    require(LogNameSetValue(toAnsi(name).c_str(), toAnsi(parameter).c_str(), toAnsi(value).c_str()),
            "set " + inQuotes(parameter) + " of " + logicalName(name) + " to " + inQuotes(value), namesHint);
    show({{"name", name}, {"parameter", parameter}, {"value", value}},
         name + ": " + parameter + " is now " + inQuotes(value) + ".\n");
}

void unset(const std::string& name, const std::string& parameter)
{
    require(LogNameDelValue(toAnsi(name).c_str(), toAnsi(parameter).c_str()),
            "unset " + inQuotes(parameter) + " of " + logicalName(name), nameValuesHint);
    show({{"name", name}, {"parameter", parameter}, {"unset", true}},
         name + ": " + parameter + " is no longer set.\n");
}

void create(const std::string& name)
{
    require(LogNameCreate(toAnsi(name).c_str()), "create " + logicalName(name));
    show({{"name", name}, {"created", true}}, "Created " + logicalName(name) + ".\n");
}

void bindTo(const std::string& name, const std::optional<std::string>& device)
{
    const std::string target = device.value_or("");
    if (!isThere(name)) throw Failure("bind " + logicalName(name), DCFG_ERR_NOT_FOUND, namesHint);
    require(LogNameSetLogDevice(toAnsi(name).c_str(), toAnsi(target).c_str()),
            "bind " + logicalName(name) + " to " + logicalDevice(target), devicesHint);
    show({{"name", name}, {"device", target}}, target.empty()
                                                   ? name + " stands for no logical device.\n"
                                                   : name + " stands for " + logicalDevice(target) + ".\n");
}

// Without the first question a name that does not exist would be reported as protected.
void remove(const std::string& name)
{
    const std::string attempt = "delete " + logicalName(name);
    if (!isThere(name)) throw Failure(attempt, DCFG_ERR_NOT_FOUND, namesHint);
    require(LogNameDel(toAnsi(name).c_str()), attempt);
    show({{"name", name}, {"deleted", true}}, "Deleted " + logicalName(name) + ".\n");
}

void exists(const std::string& name)
{
    const bool there = isThere(name);
    show({{"name", name}, {"exists", there}}, there ? "yes\n" : "no\n");
    if (!there) throw CLI::RuntimeError(exitNotFound);
}

}  // namespace

void addNameCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string name;
        std::string parameter;
        std::string value;
        std::optional<std::string> device;
        bool none = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("name", "logical names and the logical devices they stand for");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        added->add_option("NAME", arguments->name, "the logical name")->required();
        return added;
    };
    const auto commandOnValue = [&](const char* name, const char* description) {
        CLI::App* const added = command(name, description);
        added->add_option("PARAMETER", arguments->parameter, "name of the value, such as enable_delete")->required();
        return added;
    };

    group->add_subcommand("list", "the logical names, with device and protocol")->callback([] { list(); });
    command("show", "all values of a logical name")->callback([arguments] { showName(arguments->name); });
    commandOnValue("get", "one value of a logical name")->callback([arguments] {
        get(arguments->name, arguments->parameter);
    });
    CLI::App* const setting = commandOnValue("set", "store one value of a logical name");
    setting->add_option("VALUE", arguments->value, "the text to store")->required();
    setting->callback([arguments] { set(arguments->name, arguments->parameter, arguments->value); });
    commandOnValue("unset", "delete one value of a logical name")->callback([arguments] {
        unset(arguments->name, arguments->parameter);
    });

    command("create", "create a logical name")->callback([arguments] { create(arguments->name); });
    CLI::App* const binding = command("bind", "let a logical name stand for a logical device");
    CLI::Option* const device = binding->add_option("DEVICE", arguments->device, "name of the logical device");
    CLI::Option* const none = binding->add_flag("--none", arguments->none, "let it stand for no device");
    none->excludes(device);
    binding->callback([arguments] {
        if (!arguments->device && !arguments->none) throw CLI::RequiredError("DEVICE or --none");
        bindTo(arguments->name, arguments->device);
    });
    command("delete", "delete a logical name, unless its value enable_delete protects it")->callback([arguments] {
        remove(arguments->name);
    });
    command("exists", "print yes or no; exit status 4 for no")->callback([arguments] { exists(arguments->name); });
}
