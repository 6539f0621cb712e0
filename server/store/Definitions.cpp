#include "store/Definitions.h"

#include <vector>

#include "base/Owner.h"
#include "store/Codec.h"

namespace srv {

namespace {

using catalogue::Values;

constexpr wchar_t definitionsKey[] = L"DefDevices";
constexpr wchar_t checksumValue[] = L"Catalogue";

// One key and its values; keys above come before those below.
struct PublishedKey
{
    std::wstring path;
    const Values* values;
};

void addNode(std::vector<PublishedKey>& keys, const std::wstring& path, const catalogue::Node& node)
{
    keys.push_back({path, &node.values});
    for (const auto& [name, below] : node.keys)
        addNode(keys, path + L'\\' + name, below);
}

std::vector<PublishedKey> keysOf(const catalogue::Catalogue& catalogue)
{
    std::vector<PublishedKey> keys;
    for (const auto& [deviceId, board] : catalogue.boards)
        addNode(keys, L"DeviceID\\" + deviceId, board.tree);
    for (const auto& [name, protocol] : catalogue.protocols)
        addNode(keys, L"CP_TYPE\\" + name, protocol.tree);
    for (const auto& [name, device] : catalogue.defaultLogicalDevices) {
        const std::wstring path = L"DefaultLogDevices\\" + name;
        keys.push_back({path, &device.values});
        if (!device.ndiValues.empty()) keys.push_back({path + L'\\' + std::wstring(ndiKey), &device.ndiValues});
    }
    return keys;
}

// FNV-1a over all names and values, each with its terminator.
std::wstring checksumOf(const std::vector<PublishedKey>& keys)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    const auto add = [&hash](const std::wstring& text) {
        for (std::size_t i = 0; i <= text.size(); ++i)
            hash = (hash ^ text.c_str()[i]) * 0x100000001B3;
    };
    for (const PublishedKey& key : keys) {
        add(key.path);
        for (const auto& [name, value] : *key.values) {
            add(name);
            add(value);
        }
    }
    return std::to_wstring(hash);
}

LSTATUS create(HKEY parent, const std::wstring& path, REGSAM access, Key& key)
{
    return RegCreateKeyExW(parent, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access | KEY_WOW64_32KEY,
                           nullptr, key.put(), nullptr);
}

LSTATUS setText(HKEY key, const std::wstring& name, const std::wstring& text)
{
    return RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

LSTATUS write(HKEY definitions, const std::vector<PublishedKey>& keys)
{
    for (const PublishedKey& published : keys) {
        Key key;
        if (const LSTATUS status = create(definitions, published.path, KEY_SET_VALUE, key)) return status;
        for (const auto& [name, value] : *published.values)
            if (const LSTATUS status = setText(key.get(), name, value)) return status;
    }
    return ERROR_SUCCESS;
}

}  // namespace

Result publishDefinitions(HKEY hive, const std::wstring& root, const catalogue::Catalogue& catalogue)
{
    WindowsRegistry registry(hive, root);
    const std::vector<PublishedKey> keys = keysOf(catalogue);
    const std::wstring checksum = checksumOf(keys);
    std::vector<RawValue> values;
    LSTATUS status = registry.values(definitionsKey, values);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return static_cast<Result>(status);
    for (const RawValue& value : values)
        if (value.name == checksumValue && textOf(value) == checksum) return result::ok;

    status = registry.deleteKey(definitionsKey);
    Key definitions;
    if (status == ERROR_SUCCESS)
        status = create(hive, root + L'\\' + definitionsKey, KEY_READ | KEY_WRITE, definitions);
    if (status == ERROR_SUCCESS) status = write(definitions.get(), keys);
    if (status == ERROR_SUCCESS) status = setText(definitions.get(), checksumValue, checksum);
    return static_cast<Result>(status);
}

}  // namespace srv
