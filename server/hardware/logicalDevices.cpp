#include "hardware/logicalDevices.h"

#include <algorithm>

namespace srv {

namespace {

constexpr std::wstring_view deviceIdValue = L"DeviceID";
constexpr std::wstring_view mapValue = L"BoardMap";

bool is(const ValueTable& values, std::wstring_view name, std::wstring_view text) noexcept
{
    const std::wstring* const value = values.find(name);
    return value && catalogue::equalNoCase(*value, text);
}

bool belongsTo(const Content& content, const HardwareDevice& instance) noexcept
{
    return is(content.values, deviceIdValue, instance.deviceId) && is(content.values, mapValue, instance.boardMap);
}

std::wstring nameFor(const HardwareDevice& instance, const catalogue::DefaultLogicalDevice& origin)
{
    const std::size_t stop = origin.name.find(L'.');
    return instance.boardMap + (stop == std::wstring::npos ? L'.' + origin.protocol : origin.name.substr(stop));
}

}  // namespace

bool hasLogicalDevices(const Configuration& configuration, const HardwareDevice& instance)
{
    const ObjectTable& devices = configuration.devices;
    for (std::size_t i = 0; i < devices.size(); ++i)
        if (belongsTo(devices[i].content, instance)) return true;
    return false;
}

const HardwareDevice* instanceOf(const Content& logicalDevice, const std::vector<HardwareDevice>& instances)
{
    const bool anyMap = !logicalDevice.values.find(mapValue);
    const auto at = std::find_if(instances.begin(), instances.end(), [&](const HardwareDevice& instance) {
        return anyMap ? is(logicalDevice.values, deviceIdValue, instance.deviceId)
                      : belongsTo(logicalDevice, instance);
    });
    return at == instances.end() ? nullptr : &*at;
}

std::vector<Step> makeLogicalDevices(const catalogue::Catalogue& catalogue, const Configuration& configuration,
                                     const HardwareDevice& instance, Existing existing)
{
    std::vector<Step> steps;
    const catalogue::Board* const board = catalogue.board(instance.deviceId);
    if (!board) return steps;
    for (const catalogue::Configuration& use : board->configurations) {
        const catalogue::DefaultLogicalDevice* const origin = catalogue.defaultLogicalDevice(use.logicalDevice);
        if (!origin) continue;
        std::wstring name = nameFor(instance, *origin);
        if (const Object* const there = configuration.devices.find(name))
            if (existing == Existing::Keep || !belongsTo(there->content, instance)) continue;
        Content content{ValueTable(origin->values), ValueTable(origin->ndiValues)};
        content.values.set(mapValue, instance.boardMap);
        steps.push_back({Step::Kind::Put, Family::Device, std::move(name), std::move(content)});
    }
    return steps;
}

}  // namespace srv
