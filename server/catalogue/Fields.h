// Reading the pieces of a catalogue: each function takes what stands at a place and reports what is wrong with it.
#pragma once

#include <optional>

#include "Errors.h"

namespace catalogue {

// The members of an object whose names are fixed. "comment" is allowed everywhere, for the file's own readers.
class Fields
{
 public:
    // what: "a board", for error texts. Reports a value that is no object, and members of other names.
    Fields(Errors& errors, const JsonValue& value, std::wstring_view what,
           std::initializer_list<std::wstring_view> known);

    const JsonValue* optional(std::wstring_view name) const { return value_.member(name); }

    // Reports a member that is missing.
    const JsonValue* required(std::wstring_view name) const;

 private:
    Errors& errors_;
    const JsonValue& value_;
    std::wstring_view what_;
};

// "an object", "a text", ...: what a value is, for error texts.
std::wstring_view kindName(const JsonValue& value);

// Reports any other value: "... must be a list of texts, not a number."
void reportKind(Errors& errors, const JsonValue& value, std::wstring_view subject, std::wstring_view wanted);

// A text that is stored as a value, as JSON text, whole number or true/false. Empty when there is none.
std::wstring readScalar(Errors& errors, const JsonValue& value, std::wstring_view subject);

// The same, but neither number nor true/false, and not empty.
std::wstring readText(Errors& errors, const JsonValue& value, std::wstring_view subject);

std::vector<std::wstring> readTextList(Errors& errors, const JsonValue& value, std::wstring_view subject);

std::optional<bool> readBoolean(Errors& errors, const JsonValue& value, std::wstring_view subject);

std::optional<std::uint32_t> readNumber(Errors& errors, const JsonValue& value, std::wstring_view subject,
                                        std::uint32_t maximum);

// Texts by language: {"DE": "...", "EN": "..."}. German and English must be there.
LanguageTexts readLanguageTexts(Errors& errors, const JsonValue& value);

// An object whose members are values. texts: where a value is given by language, which makes its English text the
// value; nullptr where that is not allowed.
Values readValues(Errors& errors, const JsonValue& value, std::wstring_view subject, Texts* texts);

// {"values": {...}, "keys": {...}}, each optional.
Node readNode(Errors& errors, const JsonValue& value);

// The members of an object that are entries of their own names. Reports any other value, and names that no key or
// value can have. nullptr is as good as an empty object.
std::vector<const JsonMember*> readEntries(Errors& errors, const JsonValue* value, std::wstring_view subject);

}  // namespace catalogue
