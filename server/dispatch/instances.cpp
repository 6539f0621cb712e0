#include "dispatch/instances.h"

#include <algorithm>

#include "dispatch/answers.h"
#include "dispatch/definitions.h"
#include "hardware/logicalDevices.h"

namespace srv::instances {

namespace {

using catalogue::equalNoCase;
using Devices = std::vector<HardwareDevice>;

bool wanted(const Text& filter, std::wstring_view text) noexcept
{
    return !filter || filter->empty() || equalNoCase(*filter, text);
}

// Lets `look` see the instances.
template <typename Look>
Result withInstances(const Call& call, Look look)
{
    Devices devices;
    const Result result = call.server.machine.instances(devices);
    return result != result::ok ? result : look(devices);
}

bool isConnected(const HardwareDevice& instance) noexcept
{
    return instance.state != state::notConnected;
}

// Makes the logical devices of several instances in one step.
Result make(const Call& call, const Devices& devices, Existing existing)
{
    std::vector<Step> steps = call.store().read([&](const Configuration& configuration) {
        std::vector<Step> all;
        for (const HardwareDevice& device : devices) {
            if (existing == Existing::Keep && hasLogicalDevices(configuration, device)) continue;
            std::vector<Step> some = makeLogicalDevices(call.server.catalogue, configuration, device, existing);
            std::move(some.begin(), some.end(), std::back_inserter(all));
        }
        return all;
    });
    return steps.empty() ? result::ok : call.store().apply(std::move(steps));
}

// The hardware instance id of the device that goes by a name; empty if there is none.
std::wstring deviceNamed(const Call& call, const Devices& devices, std::wstring_view name)
{
    for (const HardwareDevice& device : devices)
        if (equalNoCase(device.hardwareInstanceId, name) || equalNoCase(device.boardMap, name))
            return device.hardwareInstanceId;
    return call.store().read([&](const Configuration& configuration) {
        const Object* const object = configuration.devices.find(name);
        const HardwareDevice* const device = object ? instanceOf(object->content, devices) : nullptr;
        return device ? device->hardwareInstanceId : std::wstring();
    });
}

}  // namespace

Result getEnum(const Call& call, std::uint32_t index, Capacity nameCapacity, Capacity deviceIdCapacity,
               Capacity netTypeCapacity, Capacity hardwareIdCapacity, Capacity instanceIdCapacity,
               Capacity mapCapacity)
{
    return withInstances(call, [&](const Devices& devices) {
        if (index >= devices.size()) return result::noMoreItems;
        const HardwareDevice& device = devices[index];
        const Result result = answerTexts(call, {{device.boardName, nameCapacity},
                                                 {device.deviceId, deviceIdCapacity},
                                                 {device.netType, netTypeCapacity},
                                                 {device.hardwareId, hardwareIdCapacity},
                                                 {device.hardwareInstanceId, instanceIdCapacity},
                                                 {device.boardMap, mapCapacity}});
        call.reply.u32(device.state);
        return result;
    });
}

Result enumOfBoard(const Call& call, Given name, std::uint32_t index, Capacity nameCapacity, Capacity mapCapacity,
                   Capacity instanceIdCapacity, std::uint32_t newMap)
{
    const bool any = name.text.empty();
    const catalogue::Board* const board = any ? nullptr : boardNamed(call.server.catalogue, name);
    if (!board && !any) return result::notFound;
    return withInstances(call, [&](const Devices& devices) {
        for (const HardwareDevice& device : devices) {
            if (!any && !equalNoCase(device.deviceId, board->deviceId)) continue;
            if (index-- > 0) continue;
            return answerTexts(call, {{device.boardName, nameCapacity},
                                      {device.boardMap, mapCapacity},
                                      {device.hardwareInstanceId, instanceIdCapacity}});
        }
        if (!board || !newMap || index > 0) return result::noMoreItems;
        const std::wstring map = Machine::freeMap(*board, devices);
        if (map.empty()) return result::noMoreItems;
        return answerTexts(call, {{board->name, nameCapacity}, {map, mapCapacity}, {L"", instanceIdCapacity}});
    });
}

Result enumAvailable(const Call& call, std::uint32_t index, Capacity deviceIdCapacity, Capacity nameCapacity)
{
    return withInstances(call, [&](const Devices& devices) {
        for (const auto& [deviceId, board] : call.server.catalogue.boards) {
            if (Machine::freeMap(board, devices).empty() || index-- > 0) continue;
            const Result result = answerTexts(call, {{deviceId, deviceIdCapacity}, {board.name, nameCapacity}});
            call.reply.u32(board.plugAndPlay ? 1 : 0);
            return result;
        }
        return result::noMoreItems;
    });
}

Result enumAdapters(const Call& call, std::uint32_t index, Capacity nameCapacity, Capacity idCapacity)
{
    const auto& adapters = call.server.catalogue.adapters;
    if (index >= adapters.size()) return result::noMoreItems;
    const catalogue::Adapter& adapter = adapters[index];
    const Result result = answerTexts(call, {{adapter.name, nameCapacity}, {adapter.id, idCapacity}});
    call.reply.u8(adapter.flag);
    return result;
}

Result mapOf(const Call& call, Required name, Text adapter, Text hardwareInstanceId, Capacity capacity)
{
    const catalogue::Board* const board = boardNamed(call.server.catalogue, name);
    if (!board) return result::notFound;
    const auto isOnAdapter = [&](const HardwareDevice& device) {
        if (wanted(adapter, device.adapter)) return true;
        const auto& all = call.server.catalogue.adapters;
        return std::any_of(all.begin(), all.end(), [&](const catalogue::Adapter& one) {
            return equalNoCase(one.id, device.adapter) && equalNoCase(one.name, *adapter);
        });
    };
    return withInstances(call, [&](const Devices& devices) {
        for (const HardwareDevice& device : devices)
            if (equalNoCase(device.deviceId, board->deviceId) && isOnAdapter(device) &&
                wanted(hardwareInstanceId, device.hardwareInstanceId))
                return call.reply.text(device.boardMap, capacity.bytes);
        return result::notFound;
    });
}

Result scan(const Call& call)
{
    return call.server.machine.scan();
}

Result updateLogicalDevices(const Call& call, Text deviceId, Text hardwareId)
{
    return withInstances(call, [&](Devices& devices) {
        std::erase_if(devices, [&](const HardwareDevice& device) {
            return !wanted(deviceId, device.deviceId) ||
                   (!wanted(hardwareId, device.hardwareId) && !wanted(hardwareId, device.hardwareInstanceId));
        });
        return devices.empty() ? result::notFound : make(call, devices, Existing::MakeAnew);
    });
}

Result createAllLogicalDevices(const Call& call)
{
    return withInstances(call, [&](Devices& devices) {
        std::erase_if(devices, [](const HardwareDevice& device) { return !isConnected(device); });
        return make(call, devices, Existing::Keep);
    });
}

Result hasUninitialized(const Call& call)
{
    return withInstances(call, [&](const Devices& devices) {
        return call.store().read([&](const Configuration& configuration) {
            return std::any_of(devices.begin(), devices.end(),
                               [&](const HardwareDevice& device) {
                                   return isConnected(device) && !hasLogicalDevices(configuration, device);
                               })
                       ? Result{1}
                       : result::ok;
        });
    });
}

Result restart(const Call& call, Required name)
{
    return withInstances(call, [&](const Devices& devices) {
        const std::wstring id = deviceNamed(call, devices, name);
        return id.empty() ? result::notFound : call.server.machine.restart(id);
    });
}

Result install(const Call& call, Required deviceId, Text map)
{
    return call.server.machine.install(deviceId, map.value_or(L""));
}

Result deinstall(const Call& call, Required deviceId, Text map, Text hardwareInstanceId)
{
    return call.server.machine.deinstall(deviceId, map.value_or(L""), hardwareInstanceId.value_or(L""));
}

}  // namespace srv::instances
