#include "dispatch/devices.h"

#include <optional>

#include "dispatch/answers.h"
#include "dispatch/templates.h"
#include "store/Names.h"

namespace srv::devices {

namespace {

const ValueTable& section(const Content& content, Section section) noexcept
{
    return section == Section::Ndi ? content.ndi : content.values;
}

// Which values a subkey's name stands for; nothing for one that devices do not have.
std::optional<Section> sectionNamed(const Text& subkey) noexcept
{
    if (!subkey || subkey->empty()) return Section::Values;
    if (catalogue::equalNoCase(*subkey, ndiKey)) return Section::Ndi;
    return std::nullopt;
}

Result set(const Call& call, std::wstring_view device, Section in, std::wstring_view parameter,
           std::wstring_view text)
{
    Content* const temporary = call.session.temporary(device);
    if (!temporary) return call.store().setValue(Family::Device, device, in, parameter, text);
    if (!isValueName(parameter) || !isValueText(text)) return result::invalidParameter;
    (in == Section::Ndi ? temporary->ndi : temporary->values).set(parameter, text);
    return result::ok;
}

Result erase(const Call& call, std::wstring_view device, Section in, std::wstring_view parameter)
{
    Content* const temporary = call.session.temporary(device);
    if (!temporary) return call.store().deleteValue(Family::Device, device, in, parameter);
    return (in == Section::Ndi ? temporary->ndi : temporary->values).erase(parameter) ? result::ok : result::notFound;
}

Result snapshot(const Call& call, std::wstring_view device, Content& content)
{
    return withDevice(call, device, [&](const Content& found) {
        content = found;
        return result::ok;
    });
}

}  // namespace

Result setTogether(const Call& call, std::wstring_view device, const catalogue::Values& values)
{
    Content* const temporary = call.session.temporary(device);
    if (!temporary) return call.store().setValues(Family::Device, device, values);
    for (const auto& [parameter, text] : values)
        temporary->values.set(parameter, text);
    return result::ok;
}

Result exists(const Call& call, Required device, std::uint32_t)
{
    return withDevice(call, device, [](const Content&) { return result::ok; });
}

Result getEnum(const Call& call, Text netType, std::uint32_t index, Capacity capacity)
{
    return call.store().read([&](const Configuration& configuration) {
        const ObjectTable& objects = configuration.devices;
        const Object* object = nullptr;
        if (netType && !netType->empty()) {
            object = objects.inGroup(*netType, index);
        } else if (index < objects.size()) {
            object = &objects[index];
        }
        return object ? call.reply.text(object->name, capacity.bytes) : result::noMoreItems;
    });
}

Result createFromDef(const Call& call, Required device, Required definition)
{
    const catalogue::DefaultLogicalDevice* const made = call.server.catalogue.defaultLogicalDevice(definition);
    if (!made) return result::notFound;
    if (isTemporaryName(device)) return result::invalidParameter;
    return call.store().create(Family::Device, device, {ValueTable(made->values), ValueTable(made->ndiValues)});
}

Result copy(const Call& call, Required from, Required to)
{
    if (isTemporaryName(to)) return result::invalidParameter;
    Content content;
    if (const Result result = snapshot(call, from, content)) return result;
    return call.store().create(Family::Device, to, std::move(content));
}

Result remove(const Call& call, Required device, Ignored)
{
    if (call.session.temporary(device)) return call.session.removeTemporary(device);
    return call.store().remove(Family::Device, device);
}

Result getValue(const Call& call, Required device, Required parameter, Capacity capacity)
{
    return withDevice(call, device,
                      [&](const Content& content) { return answerValue(call, content.values, parameter, capacity); });
}

Result setValue(const Call& call, Required device, Required parameter, Given text)
{
    return set(call, device, Section::Values, parameter, text);
}

Result deleteValue(const Call& call, Required device, Required parameter)
{
    return erase(call, device, Section::Values, parameter);
}

Result getEnumValue(const Call& call, Required device, std::uint32_t index, Capacity nameCapacity,
                    Capacity textCapacity)
{
    return withDevice(call, device, [&](const Content& content) {
        return answerValueAt(call, content.values, index, nameCapacity, textCapacity);
    });
}

Result getValueRaw(const Call& call, Required device, Text subkey, Ignored, Required parameter, Capacity capacity)
{
    return withDevice(call, device, [&](const Content& content) {
        const std::optional<Section> in = sectionNamed(subkey);
        return in ? answerValue(call, section(content, *in), parameter, capacity) : result::notFound;
    });
}

Result getNdi(const Call& call, Required device, Required parameter, Capacity capacity, Ignored)
{
    return withDevice(call, device,
                      [&](const Content& content) { return answerValue(call, content.ndi, parameter, capacity); });
}

Result setNdi(const Call& call, Required device, Required parameter, Given text, Ignored)
{
    return set(call, device, Section::Ndi, parameter, text);
}

Result deleteNdi(const Call& call, Required device, Required parameter, Ignored)
{
    return erase(call, device, Section::Ndi, parameter);
}

Result getEnumNdi(const Call& call, Required device, std::uint32_t index, Capacity nameCapacity,
                  Capacity textCapacity, Ignored)
{
    return withDevice(call, device, [&](const Content& content) {
        return answerValueAt(call, content.ndi, index, nameCapacity, textCapacity);
    });
}

namespace {

Result listAll(const Call& call, Capacity capacity)
{
    return answerNameList(call, Family::Device, capacity);
}

Result listOfNetType(const Call& call, Text netType, Capacity capacity)
{
    if (!netType || netType->empty()) return listAll(call, capacity);
    return call.store().read([&](const Configuration& configuration) {
        ListWriter list(call.reply, capacity.bytes);
        for (std::size_t index = 0;; ++index) {
            const Object* const object = configuration.devices.inGroup(*netType, index);
            if (!object || !list.add(object->name)) break;
        }
        return list.finish();
    });
}

}  // namespace

Outcome list(const Call& call, RequestReader& reader, std::string* shown)
{
    return reader.remaining() <= sizeof(std::uint32_t) ? handledBy<listAll>(call, reader, shown)
                                                       : handledBy<listOfNetType>(call, reader, shown);
}

Result valueList(const Call& call, Required device, Text subkey, Text, Ignored, Capacity capacity)
{
    return withDevice(call, device, [&](const Content& content) {
        const std::optional<Section> in = sectionNamed(subkey);
        return in ? answerValueList(call, section(content, *in), capacity) : result::notFound;
    });
}

Result createTemp(const Call& call, Required device, Capacity capacity)
{
    Content content;
    if (const Result result = snapshot(call, device, content)) return result;
    std::wstring name;
    if (const Result result = call.session.createTemporary(std::move(content), name)) return result;
    const Result result = call.reply.text(name, capacity.bytes);
    // A copy whose name the client does not learn would only take room.
    if (result != result::ok) call.session.removeTemporary(name);
    return result;
}

Result deleteTemp(const Call& call, Required temporary)
{
    return call.session.removeTemporary(temporary);
}

Result updateWithTemp(const Call& call, Required temporary, Required device)
{
    const Content* const content = call.session.temporary(temporary);
    return content ? call.store().replace(Family::Device, device, *content) : result::notFound;
}

namespace {

// A text, an index and two capacities. The only template request of that length has three texts that are empty or
// NULL behind its first, and no client has room for so little or so much.
bool isEnumeration(std::span<const std::uint8_t> fields) noexcept
{
    RequestReader reader(fields);
    Text name;
    std::uint32_t numbers[3] = {};
    reader.text(name);
    for (std::uint32_t& number : numbers)
        reader.u32(number);
    const auto isNoText = [](std::uint32_t number) { return number == 0 || number == ::wire::nullString; };
    return reader.atEnd() && !(isNoText(numbers[0]) && isNoText(numbers[1]) && isNoText(numbers[2]));
}

}  // namespace

Outcome enumValueOrTemplate(const Call& call, RequestReader& reader, std::string* shown)
{
    return isEnumeration(reader.rest()) ? handledBy<getEnumValue>(call, reader, shown)
                                        : handledBy<templates::keyExists>(call, reader, shown);
}

}  // namespace srv::devices
