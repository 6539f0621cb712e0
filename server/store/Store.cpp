#include "store/Store.h"

#include <algorithm>
#include <mutex>

#include "base/Text.h"
#include "store/Names.h"

namespace srv {

namespace {

// A missing key or value is "not found" to clients, every other failure of the registry speaks for itself.
Result fromRegistry(LSTATUS status) noexcept
{
    return status == ERROR_FILE_NOT_FOUND ? result::notFound : static_cast<Result>(status);
}

const ValueTable& section(const Content& content, Section section) noexcept
{
    return section == Section::Ndi ? content.ndi : content.values;
}

std::wstring sectionPath(Family family, std::wstring_view name, Section section)
{
    return section == Section::Ndi ? ndiPath(name) : objectPath(family, name);
}

}  // namespace

Store::Store(Registry& registry, Changes& changes, Log& log)
    : registry_(registry), changes_(changes), log_(log), journal_(registry)
{}

Result Store::open()
{
    const std::lock_guard guard(writing_);
    std::optional<std::vector<Step>> unfinished;
    bool damaged = false;
    LSTATUS status = journal_.read(unfinished, damaged);
    if (status != ERROR_SUCCESS) return unreadable(L"Journal", status);
    if (damaged) log_.warning("the journal's record is damaged and is dropped; the change it held was not finished");
    if (unfinished) {
        log_.info("finishing a change of %zu step(s) that an earlier server could not finish", unfinished->size());
        status = Journal::carryOut(registry_, *unfinished);
        if (status != ERROR_SUCCESS) return static_cast<Result>(status);
    }
    status = journal_.clear();
    if (status == ERROR_SUCCESS) status = registry_.createKey({});  // so that a lack of rights shows at once
    if (status != ERROR_SUCCESS) return static_cast<Result>(status);

    for (const Family family : {Family::Device, Family::Name})
        if (const Result result = load(family)) return result;
    log_.info("%zu logical devices and %zu logical names loaded", configuration_.devices.size(),
              configuration_.names.size());
    return result::ok;
}

Result Store::load(Family family)
{
    std::vector<Subkey> keys;
    const LSTATUS listed = registry_.subkeys(familyKey(family), keys);
    isNew_[static_cast<std::size_t>(family)] = listed == ERROR_FILE_NOT_FOUND;
    if (listed != ERROR_SUCCESS && listed != ERROR_FILE_NOT_FOUND) return unreadable(familyKey(family), listed);
    const std::lock_guard guard(reading_);
    for (const Subkey& key : keys) {
        Content content;
        const LSTATUS status = readContent(registry_, family, key.name, content);
        if (status == ERROR_FILE_NOT_FOUND) continue;  // deleted meanwhile
        if (status != ERROR_SUCCESS) return unreadable(objectPath(family, key.name), status);
        configuration_.of(family).put(key.name, std::move(content));
    }
    return result::ok;
}

// One key among thousands may be the one; the caller knows the store's only.
Result Store::unreadable(std::wstring_view path, LSTATUS status)
{
    log_.error("the key %s cannot be read: %s", inQuotes(path).c_str(),
               systemMessage(static_cast<DWORD>(status)).c_str());
    return static_cast<Result>(status);
}

// Before every change. A record that outlived its change would be carried out again at the next start and undo what
// was changed since.
Result Store::settle()
{
    ++changesBegun_;
    return settleEarlier();
}

Result Store::settleEarlier()
{
    if (!unsettled_) return result::ok;
    LSTATUS status = Journal::carryOut(registry_, *unsettled_);
    if (status == ERROR_SUCCESS) status = journal_.clear();
    if (status == ERROR_SUCCESS) {
        unsettled_.reset();
    } else {
        log_.error("an earlier change is not settled yet: %s", systemMessage(static_cast<DWORD>(status)).c_str());
    }
    return static_cast<Result>(status);
}

Result Store::setValue(Family family, std::wstring_view name, Section in, std::wstring_view parameter,
                       std::wstring_view text)
{
    if (!isValueName(parameter) || !isValueText(text)) return result::invalidParameter;
    const std::lock_guard guard(writing_);
    const Object* const object = configuration_.of(family).find(name);
    if (!object) return result::notFound;
    if (const Result result = settle()) return result;

    // The key of the Ndi values comes with the first of them; alone it means nothing.
    const std::wstring path = sectionPath(family, object->name, in);
    LSTATUS status = ERROR_SUCCESS;
    if (in == Section::Ndi && object->content.ndi.empty()) status = registry_.createKey(path);
    if (status == ERROR_SUCCESS) status = writeText(registry_, path, std::wstring(parameter), text);
    if (status != ERROR_SUCCESS) return fromRegistry(status);
    {
        const std::lock_guard readers(reading_);
        ObjectTable& table = configuration_.of(family);
        in == Section::Ndi ? table.setNdi(name, parameter, text) : table.setValue(name, parameter, text);
    }
    changes_.tell({Change::Kind::Changed, family, object->name});
    return result::ok;
}

Result Store::deleteValue(Family family, std::wstring_view name, Section in, std::wstring_view parameter)
{
    const std::lock_guard guard(writing_);
    const Object* const object = configuration_.of(family).find(name);
    if (!object || !section(object->content, in).find(parameter)) return result::notFound;
    if (const Result result = settle()) return result;

    const LSTATUS status = registry_.deleteValue(sectionPath(family, object->name, in), std::wstring(parameter));
    // Somebody else deleted it before us: what was asked for is so.
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return fromRegistry(status);
    {
        const std::lock_guard readers(reading_);
        ObjectTable& table = configuration_.of(family);
        in == Section::Ndi ? table.eraseNdi(name, parameter) : table.eraseValue(name, parameter);
    }
    changes_.tell({Change::Kind::Changed, family, object->name});
    return result::ok;
}

Result Store::create(Family family, std::wstring_view name, Content content)
{
    if (!isObjectName(name)) return result::invalidParameter;
    const std::lock_guard guard(writing_);
    if (configuration_.of(family).find(name)) return result::alreadyExists;
    return commit({{Step::Kind::Put, family, std::wstring(name), std::move(content)}});
}

Result Store::replace(Family family, std::wstring_view name, Content content)
{
    const std::lock_guard guard(writing_);
    const Object* const object = configuration_.of(family).find(name);
    if (!object) return result::notFound;
    return commit({{Step::Kind::Put, family, object->name, std::move(content)}});
}

Result Store::remove(Family family, std::wstring_view name)
{
    const std::lock_guard guard(writing_);
    const Object* const object = configuration_.of(family).find(name);
    if (!object) return result::notFound;
    return commit({{Step::Kind::Remove, family, object->name, {}}});
}

Result Store::apply(std::vector<Step> steps)
{
    const auto valid = [](const Step& step) { return isObjectName(step.name); };
    if (!std::all_of(steps.begin(), steps.end(), valid)) return result::invalidParameter;
    const std::lock_guard guard(writing_);
    return commit(std::move(steps));
}

Result Store::setValues(Family family, std::wstring_view name, const catalogue::Values& values)
{
    const auto valid = [](const auto& value) { return isValueName(value.first) && isValueText(value.second); };
    if (!std::all_of(values.begin(), values.end(), valid)) return result::invalidParameter;
    const std::lock_guard guard(writing_);
    const Object* const object = configuration_.of(family).find(name);
    if (!object) return result::notFound;
    Content content = object->content;
    for (const auto& [parameter, text] : values)
        content.values.set(parameter, text);
    return commit({{Step::Kind::Put, family, object->name, std::move(content)}});
}

Result Store::clearNdi(std::wstring_view device)
{
    const std::lock_guard guard(writing_);
    const Object* const object = configuration_.devices.find(device);
    if (!object || object->content.ndi.empty()) return result::notFound;
    return commit({{Step::Kind::Put, Family::Device, object->name, {object->content.values, {}}}});
}

// Written down, carried out, forgotten, and seen by readers. A change that fails on the way is taken back, which is
// written down too.
Result Store::commit(std::vector<Step> steps)
{
    if (const Result result = settle()) return result;
    // A change that met a key that refuses on its way could not be taken back there, and would keep all later ones waiting
    // for that.
    LSTATUS status = journal_.mayCarryOut(steps);
    if (status != ERROR_SUCCESS) return fromRegistry(status);
    status = journal_.write(steps);
    unsettled_.emplace();
    if (status == ERROR_SUCCESS) {
        status = Journal::carryOut(registry_, steps);
        if (status != ERROR_SUCCESS) {
            unsettled_ = inverse(steps);
            const LSTATUS written = journal_.write(*unsettled_);
            if (written != ERROR_SUCCESS) {
                log_.error("a failed change cannot be written down as taken back: %s",
                           systemMessage(static_cast<DWORD>(written)).c_str());
            }
        }
    }
    settle();  // if it fails, the next change begins with it
    if (status != ERROR_SUCCESS) return fromRegistry(status);
    remember(steps);
    return result::ok;
}

// What makes the steps undone: the objects as they are in memory.
std::vector<Step> Store::inverse(const std::vector<Step>& steps) const
{
    std::vector<Step> result;
    for (const Step& step : steps) {
        const Object* const object = configuration_.of(step.family).find(step.name);
        if (object) {
            result.push_back({Step::Kind::Put, step.family, object->name, object->content});
        } else {
            result.push_back({Step::Kind::Remove, step.family, step.name, {}});
        }
    }
    return result;
}

void Store::remember(std::vector<Step>& steps)
{
    std::vector<Change::Kind> kinds;
    {
        const std::lock_guard readers(reading_);
        for (Step& step : steps) {
            ObjectTable& table = configuration_.of(step.family);
            const bool existed = table.find(step.name) != nullptr;
            if (step.kind == Step::Kind::Put) {
                table.put(step.name, std::move(step.content));
                kinds.push_back(existed ? Change::Kind::Changed : Change::Kind::Created);
            } else {
                table.erase(step.name);
                kinds.push_back(Change::Kind::Deleted);
            }
        }
    }
    for (std::size_t i = 0; i < steps.size(); ++i)
        changes_.tell({kinds[i], steps[i].family, steps[i].name});
}

Result Store::flush()
{
    {
        const std::lock_guard guard(writing_);
        if (const Result result = settle()) return result;
    }
    return static_cast<Result>(registry_.flush());  // takes long, and nobody has to wait for it
}

Result Store::reload()
{
    const std::lock_guard guard(reloading_);
    {
        const std::lock_guard writing(writing_);
        if (const Result result = settleEarlier()) return result;
    }
    const Result devices = reload(Family::Device);
    const Result names = reload(Family::Name);
    return devices != result::ok ? devices : names;
}

// Object by object, so that writers wait for one of them at most.
Result Store::reload(Family family)
{
    std::vector<Subkey> keys;
    const LSTATUS status = registry_.subkeys(familyKey(family), keys);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return static_cast<Result>(status);

    // A key that was written this moment may be written again without its time changing.
    constexpr std::uint64_t moment = 2 * 10'000'000;
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    const std::uint64_t recent =
        (static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime) - moment;

    const catalogue::Map<Stamp> before = std::exchange(stamps_[static_cast<std::size_t>(family)], {});
    catalogue::Map<Stamp>& now = stamps_[static_cast<std::size_t>(family)];
    catalogue::Map<bool> there;
    Result result = result::ok;
    const auto isReloaded = [&](const std::wstring& name) {
        const Result one = reloadObject(family, name);
        if (result == result::ok) result = one;
        return one == result::ok;
    };
    for (const Subkey& key : keys) {
        there.emplace(key.name, true);
        const Stamp written = stamp(family, key);
        const Stamp* const known = catalogue::find(before, key.name);
        if ((!known || *known != written) && !isReloaded(key.name)) continue;
        if (written.key < recent && written.ndi < recent) now.emplace(key.name, written);
    }
    std::vector<std::wstring> gone;
    {
        const std::shared_lock guard(reading_);
        const ObjectTable& table = configuration_.of(family);
        for (std::size_t i = 0; i < table.size(); ++i)
            if (!there.contains(table[i].name)) gone.push_back(table[i].name);
    }
    for (const std::wstring& name : gone)
        isReloaded(name);
    return result;
}

Store::Stamp Store::stamp(Family family, const Subkey& key) const
{
    Stamp result{key.written, 0};
    std::vector<Subkey> below;
    if (family == Family::Name || registry_.subkeys(objectPath(family, key.name), below) != ERROR_SUCCESS)
        return result;
    for (const Subkey& subkey : below)
        if (catalogue::equalNoCase(subkey.name, ndiKey)) result.ndi = subkey.written;
    return result;
}

Result Store::reloadObject(Family family, const std::wstring& name)
{
    const std::lock_guard guard(writing_);
    if (unsettled_) return ERROR_BUSY;  // the registry is the one that is wrong
    Content content;
    const LSTATUS status = readContent(registry_, family, name, content);
    const Object* const known = configuration_.of(family).find(name);
    std::vector<Step> steps;
    if (status == ERROR_SUCCESS && (!known || known->content != content)) {
        steps.push_back({Step::Kind::Put, family, name, std::move(content)});
    } else if (status == ERROR_FILE_NOT_FOUND && known) {
        steps.push_back({Step::Kind::Remove, family, name, {}});
    }
    const std::wstring path = objectPath(family, name);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
        return unread_.emplace(path, true).second ? unreadable(path, status) : static_cast<Result>(status);
    unread_.erase(path);
    if (steps.empty()) return result::ok;
    log_.info("%s %s was changed in the registry by others",
              family == Family::Name ? "logical name" : "logical device", inQuotes(name).c_str());
    remember(steps);
    return result::ok;
}

}  // namespace srv
