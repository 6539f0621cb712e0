// What the library says of this machine and this process.
#include <memory>
#include <string>

#include "calls.h"
#include "commands.h"
#include "kxframework.h"
#include "output.h"

namespace {

void language()
{
    CString name;
    CString letter;
    DCFG_GetLanguage(name, letter);
    CString code;
    if (ConvertTALUNToOsLanguage(letter, &code) != ERROR_SUCCESS) code = "?";
    const std::string languageName = toUtf8(name.GetString());
    std::string text = std::string(letter.GetString()) + " (" + code.GetString() + ")";
    if (!languageName.empty()) text += ", " + languageName;
    show({{"letter", letter.GetString()}, {"code", code.GetString()}, {"name", languageName}}, text + "\n");
}

void ports()
{
    Table table({"TYPE", "PORT", "DEVICE"});
    Json list = Json::array();
    for (const char* const type : {"COM", "LPT"}) {
        CStringList items;
        DCFG_GetPortList(items, type);
        for (POSITION at = items.GetHeadPosition(); at;) {
            const std::string item = toUtf8(items.GetNext(at).GetString());
            const std::size_t comma = item.find(',');
            const std::string device = item.substr(0, comma);
            const std::string port = comma == std::string::npos ? "" : item.substr(comma + 1);
            table.add({type, port, device});
            list.push_back({{"type", type}, {"port", port}, {"device", device}});
        }
    }
    show({{"ports", list}}, list.empty() ? "There is no port that can be opened.\n" : table.text());
}

void versions()
{
    char slots[5][260] = {};
    require(GetKXRTSVersion(slots[0]), "read the versions");
    Table table({"PART", "VERSION"});
    Json list = Json::array();
    for (int i = 0; i < 5; ++i) {
        const std::string version = toUtf8(slots[i]);
        table.add({"runtime " + std::to_string(i + 1), version});
        list.push_back(version);
    }
    table.add({"kxova", KXOVA_VERSION});
    show({{"runtime", list}, {"kxova", KXOVA_VERSION}}, table.text());
}

}  // namespace

void addMachineCommands(CLI::App& app)
{
    CLI::App* const speaking = app.add_subcommand(
        "language", "the language that this process would use, with the library's own parameters behind it");
    // The library reads them from the command line itself.
    const auto given = std::make_shared<std::vector<std::string>>();
    speaking->add_option("PARAMETER", *given, "App=NAME, LangExt=LETTER or WinLang ABBREVIATION, to try them");
    speaking->callback([given] { language(); });
    app.add_subcommand("ports", "the serial and parallel ports that can be opened")->callback(ports);
    app.add_subcommand("versions", "the versions of the communication runtime")->callback(versions);
}
