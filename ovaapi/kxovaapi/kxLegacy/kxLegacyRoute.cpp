#include "kxLegacy/kxLegacyRoute.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "kxLegacy/kxLegacyKeys.h"

namespace {

// Compared over the prefix alone: what follows it need not be a new part of the path.
bool startsWith(const char* key, std::string_view prefix) noexcept
{
    return _strnicmp(key, prefix.data(), prefix.size()) == 0;
}

Route::Object objectOf(const char* key) noexcept
{
    if (startsWith(key, keys::logDevices)) return Route::logDevice;
    if (startsWith(key, keys::logNames)) return Route::logName;
    if (startsWith(key, keys::definitions)) return Route::definition;
    return Route::other;
}

const char* templateClassOf(const char* key) noexcept
{
    if (startsWith(key, keys::boardDefinitions)) return "Boards";
    if (startsWith(key, keys::protocolDefinitions)) return "Protocols";
    if (startsWith(key, keys::logDeviceDefinitions)) return "DefaultLogDevices";
    return nullptr;
}

const char* lastPart(const char* key) noexcept
{
    const char* const separator = std::strrchr(key, '\\');
    return separator ? separator + 1 : key;
}

}  // namespace

Route::Route(const char* key) noexcept
    : object(objectOf(key)), name(lastPart(key)), templateClass(templateClassOf(key))
{}

bool Route::is(const char* wanted) const noexcept
{
    return templateClass && std::strcmp(templateClass, wanted) == 0;
}

std::array<std::string, 5> protocolPath(const char* key)
{
    std::array<std::string, 5> parts;
    std::string_view rest = std::string_view(key).substr(std::string_view(keys::protocolDefinitions).size());
    rest.remove_prefix(std::min(rest.find('\\'), rest.size()));
    for (std::string& part : parts) {
        rest.remove_prefix(std::min(rest.find_first_not_of('\\'), rest.size()));
        const std::size_t length = std::min(rest.find('\\'), rest.size());
        part = rest.substr(0, length);
        rest.remove_prefix(length);
    }
    return parts;
}
