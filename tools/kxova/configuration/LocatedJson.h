// JSON that knows where it stood in its file, so that every mistake in it can be shown.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct LocatedJson
{
    enum class Kind { Null, Bool, Number, Text, Array, Object };

    Kind kind = Kind::Null;
    int line = 1;
    std::string text;                                          // of a text; a number as it is written
    std::vector<LocatedJson> items;                            // of an array
    std::vector<std::pair<std::string, LocatedJson>> members;  // of an object, repeated ones too
};

// What is no JSON: where, and why.
struct JsonSyntaxError : std::runtime_error
{
    JsonSyntaxError(int atLine, int atColumn, const std::string& why)
        : runtime_error(why), line(atLine), column(atColumn)
    {}

    int line;
    int column;
};

LocatedJson parseLocatedJson(std::string_view text);
