#include "dispatch/metadata.h"

#include "dispatch/answers.h"
#include "store/Names.h"

namespace srv::metadata {

namespace {

// The path of an item's key; nothing for names that no key can have.
std::optional<std::wstring> keyOf(const Text& folder, const Text& subfolder, std::wstring_view item)
{
    std::wstring path = L"MetaData";
    const auto append = [&path](std::wstring_view part) {
        path += L'\\';
        path += part;
        return isObjectName(part);
    };
    bool good = append(folder && !folder->empty() ? *folder : L"data");
    if (subfolder && !subfolder->empty()) good = append(*subfolder) && good;
    if (!append(item) || !good) return std::nullopt;
    return path;
}

}  // namespace

Result get(const Call& call, Text folder, Text subfolder, Required item, Required parameter, Capacity capacity)
{
    const auto key = keyOf(folder, subfolder, item);
    if (!key) return result::invalidParameter;
    ValueTable values;
    if (const Result result = call.server.settings.read(*key, values)) return result;
    return answerValue(call, values, parameter, capacity);
}

Result set(const Call& call, Text folder, Text subfolder, Required item, Required parameter, Given text)
{
    const auto key = keyOf(folder, subfolder, item);
    return key ? call.server.settings.set(*key, parameter, text) : result::invalidParameter;
}

Result erase(const Call& call, Text subfolder, Required item, Required parameter)
{
    const auto key = keyOf(std::nullopt, subfolder, item);
    return key ? call.server.settings.erase(*key, parameter) : result::invalidParameter;
}

Result getEnum(const Call& call, Text folder, Text subfolder, Required item, std::uint32_t index,
               Capacity nameCapacity, Capacity textCapacity)
{
    const auto key = keyOf(folder, subfolder, item);
    if (!key) return result::invalidParameter;
    ValueTable values;
    if (const Result result = call.server.settings.read(*key, values)) return result;
    return answerValueAt(call, values, index, nameCapacity, textCapacity);
}

}  // namespace srv::metadata
