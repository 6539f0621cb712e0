// Pieces of replies that several operations share.
#pragma once

#include <initializer_list>

#include "dispatch/Operation.h"

namespace srv {

// Lets `look` see what a device holds (a temporary device of the client's own first), and returns its result; 8012 if
// there is no such device.
template <typename Look>
Result withDevice(const Call& call, std::wstring_view device, Look look)
{
    if (const Content* const temporary = call.session.temporary(device)) return look(*temporary);
    return call.store().read([&](const Configuration& configuration) {
        const Object* const object = configuration.devices.find(device);
        return object ? look(object->content) : result::notFound;
    });
}

// The same for the values of a logical name.
template <typename Look>
Result withName(const Call& call, std::wstring_view name, Look look)
{
    return call.store().read([&](const Configuration& configuration) {
        const Object* const object = configuration.names.find(name);
        return object ? look(object->content.values) : result::notFound;
    });
}

// The value of a name.
Result answerValue(const Call& call, const ValueTable& values, std::wstring_view name, Capacity capacity);

// The name and text of the value at a position; 259 past the last.
Result answerValueAt(const Call& call, const ValueTable& values, std::uint32_t index, Capacity nameCapacity,
                     Capacity textCapacity);

// The same for what the catalogue defines.
Result answerValue(const Call& call, const catalogue::Values& values, std::wstring_view name, Capacity capacity);
Result answerValueAt(const Call& call, const catalogue::Values& values, std::uint32_t index, Capacity nameCapacity,
                     Capacity textCapacity);

// Several texts, each with its capacity. The first that does not fit makes the result 234.
struct TextAndCapacity
{
    std::wstring_view text;
    Capacity capacity;
};
Result answerTexts(const Call& call, std::initializer_list<TextAndCapacity> texts);

// The language that a client names by its two-letter code or its letter. NULL, empty or unknown stands for English.
catalogue::Language languageNamed(const Text& code);

// All values as one list: name, text, name, text, ...
Result answerValueList(const Call& call, const ValueTable& values, Capacity capacity);

// All names of a family as one list.
Result answerNameList(const Call& call, Family family, Capacity capacity);

}  // namespace srv
