#include <memory>

#include "calls.h"
#include "commands.h"
#include "output.h"

namespace {

void install(const std::string& deviceId, const std::string& map)
{
    require(Panel_SendInstall(toAnsi(deviceId).c_str(), toAnsi(map).c_str()), "install " + inQuotes(deviceId));
    show({{"deviceId", deviceId}, {"installed", true}}, "Installed " + inQuotes(deviceId) + ".\n");
}

void deinstall(const std::string& deviceId, const std::string& map, const std::string& instance)
{
    require(Panel_SendDeinstall(toAnsi(deviceId).c_str(), toAnsi(map).c_str(), toAnsi(instance).c_str()),
            "remove " + inQuotes(deviceId));
    show({{"deviceId", deviceId}, {"removed", true}}, "Removed " + inQuotes(deviceId) + ".\n");
}

// The texts stand one after another, each with its zero; an empty one ends them.
std::vector<std::string> texts(const std::string& block)
{
    std::vector<std::string> all;
    for (std::size_t at = 0; at < block.size() && block[at] != '\0';) {
        const std::size_t end = block.find('\0', at);
        all.push_back(toUtf8(block.substr(at, end - at)));
        if (end == std::string::npos) break;
        at = end + 1;
    }
    return all;
}

void list(unsigned operation, const std::string& text)
{
    std::string block(8160, '\0');
    auto length = static_cast<unsigned long>(block.size());
    require(Panel_SendGetList(static_cast<char>(operation), toAnsi(text).c_str(), block.data(), &length),
            "run the list operation " + std::to_string(operation), "the server does not know what was asked for");
    block.resize(std::min<std::size_t>(length, block.size()));
    const std::vector<std::string> all = texts(block);
    std::string lines;
    for (const std::string& each : all)
        lines += each + "\n";
    show({{"operation", operation}, {"list", all}}, all.empty() ? "The list is empty.\n" : lines);
}

void lldpList()
{
    const Values values =
        allValues([](auto... out) { return Panel_LldpGetEnumValue(out...); }, "list the LLDP settings");
    Table table({"PARAMETER", "VALUE"});
    Json json = Json::array();
    for (const Value& value : values) {
        table.add({value.name, value.text});
        json.push_back({{"parameter", value.name}, {"value", value.text}});
    }
    show({{"lldp", json}}, values.empty() ? "There are no LLDP settings.\n" : table.text());
}

void lldpDelete(const std::string& parameter)
{
    require(Panel_LldpDelValue(toAnsi(parameter).c_str()), "delete the LLDP setting " + inQuotes(parameter),
            "\"kxova lldp list\" shows the settings");
    show({{"parameter", parameter}, {"deleted", true}}, "Deleted the LLDP setting " + inQuotes(parameter) + ".\n");
}

}  // namespace

void addPanelCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string deviceId;
        std::string map;
        std::string instance;
        unsigned operation = 0;
        std::string text;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("panel", "what the control panel asks of the server");
    group->require_subcommand(1);

    CLI::App* const installing = group->add_subcommand("install", "install a device instance");
    installing->add_option("DEVICE_ID", arguments->deviceId, "device id of the board, such as *TVRA011")->required();
    installing->add_option("MAP", arguments->map, "the board map to use; the next free one when it is missing");
    installing->callback([arguments] { install(arguments->deviceId, arguments->map); });

    CLI::App* const removing = group->add_subcommand("deinstall", "remove a device instance");
    removing->add_option("DEVICE_ID", arguments->deviceId, "device id of the board, such as *TVRA011")->required();
    removing->add_option("MAP", arguments->map, "the instance's board map; any when it is missing or empty");
    removing->add_option("INSTANCE", arguments->instance, "the hardware instance; any when it is missing");
    removing->callback([arguments] { deinstall(arguments->deviceId, arguments->map, arguments->instance); });

    CLI::App* const listing = group->add_subcommand("list", "run a list operation of the server");
    listing->add_option("OPERATION", arguments->operation, "the operation's code, 0 to 255")
        ->required()
        ->check(CLI::Range(0, 255));
    listing->add_option("TEXT", arguments->text, "the text that the operation takes");
    listing->callback([arguments] { list(arguments->operation, arguments->text); });
}

void addLldpCommands(CLI::App& app)
{
    const auto parameter = std::make_shared<std::string>();
    CLI::App* const group = app.add_subcommand("lldp", "the settings of the LLDP page");
    group->require_subcommand(1);
    group->add_subcommand("list", "all LLDP settings")->callback([] { lldpList(); });
    CLI::App* const deletion = group->add_subcommand("delete", "delete an LLDP setting");
    deletion->add_option("PARAMETER", *parameter, "name of the setting")->required();
    deletion->callback([parameter] { lldpDelete(*parameter); });
}
