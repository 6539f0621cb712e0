#include "readers.h"

namespace catalogue {

void checkAgainstDescriptions(Errors& errors, const JsonValue& entry, const JsonValue& object,
                              const Describe& describe)
{
    for (const JsonMember& member : object.members) {
        const JsonValue::Kind kind = member.value.kind;
        if (kind != JsonValue::Kind::Text && kind != JsonValue::Kind::Integer && kind != JsonValue::Kind::Boolean)
            continue;
        const ParameterDescription* const description = describe(member.name);
        if (description && !description->accepts(member.value.text))
            errors.add(entry, member.value.begin, refusal(member.name, member.value.text, *description));
    }
}

void requireValue(Errors& errors, const JsonValue& object, const Values& values, std::wstring_view name)
{
    const std::wstring* const value = find(values, name);
    if (object.isObject() && (!value || value->empty()))
        errors.add(object.begin, L"The value " + inQuotes(name) + L" is missing here.");
}

void refuseValue(Errors& errors, const JsonValue* object, std::wstring_view name)
{
    if (!object) return;
    for (const JsonMember& member : object->members)
        if (equalNoCase(member.name, name))
            errors.add(member.begin,
                       L"The value " + inQuotes(name) + L" follows from the entry and is not written here.");
}

}  // namespace catalogue
