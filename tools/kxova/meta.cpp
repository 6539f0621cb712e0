#include <memory>

#include "calls.h"
#include "commands.h"
#include "output.h"

namespace {

struct Place
{
    std::string folder;
    std::string subfolder;
    std::string item;
    std::string parameter;
};

std::string described(const Place& place)
{
    const std::string folder = place.subfolder.empty() ? place.folder : place.folder + "\\" + place.subfolder;
    return "the metadata " + inQuotes(place.parameter) + " of " + inQuotes(place.item) + " in " + inQuotes(folder);
}

Json placeJson(const Place& place)
{
    return {{"folder", place.folder},
            {"subfolder", place.subfolder},
            {"item", place.item},
            {"parameter", place.parameter}};
}

void get(const Place& place)
{
    const std::string value = textOf(
        [&](auto... out) {
            return DCFG_GetParameterMetaData(toAnsi(place.folder).c_str(), toAnsi(place.subfolder).c_str(),
                                             toAnsi(place.item).c_str(), toAnsi(place.parameter).c_str(), out...);
        },
        "read " + described(place), "\"kxova meta set\" stores metadata");
    Json json = placeJson(place);
    json["value"] = value;
    show(json, value + "\n");
}

void set(const Place& place, const std::string& value)
{
    require(
        DCFG_SetParameterMetaData(toAnsi(place.folder).c_str(), toAnsi(place.subfolder).c_str(),
                                  toAnsi(place.item).c_str(), toAnsi(place.parameter).c_str(), toAnsi(value).c_str()),
        "set " + described(place) + " to " + inQuotes(value));
    Json json = placeJson(place);
    json["value"] = value;
    show(json, "Stored " + inQuotes(value) + " as " + described(place) + ".\n");
}

}  // namespace

void addMetaCommands(CLI::App& app)
{
    struct Arguments
    {
        Place place;
        std::string value;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("meta", "metadata: texts that describe the parameters of an item");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        added->add_option("FOLDER", arguments->place.folder, "the folder, such as LogDevices")->required();
        added->add_option("SUBFOLDER", arguments->place.subfolder, "a folder in it; \"\" for none")->required();
        added->add_option("ITEM", arguments->place.item, "what is described, such as a logical device")->required();
        added->add_option("PARAMETER", arguments->place.parameter, "name of the metadata")->required();
        return added;
    };
    command("get", "one piece of metadata")->callback([arguments] { get(arguments->place); });
    CLI::App* const setting = command("set", "store one piece of metadata");
    setting->add_option("VALUE", arguments->value, "the text to store")->required();
    setting->callback([arguments] { set(arguments->place, arguments->value); });
}
