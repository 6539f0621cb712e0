#include <algorithm>
#include <array>
#include <memory>

#include "calls.h"
#include "commands.h"
#include "output.h"

namespace {

constexpr std::array types = {"Boards", "Protocols", "DefaultLogdevices"};
constexpr char templatesHint[] = "\"kxova template list\" shows the templates";
constexpr char templateValuesHint[] =
    "\"kxova template list\" shows the templates, \"kxova template show\" their values";

std::string described(const std::string& type, const std::string& name)
{
    return "template " + inQuotes(name) + " of the type " + type;
}

std::vector<std::string> templateNames(const std::string& type)
{
    return allTexts([&](auto... out) { return TemplateGetEnum(type.c_str(), out...); },
                    "list the templates of the type " + type);
}

void list(const std::string& type)
{
    Table table({"TYPE", "NAME"});
    Json templates = Json::array();
    for (const char* each : types) {
        if (!type.empty() && type != each) continue;
        for (const std::string& name : templateNames(each)) {
            table.add({each, name});
            templates.push_back({{"type", each}, {"name", name}});
        }
    }
    show({{"templates", templates}}, templates.empty() ? "There are no templates.\n" : table.text());
}

// The calls cut a protocol's path in the buffer they are given, so each gets a copy.
void showTemplate(const std::string& type, const std::string& name)
{
    const std::string ansi = toAnsi(name);
    Table table({"PARAMETER", "VALUE"});
    Json values = Json::array();
    const auto ask = [&](auto... out) {
        std::string path = ansi;
        return TemplateGetEnumValue(type.c_str(), path.data(), out...);
    };
    for (const Value& value : allValues(ask, "show " + described(type, name), templatesHint)) {
        table.add({value.name, value.text});
        values.push_back({{"parameter", value.name}, {"value", value.text}});
    }
    show({{"type", type}, {"template", name}, {"values", values}},
         values.empty() ? name + " has no values.\n" : table.text());
}

void get(const std::string& type, const std::string& name, const std::string& parameter)
{
    std::string path = toAnsi(name);
    const std::string value = textOf(
        [&](auto... out) { return TemplateGetValue(type.c_str(), path.data(), toAnsi(parameter).c_str(), out...); },
        "read " + inQuotes(parameter) + " of " + described(type, name), templateValuesHint);
    show({{"type", type}, {"template", name}, {"parameter", parameter}, {"value", value}}, value + "\n");
}

}  // namespace

void addTemplateCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string type;
        std::string name;
        std::string parameter;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("template", "what the server knows: boards, protocols, definitions");
    group->require_subcommand(1);
    const auto withType = [&](CLI::App* command) {
        return command->add_option("TYPE", arguments->type, "Boards, Protocols or DefaultLogdevices")
            ->transform(CLI::IsMember(std::vector<std::string>(types.begin(), types.end()), CLI::ignore_case));
    };
    const auto commandOnTemplate = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        withType(added)->required();
        added
            ->add_option("NAME", arguments->name,
                         R"(name of the template; of a protocol also a path of up to five parts, such as MPI\Params)")
            ->required();
        return added;
    };

    CLI::App* const listing = group->add_subcommand("list", "the templates, of one type or of all");
    withType(listing);
    listing->callback([arguments] { list(arguments->type); });

    commandOnTemplate("show", "all values of a template")->callback([arguments] {
        showTemplate(arguments->type, arguments->name);
    });
    CLI::App* const getting = commandOnTemplate("get", "one value of a template");
    getting->add_option("PARAMETER", arguments->parameter, "name of the value, such as DescText")->required();
    getting->callback([arguments] { get(arguments->type, arguments->name, arguments->parameter); });
}
