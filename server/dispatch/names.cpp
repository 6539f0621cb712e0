#include "dispatch/names.h"

#include "dispatch/answers.h"

namespace srv::names {

Result exists(const Call& call, Required name, std::uint32_t)
{
    return withName(call, name, [](const ValueTable&) { return result::ok; });
}

Result create(const Call& call, Required name)
{
    return call.store().create(Family::Name, name, {});
}

// Whether the name may be deleted is the client's question.
Result remove(const Call& call, Required name)
{
    return call.store().remove(Family::Name, name);
}

Result getEnum(const Call& call, std::uint32_t index, Capacity capacity)
{
    return call.store().read([&](const Configuration& configuration) {
        const ObjectTable& objects = configuration.names;
        return index < objects.size() ? call.reply.text(objects[index].name, capacity.bytes) : result::noMoreItems;
    });
}

Result getValue(const Call& call, Required name, Required parameter, Capacity capacity)
{
    return withName(call, name,
                    [&](const ValueTable& values) { return answerValue(call, values, parameter, capacity); });
}

Result setValue(const Call& call, Required name, Required parameter, Given text)
{
    return call.store().setValue(Family::Name, name, Section::Values, parameter, text);
}

Result deleteValue(const Call& call, Required name, Required parameter)
{
    return call.store().deleteValue(Family::Name, name, Section::Values, parameter);
}

Result getEnumValue(const Call& call, Required name, std::uint32_t index, Capacity nameCapacity,
                    Capacity textCapacity)
{
    return withName(call, name, [&](const ValueTable& values) {
        return answerValueAt(call, values, index, nameCapacity, textCapacity);
    });
}

Result list(const Call& call, Capacity capacity)
{
    return answerNameList(call, Family::Name, capacity);
}

Result valueList(const Call& call, Required name, Text subkey, Text, Ignored, Capacity capacity)
{
    return withName(call, name, [&](const ValueTable& values) {
        if (subkey && !subkey->empty()) return result::notFound;  // names have no subkeys
        return answerValueList(call, values, capacity);
    });
}

}  // namespace srv::names
