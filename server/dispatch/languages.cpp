#include "dispatch/languages.h"

#include <algorithm>

#include "dispatch/answers.h"

namespace srv::languages {

namespace {

using catalogue::Language;

// The catalogue's text of a value that nobody has changed since it came from there; else nullptr.
const std::wstring* original(const catalogue::Values& given, const catalogue::Texts& texts,
                             std::wstring_view parameter, std::wstring_view value, Language language)
{
    const std::wstring* const before = catalogue::find(given, parameter);
    return before && *before == value ? texts.find(parameter, language) : nullptr;
}

// The text of a possible value; else nullptr.
const std::wstring* described(const catalogue::ParameterDescription* description, std::wstring_view value,
                              Language language)
{
    if (!description) return nullptr;
    const auto& items = description->items;
    const auto at = std::find_if(items.begin(), items.end(), [&](const catalogue::EnumItem& item) {
        return catalogue::equalNoCase(item.value, value);
    });
    return at == items.end() || at->texts.empty() ? nullptr : &catalogue::textIn(at->texts, language);
}

}  // namespace

Result deviceValue(const Call& call, Required device, Required parameter, Text code, Ignored)
{
    return withDevice(call, device, [&](const Content& content) {
        const std::wstring* const value = content.values.find(parameter);
        if (!value) return result::notFound;
        const catalogue::Catalogue& catalogue = call.server.catalogue;
        const std::wstring_view board = content.values.textOf(L"DeviceID");
        const std::wstring_view protocol = content.values.textOf(L"CP_TYPE");
        const Language language = languageNamed(code);
        const std::wstring* text = nullptr;
        for (const auto& [name, origin] : catalogue.defaultLogicalDevices) {
            if (text) break;
            if (catalogue::equalNoCase(origin.deviceId, board) && catalogue::equalNoCase(origin.protocol, protocol)) {
                text = original(origin.values, origin.texts, parameter, *value, language);
            }
        }
        if (!text) text = described(catalogue.describe(board, protocol, parameter), *value, language);
        call.reply.text(text ? *text : *value);
        return result::ok;
    });
}

Result nameValue(const Call& call, Required name, Required parameter, Text code, Capacity capacity, Ignored)
{
    return withName(call, name, [&](const ValueTable& values) {
        const std::wstring* const value = values.find(parameter);
        if (!value) return result::notFound;
        const catalogue::Catalogue& catalogue = call.server.catalogue;
        const Language language = languageNamed(code);
        const catalogue::LogicalName* const origin = catalogue::find(catalogue.logicalNames, name);
        const std::wstring* text =
            origin ? original(origin->values, origin->texts, parameter, *value, language) : nullptr;
        if (!text) {
            const std::wstring_view protocol = values.textOf(L"CP_TYPE");
            text = described(catalogue.describeForProtocol(protocol, parameter), *value, language);
        }
        return call.reply.text(text ? *text : *value, capacity.bytes);
    });
}

}  // namespace srv::languages
