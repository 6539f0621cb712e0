#include <memory>
#include <optional>

#include "calls.h"
#include "commands.h"
#include "output.h"

namespace {

constexpr char keyHint[] = "\"kxova registry list\" shows the subkeys and values of a key";

std::string named(const std::string& value)
{
    return value.empty() ? "the default value" : "the value " + inQuotes(value);
}

void get(const std::string& key, const std::string& name)
{
    const std::string text =
        textOf([&](auto... out) { return KxRegGetValue(toAnsi(key).c_str(), toAnsi(name).c_str(), out...); },
               "read " + named(name) + " of the key " + inQuotes(key), keyHint);
    show({{"key", key}, {"name", name}, {"value", text}}, text + "\n");
}

void set(const std::string& key, const std::string& name, const std::string& text)
{
    require(KxRegSetValue(toAnsi(key).c_str(), toAnsi(name).c_str(), toAnsi(text).c_str()),
            "set " + named(name) + " of the key " + inQuotes(key) + " to " + inQuotes(text), keyHint);
    show({{"key", key}, {"name", name}, {"value", text}}, "Stored " + inQuotes(text) + ".\n");
}

void list(const std::string& key)
{
    const std::string ansi = toAnsi(key);
    const std::string attempt = "list the key " + inQuotes(key);
    const std::vector<std::string> keys =
        allTexts([&](auto... out) { return KxRegEnumKey(ansi.c_str(), out...); }, attempt, keyHint);
    const Values values =
        allValues([&](auto... out) { return KxRegEnumValue(ansi.c_str(), out...); }, attempt, keyHint);
    Table table({"KEY", "VALUE", "TEXT"});
    for (const std::string& each : keys)
        table.add({each});
    Json json = Json::array();
    for (const Value& value : values) {
        table.add({"", value.name.empty() ? "(default)" : value.name, value.text});
        json.push_back({{"name", value.name}, {"value", value.text}});
    }
    show({{"key", key}, {"keys", keys}, {"values", json}},
         keys.empty() && values.empty() ? "The key is empty.\n" : table.text());
}

void create(const std::string& key)
{
    require(KxRegCreateKey(toAnsi(key).c_str()), "create the key " + inQuotes(key));
    show({{"key", key}, {"created", true}}, "Created the key " + inQuotes(key) + ".\n");
}

void remove(const std::string& key, const std::optional<std::string>& name)
{
    if (name) {
        require(KxRegDelValue(toAnsi(key).c_str(), toAnsi(*name).c_str()),
                "delete " + named(*name) + " of the key " + inQuotes(key), keyHint);
        show({{"key", key}, {"name", *name}, {"deleted", true}}, "Deleted " + named(*name) + ".\n");
        return;
    }
    require(KxRegDelKey(toAnsi(key).c_str()), "delete the key " + inQuotes(key), keyHint);
    show({{"key", key}, {"deleted", true}}, "Deleted the key " + inQuotes(key) + " and all below it.\n");
}

}  // namespace

void addRegistryCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string key;
        std::string name;
        std::string text;
        std::optional<std::string> valueToDelete;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("registry", "the registry, as far as the server gives access to it");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        added->add_option("KEY", arguments->key, R"(path below HKEY_LOCAL_MACHINE, such as SOFTWARE\TAVRONE\NORIX)")
            ->required();
        return added;
    };
    const auto commandOnValue = [&](const char* name, const char* description) {
        CLI::App* const added = command(name, description);
        added->add_option("NAME", arguments->name, "name of the value")->required();
        return added;
    };

    commandOnValue("get", "one value of a key, as text")->callback([arguments] {
        get(arguments->key, arguments->name);
    });
    CLI::App* const setting = commandOnValue("set", "store a text in a key");
    setting->add_option("TEXT", arguments->text, "the text to store")->required();
    setting->callback([arguments] { set(arguments->key, arguments->name, arguments->text); });
    command("list", "the subkeys and values of a key")->callback([arguments] { list(arguments->key); });
    command("create", "create a key, with the keys above it")->callback([arguments] { create(arguments->key); });
    CLI::App* const deletion = command("delete", "delete a value, or a key with all below it");
    deletion->add_option("NAME", arguments->valueToDelete, "name of the value; without it the key is deleted");
    deletion->callback([arguments] { remove(arguments->key, arguments->valueToDelete); });
}
