// JSON text as a tree that knows where each of its pieces stands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Source.h"

namespace catalogue {

struct JsonMember;

struct JsonValue
{
    enum class Kind { Null, Boolean, Integer, Fraction, Text, List, Object };

    Kind kind = Kind::Null;
    std::size_t begin = 0;  // bytes of the source, end exclusive
    std::size_t end = 0;
    std::wstring text;  // a text; an integer's digits; "true", "false"
    std::vector<JsonValue> items;
    std::vector<JsonMember> members;  // in the order of the file

    bool isObject() const { return kind == Kind::Object; }

    // The member of exactly this name, or nullptr.
    const JsonValue* member(std::wstring_view name) const;
};

struct JsonMember
{
    std::wstring name;
    std::size_t begin = 0;  // of the name
    JsonValue value;
};

struct JsonError
{
    std::size_t offset = 0;
    std::wstring message;
};

// Either the document or why the text is none. The text must be UTF-8.
struct JsonResult
{
    std::optional<JsonValue> document;
    JsonError error;
};

JsonResult parseJson(const Source& source);

// The JSON pointer of the innermost piece that holds a byte; empty for the document itself.
std::wstring pointerTo(const JsonValue& document, std::size_t offset);

}  // namespace catalogue
