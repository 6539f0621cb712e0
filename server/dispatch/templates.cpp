#include "dispatch/templates.h"

#include <algorithm>

#include "dispatch/answers.h"
#include "dispatch/definitions.h"

namespace srv::templates {

namespace {

const catalogue::Values* valuesOf(const Call& call, TemplateType type, std::wstring_view name,
                                  std::wstring_view path = {})
{
    return templateValues(call.server.catalogue, type, name, path);
}

Result answerEnumValue(const Call& call, const catalogue::Values* values, std::uint32_t index, Capacity nameCapacity,
                       Capacity textCapacity)
{
    return values ? answerValueAt(call, *values, index, nameCapacity, textCapacity) : result::notFound;
}

Result answerOneValue(const Call& call, const catalogue::Values* values, std::wstring_view parameter,
                      Capacity capacity)
{
    return values ? answerValue(call, *values, parameter, capacity) : result::notFound;
}

std::wstring pathOf(const Text& part2, const Text& part3, const Text& part4, const Text& part5)
{
    std::wstring path;
    for (const Text* const part : {&part2, &part3, &part4, &part5})
        if (*part) path = joined(path, **part);
    return path;
}

// How the parameter of a template is described; nullptr if it is not.
const catalogue::ParameterDescription* describe(const catalogue::Catalogue& catalogue, TemplateType type,
                                                std::wstring_view name, std::wstring_view parameter)
{
    switch (type) {
        case TemplateType::Boards:
            return catalogue.describe(name, {}, parameter);
        case TemplateType::Protocols:
            return catalogue.describeForProtocol(name, parameter);
        case TemplateType::DefaultLogicalDevices:
            break;
    }
    const catalogue::DefaultLogicalDevice* const device = catalogue.defaultLogicalDevice(name);
    return device ? catalogue.describe(device->deviceId, device->protocol, parameter) : nullptr;
}

// An item of a list that is separated by commas or semicolons; nothing past the last.
Text itemOf(std::wstring_view list, std::uint32_t index) noexcept
{
    constexpr std::wstring_view separators = L",;";
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of(separators), list.size());
        std::wstring_view item = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        item.remove_prefix(std::min(item.find_first_not_of(L' '), item.size()));
        item = item.substr(0, item.find_last_not_of(L' ') + 1);
        if (!item.empty() && index-- == 0) return item;
    }
    return std::nullopt;
}

}  // namespace

Result getEnum(const Call& call, Required typeName, std::uint32_t index, Capacity capacity)
{
    const std::optional<TemplateType> type = templateTypeNamed(typeName);
    if (!type) return result::invalidParameter;
    const std::wstring* const name = templateAt(call.server.catalogue, *type, index);
    return name ? call.reply.text(*name, capacity.bytes) : result::noMoreItems;
}

// Names of templates have no prefix in this store.
Result getEnumNoPrefix(const Call& call, Required type, std::uint32_t index, Capacity capacity)
{
    return getEnum(call, type, index, capacity);
}

Result exists(const Call& call, Required typeName, Required name, std::uint32_t)
{
    const std::optional<TemplateType> type = templateTypeNamed(typeName);
    if (!type) return result::invalidParameter;
    if (*type != TemplateType::Protocols) return valuesOf(call, *type, name) ? result::ok : result::notFound;
    // A protocol's template is one of the keys below it, and its name a path.
    const PathParts parts = splitFirst(name);
    return valuesOf(call, *type, parts.first, parts.rest) ? result::ok : result::notFound;
}

Result keyExists(const Call& call, Required typeName, Required name, Text path, Text value)
{
    const std::optional<TemplateType> type = templateTypeNamed(typeName);
    if (!type) return result::invalidParameter;
    const std::wstring_view where = path.value_or(L"");
    const std::wstring_view parameter = value.value_or(L"");
    if (const catalogue::Values* const values = valuesOf(call, *type, name, where))
        return parameter.empty() || values->contains(parameter) ? result::ok : result::notFound;
    if (!parameter.empty()) return result::notFound;
    const PathEnd end = splitLast(where);
    const catalogue::Values* const values = valuesOf(call, *type, name, end.path);
    return values && values->contains(end.last) ? result::ok : result::notFound;
}

// What the parameter's description lists; for one without a list, the items of the value itself.
Result possibleValue(const Call& call, Required typeName, Required name, Required parameter, std::uint32_t index,
                     Capacity capacity)
{
    const std::optional<TemplateType> type = templateTypeNamed(typeName);
    if (!type) return result::invalidParameter;
    const PathEnd end = splitLast(parameter);
    const catalogue::Values* const values = valuesOf(call, *type, name, end.path);
    if (!values) return result::notFound;
    const auto* const description = describe(call.server.catalogue, *type, name, end.last);
    if (description && !description->items.empty()) {
        if (index >= description->items.size()) return result::noMoreItems;
        return call.reply.text(description->items[index].value, capacity.bytes);
    }
    const std::wstring* const value = catalogue::find(*values, end.last);
    if (!value) return result::notFound;
    const Text item = itemOf(*value, index);
    return item ? call.reply.text(*item, capacity.bytes) : result::noMoreItems;
}

Result boardEnumValue(const Call& call, Required board, std::uint32_t index, Capacity nameCapacity,
                      Capacity textCapacity)
{
    return answerEnumValue(call, valuesOf(call, TemplateType::Boards, board), index, nameCapacity, textCapacity);
}

Result defaultDeviceEnumValue(const Call& call, Required device, std::uint32_t index, Capacity nameCapacity,
                              Capacity textCapacity)
{
    return answerEnumValue(call, valuesOf(call, TemplateType::DefaultLogicalDevices, device), index, nameCapacity,
                           textCapacity);
}

Result defaultDeviceValue(const Call& call, Required device, Required parameter, Capacity capacity, Ignored)
{
    return answerOneValue(call, valuesOf(call, TemplateType::DefaultLogicalDevices, device), parameter, capacity);
}

Result protocolEnumValue(const Call& call, Required protocol, Text part2, Text part3, Text part4, Text part5,
                         std::uint32_t index, Capacity nameCapacity, Capacity textCapacity)
{
    return answerEnumValue(call,
                           valuesOf(call, TemplateType::Protocols, protocol, pathOf(part2, part3, part4, part5)),
                           index, nameCapacity, textCapacity);
}

Result protocolValue(const Call& call, Required protocol, Text part2, Text part3, Text part4, Text part5,
                     Required parameter, Capacity capacity, Ignored)
{
    return answerOneValue(call, valuesOf(call, TemplateType::Protocols, protocol, pathOf(part2, part3, part4, part5)),
                          parameter, capacity);
}

Result protocolValueRaw(const Call& call, Required protocol, Text path, Required parameter, Capacity capacity)
{
    return answerOneValue(call, valuesOf(call, TemplateType::Protocols, protocol, path.value_or(L"")), parameter,
                          capacity);
}

Result definitionValueRaw(const Call& call, Required device, Text path, Required parameter, Capacity capacity)
{
    return answerOneValue(call, valuesOf(call, TemplateType::DefaultLogicalDevices, device, path.value_or(L"")),
                          parameter, capacity);
}

}  // namespace srv::templates
