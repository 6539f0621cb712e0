// What the server knows of the world before anybody has configured anything: boards, protocols, default logical
// devices, installed hardware, texts. Plain data, immutable once loaded, free to be read by any number of threads.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "LessNoCase.h"
#include "ParameterDescription.h"
#include "Texts.h"

namespace catalogue {

// A registry key as it is published: its values and its subkeys.
struct Node
{
    Values values;
    Map<Node> keys;

    // The node at a path below this one, parts joined by "\" (empty parts are skipped); nullptr if there is none.
    const Node* at(std::wstring_view path) const;
};

// One way to use a board: a default logical device that names it.
struct Configuration
{
    std::wstring logicalDevice;
    std::wstring protocol;
    std::wstring l4Protocol;  // may be empty
    std::wstring unit;        // may be empty
};

struct Board
{
    std::wstring deviceId;     // the name of the "Boards" template, such as "*TVRA010"
    std::wstring name;         // "NX 1611 PCI"
    bool plugAndPlay = false;  // a scan finds it; any other board is installed by hand

    // The key below DefDevices\DeviceID. Values always there: DeviceID, BoardName, Alias, Asic_Type, DescText,
    // BusType; HardwareId for every plug-and-play board.
    Node tree;

    std::vector<std::wstring> maps;             // board maps, in the order in which instances get them; never empty
    std::vector<std::wstring> notSupported;     // what this board cannot do, in the file's order
    std::vector<Configuration> configurations;  // in the file's order of the default logical devices
    Texts texts;  // "BaudrateResource\<key>", and values that differ by language ("DescText")
    Map<ParameterDescription> parameters;
};

struct BaudRate
{
    std::wstring rate;  // bit/s, the stored value of "baudrate"
    Values values;
};

struct BusProfile
{
    std::wstring key;                 // the stored value of "busparam": "0" to "3"
    std::wstring name;                // "dp", "std", "uni" or "user"
    Values values;                    // what holds at every baud rate
    std::vector<BaudRate> baudRates;  // in the file's order, that is rising
};

struct Protocol
{
    std::wstring name;  // CP_TYPE, which is also the net type

    // The key below DefDevices\CP_TYPE. Values always there: CP_TYPE, Alias, DescText. Below it:
    //   Params                         the parameters' values that hold for every profile
    //   Params\busparam\<key>          the bus profile's values
    //   Params\busparam\<key>\<rate>   its values at a baud rate
    //   Params\baudrate\<rate>         the same in a protocol without bus profiles
    // so that no path needs more than five parts, the protocol's name included.
    Node tree;

    std::vector<BusProfile> busProfiles;  // rising key; empty in a protocol without profiles
    std::vector<BaudRate> baudRates;      // of a protocol without bus profiles
    Texts texts;                          // "BusparamResource\<key>", and values that differ by language
    Map<ParameterDescription> parameters;

    // A profile by its key or its name; nullptr if the protocol has none such.
    const BusProfile* busProfile(std::wstring_view keyOrName) const;

    // What a profile and a baud rate set in a logical device: the profile's values, then those of the rate. Without
    // profiles the profile is ignored. A profile or rate that is not described adds nothing.
    Values profileValues(std::wstring_view keyOrName, std::wstring_view rate) const;
};

// A template of the type "DefaultLogdevices": what a logical device is made from.
struct DefaultLogicalDevice
{
    std::wstring name;
    std::wstring deviceId;  // a board of this catalogue
    std::wstring protocol;  // a protocol of this catalogue
    Values values;          // DeviceID and CP_TYPE are always among them
    Values ndiValues;
    Texts texts;  // values that differ by language
    Map<ParameterDescription> parameters;
};

// A board that is in the machine when the server starts for the first time.
struct InstalledBoard
{
    std::wstring deviceId;  // a board of this catalogue
    std::wstring boardName;
    std::wstring boardMap;  // one of the board's maps
    std::wstring netType;   // a protocol of this catalogue
    std::wstring hardwareId;
    std::wstring hardwareInstanceId;  // unique
    std::wstring adapter;             // the id of its network adapter; empty for a board that is none
    std::uint32_t state = 0;  // 0: works; else the plug-and-play problem number (10 cannot start, 22 disabled, ...)
};

struct Adapter
{
    std::wstring name;
    std::wstring id;  // unique
    std::uint8_t flag = 0;
};

// A logical name that every installation has.
struct LogicalName
{
    Values values;
    Texts texts;  // values that differ by language
};

struct Catalogue
{
    Map<Board> boards;
    Map<Protocol> protocols;
    Map<DefaultLogicalDevice> defaultLogicalDevices;
    Map<ParameterDescription> parameters;  // what holds where nothing more special is described
    std::vector<InstalledBoard> installedBoards;
    std::vector<Adapter> adapters;
    Map<LogicalName> logicalNames;  // created where they are missing
    Values specialValues;
    std::array<std::wstring, 5> runtimeVersions;

    const Board* board(std::wstring_view deviceId) const { return find(boards, deviceId); }
    const Board* boardByName(std::wstring_view name) const;
    const Protocol* protocol(std::wstring_view name) const { return find(protocols, name); }
    const DefaultLogicalDevice* defaultLogicalDevice(std::wstring_view name) const
    {
        return find(defaultLogicalDevices, name);
    }

    // The most special description of a parameter of a logical device on this board with this protocol: that of the
    // default logical device for both, else the board's, the protocol's, the general one. nullptr: not described.
    // A more special description replaces a general one as a whole.
    const ParameterDescription* describe(std::wstring_view deviceId, std::wstring_view protocol,
                                         std::wstring_view parameter) const;

    // The description without regard to the board: the protocol's, else the general one.
    const ParameterDescription* describeForProtocol(std::wstring_view protocol, std::wstring_view parameter) const;
};

}  // namespace catalogue
