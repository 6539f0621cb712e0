// Makes a change of several steps happen wholly or not at all, also when the server is killed on the way.
//
// The change is written down as one registry value before anything else is touched. Setting that value is a single
// step of the system's, and from then on the change counts as made: whoever finds the record afterwards makes the
// change again, whole, which does no harm if it was made already. A record that does not fit one value is written in
// parts, and the last value set is the one that makes it count.
//
//   <root>\Journal   Record              REG_BINARY: a header, then the record's bytes or the last of them
//                    Part<generation>.<n> REG_BINARY: the bytes before those; of no meaning without their record
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "store/Codec.h"

namespace srv {

// One object's new state.
struct Step
{
    enum class Kind : std::uint8_t { Put = 1, Remove = 2 };

    Kind kind = Kind::Put;
    Family family = Family::Device;
    std::wstring name;
    Content content;  // of Put: what the object holds from now on
};

// Not thread-safe: one writer at a time.
class Journal
{
 public:
    explicit Journal(Registry& registry) : registry_(registry) {}

    // What is written down; nothing if there is no record, or with `damaged` one that cannot be understood (which
    // was then never finished, or was not written by us).
    LSTATUS read(std::optional<std::vector<Step>>& steps, bool& damaged);

    // Whether the registry's rights allow the steps to be written down and carried out.
    LSTATUS mayCarryOut(const std::vector<Step>& steps);

    // Writes the record, in place of one that may be there. On failure there may be one or the other, never a
    // mixture.
    LSTATUS write(const std::vector<Step>& steps);

    // Forgets the record. Nothing else may be changed before this has succeeded.
    LSTATUS clear();

    // Carries the steps out.
    static LSTATUS carryOut(Registry& registry, const std::vector<Step>& steps);

    // Bytes that are written into one value; less is only of use to tests.
    void setPartSize(std::size_t bytes) noexcept { partSize_ = bytes; }

 private:
    Registry& registry_;
    std::size_t partSize_ = 256 * 1024;
    std::uint32_t generation_ = 0;  // of the last record read or written
    bool partsLeft_ = true;         // whether there may be parts to clear away
};

}  // namespace srv
