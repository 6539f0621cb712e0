// The configuration store: logical devices and logical names, in memory for reading, in the registry to last.
#pragma once

#include <atomic>
#include <shared_mutex>
#include <utility>

#include "base/Lock.h"
#include "base/Results.h"
#include "log/Log.h"
#include "notifications/Changes.h"
#include "store/Journal.h"
#include "store/Model.h"

namespace srv {

// All that is stored, as read() shows it.
struct Configuration
{
    ObjectTable devices{L"CP_TYPE"};
    ObjectTable names;

    const ObjectTable& of(Family family) const noexcept { return family == Family::Device ? devices : names; }
    ObjectTable& of(Family family) noexcept { return family == Family::Device ? devices : names; }
};

// Where in an object a value is.
enum class Section { Values, Ndi };

// Safe to use from any thread. A change is made in the registry first and seen by readers afterwards, whole; when the
// function returns 0 it is stored. Results: 0, 87 for a name or value that may not be stored, 8012 not found, 183
// exists already, or the registry's error; with any but 0 nothing is changed.
class Store
{
 public:
    Store(Registry& registry, Changes& changes, Log& log);

    // Finishes what an earlier server could not finish and loads everything. To be called once, before anything else.
    Result open();

    // Whether the registry had no key for this family when the store was opened: nobody has ever stored any.
    bool isNew(Family family) const noexcept { return isNew_[static_cast<std::size_t>(family)]; }

    // Lets `look` see one consistent state, and returns what it returns. It must be brief, and not call the store.
    template <typename Look>
    decltype(auto) read(Look&& look) const
    {
        const std::shared_lock guard(reading_);
        return std::forward<Look>(look)(std::as_const(configuration_));
    }

    Result setValue(Family family, std::wstring_view name, Section section, std::wstring_view parameter,
                    std::wstring_view text);
    Result deleteValue(Family family, std::wstring_view name, Section section, std::wstring_view parameter);

    // The rest are whole or not at all for every reader, also when the server is killed on the way. A content is
    // taken as it is: it comes from the catalogue or from what is stored.

    Result create(Family family, std::wstring_view name, Content content);
    Result replace(Family family, std::wstring_view name, Content content);
    Result remove(Family family, std::wstring_view name);

    // Any number of objects at once. Names must be good, contents are taken as they are.
    Result apply(std::vector<Step> steps);

    // Several values of one object, set together.
    Result setValues(Family family, std::wstring_view name, const catalogue::Values& values);

    // All Ndi values of a logical device, which has some; 8012 otherwise.
    Result clearNdi(std::wstring_view device);

    // Compares the registry with the memory and takes over what others have changed there. Objects whose keys have
    // not been written since the last time are not read again. What cannot be read stays as it is in memory, is read
    // the next time, and the first of its errors is returned.
    Result reload();

    // Has all that is stored brought to the disk.
    Result flush();

    // How many changes were begun through this store.
    std::uint64_t changesBegun() const noexcept { return changesBegun_; }

 private:
    // When an object's keys were last written, as far as that is known.
    struct Stamp
    {
        std::uint64_t key = 0;
        std::uint64_t ndi = 0;

        bool operator==(const Stamp&) const = default;
    };

    Result unreadable(std::wstring_view path, LSTATUS status);
    Result settle();
    Result settleEarlier();
    Result commit(std::vector<Step> steps);
    std::vector<Step> inverse(const std::vector<Step>& steps) const;
    void remember(std::vector<Step>& steps);
    Result load(Family family);
    Result reload(Family family);
    Result reloadObject(Family family, const std::wstring& name);
    Stamp stamp(Family family, const Subkey& key) const;

    Registry& registry_;
    Changes& changes_;
    Log& log_;
    Journal journal_;

    // Held by one writer for the whole of its change; then, to change the memory, the reading lock too.
    Lock writing_;
    mutable Lock reading_;
    Configuration configuration_;

    // What is still to be done before anything else may be changed: these steps, then clearing the journal.
    std::optional<std::vector<Step>> unsettled_;

    bool isNew_[2] = {};           // by family
    catalogue::Map<bool> unread_;  // what was last found unreadable; guarded by writing_
    std::atomic<std::uint64_t> changesBegun_ = 0;
    Lock reloading_;
    catalogue::Map<Stamp> stamps_[2];  // by family; of the last reload
};

}  // namespace srv
