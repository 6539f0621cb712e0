#include "store/Registry.h"

#include <algorithm>
#include <mutex>
#include <shared_mutex>

namespace srv {

namespace {

constexpr std::size_t keyNameCapacity = 256;
constexpr std::size_t valueNameCapacity = 16384;

std::uint64_t number(const FILETIME& time) noexcept
{
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

}  // namespace

// Where paths begin, and what has to be said to stay in the 32-bit view from there.
struct WindowsRegistry::From
{
    HKEY key;
    REGSAM view;
};

LSTATUS WindowsRegistry::openRoot(bool make)
{
    const std::lock_guard guard(lock_);
    constexpr REGSAM access = KEY_READ | KEY_WOW64_32KEY;
    if (!make) return RegOpenKeyExW(hive_, root_.c_str(), 0, access, rootKey_.put());
    return RegCreateKeyExW(hive_, root_.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, rootKey_.put(),
                           nullptr);
}

// Calls `use` with where paths begin. A root key that was deleted since it was opened is opened again, or made if that is
// wanted, and used once more.
template <typename Use>
LSTATUS WindowsRegistry::from(bool make, Use use)
{
    if (root_.empty()) return use(From{hive_, KEY_WOW64_32KEY});
    const auto useRoot = [&] {
        const std::shared_lock guard(lock_);
        return rootKey_ ? use(From{rootKey_.get(), 0}) : ERROR_KEY_DELETED;
    };
    if (const LSTATUS status = useRoot(); status != ERROR_KEY_DELETED) return status;
    if (const LSTATUS status = openRoot(make)) return status;
    return useRoot();
}

LSTATUS WindowsRegistry::open(const std::wstring& path, REGSAM access, Key& key)
{
    return from(false,
                [&](From root) { return RegOpenKeyExW(root.key, path.c_str(), 0, access | root.view, key.put()); });
}

LSTATUS WindowsRegistry::createKey(const std::wstring& path)
{
    return from(true, [&](From root) {
        Key key;
        return RegCreateKeyExW(root.key, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE | root.view,
                               nullptr, key.put(), nullptr);
    });
}

LSTATUS WindowsRegistry::deleteKey(const std::wstring& path)
{
    std::vector<Subkey> below;
    LSTATUS status = subkeys(path, below);
    if (status == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    for (const Subkey& subkey : below) {
        if (status != ERROR_SUCCESS) return status;
        status = deleteKey(path.empty() ? subkey.name : path + L'\\' + subkey.name);
    }
    if (status != ERROR_SUCCESS) return status;
    status = path.empty()
                 ? RegDeleteKeyExW(hive_, root_.c_str(), KEY_WOW64_32KEY, 0)
                 : from(false, [&](From root) { return RegDeleteKeyExW(root.key, path.c_str(), root.view, 0); });
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

LSTATUS WindowsRegistry::setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                                  std::span<const std::uint8_t> data)
{
    Key key;
    if (const LSTATUS status = open(path, KEY_SET_VALUE, key)) return status;
    return RegSetValueExW(key.get(), name.c_str(), 0, type, data.data(), static_cast<DWORD>(data.size()));
}

LSTATUS WindowsRegistry::deleteValue(const std::wstring& path, const std::wstring& name)
{
    Key key;
    if (const LSTATUS status = open(path, KEY_SET_VALUE, key)) return status;
    return RegDeleteValueW(key.get(), name.c_str());
}

LSTATUS WindowsRegistry::subkeys(const std::wstring& path, std::vector<Subkey>& found)
{
    found.clear();
    Key key;
    if (const LSTATUS status = open(path, KEY_ENUMERATE_SUB_KEYS, key)) return status;
    wchar_t name[keyNameCapacity];
    for (DWORD index = 0;; ++index) {
        DWORD length = keyNameCapacity;
        FILETIME written{};
        const LSTATUS status = RegEnumKeyExW(key.get(), index, name, &length, nullptr, nullptr, nullptr, &written);
        if (status == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
        if (status != ERROR_SUCCESS) return status;
        found.push_back({{name, length}, number(written)});
    }
}

LSTATUS WindowsRegistry::values(const std::wstring& path, std::vector<RawValue>& found)
{
    found.clear();
    Key key;
    if (const LSTATUS status = open(path, KEY_QUERY_VALUE, key)) return status;
    std::vector<wchar_t> name(keyNameCapacity);
    std::vector<std::uint8_t> data(1024);
    for (DWORD index = 0;;) {
        auto nameLength = static_cast<DWORD>(name.size());
        auto dataLength = static_cast<DWORD>(data.size());
        DWORD type = REG_NONE;
        const LSTATUS status =
            RegEnumValueW(key.get(), index, name.data(), &nameLength, nullptr, &type, data.data(), &dataLength);
        if (status == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
        if (status == ERROR_MORE_DATA) {
            // The needed length of the data is told, that of the name is not; and both may grow meanwhile.
            name.resize(valueNameCapacity);
            data.resize(std::max<std::size_t>(data.size(), dataLength) * 2);
            continue;
        }
        if (status != ERROR_SUCCESS) return status;
        found.push_back({{name.data(), nameLength}, type, {data.begin(), data.begin() + dataLength}});
        ++index;
    }
}

LSTATUS WindowsRegistry::mayChange(const std::wstring& path, bool toDelete)
{
    Key key;
    const LSTATUS status =
        open(path, KEY_QUERY_VALUE | KEY_WRITE | (toDelete ? DELETE | KEY_ENUMERATE_SUB_KEYS : 0), key);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

LSTATUS WindowsRegistry::flush()
{
    Key key;
    const LSTATUS status = open({}, KEY_READ, key);
    if (status == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    return status == ERROR_SUCCESS ? RegFlushKey(key.get()) : status;
}

}  // namespace srv
