#include "store/Codec.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace srv {

namespace {

LSTATUS readTable(Registry& registry, const std::wstring& path, ValueTable& table)
{
    std::vector<RawValue> values;
    if (const LSTATUS status = registry.values(path, values)) return status;
    for (const RawValue& value : values)
        if (isConfiguration(value)) table.set(value.name, textOf(value));
    return ERROR_SUCCESS;
}

LSTATUS writeTable(Registry& registry, const std::wstring& path, const ValueTable& table)
{
    if (const LSTATUS status = registry.createKey(path)) return status;
    std::vector<RawValue> before;
    if (const LSTATUS status = registry.values(path, before)) return status;

    ValueTable kept;
    for (const RawValue& value : before) {
        if (!isConfiguration(value)) continue;
        // A name that differs in case only has to go first, for the registry would keep the old case.
        const auto same =
            std::find_if(table.begin(), table.end(), [&](const Value& v) { return v.name == value.name; });
        if (same != table.end()) {
            if (value.type == REG_SZ) kept.set(value.name, textOf(value));
            continue;
        }
        const LSTATUS status = registry.deleteValue(path, value.name);
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return status;
    }
    for (const Value& value : table) {
        const std::wstring* const old = kept.find(value.name);
        if (old && *old == value.text) continue;
        if (const LSTATUS status = writeText(registry, path, value.name, value.text)) return status;
    }
    return ERROR_SUCCESS;
}

}  // namespace

const std::wstring& familyKey(Family family) noexcept
{
    static const std::wstring devices = L"LogDevices";
    static const std::wstring names = L"LogNames";
    return family == Family::Device ? devices : names;
}

std::wstring objectPath(Family family, std::wstring_view name)
{
    return (familyKey(family) + L'\\').append(name);
}

std::wstring ndiPath(std::wstring_view device)
{
    return (objectPath(Family::Device, device) + L'\\').append(ndiKey);
}

bool isConfiguration(const RawValue& value) noexcept
{
    if (value.name.empty()) return false;
    return value.type == REG_SZ || value.type == REG_EXPAND_SZ ||
           (value.type == REG_DWORD && value.data.size() == sizeof(DWORD));
}

std::wstring textOf(const RawValue& value)
{
    if (value.type == REG_DWORD) {
        DWORD number = 0;
        std::memcpy(&number, value.data.data(), sizeof number);
        return std::to_wstring(number);
    }
    // The terminator may be missing, and there may be text behind it.
    std::wstring text(value.data.size() / sizeof(wchar_t), L'\0');
    if (!text.empty()) std::memcpy(text.data(), value.data.data(), text.size() * sizeof(wchar_t));
    text.resize(std::min(text.find(L'\0'), text.size()));
    return text;
}

LSTATUS writeText(Registry& registry, const std::wstring& path, const std::wstring& name, std::wstring_view text)
{
    const std::wstring terminated(text);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(terminated.c_str());
    return registry.setValue(path, name, REG_SZ, {bytes, (terminated.size() + 1) * sizeof(wchar_t)});
}

LSTATUS readContent(Registry& registry, Family family, std::wstring_view name, Content& content)
{
    content = {};
    if (const LSTATUS status = readTable(registry, objectPath(family, name), content.values)) return status;
    if (family == Family::Name) return ERROR_SUCCESS;
    const LSTATUS status = readTable(registry, ndiPath(name), content.ndi);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

LSTATUS writeContent(Registry& registry, Family family, std::wstring_view name, const Content& content)
{
    if (const LSTATUS status = writeTable(registry, objectPath(family, name), content.values)) return status;
    if (family == Family::Name) return ERROR_SUCCESS;
    if (!content.ndi.empty()) return writeTable(registry, ndiPath(name), content.ndi);
    return registry.deleteKey(ndiPath(name));
}

LSTATUS mayWriteContent(Registry& registry, Family family, std::wstring_view name, const Content& content)
{
    const LSTATUS status = registry.mayChange(objectPath(family, name), false);
    if (status != ERROR_SUCCESS || family == Family::Name) return status;
    return registry.mayChange(ndiPath(name), content.ndi.empty());
}

LSTATUS removeObject(Registry& registry, Family family, std::wstring_view name)
{
    return registry.deleteKey(objectPath(family, name));
}

LSTATUS mayRemoveObject(Registry& registry, Family family, std::wstring_view name)
{
    const LSTATUS status = registry.mayChange(objectPath(family, name), true);
    return status != ERROR_SUCCESS || family == Family::Name ? status : registry.mayChange(ndiPath(name), true);
}

}  // namespace srv
