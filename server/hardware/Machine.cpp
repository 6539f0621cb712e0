#include "hardware/Machine.h"

#include <algorithm>
#include <mutex>

#include "base/Text.h"

namespace srv {

namespace {

using catalogue::equalNoCase;

const HardwareDevice* withId(const std::vector<HardwareDevice>& devices, std::wstring_view hardwareInstanceId)
{
    const auto at = std::find_if(devices.begin(), devices.end(), [&](const HardwareDevice& device) {
        return equalNoCase(device.hardwareInstanceId, hardwareInstanceId);
    });
    return at == devices.end() ? nullptr : &*at;
}

bool isTaken(const std::vector<HardwareDevice>& instances, const catalogue::Board& board, std::wstring_view map)
{
    return std::any_of(instances.begin(), instances.end(), [&](const HardwareDevice& instance) {
        return equalNoCase(instance.deviceId, board.deviceId) && equalNoCase(instance.boardMap, map);
    });
}

// The board's own way of writing a map; empty if it has none such.
std::wstring mapOf(const catalogue::Board& board, std::wstring_view map)
{
    const auto at = std::find_if(board.maps.begin(), board.maps.end(),
                                 [&](const std::wstring& own) { return equalNoCase(own, map); });
    return at == board.maps.end() ? std::wstring() : *at;
}

// An id for what is installed by hand, as the system gives to such devices.
std::wstring newInstanceId(const catalogue::Board& board, const std::vector<HardwareDevice>& instances)
{
    const std::size_t skipped = board.deviceId.starts_with(L'*') ? 1 : 0;
    for (unsigned number = 0;; ++number) {
        const std::wstring digits = std::to_wstring(10'000 + number).substr(1);
        const std::wstring id = L"ROOT\\" + board.deviceId.substr(skipped) + L'\\' + digits;
        if (!withId(instances, id)) return id;
    }
}

}  // namespace

Machine::Machine(Registry& registry, const catalogue::Catalogue& catalogue, Log& log)
    : catalogue_(catalogue), log_(log), hardware_(registry, hardwareKey), instances_(registry, instancesKey)
{}

Result Machine::open()
{
    const std::lock_guard guard(changing_);
    bool whole = false;
    if (const LSTATUS status = instances_.isWhole(whole)) return static_cast<Result>(status);
    return whole ? result::ok : createInitial();
}

// Begun again by the next server if this one ends on the way.
Result Machine::createInitial()
{
    for (const HardwareDevice& device : catalogue_.installedBoards) {
        const catalogue::Board* const board = catalogue_.board(device.deviceId);
        if (!board || !board->plugAndPlay || device.state == state::notConnected) continue;
        if (const LSTATUS status = hardware_.put(device)) return static_cast<Result>(status);
    }
    for (const HardwareDevice& device : catalogue_.installedBoards)
        if (const LSTATUS status = instances_.put(device)) return static_cast<Result>(status);
    return static_cast<Result>(instances_.markWhole());
}

Result Machine::instances(std::vector<HardwareDevice>& devices) const
{
    const std::lock_guard guard(changing_);
    const LSTATUS status = instances_.read(devices);
    for (HardwareDevice& device : devices)
        if (const catalogue::Board* const board = catalogue_.board(device.deviceId)) device.boardName = board->name;
    return static_cast<Result>(status);
}

Result Machine::hardware(std::vector<HardwareDevice>& devices) const
{
    return static_cast<Result>(hardware_.read(devices));
}

std::wstring Machine::freeMap(const catalogue::Board& board, const std::vector<HardwareDevice>& instances)
{
    const auto at = std::find_if(board.maps.begin(), board.maps.end(),
                                 [&](const std::wstring& map) { return !isTaken(instances, board, map); });
    return at == board.maps.end() ? std::wstring() : *at;
}

// The protocol that is wanted if the board can be used with it, else the first that it can be used with.
std::wstring Machine::netTypeOf(const catalogue::Board& board, std::wstring_view wanted) const
{
    for (const catalogue::Configuration& use : board.configurations)
        if (equalNoCase(use.protocol, wanted)) return use.protocol;
    return board.configurations.empty() ? std::wstring() : board.configurations.front().protocol;
}

Result Machine::scan()
{
    const std::lock_guard guard(changing_);
    std::vector<HardwareDevice> plugged;
    std::vector<HardwareDevice> known;
    if (const LSTATUS status = hardware_.read(plugged)) return static_cast<Result>(status);
    if (const LSTATUS status = instances_.read(known)) return static_cast<Result>(status);
    for (HardwareDevice& instance : known) {
        const catalogue::Board* const board = catalogue_.board(instance.deviceId);
        if (!board || !board->plugAndPlay) continue;
        const HardwareDevice* const device = withId(plugged, instance.hardwareInstanceId);
        const std::uint32_t now = device ? device->state : state::notConnected;
        if (now == instance.state) continue;
        if (const LSTATUS status = instances_.setState(instance, now)) return static_cast<Result>(status);
        instance.state = now;
    }
    Result worst = result::ok;
    for (const HardwareDevice& device : plugged) {
        if (withId(known, device.hardwareInstanceId)) continue;
        if (const Result result = addFound(device, known)) worst = result;
    }
    return worst;
}

Result Machine::addFound(const HardwareDevice& found, std::vector<HardwareDevice>& instances)
{
    const std::string id = inQuotes(found.hardwareInstanceId);
    const catalogue::Board* const board = catalogue_.board(found.deviceId);
    if (!board || !board->plugAndPlay) {
        log_.warning("scan: %s is no plug-and-play board of the catalogue", id.c_str());
        return result::ok;
    }
    HardwareDevice instance = found;
    instance.deviceId = board->deviceId;
    instance.netType = netTypeOf(*board, found.netType);
    instance.boardMap = mapOf(*board, found.boardMap);
    if (instance.boardMap.empty() || isTaken(instances, *board, instance.boardMap))
        instance.boardMap = freeMap(*board, instances);
    if (instance.boardMap.empty()) {
        log_.warning("scan: all maps of the board of %s are taken", id.c_str());
        return result::quotaExceeded;
    }
    if (const LSTATUS status = instances_.put(instance)) return static_cast<Result>(status);
    log_.info("scan: found %s: %s", id.c_str(), inQuotes(instance.boardMap).c_str());
    instances.push_back(std::move(instance));
    return result::ok;
}

Result Machine::install(std::wstring_view deviceId, std::wstring_view wanted)
{
    const catalogue::Board* const board = catalogue_.board(deviceId);
    if (!board) return result::notFound;
    if (board->plugAndPlay) return result::notSupported;
    const std::lock_guard guard(changing_);
    std::vector<HardwareDevice> known;
    if (const LSTATUS status = instances_.read(known)) return static_cast<Result>(status);
    HardwareDevice instance;
    instance.boardMap = wanted.empty() ? freeMap(*board, known) : mapOf(*board, wanted);
    if (instance.boardMap.empty()) return wanted.empty() ? result::quotaExceeded : result::notFound;
    if (isTaken(known, *board, instance.boardMap)) return result::alreadyExists;
    instance.deviceId = board->deviceId;
    instance.netType = netTypeOf(*board, {});
    instance.hardwareId = board->deviceId;
    instance.hardwareInstanceId = newInstanceId(*board, known);
    return static_cast<Result>(instances_.put(instance));
}

Result Machine::deinstall(std::wstring_view deviceId, std::wstring_view map, std::wstring_view hardwareInstanceId)
{
    const std::lock_guard guard(changing_);
    std::vector<HardwareDevice> known;
    if (const LSTATUS status = instances_.read(known)) return static_cast<Result>(status);
    std::erase_if(known, [&](const HardwareDevice& instance) {
        return !equalNoCase(instance.deviceId, deviceId) || (!map.empty() && !equalNoCase(instance.boardMap, map)) ||
               (!hardwareInstanceId.empty() && !equalNoCase(instance.hardwareInstanceId, hardwareInstanceId));
    });
    if (known.empty()) return result::notFound;
    if (known.size() > 1) return result::invalidParameter;
    return static_cast<Result>(instances_.remove(known.front().hardwareInstanceId));
}

Result Machine::restart(std::wstring_view hardwareInstanceId)
{
    const std::lock_guard guard(changing_);
    std::vector<HardwareDevice> plugged;
    std::vector<HardwareDevice> known;
    if (const LSTATUS status = hardware_.read(plugged)) return static_cast<Result>(status);
    if (const LSTATUS status = instances_.read(known)) return static_cast<Result>(status);
    const HardwareDevice* const instance = withId(known, hardwareInstanceId);
    if (!instance) return result::notFound;
    const catalogue::Board* const board = catalogue_.board(instance->deviceId);
    std::uint32_t now = instance->state;
    if (board && board->plugAndPlay) {
        const HardwareDevice* const device = withId(plugged, hardwareInstanceId);
        now = device ? device->state : state::notConnected;
        if (device && now == state::needsRestart)
            if (const LSTATUS status = hardware_.setState(*device, state::works)) return static_cast<Result>(status);
    }
    if (now == state::needsRestart) now = state::works;
    if (now != instance->state)
        if (const LSTATUS status = instances_.setState(*instance, now)) return static_cast<Result>(status);
    if (now == state::notConnected) return result::notConnected;
    return now == state::works ? result::ok : result::notWorking;
}

}  // namespace srv
