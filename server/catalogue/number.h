// Numbers in the texts of parameter descriptions.
#pragma once

#include <optional>
#include <string_view>

#include "ParameterDescription.h"

namespace catalogue {

struct NumberRange
{
    long long lowest;
    long long highest;
};

// What a number of this type may be.
NumberRange rangeOf(ParameterDescription::Type type);

// The whole text as a number in a base of 2 to 35, with an optional "-" in front; nothing for any other text, or for
// a number of more than 40 bits.
std::optional<long long> parseNumber(std::wstring_view text, int base);

std::optional<ParameterDescription::Type> typeFromName(std::wstring_view name);

}  // namespace catalogue
