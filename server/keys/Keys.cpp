#include "keys/Keys.h"

#include <algorithm>
#include <cstring>

#include "store/Names.h"

namespace srv {

namespace {

using catalogue::equalNoCase;

// Clients of the registry know the system's number for what is missing.
Result asKeyResult(Result result) noexcept
{
    return result == result::notFound ? result::noSuchKey : result;
}

// What a path means to the store.
struct StorePlace
{
    enum class Kind {
        None,     // nothing
        Family,   // the key of all logical devices or of all logical names
        Object,   // one of them
        Ndi,      // a logical device's Ndi values
        Further,  // a key below an object that is no part of the configuration
    };

    Kind kind = Kind::None;
    Family family = Family::Device;
    std::wstring_view object;

    explicit StorePlace(const KeyPath& key)
    {
        const auto& parts = key.parts;
        if (key.place != KeyPath::Place::Product || parts.size() < 2 || !equalNoCase(parts[0], L"NORIX")) return;
        if (equalNoCase(parts[1], familyKey(Family::Name))) {
            family = Family::Name;
        } else if (!equalNoCase(parts[1], familyKey(Family::Device))) {
            return;
        }
        kind = Kind::Family;
        if (parts.size() == 2) return;
        object = parts[2];
        const bool isNdi = parts.size() == 4 && family == Family::Device && equalNoCase(parts[3], ndiKey);
        kind = parts.size() == 3 ? Kind::Object : isNdi ? Kind::Ndi : Kind::Further;
    }

    bool isIn(Section& section) const noexcept
    {
        section = kind == Kind::Ndi ? Section::Ndi : Section::Values;
        return kind == Kind::Ndi || kind == Kind::Object;
    }
};

bool exists(const Store& store, const StorePlace& place)
{
    return store.read([&](const Configuration& all) { return all.of(place.family).find(place.object) != nullptr; });
}

Result fromStatus(LSTATUS status) noexcept
{
    return static_cast<Result>(status);
}

std::wstring hexadecimal(const std::vector<std::uint8_t>& data)
{
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    std::wstring text;
    for (const std::uint8_t byte : data) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::wstring listText(const std::vector<std::uint8_t>& data)
{
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    if (!text.empty()) std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
    text.resize(text.find_last_not_of(L'\0') + 1);
    std::replace(text.begin(), text.end(), L'\0', L',');
    return text;
}

}  // namespace

std::wstring shownText(const RawValue& value)
{
    switch (value.type) {
        case REG_SZ:
        case REG_EXPAND_SZ:
            return textOf(value);
        case REG_MULTI_SZ:
            return listText(value.data);
        case REG_DWORD:
            if (value.data.size() == sizeof(DWORD)) return textOf(value);
            break;
        case REG_QWORD:
            if (value.data.size() == sizeof(std::uint64_t)) {
                std::uint64_t number = 0;
                std::memcpy(&number, value.data.data(), sizeof number);
                return std::to_wstring(number);
            }
            break;
        default:
            break;
    }
    return hexadecimal(value.data);
}

Result Keys::createKey(std::wstring_view path)
{
    const std::optional<KeyPath> key = allowedPath(path);
    if (!key || key->rights == KeyPath::Rights::Read) return result::refused;
    const StorePlace place(*key);
    if (!place.object.empty()) {
        if (isTemporaryName(place.object)) return result::invalidParameter;
        const Result result = store_.create(place.family, place.object, {});
        if (result != result::ok && result != result::alreadyExists) return result;
        // The key of the Ndi values comes with the first of them.
        if (place.kind != StorePlace::Kind::Further) return result::ok;
    }
    return fromStatus(product_.createKey(key->joined()));
}

Result Keys::removeAll(Family family)
{
    std::vector<Step> steps = store_.read([&](const Configuration& all) {
        std::vector<Step> removals;
        const ObjectTable& objects = all.of(family);
        for (std::size_t i = 0; i < objects.size(); ++i)
            removals.push_back({Step::Kind::Remove, family, objects[i].name, {}});
        return removals;
    });
    return steps.empty() ? result::ok : store_.apply(std::move(steps));
}

Result Keys::deleteKey(std::wstring_view path)
{
    const std::optional<KeyPath> key = allowedPath(path);
    if (!key || key->rights != KeyPath::Rights::All) return result::refused;
    const StorePlace place(*key);
    switch (place.kind) {
        case StorePlace::Kind::Family:
            return removeAll(place.family);
        case StorePlace::Kind::Object:
            return asKeyResult(store_.remove(place.family, place.object));
        case StorePlace::Kind::Ndi:
            return asKeyResult(store_.clearNdi(place.object));
        default:
            break;
    }
    std::vector<Subkey> below;
    if (const LSTATUS status = product_.subkeys(key->joined(), below)) return fromStatus(status);
    return fromStatus(product_.deleteKey(key->joined()));
}

Result Keys::setValue(std::wstring_view path, std::wstring_view name, std::wstring_view text)
{
    const std::optional<KeyPath> key = allowedPath(path);
    if (!key || key->rights == KeyPath::Rights::Read) return result::refused;
    const StorePlace place(*key);
    Section section{};
    if (place.isIn(section)) return asKeyResult(store_.setValue(place.family, place.object, section, name, text));
    if (text.find(L'\0') != std::wstring_view::npos || name.find(L'\0') != std::wstring_view::npos)
        return result::invalidParameter;
    return fromStatus(writeText(product_, key->joined(), std::wstring(name), text));
}

Result Keys::deleteValue(std::wstring_view path, std::wstring_view name)
{
    const std::optional<KeyPath> key = allowedPath(path);
    if (!key || key->rights == KeyPath::Rights::Read) return result::refused;
    const StorePlace place(*key);
    Section section{};
    if (place.isIn(section)) return asKeyResult(store_.deleteValue(place.family, place.object, section, name));
    if (name.find(L'\0') != std::wstring_view::npos) return result::invalidParameter;
    return fromStatus(product_.deleteValue(key->joined(), std::wstring(name)));
}

Result Keys::subkeyAt(std::wstring_view path, std::size_t index, std::wstring& name) const
{
    const std::optional<KeyPath> key = allowedPath(path);
    if (!key) return result::refused;
    const StorePlace place(*key);
    if (place.kind == StorePlace::Kind::Family) {
        return store_.read([&](const Configuration& all) {
            const ObjectTable& objects = all.of(place.family);
            if (index >= objects.size()) return result::noMoreItems;
            name = objects[index].name;
            return result::ok;
        });
    }
    if (place.kind == StorePlace::Kind::Ndi && exists(store_, place)) return result::noMoreItems;
    std::vector<Subkey> found;
    if (const LSTATUS status = registryOf(*key).subkeys(key->joined(), found)) return fromStatus(status);
    if (index >= found.size()) return result::noMoreItems;
    name = found[index].name;
    return result::ok;
}

Result Keys::readValues(std::wstring_view path, std::vector<Value>& values) const
{
    const std::optional<KeyPath> key = allowedPath(path);
    if (!key) return result::refused;
    const StorePlace place(*key);
    Section section{};
    if (place.isIn(section)) {
        return store_.read([&](const Configuration& all) {
            const Object* const object = all.of(place.family).find(place.object);
            if (!object) return result::noSuchKey;
            const ValueTable& table = section == Section::Ndi ? object->content.ndi : object->content.values;
            values.assign(table.begin(), table.end());
            return result::ok;
        });
    }
    std::vector<RawValue> found;
    if (const LSTATUS status = registryOf(*key).values(key->joined(), found)) return fromStatus(status);
    for (RawValue& value : found)
        values.push_back({std::move(value.name), shownText(value)});
    return result::ok;
}

Result Keys::value(std::wstring_view path, std::wstring_view name, std::wstring& text) const
{
    std::vector<Value> values;
    if (const Result result = readValues(path, values)) return result;
    const auto at =
        std::find_if(values.begin(), values.end(), [&](const Value& value) { return equalNoCase(value.name, name); });
    if (at == values.end()) return result::noSuchKey;
    text = std::move(at->text);
    return result::ok;
}

Result Keys::valueAt(std::wstring_view path, std::size_t index, Value& value) const
{
    std::vector<Value> values;
    if (const Result result = readValues(path, values)) return result;
    if (index >= values.size()) return result::noMoreItems;
    value = std::move(values[index]);
    return result::ok;
}

}  // namespace srv
