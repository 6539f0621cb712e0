// Which part of the configuration a registry path belongs to.
#pragma once

#include <array>
#include <string>

struct Route
{
    enum Object { logDevice, logName, definition, other };

    explicit Route(const char* key) noexcept;

    Object object;
    const char* name;           // the text behind the key's last backslash
    const char* templateClass;  // of a definition: the type of its templates; NULL for a key above them

    bool is(const char* wanted) const noexcept;  // the template class, by its name
};

// The first five parts of a path below the definitions of protocols, the protocol's name first; missing ones are
// empty, empty ones and those behind the fifth are skipped.
std::array<std::string, 5> protocolPath(const char* key);
