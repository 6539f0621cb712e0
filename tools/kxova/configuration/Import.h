// Bringing a store to what a configuration says: whole or not at all.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "configuration/Configuration.h"
#include "results.h"

// What is imported into. Failures are thrown as Failure.
class ImportTarget
{
 public:
    virtual ~ImportTarget() = default;

    // What is stored now; nothing when there is no such entry.
    virtual std::optional<Entry> read(Family family, const std::string& name) = 0;

    // Makes the entry, or replaces all that it holds.
    virtual void write(const Entry& entry) = 0;

    // Deletes the entry, if it is there.
    virtual void remove(Family family, const std::string& name) = 0;
};

// An entry that is not as it is to be.
struct Change
{
    std::optional<Entry> before;
    Entry after;
};

// Whether two entries hold the same values, in whatever order.
bool holdTheSame(const Entry& one, const Entry& other);

// What has to be done so that the target has all of the configuration. Entries that the configuration does not name
// stay as they are.
std::vector<Change> changesFor(const Configuration& wanted, ImportTarget& target);

// The import failed, and so did undoing a part of it.
class NotUndone : public Failure
{
 public:
    NotUndone(const Failure& cause, std::vector<Change> left) : Failure(cause), left_(std::move(left)) {}
    const std::vector<Change>& left() const noexcept { return left_; }

 private:
    std::vector<Change> left_;
};

// Carries all changes out. When one fails, what was done before is undone, and the Failure's hint says so.
void carryOut(const std::vector<Change>& changes, ImportTarget& target);
