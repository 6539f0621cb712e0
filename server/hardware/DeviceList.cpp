#include "hardware/DeviceList.h"

#include <algorithm>
#include <tuple>

#include "store/Codec.h"
#include "store/Names.h"

namespace srv {

namespace {

constexpr wchar_t idValue[] = L"HardwareInstanceId";
constexpr wchar_t stateValue[] = L"State";
constexpr wchar_t wholeValue[] = L"Whole";

std::uint32_t numberOf(const std::wstring& text) noexcept
{
    return static_cast<std::uint32_t>(std::wcstoul(text.c_str(), nullptr, 10));
}

HardwareDevice deviceFrom(const std::vector<RawValue>& values)
{
    ValueTable table;
    for (const RawValue& value : values)
        if (isConfiguration(value)) table.set(value.name, textOf(value));
    const auto text = [&](std::wstring_view name) {
        const std::wstring* const found = table.find(name);
        return found ? *found : std::wstring();
    };
    HardwareDevice device;
    device.deviceId = text(L"DeviceID");
    device.hardwareId = text(L"HardwareId");
    device.hardwareInstanceId = text(idValue);
    device.boardMap = text(L"BoardMap");
    device.netType = text(L"NetType");
    device.adapter = text(L"Adapter");
    device.state = numberOf(text(stateValue));
    return device;
}

bool before(const HardwareDevice& left, const HardwareDevice& right)
{
    const catalogue::LessNoCase less;
    const auto differ = [&](const std::wstring& l, const std::wstring& r) { return less(l, r) || less(r, l); };
    if (differ(left.deviceId, right.deviceId)) return less(left.deviceId, right.deviceId);
    if (differ(left.boardMap, right.boardMap)) return less(left.boardMap, right.boardMap);
    return less(left.hardwareInstanceId, right.hardwareInstanceId);
}

}  // namespace

bool isHardwareInstanceId(std::wstring_view id) noexcept
{
    return isValueName(id);
}

std::wstring DeviceList::pathOf(std::wstring_view hardwareInstanceId) const
{
    std::wstring name(hardwareInstanceId);
    std::replace(name.begin(), name.end(), L'\\', L'#');
    return key_ + L'\\' + name;
}

LSTATUS DeviceList::isWhole(bool& whole) const
{
    whole = false;
    std::vector<RawValue> values;
    const LSTATUS status = registry_.values(key_, values);
    if (status == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    whole = std::any_of(values.begin(), values.end(), [](const RawValue& value) { return value.name == wholeValue; });
    return status;
}

LSTATUS DeviceList::markWhole()
{
    const LSTATUS status = registry_.createKey(key_);
    return status != ERROR_SUCCESS ? status : writeText(registry_, key_, wholeValue, L"1");
}

LSTATUS DeviceList::read(std::vector<HardwareDevice>& devices) const
{
    devices.clear();
    std::vector<Subkey> keys;
    const LSTATUS listed = registry_.subkeys(key_, keys);
    if (listed == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    if (listed != ERROR_SUCCESS) return listed;
    for (const Subkey& key : keys) {
        std::vector<RawValue> values;
        const LSTATUS status = registry_.values(key_ + L'\\' + key.name, values);
        if (status == ERROR_FILE_NOT_FOUND) continue;  // deleted meanwhile
        if (status != ERROR_SUCCESS) return status;
        HardwareDevice device = deviceFrom(values);
        if (!device.hardwareInstanceId.empty()) devices.push_back(std::move(device));
    }
    std::sort(devices.begin(), devices.end(), before);
    return ERROR_SUCCESS;
}

LSTATUS DeviceList::put(const HardwareDevice& device)
{
    const std::wstring path = pathOf(device.hardwareInstanceId);
    const std::pair<const wchar_t*, std::wstring> values[] = {
        {L"DeviceID", device.deviceId},      {L"HardwareId", device.hardwareId},
        {L"BoardMap", device.boardMap},      {L"NetType", device.netType},
        {L"Adapter", device.adapter},        {stateValue, std::to_wstring(device.state)},
        {idValue, device.hardwareInstanceId}};
    LSTATUS status = registry_.createKey(path);
    for (const auto& [name, text] : values)
        if (status == ERROR_SUCCESS) status = writeText(registry_, path, name, text);
    return status;
}

LSTATUS DeviceList::setState(const HardwareDevice& device, std::uint32_t state)
{
    return writeText(registry_, pathOf(device.hardwareInstanceId), stateValue, std::to_wstring(state));
}

LSTATUS DeviceList::remove(std::wstring_view hardwareInstanceId)
{
    const std::wstring path = pathOf(hardwareInstanceId);
    const LSTATUS status = registry_.deleteValue(path, idValue);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return status;
    return registry_.deleteKey(path);
}

}  // namespace srv
