#include "model.h"

#include <algorithm>
#include <limits>

namespace {

std::string lower(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    }
    return text;
}

// -1: no digit at all.
int digitOf(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    return -1;
}

struct Magnitude
{
    std::int64_t value = 0;  // at most 10^12, far above what any type holds
    bool negative = false;
};

Magnitude magnitudeOf(const std::string& text, int base)
{
    constexpr std::int64_t enough = 1000000000000;
    Magnitude number;
    std::size_t at = text.find_first_not_of(" \t\n\v\f\r");
    if (at == std::string::npos) return number;
    if (text[at] == '+' || text[at] == '-') number.negative = text[at++] == '-';
    if (base == 16 && at + 1 < text.size() && text[at] == '0' && lower(text.substr(at + 1, 1)) == "x") at += 2;
    for (; at < text.size() && digitOf(text[at]) >= 0 && digitOf(text[at]) < base; ++at)
        number.value = std::min(enough, number.value * base + digitOf(text[at]));
    return number;
}

std::string attributeOf(const Description& description, const char* name, const char* missing)
{
    const auto found = description.attributes.find(name);
    return found == description.attributes.end() ? missing : found->second;
}

}  // namespace

std::int64_t modelOfANumber(const std::string& text, const std::string& type, const std::string& baseText)
{
    const Magnitude written = magnitudeOf(baseText, 10);
    int base = written.negative || written.value > 35 ? 10 : static_cast<int>(written.value);
    if (base < 2) base = 10;

    const Magnitude number = magnitudeOf(text, base);
    if (lower(type) == "int" || lower(type) == "long") {
        const std::int64_t value = number.negative ? -number.value : number.value;
        return std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                        std::numeric_limits<std::int32_t>::max());
    }
    constexpr std::int64_t largest = std::numeric_limits<std::uint32_t>::max();
    // The platform's conversion cuts first and changes the sign then.
    const std::int64_t value = std::min(number.value, largest);
    return number.negative && value != 0 ? largest + 1 - value : value;
}

Verdict modelOfTheCheck(const Description& description, const std::string& given)
{
    if (!description.attributes.contains("type")) return {0, given};
    const std::string type = lower(attributeOf(description, "type", ""));
    if (type == "string") return {0, given};
    if (type == "bool") return {lower(given) == "true" || lower(given) == "false" ? 0 : 8052, given};
    if (type == "enum") {
        const bool listed = std::any_of(
            description.items.begin(), description.items.end(),
            [&](const std::string& item) { return lower(item.substr(0, item.find('/'))) == lower(given); });
        return {listed ? 0 : 8050, given};
    }

    const std::string min = attributeOf(description, "min", "");
    const std::string max = attributeOf(description, "max", "");
    const std::string step = attributeOf(description, "step", "");
    const std::string base = attributeOf(description, "base", "10");
    std::string value = given;
    if (lower(given) == "min") value = min;
    if (lower(given) == "max") value = max;
    if (lower(given) == "default") value = attributeOf(description, "default", "");
    if (value.empty()) return {87, value};

    const auto number = [&](const std::string& text) { return modelOfANumber(text, type, base); };
    const std::int64_t seen = min.empty() ? 0 : number(value);
    if (!min.empty() && seen < number(min)) return {8054, value};
    if (!max.empty() && seen > number(max)) return {8056, value};
    if (!min.empty() && !step.empty() && number(step) >= 2 && (seen - number(min)) % number(step) != 0) {
        return {8058, value};
    }
    return {0, value};
}
