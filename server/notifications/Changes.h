// What changed in the configuration, told to whoever wants to know.
#pragma once

#include <string_view>
#include <vector>

#include "base/Lock.h"
#include "store/Codec.h"

namespace srv {

struct Change
{
    enum class Kind { Created, Changed, Deleted };

    Kind kind;
    Family family;
    std::wstring_view name;  // valid during the call only
};

// Is called in the order of the changes, after each is stored and before the request that made it is answered; also
// for changes that others made in the registry, once they are noticed. Must be quick and must not change the store.
class ChangeObserver
{
 public:
    virtual ~ChangeObserver() = default;
    virtual void changed(const Change& change) noexcept = 0;
};

// The observers; safe to use from any thread. When remove() has returned, the observer is not called any more.
class Changes
{
 public:
    void add(ChangeObserver& observer);
    void remove(ChangeObserver& observer);
    void tell(const Change& change) noexcept;

 private:
    Lock lock_;
    std::vector<ChangeObserver*> observers_;
};

}  // namespace srv
