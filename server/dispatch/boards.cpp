#include "dispatch/boards.h"

#include "dispatch/answers.h"
#include "dispatch/definitions.h"

namespace srv::boards {

namespace {

// Lets `look` see the board that is named, or the one of the logical device that is; with the device's own values in
// the latter case, else nullptr.
template <typename Look>
Result withBoard(const Call& call, std::wstring_view name, Look look)
{
    const catalogue::Catalogue& catalogue = call.server.catalogue;
    if (const catalogue::Board* const board = boardNamed(catalogue, name)) return look(board, nullptr);
    return withDevice(call, name, [&](const Content& content) {
        const std::wstring* const deviceId = content.values.find(L"DeviceID");
        return look(deviceId ? catalogue.board(*deviceId) : nullptr, &content.values);
    });
}

// The text of a bus profile may be asked for by the profile's name, too.
const std::wstring* protocolText(const catalogue::Protocol& protocol, std::wstring_view id,
                                 catalogue::Language language)
{
    if (const std::wstring* const text = protocol.texts.find(id, language)) return text;
    const PathEnd end = splitLast(id);
    const catalogue::BusProfile* const profile =
        catalogue::equalNoCase(end.path, L"BusparamResource") ? protocol.busProfile(end.last) : nullptr;
    return profile ? protocol.texts.find(joined(end.path, profile->key), language) : nullptr;
}

const std::wstring* textOf(const catalogue::Catalogue& catalogue, TemplateType type, std::wstring_view name,
                           std::wstring_view id, catalogue::Language language)
{
    switch (type) {
        case TemplateType::Boards: {
            const catalogue::Board* const board = boardNamed(catalogue, name);
            return board ? board->texts.find(id, language) : nullptr;
        }
        case TemplateType::Protocols: {
            const catalogue::Protocol* const protocol = catalogue.protocol(name);
            return protocol ? protocolText(*protocol, id, language) : nullptr;
        }
        case TemplateType::DefaultLogicalDevices:
            break;
    }
    const catalogue::DefaultLogicalDevice* const device = catalogue.defaultLogicalDevice(name);
    return device ? device->texts.find(id, language) : nullptr;
}

bool wanted(const Text& filter, std::wstring_view text) noexcept
{
    return !filter || filter->empty() || catalogue::equalNoCase(*filter, text);
}

}  // namespace

Result attribute(const Call& call, Required name, Required parameter, Capacity capacity, Ignored)
{
    return withBoard(call, name, [&](const catalogue::Board* board, const ValueTable* own) {
        if (own && own->find(parameter)) return answerValue(call, *own, parameter, capacity);
        return board ? answerValue(call, board->tree.values, parameter, capacity) : result::notFound;
    });
}

// The client tells no capacity here.
Result attributeLang(const Call& call, Required name, Required parameter, Text language, Ignored)
{
    return withBoard(call, name, [&](const catalogue::Board* board, const ValueTable*) {
        if (!board) return result::notFound;
        const std::wstring* text = board->texts.find(parameter, languageNamed(language));
        if (!text) text = catalogue::find(board->tree.values, parameter);
        if (!text) return result::notFound;
        call.reply.text(*text);
        return result::ok;
    });
}

Result valueRaw(const Call& call, Required name, Text path, Required parameter, Capacity capacity)
{
    const catalogue::Board* const board = boardNamed(call.server.catalogue, name);
    const catalogue::Node* const key = board ? board->tree.at(path.value_or(L"")) : nullptr;
    return key ? answerValue(call, key->values, parameter, capacity) : result::notFound;
}

// A value that is the same in all languages has no text of its own and is told as it is.
Result resourceString(const Call& call, Required folder, Required subfolder, Required id, Text language,
                      Capacity capacity, Ignored)
{
    const std::optional<TemplateType> type = templateTypeNamed(folder);
    if (!type) return result::invalidParameter;
    const std::wstring* text = textOf(call.server.catalogue, *type, subfolder, id, languageNamed(language));
    if (!text) {
        const PathEnd end = splitLast(id);
        const catalogue::Values* const values = templateValues(call.server.catalogue, *type, subfolder, end.path);
        text = values ? catalogue::find(*values, end.last) : nullptr;
    }
    return text ? call.reply.text(*text, capacity.bytes) : result::notFound;
}

Result notSupported(const Call& call, Required name, Capacity capacity)
{
    const catalogue::Board* const board = boardNamed(call.server.catalogue, name);
    if (!board) return result::notFound;
    ListWriter list(call.reply, capacity.bytes);
    for (const std::wstring& item : board->notSupported)
        if (!list.add(item)) break;
    return list.finish();
}

Result enumConfiguration(const Call& call, std::uint32_t index, Required name, Text protocol, Text l4Protocol,
                         Text unit, Capacity deviceCapacity, Capacity protocolCapacity, Capacity l4Capacity,
                         Capacity unitCapacity)
{
    const catalogue::Board* const board = boardNamed(call.server.catalogue, name);
    if (!board) return result::notFound;
    for (const catalogue::Configuration& use : board->configurations) {
        if (!wanted(protocol, use.protocol) || !wanted(l4Protocol, use.l4Protocol) || !wanted(unit, use.unit))
            continue;
        if (index-- > 0) continue;
        return answerTexts(call, {{use.logicalDevice, deviceCapacity},
                                  {use.protocol, protocolCapacity},
                                  {use.l4Protocol, l4Capacity},
                                  {use.unit, unitCapacity}});
    }
    return result::noMoreItems;
}

}  // namespace srv::boards
