#include "number.h"

namespace catalogue {

namespace {

int digitOf(wchar_t character)
{
    if (character >= L'0' && character <= L'9') return character - L'0';
    if (character >= L'a' && character <= L'z') return character - L'a' + 10;
    if (character >= L'A' && character <= L'Z') return character - L'A' + 10;
    return 99;
}

}  // namespace

std::optional<long long> parseNumber(std::wstring_view text, int base)
{
    constexpr long long limit = 1LL << 40;
    const bool negative = !text.empty() && text.front() == L'-';
    if (negative) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    long long number = 0;
    for (const wchar_t character : text) {
        const int digit = digitOf(character);
        if (digit >= base) return std::nullopt;
        number = number * base + digit;
        if (number > limit) return std::nullopt;
    }
    return negative ? -number : number;
}

}  // namespace catalogue
