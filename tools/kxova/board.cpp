#include <algorithm>
#include <memory>

#include "calls.h"
#include "commands.h"
#include "output.h"

namespace {

constexpr char boardsHint[] = "\"kxova template list Boards\" shows the boards by their device ids";

std::string board(const std::string& name)
{
    return "board " + inQuotes(name);
}

// The boards that can be installed.
void list()
{
    Table table({"DEVICE ID", "BOARD", "FOUND BY"});
    Json boards = Json::array();
    for (unsigned long i = 0;; ++i) {
        Text deviceId;
        Text name;
        unsigned long plugAndPlay = 0;
        const long result =
            DCFG_EnumAvailableBoards(i, deviceId.buffer, &deviceId.length, name.buffer, &name.length, &plugAndPlay);
        if (result == DCFG_ERR_NO_MORE_ITEMS) break;
        require(result, "list the boards");
        table.add({deviceId.utf8(), name.utf8(), plugAndPlay ? "plug and play" : "hand"});
        boards.push_back({{"deviceId", deviceId.utf8()}, {"board", name.utf8()}, {"plugAndPlay", plugAndPlay != 0}});
    }
    show({{"boards", boards}}, boards.empty() ? "There are no boards to install.\n" : table.text());
}

struct Configured
{
    Text device;
    Text protocol;
    Text layer4;
    Text unit;
};

void showBoard(const std::string& deviceId)
{
    const std::string ansi = toAnsi(deviceId);
    Table table({"ATTRIBUTE", "VALUE"});
    Json attributes = Json::array();
    const auto ask = [&](auto... out) {
        std::string name = ansi;  // the call may change it
        return TemplateGetEnumValue("Boards", name.data(), out...);
    };
    for (const Value& value : allValues(ask, "show " + board(deviceId), boardsHint)) {
        table.add({value.name, value.text});
        attributes.push_back({{"attribute", value.name}, {"value", value.text}});
    }
    Table uses({"DEVICE", "PROTOCOL", "LAYER 4", "UNIT"});
    Json configurations = Json::array();
    for (unsigned long i = 0;; ++i) {
        Configured each;
        const long result = DCFG_EnumConfiguration(
            i, ansi.c_str(), "", "", "", each.device.buffer, &each.device.length, each.protocol.buffer,
            &each.protocol.length, each.layer4.buffer, &each.layer4.length, each.unit.buffer, &each.unit.length);
        if (result == DCFG_ERR_NO_MORE_ITEMS) break;
        require(result, "list the configurations of " + board(deviceId), boardsHint);
        uses.add({each.device.utf8(), each.protocol.utf8(), each.layer4.utf8(), each.unit.utf8()});
        configurations.push_back({{"device", each.device.utf8()},
                                  {"protocol", each.protocol.utf8()},
                                  {"layer4", each.layer4.utf8()},
                                  {"unit", each.unit.utf8()}});
    }
    show({{"board", deviceId}, {"attributes", attributes}, {"configurations", configurations}},
         table.text() + (configurations.empty() ? "" : "\n" + uses.text()));
}

struct Installed
{
    Text board;
    Text map;
    Text deviceId;
    Text netType;
    Text hardwareId;
    Text instance;
    DcfgEnumInstBoardInfo info = {};

    long ask(unsigned long index)
    {
        info.size = sizeof info;
        info.BoardName = board.buffer;
        info.BoardNameLength = board.length;
        info.BoardMap = map.buffer;
        info.BoardMapLength = map.length;
        info.DeviceId = deviceId.buffer;
        info.DeviceIdLength = deviceId.length;
        info.NetType = netType.buffer;
        info.NetTypeLength = netType.length;
        info.HardwareId = hardwareId.buffer;
        info.HardwareIdLength = hardwareId.length;
        info.HardwareInstanceId = instance.buffer;
        info.HardwareInstanceIdLength = instance.length;
        const long result = DCFG_EnumInstBoardEx(index, &info);
        board.length = info.BoardNameLength;
        map.length = info.BoardMapLength;
        deviceId.length = info.DeviceIdLength;
        netType.length = info.NetTypeLength;
        hardwareId.length = info.HardwareIdLength;
        instance.length = info.HardwareInstanceIdLength;
        return result;
    }
};

void installed()
{
    Table table({"BOARD", "MAP", "DEVICE ID", "NET TYPE", "STATE", "INSTANCE"});
    Json boards = Json::array();
    for (unsigned long i = 0;; ++i) {
        Installed each;
        const long result = each.ask(i);
        if (result == DCFG_ERR_NO_MORE_ITEMS) break;
        require(result, "list the installed boards");
        const std::string state = each.info.State == 0 ? "works" : "problem " + std::to_string(each.info.State);
        table.add({each.board.utf8(), each.map.utf8(), each.deviceId.utf8(), each.netType.utf8(), state,
                   each.instance.utf8()});
        boards.push_back({{"board", each.board.utf8()},
                          {"map", each.map.utf8()},
                          {"deviceId", each.deviceId.utf8()},
                          {"netType", each.netType.utf8()},
                          {"state", each.info.State},
                          {"hardwareId", each.hardwareId.utf8()},
                          {"hardwareInstanceId", each.instance.utf8()}});
    }
    show({{"installed", boards}}, boards.empty() ? "There are no installed boards.\n" : table.text());
}

std::string adapterKind(unsigned long flag)
{
    std::string kind = flag & 1 ? "connected" : "not connected";
    if (flag & 2) kind += ", wireless";
    if (flag & 4) kind += ", virtual";
    return kind;
}

void adapters()
{
    Table table({"ADAPTER", "ID", "STATE"});
    Json json = Json::array();
    for (unsigned long i = 0;; ++i) {
        Text name;
        Text id;
        unsigned long flag = 0;
        const long result = DCFG_EnumAdapters(i, name.buffer, &name.length, id.buffer, &id.length, &flag);
        if (result == DCFG_ERR_NO_MORE_ITEMS) break;
        require(result, "list the network adapters");
        table.add({name.utf8(), id.utf8(), adapterKind(flag)});
        json.push_back({{"adapter", name.utf8()}, {"id", id.utf8()}, {"flag", flag}});
    }
    show({{"adapters", json}}, json.empty() ? "There are no network adapters.\n" : table.text());
}

// What the server answers to a refused request: a list of as many empty entries.
constexpr std::size_t refusedEntries = 2047;

void unsupported(const std::string& name)
{
    const std::string attempt = "list what " + board(name) + " does not support";
    const std::vector<std::string> entries = allTexts(
        [&](unsigned long i, char* text, unsigned long* length) {
            const long result = DCFG_BoardGetNotSupported(i, toAnsi(name).c_str(), text, length);
            *length = static_cast<unsigned long>(strnlen(text, *length));
            return result;
        },
        attempt);
    if (entries.size() == refusedEntries &&
        std::all_of(entries.begin(), entries.end(), [](const std::string& entry) { return entry.empty(); }))
        throw Failure(attempt, DCFG_ERR_NOT_FOUND, boardsHint);
    std::string text;
    for (const std::string& entry : entries)
        text += entry + "\n";
    show({{"board", name}, {"unsupported", entries}}, entries.empty() ? name + " supports everything.\n" : text);
}

// The answer is the result itself: 1 when there are some, 0 when not.
bool someAreLeft()
{
    const long result = DCFG_HasUninitializedInstances();
    if (result != 1) require(result, "ask for boards without logical devices");
    return result == 1;
}

void scan(bool create)
{
    require(DCFG_Scan(), "scan for boards");
    if (create) require(DCFG_CreateAllLogdevices(), "create logical devices for the boards found");
    const bool left = someAreLeft();
    show({{"scanned", true}, {"created", create}, {"left", left}},
         left ? "There are boards without logical devices; \"kxova board scan --create\" makes them.\n"
              : "All boards have logical devices.\n");
}

void restart(const std::string& device)
{
    require(DCFG_SilentRestart(toAnsi(device).c_str()), "restart " + inQuotes(device),
            "\"kxova board installed\" shows the boards that can be restarted");
    show({{"device", device}, {"restarted", true}}, "Restarted " + inQuotes(device) + ".\n");
}

}  // namespace

void addBoardCommands(CLI::App& app)
{
    struct Arguments
    {
        std::string name;
        bool create = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const group = app.add_subcommand("board", "boards, network adapters and the hardware scan");
    group->require_subcommand(1);
    const auto command = [&](const char* name, const char* description) {
        return group->add_subcommand(name, description);
    };
    const auto commandOn = [&](const char* name, const char* description, const char* what) {
        CLI::App* const added = command(name, description);
        added->add_option("NAME", arguments->name, what)->required();
        return added;
    };
    constexpr char boardName[] = "device id, name or alias of the board, such as *TVRA011";

    command("list", "the boards that can be installed")->callback([] { list(); });
    commandOn("show", "a board's attributes and its configurations", boardName)->callback([arguments] {
        showBoard(arguments->name);
    });
    command("installed", "the installed boards and their states")->callback([] { installed(); });
    command("adapters", "the network adapters")->callback([] { adapters(); });
    CLI::App* const scanning = command("scan", "look for new hardware");
    scanning->add_flag("--create", arguments->create, "make the logical devices of all boards that were found");
    scanning->callback([arguments] { scan(arguments->create); });
    commandOn("unsupported", "what a board does not support", boardName)->callback([arguments] {
        unsupported(arguments->name);
    });
    commandOn("restart", "restart an installed board without asking anybody",
              "its logical device, map or hardware instance")
        ->callback([arguments] { restart(arguments->name); });
}
