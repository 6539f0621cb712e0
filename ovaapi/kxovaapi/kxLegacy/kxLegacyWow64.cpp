#include "kxLegacy/kxLegacyWow64.h"

#include <cstring>
#include <string_view>

#include "Kxotrc.h"

namespace {

constexpr char function[] = "getWoW64Node: ";
constexpr std::string_view software = "software\\";
constexpr std::string_view node = "wow6432node";

std::string lowerCase(std::string text)
{
    _strlwr(text.data());
    return text;
}

}  // namespace

void getWoW64Node(std::string& path)
{
    KXTRACE(function, TRC_ENTRY, ">> Begin(): %s", path.c_str());
    const std::string lower = lowerCase(path);
    if (lower.starts_with(software) && lower.find(node) == std::string::npos) {
        // The backslash behind "software" stays and ends the node.
        path.replace(0, software.size() - 1, std::string(software).append(node));
    }
    KXTRACE(function, TRC_RESULT, "<< End(): %s", path.c_str());
}
