#include "configuration/ServerStore.h"

#include <algorithm>
#include <climits>

#include "calls.h"
#include "hints.h"
#include "temporary.h"

namespace {

constexpr char devicesKey[] = R"(SOFTWARE\TAVRONE\NORIX\LogDevices\)";
constexpr char mayBeDeleted[] = "enable_delete";

// From what is there to what is wanted. A name in another spelling is another name: the store keeps spellings.
template <typename Set, typename Unset>
void bring(const Values& there, const Values& wanted, Set set, Unset unset)
{
    for (const Value& value : there) {
        const auto named = [&](const Value& other) { return other.name == value.name; };
        if (std::none_of(wanted.begin(), wanted.end(), named)) unset(value.name);
    }
    for (const Value& value : wanted)
        if (std::find(there.begin(), there.end(), value) == there.end()) set(value.name, value.text);
}

// The library's list outlives a walk that stopped early, and would be taken for the next device's.
void forgetList(const std::string& ansi)
{
    Text name;
    Text text;
    DCFG_LogDeviceGetEnumValue(ansi.c_str(), nullptr, ULONG_MAX, name.buffer, &name.length, text.buffer,
                               &text.length);
}

// One request for all values. A list that could not be read whole just ends early, so the value behind its last is
// asked for: there must be none, and the copy must still be there.
Values valuesOf(const TemporaryDevice& copy, const std::string& device)
{
    const std::string ansi = toAnsi(copy.name());
    const std::string attempt = "read all values of " + logicalDevice(device);
    Values values;
    try {
        values = allValues([&](auto... out) { return DCFG_LogDeviceGetEnumValue(ansi.c_str(), nullptr, out...); },
                           attempt);
    } catch (...) {
        forgetList(ansi);
        throw;
    }
    Text name;
    Text text;
    const long next = LogDeviceGetEnumValue(ansi.c_str(), static_cast<unsigned long>(values.size()), name.buffer,
                                            &name.length, text.buffer, &text.length);
    if (next == ERROR_SUCCESS) throw Failure(attempt, DCFG_ERR_BUFFER_TOO_SHORT);
    if (next != DCFG_ERR_NO_MORE_ITEMS) throw Failure(attempt, next);
    return values;
}

Values ndiOf(const TemporaryDevice& copy, const std::string& device)
{
    const std::string ansi = toAnsi(copy.name());
    return allValues([&](auto... out) { return LogDeviceGetEnumNdiValue(ansi.c_str(), out...); },
                     "read the Ndi values of " + logicalDevice(device));
}

Values valuesOfName(const std::string& name)
{
    const std::string ansi = toAnsi(name);
    return allValues([&](auto... out) { return LogNameGetEnumValue(ansi.c_str(), out...); },
                     "read the values of " + logicalName(name), namesHint);
}

bool nameExists(const std::string& name)
{
    return found(LogNameExists(toAnsi(name).c_str()), "look for " + logicalName(name));
}

std::optional<Entry> readDevice(const std::string& name)
{
    try {
        const TemporaryDevice copy(name);
        return Entry{Family::Device, name, valuesOf(copy, name), ndiOf(copy, name)};
    } catch (const Failure& failure) {
        if (failure.result() == DCFG_ERR_NOT_FOUND) return std::nullopt;
        throw;
    }
}

void fill(const TemporaryDevice& draft, const Entry& wanted)
{
    const std::string ansi = toAnsi(draft.name());
    const std::string where = " of " + described(wanted);
    bring(
        valuesOf(draft, wanted.name), wanted.values,
        [&](const std::string& name, const std::string& text) {
            require(LogDeviceSetValue(ansi.c_str(), toAnsi(name).c_str(), toAnsi(text).c_str()),
                    "set " + inQuotes(name) + where);
        },
        [&](const std::string& name) {
            require(LogDeviceDelValue(ansi.c_str(), toAnsi(name).c_str()), "unset " + inQuotes(name) + where);
        });
    bring(
        ndiOf(draft, wanted.name), wanted.ndi,
        [&](const std::string& name, const std::string& text) {
            require(LogDeviceSetNdiValue(ansi.c_str(), toAnsi(name).c_str(), toAnsi(text).c_str()),
                    "set the Ndi value " + inQuotes(name) + where);
        },
        [&](const std::string& name) {
            require(LogDeviceDelNdiValue(ansi.c_str(), toAnsi(name).c_str()),
                    "unset the Ndi value " + inQuotes(name) + where);
        });
}

// A few texts, such as "DP" for busparam, cannot be stored as they are: setting them stores what they stand for.
// Where the store has them all the same, they are written as what they are there, registry values.
void storeUntranslated(const Entry& wanted, const Values& stored)
{
    const std::string key = devicesKey + toAnsi(wanted.name);
    for (const Value& value : wanted.values) {
        if (std::find(stored.begin(), stored.end(), value) != stored.end()) continue;
        require(KxRegSetValue(key.c_str(), toAnsi(value.name).c_str(), toAnsi(value.text).c_str()),
                "store " + inQuotes(value.text) + " untranslated as " + inQuotes(value.name) + " of " +
                    described(wanted));
    }
}

// Some device to make a copy of, for a device that is not there yet.
std::optional<std::string> anyDevice()
{
    Text name;
    const long result = LogDeviceGetEnum(nullptr, 0, name.buffer, &name.length);
    if (result == DCFG_ERR_NO_MORE_ITEMS) return std::nullopt;
    require(result, "list the logical devices");
    return name.utf8();
}

// A device without values is a key of its name.
void createEmpty(const std::string& device)
{
    require(KxRegCreateKey((devicesKey + toAnsi(device)).c_str()), "create " + logicalDevice(device));
}

// A draft gets all values, then it becomes the device in one step.
void writeDevice(const Entry& wanted)
{
    const std::optional<Entry> there = readDevice(wanted.name);
    if (there && holdTheSame(*there, wanted)) return;
    const std::optional<std::string> like = there ? wanted.name : anyDevice();
    if (!like) createEmpty(wanted.name);

    const TemporaryDevice draft(like.value_or(wanted.name));
    fill(draft, wanted);
    const Values stored = valuesOf(draft, wanted.name);
    if (there || !like) {
        draft.replace(wanted.name);
    } else {
        require(LogDeviceCopy(toAnsi(draft.name()).c_str(), toAnsi(wanted.name).c_str()),
                "create " + described(wanted));
    }
    storeUntranslated(wanted, stored);
}

void writeName(const Entry& wanted)
{
    const std::string ansi = toAnsi(wanted.name);
    if (!nameExists(wanted.name)) require(LogNameCreate(ansi.c_str()), "create " + described(wanted));
    bring(
        valuesOfName(wanted.name), wanted.values,
        [&](const std::string& name, const std::string& text) {
            require(LogNameSetValue(ansi.c_str(), toAnsi(name).c_str(), toAnsi(text).c_str()),
                    "set " + inQuotes(name) + " of " + described(wanted));
        },
        [&](const std::string& name) {
            require(LogNameDelValue(ansi.c_str(), toAnsi(name).c_str()),
                    "unset " + inQuotes(name) + " of " + described(wanted));
        });
}

}  // namespace

std::vector<std::string> entryNames(Family family)
{
    if (family == Family::Name)
        return allTexts([](auto... out) { return LogNameGetEnum(out...); }, "list the logical names");
    return allTexts([](auto... out) { return LogDeviceGetEnum(nullptr, out...); }, "list the logical devices");
}

std::optional<Entry> readEntry(Family family, const std::string& name)
{
    if (family == Family::Device) return readDevice(name);
    if (!nameExists(name)) return std::nullopt;
    return Entry{Family::Name, name, valuesOfName(name), {}};
}

void ServerStore::write(const Entry& entry)
{
    entry.family == Family::Device ? writeDevice(entry) : writeName(entry);
}

void ServerStore::remove(Family family, const std::string& name)
{
    const std::string ansi = toAnsi(name);
    if (family == Family::Device) {
        found(LogDeviceDel(ansi.c_str()), "delete " + logicalDevice(name));
    } else if (nameExists(name)) {
        require(LogNameSetValue(ansi.c_str(), mayBeDeleted, "true"), "delete " + logicalName(name));
        require(LogNameDel(ansi.c_str()), "delete " + logicalName(name));
    }
}
