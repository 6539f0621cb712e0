#include <algorithm>
#include <array>

#include "Fields.h"
#include "number.h"
#include "readers.h"

namespace catalogue {

namespace {

using Type = ParameterDescription::Type;

bool isNumber(Type type)
{
    return type != Type::Bool && type != Type::String && type != Type::Enum;
}

Type readType(Errors& errors, const JsonValue& value)
{
    const std::wstring name = readText(errors, value, L"The type of a parameter");
    const std::optional<Type> type = typeFromName(name);
    if (!type && !name.empty()) {
        constexpr std::array<std::wstring_view, 7> names{L"int",  L"long",   L"word", L"dword",
                                                         L"bool", L"string", L"enum"};
        errors.add(value.begin, inQuotes(name) +
                                    L" is no type of a parameter (int, long, word, dword, bool, string, enum)" +
                                    endWithSuggestion(name, names));
    }
    return type.value_or(Type::String);
}

class DescriptionReader
{
 public:
    DescriptionReader(Errors& errors, const JsonValue& value)
        : errors_(errors),
          fields_(errors, value, L"a parameter description",
                  {L"type", L"min", L"max", L"step", L"base", L"default", L"unit", L"items"})
    {}

    ParameterDescription read()
    {
        const JsonValue* const type = fields_.required(L"type");
        if (type) result_.type = readType(errors_, *type);
        result_.attributes[L"type"] = typeName(result_.type);
        readBase();
        const std::optional<long long> minimum = readLimit(L"min");
        const std::optional<long long> maximum = readLimit(L"max");
        if (minimum && maximum && *minimum > *maximum)
            errors_.add(fields_.optional(L"max")->begin, L"The maximum is less than the minimum.");
        const std::optional<long long> step = readLimit(L"step");
        if (step && *step < 1) errors_.add(fields_.optional(L"step")->begin, L"The step must be at least 1.");
        readItems();
        if (const JsonValue* const unit = fields_.optional(L"unit"))
            result_.attributes[L"unit"] = readText(errors_, *unit, L"The unit of a parameter");
        if (type) readDefault();
        return std::move(result_);
    }

 private:
    // True when the attribute is there and the type has such a one.
    bool ofNumber(std::wstring_view name) const
    {
        const JsonValue* const value = fields_.optional(name);
        if (!value) return false;
        if (isNumber(result_.type)) return true;
        errors_.add(value->begin, L"A parameter of the type " + inQuotes(typeName(result_.type)) + L" has no " +
                                      inQuotes(name) + L".");
        return false;
    }

    void readBase()
    {
        if (!ofNumber(L"base")) return;
        const JsonValue& value = *fields_.optional(L"base");
        // Clients take every other base for 10.
        const std::uint32_t base = readNumber(errors_, value, L"The base of a number", 35).value_or(10);
        if (base < 2) errors_.add(value.begin, L"The base of a number must be a number from 2 to 35.");
        if (base >= 2) base_ = static_cast<int>(base);
        result_.attributes[L"base"] = std::to_wstring(base_);
    }

    std::optional<long long> readLimit(std::wstring_view name)
    {
        if (!ofNumber(name)) return std::nullopt;
        const JsonValue& value = *fields_.optional(name);
        const std::wstring text = readScalar(errors_, value, L"The value " + inQuotes(name));
        if (base_ != 10 && value.kind == JsonValue::Kind::Integer) {
            errors_.add(value.begin, L"With the base " + std::to_wstring(base_) +
                                         L", a number is written as a text, since a plain number would be decimal.");
            return std::nullopt;
        }
        const std::optional<long long> number = parseNumber(text, base_);
        const NumberRange range = rangeOf(result_.type);
        if (!number || *number < range.lowest || *number > range.highest) {
            errors_.add(value.begin, inQuotes(text) + L" is no number of the type " +
                                         inQuotes(typeName(result_.type)) + L" in base " + std::to_wstring(base_) +
                                         L".");
            return std::nullopt;
        }
        result_.attributes.insert_or_assign(std::wstring(name), text);
        return number;
    }

    void readItems()
    {
        const bool wanted = result_.type == Type::Enum;
        const JsonValue* const list = wanted ? fields_.required(L"items") : fields_.optional(L"items");
        if (!list) return;
        if (!wanted) {
            errors_.add(list->begin,
                        L"A parameter of the type " + inQuotes(typeName(result_.type)) + L" has no \"items\".");
            return;
        }
        if (list->kind != JsonValue::Kind::List) reportKind(errors_, *list, L"\"items\"", L"a list");
        if (list->kind == JsonValue::Kind::List && list->items.empty())
            errors_.add(list->begin, L"An enumeration needs at least one value.");
        for (const JsonValue& item : list->items)
            readItem(item);
    }

    void readItem(const JsonValue& item)
    {
        const JsonValue* value = &item;
        EnumItem result;
        if (item.isObject()) {
            const Fields fields(errors_, item, L"a value of an enumeration", {L"value", L"text"});
            value = fields.required(L"value");
            if (const JsonValue* const text = fields.required(L"text"))
                result.texts = readLanguageTexts(errors_, *text);
        }
        if (!value) return;

        result.value = readScalar(errors_, *value, L"A value of an enumeration");
        if (value->kind == JsonValue::Kind::Text && value->text.empty())
            errors_.add(value->begin, L"A value of an enumeration must not be empty.");
        if (result.value.empty()) return;
        if (result.value.find(L'/') != std::wstring::npos)
            errors_.add(value->begin,
                        L"A value of an enumeration must not hold \"/\", which separates it from its text.");
        if (result_.accepts(result.value))
            errors_.add(value->begin, inQuotes(result.value) + L" stands twice in this enumeration.");
        result_.items.push_back(std::move(result));
    }

    void readDefault()
    {
        const JsonValue* const value = fields_.optional(L"default");
        if (!value) return;
        const std::wstring text = readScalar(errors_, *value, L"The default value");
        result_.attributes[L"default"] = text;
        if (result_.type == Type::Enum && result_.items.empty()) return;
        if (!result_.accepts(text)) errors_.add(value->begin, refusal(L"default", text, result_));
    }

    Errors& errors_;
    Fields fields_;
    ParameterDescription result_;
    int base_ = 10;
};

}  // namespace

Map<ParameterDescription> readParameters(Errors& errors, const JsonValue* section)
{
    Map<ParameterDescription> parameters;
    for (const JsonMember* const member : readEntries(errors, section, L"\"parameters\""))
        parameters[member->name] = DescriptionReader(errors, member->value).read();
    return parameters;
}

std::wstring refusal(std::wstring_view parameter, std::wstring_view value, const ParameterDescription& description)
{
    std::wstring text = L"The value " + inQuotes(value) + L" of " + inQuotes(parameter) + L" is not allowed: ";
    if (description.type == Type::Bool) return text + L"it must be true or false.";
    if (description.type == Type::Enum) {
        std::vector<std::wstring_view> values;
        for (const EnumItem& item : description.items)
            values.push_back(item.value);
        return text + L"it is not in the parameter's enumeration" + endWithSuggestion(value, values);
    }
    text += L"it must be a number of the type " + inQuotes(typeName(description.type));
    for (const std::wstring_view name : {L"min", L"max", L"step", L"base"})
        if (const std::wstring* const attribute = find(description.attributes, name))
            text += L", " + std::wstring(name) + L" " + *attribute;
    return text + L".";
}

}  // namespace catalogue
