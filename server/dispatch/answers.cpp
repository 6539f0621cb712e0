#include "dispatch/answers.h"

#include <iterator>

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
    return answerTexts(call, {{values[index].name, nameCapacity}, {values[index].text, textCapacity}});
}

Result answerValue(const Call& call, const catalogue::Values& values, std::wstring_view name, Capacity capacity)
{
    const std::wstring* const text = catalogue::find(values, name);
    return text ? call.reply.text(*text, capacity.bytes) : result::notFound;
}

Result answerValueAt(const Call& call, const catalogue::Values& values, std::uint32_t index, Capacity nameCapacity,
                     Capacity textCapacity)
{
    if (index >= values.size()) return result::noMoreItems;
    const auto& [name, text] = *std::next(values.begin(), static_cast<std::ptrdiff_t>(index));
    return answerTexts(call, {{name, nameCapacity}, {text, textCapacity}});
}

Result answerTexts(const Call& call, std::initializer_list<TextAndCapacity> texts)
{
    for (const auto& [text, capacity] : texts)
        if (const Result result = call.reply.text(text, capacity.bytes)) return result;
    return result::ok;
}

catalogue::Language languageNamed(const Text& code)
{
    return catalogue::languageFromCode(code.value_or(L"")).value_or(catalogue::Language::En);
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
