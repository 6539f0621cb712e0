// Entries in the configuration server, by the interface's calls.
#pragma once

#include "configuration/Import.h"

// All names of a family, in the server's order.
std::vector<std::string> entryNames(Family family);

// All that a logical device or name holds; nothing when it does not exist. A device is read from a copy, so that what
// comes back is one state of it even while others write.
std::optional<Entry> readEntry(Family family, const std::string& name);

class ServerStore : public ImportTarget
{
 public:
    std::optional<Entry> read(Family family, const std::string& name) override { return readEntry(family, name); }
    void write(const Entry& entry) override;
    void remove(Family family, const std::string& name) override;
};
