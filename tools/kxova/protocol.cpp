#include <memory>
#include <optional>

#include "calls.h"
#include "commands.h"
#include "hints.h"
#include "output.h"
#include "temporary.h"

namespace {

constexpr char protocolsHint[] =
    "\"kxova protocol list\" shows the protocols, \"kxova protocol profiles\" their profiles";

std::string protocol(const std::string& name)
{
    return "protocol " + inQuotes(name);
}

std::string lines(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += text + "\n";
    return all;
}

void list()
{
    const std::vector<std::string> protocols =
        allTexts([](auto... out) { return TemplateGetEnum("Protocols", out...); }, "list the protocols");
    show({{"protocols", protocols}}, protocols.empty() ? "There are no protocols.\n" : lines(protocols));
}

void profiles(const std::string& name, const std::optional<std::string>& language)
{
    const std::string ansi = toAnsi(name);
    const std::string attempt = "list the bus profiles of " + protocol(name);
    const std::vector<std::string> profiles = allTexts(
        [&](auto... out) { return DCFG_ProtocolGetEnumBusprofiles(ansi.c_str(), out...); }, attempt, protocolsHint);
    Json json = Json::array();
    Table table(language ? std::vector<std::string>{"PROFILE", "TEXT"} : std::vector<std::string>{"PROFILE"});
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        if (!language) {
            table.add({profiles[i]});
            json.push_back({{"profile", profiles[i]}});
            continue;
        }
        const std::string text = textOf(
            [&](auto... out) {
                return DCFG_ProtocolGetEnumBusprofilesLang(ansi.c_str(), static_cast<unsigned long>(i),
                                                           toAnsi(*language).c_str(), out...);
            },
            attempt);
        table.add({profiles[i], text});
        json.push_back({{"profile", profiles[i]}, {"text", text}});
    }
    show({{"protocol", name}, {"profiles", json}},
         profiles.empty() ? name + " has no bus profiles.\n" : table.text());
}

void baudRates(const std::string& name, const std::string& profile)
{
    const std::vector<std::string> rates = allTexts(
        [&](auto... out) {
            return DCFG_ProtocolGetEnumBaudrate(toAnsi(name).c_str(), toAnsi(profile).c_str(), out...);
        },
        "list the baud rates of the profile " + inQuotes(profile) + " of " + protocol(name), protocolsHint);
    show({{"protocol", name}, {"profile", profile}, {"baudRates", rates}},
         rates.empty() ? "The profile has no baud rates.\n" : lines(rates));
}

void value(const std::string& name, const std::string& path, const std::string& parameter)
{
    const std::string text = textOf(
        [&](auto... out) {
            return DCFG_ProtocolGetValueRaw(toAnsi(name).c_str(), toAnsi(path).c_str(), toAnsi(parameter).c_str(),
                                            out...);
        },
        "read " + inQuotes(parameter) + " below " + inQuotes(path) + " of " + protocol(name), protocolsHint);
    show({{"protocol", name}, {"path", path}, {"parameter", parameter}, {"value", text}}, text + "\n");
}

// The call stores the value before it looks for the profile. In a copy that does no harm when there is none.
void apply(const std::string& device, const std::string& parameter, const std::string& chosen)
{
    const TemporaryDevice copy(device);
    const long result =
        DCFG_LogDeviceEnumSetProfile(toAnsi(copy.name()).c_str(), toAnsi(parameter).c_str(), toAnsi(chosen).c_str());
    if (result != ERROR_SUCCESS) {
        Failure failure(
            "apply the profile " + inQuotes(chosen) + " of " + inQuotes(parameter) + " to " + logicalDevice(device),
            result);
        if (result == DCFG_PROFILE_NO_VALUE)
            failure.advise("\"kxova protocol profiles\" shows the profiles of the device's protocol");
        throw failure;
    }
    copy.replace(device);
    show({{"device", device}, {"parameter", parameter}, {"value", chosen}, {"applied", true}},
         device + ": " + parameter + " is now " + inQuotes(chosen) + ", and what belongs to it is set.\n");
}

}  // namespace

void addProtocolCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string name;
        std::string profile;
        std::string path;
        std::string parameter;
        std::optional<std::string> language;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("protocol", "protocols, their bus profiles and baud rates");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        CLI::App* const added = group->add_subcommand(name, description);
        added->add_option("PROTOCOL", arguments->name, "name of the protocol, such as MPI")->required();
        return added;
    };

    group->add_subcommand("list", "the protocols")->callback([] { list(); });
    CLI::App* const listing = command("profiles", "the bus profiles of a protocol");
    listing->add_option("--language", arguments->language, "also their texts in this language, such as DE");
    listing->callback([arguments] { profiles(arguments->name, arguments->language); });
    CLI::App* const rates = command("baudrates", "the baud rates of a bus profile");
    rates->add_option("PROFILE", arguments->profile, "the bus profile, as \"protocol profiles\" shows it")
        ->required();
    rates->callback([arguments] { baudRates(arguments->name, arguments->profile); });
    CLI::App* const reading = command("value", "one value of a protocol's description");
    reading->add_option("PATH", arguments->path, R"(where it is, such as Params\busparam\1; "" for the top)")
        ->required();
    reading->add_option("PARAMETER", arguments->parameter, "name of the value")->required();
    reading->callback([arguments] { value(arguments->name, arguments->path, arguments->parameter); });
}

void addProfileCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string device;
        std::string parameter;
        std::string value;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("profile", "bus profiles of logical devices");
    group->require_subcommand(1);
    CLI::App* const applying =
        group->add_subcommand("apply", "set a value and all that the protocol's profile ties to it");
    applying->add_option("NAME", arguments->device, "name of the logical device")->required();
    applying->add_option("PARAMETER", arguments->parameter, "the value that chooses the profile, such as busparam")
        ->required();
    applying->add_option("VALUE", arguments->value, "the profile, such as DP")->required();
    applying->callback([arguments] { apply(arguments->device, arguments->parameter, arguments->value); });
}
