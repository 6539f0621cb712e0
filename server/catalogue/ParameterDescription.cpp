#include "ParameterDescription.h"

#include <algorithm>
#include <array>

#include "number.h"

namespace catalogue {

namespace {

constexpr std::array<std::wstring_view, 7> typeNames{L"int", L"long", L"word", L"dword", L"bool", L"string", L"enum"};

}  // namespace

std::wstring_view typeName(ParameterDescription::Type type)
{
    return typeNames[static_cast<std::size_t>(type)];
}

std::optional<ParameterDescription::Type> typeFromName(std::wstring_view name)
{
    const auto at = std::find(typeNames.begin(), typeNames.end(), name);
    if (at == typeNames.end()) return std::nullopt;
    return static_cast<ParameterDescription::Type>(at - typeNames.begin());
}

NumberRange rangeOf(ParameterDescription::Type type)
{
    using Type = ParameterDescription::Type;
    switch (type) {
        case Type::Word:
            return {0, 0xFFFF};
        case Type::Dword:
            return {0, 0xFFFFFFFF};
        default:
            return {-0x7FFFFFFFLL - 1, 0x7FFFFFFF};
    }
}

std::wstring EnumItem::text(Language language) const
{
    return texts.empty() ? value : value + L"/" + textIn(texts, language);
}

bool ParameterDescription::accepts(std::wstring_view value) const
{
    switch (type) {
        case Type::String:
            return true;
        case Type::Bool:
            return equalNoCase(value, L"true") || equalNoCase(value, L"false");
        case Type::Enum:
            return std::any_of(items.begin(), items.end(),
                               [&](const EnumItem& item) { return equalNoCase(item.value, value); });
        default:
            break;
    }
    const auto attribute = [&](std::wstring_view name, int base) {
        const std::wstring* const text = find(attributes, name);
        return text ? parseNumber(*text, base) : std::nullopt;
    };
    const int base = static_cast<int>(attribute(L"base", 10).value_or(10));
    const std::optional<long long> number = parseNumber(value, base);
    const NumberRange range = rangeOf(type);
    if (!number || *number < range.lowest || *number > range.highest) return false;
    const std::optional<long long> minimum = attribute(L"min", base);
    const std::optional<long long> maximum = attribute(L"max", base);
    const std::optional<long long> step = attribute(L"step", base);
    if (minimum && *number < *minimum) return false;
    if (maximum && *number > *maximum) return false;
    return !step || *step < 2 || !minimum || (*number - *minimum) % *step == 0;
}

}  // namespace catalogue
