#include "dispatch/answers.h"

namespace srv {

Result answerValue(const Call& call, const ValueTable& values, std::wstring_view name, Capacity capacity)
{
    const std::wstring* const text = values.find(name);
    return text ? call.reply.text(*text, capacity.bytes) : result::notFound;
}

Result answerValueAt(const Call& call, const ValueTable& values, std::uint32_t index, Capacity nameCapacity,
                     Capacity textCapacity)
{
    if (index >= values.size()) return result::noMoreItems;
    const Value& value = values[index];
    if (const Result result = call.reply.text(value.name, nameCapacity.bytes)) return result;
    return call.reply.text(value.text, textCapacity.bytes);
}

Result answerValueList(const Call& call, const ValueTable& values, Capacity capacity)
{
    ListWriter list(call.reply, capacity.bytes);
    for (const Value& value : values)
        if (!list.add(value.name) || !list.add(value.text)) break;
    return list.finish();
}

Result answerNameList(const Call& call, Family family, Capacity capacity)
{
    return call.store().read([&](const Configuration& configuration) {
        const ObjectTable& objects = configuration.of(family);
        ListWriter list(call.reply, capacity.bytes);
        for (std::size_t index = 0; index < objects.size() && list.add(objects[index].name); ++index) {
        }
        return list.finish();
    });
}

}  // namespace srv
