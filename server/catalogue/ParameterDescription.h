// What a parameter's value may be.
#pragma once

#include <vector>

#include "Texts.h"

namespace catalogue {

// One value of an enumeration.
struct EnumItem
{
    std::wstring value;   // holds no "/"
    LanguageTexts texts;  // empty where the value speaks for itself

    // The form in which lists of values travel: value "/" text, or the value alone where there is no text.
    std::wstring text(Language language) const;
};

struct ParameterDescription
{
    enum class Type { Int, Long, Word, Dword, Bool, String, Enum };

    Type type = Type::String;

    // The attributes that are described, as text: "type" always; "default"; for numbers "min", "max", "step", "base"
    // (min, max, step and default are written in that base).
    Values attributes;

    std::vector<EnumItem> items;  // of an enumeration, in the file's order

    // Whether a value is allowed: in the list (in any case), "true" or "false", or a number of the type within
    // minimum, maximum and step grid.
    bool accepts(std::wstring_view value) const;
};

// "int", "long", "word", "dword", "bool", "string", "enum".
std::wstring_view typeName(ParameterDescription::Type type);

}  // namespace catalogue
