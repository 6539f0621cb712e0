#include "configuration/Import.h"

#include <algorithm>

namespace {

Values sorted(Values values)
{
    std::sort(values.begin(), values.end(), [](const Value& a, const Value& b) { return a.name < b.name; });
    return values;
}

void undo(const Change& change, ImportTarget& target)
{
    if (change.before) {
        target.write(*change.before);
    } else {
        target.remove(change.after.family, change.after.name);
    }
}

// The changes that could not be undone, in their order. The last of those given may be half done.
std::vector<Change> undoAll(std::vector<Change> changes, ImportTarget& target)
{
    std::vector<Change> left;
    while (!changes.empty()) {
        try {
            undo(changes.back(), target);
        } catch (const Failure& failure) {
            left.insert(left.begin(), changes.back());
            // Nobody is there to undo the rest, and each attempt would wait in vain.
            if (failure.status() == exitNoServer || failure.status() == exitNoAnswer) {
                changes.pop_back();
                left.insert(left.begin(), changes.begin(), changes.end());
                break;
            }
        }
        changes.pop_back();
    }
    return left;
}

}  // namespace

bool holdTheSame(const Entry& one, const Entry& other)
{
    return sorted(one.values) == sorted(other.values) && sorted(one.ndi) == sorted(other.ndi);
}

std::vector<Change> changesFor(const Configuration& wanted, ImportTarget& target)
{
    std::vector<Change> changes;
    for (const Entry& entry : wanted) {
        std::optional<Entry> before = target.read(entry.family, entry.name);
        if (before && holdTheSame(*before, entry)) continue;
        changes.push_back({std::move(before), entry});
    }
    return changes;
}

void carryOut(const std::vector<Change>& changes, ImportTarget& target)
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        try {
            target.write(change->after);
        } catch (Failure& failure) {
            std::vector<Change> left = undoAll({changes.begin(), change + 1}, target);
            if (!left.empty()) throw NotUndone(failure, std::move(left));
            failure.advise("nothing was imported; everything is as it was before");
            throw;
        }
    }
}
