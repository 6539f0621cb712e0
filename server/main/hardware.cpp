#include "main/hardware.h"

#include <algorithm>
#include <cstdio>

#include "base/Text.h"
#include "hardware/DeviceList.h"
#include "main/Server.h"

namespace srv {

namespace {

using catalogue::equalNoCase;
using Devices = std::vector<HardwareDevice>;

// The hardware that every server of this machine looks at.
class Plugged
{
 public:
    Plugged() : registry_(places_.hive, places_.storeKey), list_(registry_, hardwareKey) {}

    DeviceList& list() { return list_; }

    const HardwareDevice* find(const Devices& devices, const std::wstring& id) const
    {
        const auto at = std::find_if(devices.begin(), devices.end(), [&](const HardwareDevice& device) {
            return equalNoCase(device.hardwareInstanceId, id);
        });
        return at == devices.end() ? nullptr : &*at;
    }

 private:
    ServerPlaces places_;
    WindowsRegistry registry_;
    DeviceList list_;
};

Exit fail(const char* what, LSTATUS status)
{
    const auto error = static_cast<DWORD>(status);
    if (error == ERROR_ACCESS_DENIED) {
        complain(std::string(what) + " is refused. Run this command as administrator.");
        return Exit::Refused;
    }
    complain(std::string(what) + " failed: " + systemMessage(error) + ".");
    return Exit::Failed;
}

std::shared_ptr<const catalogue::Catalogue> load(const std::filesystem::path& file)
{
    std::vector<std::string> errors;
    auto catalogue = loadCatalogue(file, errors);
    for (const std::string& error : errors)
        std::fprintf(stderr, "%s\n", error.c_str());
    if (!catalogue) complain("The catalogue cannot be used. Mend it, or name another one with --catalogue.");
    return catalogue;
}

std::string stateText(std::uint32_t state)
{
    return state == 0 ? "works" : "problem " + std::to_string(state);
}

// What is wrong with the wish; empty: nothing.
std::string faultOf(const catalogue::Catalogue& catalogue, const HardwareToPlug& what)
{
    const catalogue::Board* const board = catalogue.board(what.deviceId);
    if (!board) return "There is no board " + inQuotes(what.deviceId) + " in the catalogue.";
    if (!board->plugAndPlay)
        return "The board " + inQuotes(board->deviceId) + " is not found by a scan; install it by hand instead.";
    if (!what.hardwareInstanceId.empty() && !isHardwareInstanceId(what.hardwareInstanceId))
        return "The hardware instance id has 1 to 255 characters, none of them a control character.";
    if (!what.boardMap.empty() && std::none_of(board->maps.begin(), board->maps.end(), [&](const std::wstring& map) {
            return equalNoCase(map, what.boardMap);
        }))
        return "The board has no map " + inQuotes(what.boardMap) + ".";
    if (!what.netType.empty() &&
        std::none_of(board->configurations.begin(), board->configurations.end(),
                     [&](const catalogue::Configuration& use) { return equalNoCase(use.protocol, what.netType); }))
        return "The board cannot be used with the protocol " + inQuotes(what.netType) + ".";
    if (!what.adapter.empty() &&
        std::none_of(catalogue.adapters.begin(), catalogue.adapters.end(),
                     [&](const catalogue::Adapter& adapter) { return equalNoCase(adapter.id, what.adapter); }))
        return "There is no adapter with the id " + inQuotes(what.adapter) + " in the catalogue.";
    return {};
}

std::wstring newId(const std::wstring& hardwareId, const Devices& devices, const Plugged& plugged)
{
    for (unsigned number = 0;; ++number) {
        const std::wstring id = hardwareId + L"\\SIM" + std::to_wstring(10'000 + number).substr(1);
        if (!plugged.find(devices, id)) return id;
    }
}

}  // namespace

Exit listHardware(const std::filesystem::path& catalogueFile)
{
    const auto catalogue = load(catalogueFile);
    if (!catalogue) return Exit::Failed;
    Plugged plugged;
    Devices devices;
    if (const LSTATUS status = plugged.list().read(devices)) return fail("Reading the hardware", status);
    for (const HardwareDevice& device : devices) {
        const catalogue::Board* const board = catalogue->board(device.deviceId);
        std::printf("%s\t%s\t%s\t%s\n", utf8(device.hardwareInstanceId).c_str(), utf8(device.deviceId).c_str(),
                    board ? utf8(board->name).c_str() : "(unknown board)", stateText(device.state).c_str());
    }
    return Exit::Done;
}

Exit addHardware(const std::filesystem::path& catalogueFile, const HardwareToPlug& what)
{
    const auto catalogue = load(catalogueFile);
    if (!catalogue) return Exit::Failed;
    if (const std::string fault = faultOf(*catalogue, what); !fault.empty()) {
        complain(fault);
        return Exit::Failed;
    }
    const catalogue::Board& board = *catalogue->board(what.deviceId);
    const std::wstring* const hardwareId = catalogue::find(board.tree.values, L"HardwareId");
    Plugged plugged;
    Devices devices;
    if (const LSTATUS status = plugged.list().read(devices)) return fail("Reading the hardware", status);
    HardwareDevice device;
    device.deviceId = board.deviceId;
    device.hardwareId = hardwareId ? *hardwareId : board.deviceId;
    device.hardwareInstanceId =
        what.hardwareInstanceId.empty() ? newId(device.hardwareId, devices, plugged) : what.hardwareInstanceId;
    device.boardMap = what.boardMap;
    device.netType = what.netType;
    device.adapter = what.adapter;
    device.state = what.state;
    if (const LSTATUS status = plugged.list().put(device)) return fail("Plugging the board in", status);
    std::printf("%s\n", utf8(device.hardwareInstanceId).c_str());
    return Exit::Done;
}

Exit removeHardware(const std::wstring& hardwareInstanceId)
{
    Plugged plugged;
    Devices devices;
    if (const LSTATUS status = plugged.list().read(devices)) return fail("Reading the hardware", status);
    if (!plugged.find(devices, hardwareInstanceId)) {
        complain("No hardware with the instance id " + inQuotes(hardwareInstanceId) +
                 " is plugged in. What is there is listed by: kxovasrvx hardware list");
        return Exit::Failed;
    }
    if (const LSTATUS status = plugged.list().remove(hardwareInstanceId))
        return fail("Pulling the board out", status);
    return Exit::Done;
}

}  // namespace srv
