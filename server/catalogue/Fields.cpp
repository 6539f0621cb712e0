#include "Fields.h"

#include <algorithm>

#include "AnsiText.h"
#include "number.h"

namespace catalogue {

namespace {

using Kind = JsonValue::Kind;

constexpr std::wstring_view comment = L"comment";

bool hasControlCharacter(std::wstring_view text)
{
    return std::any_of(text.begin(), text.end(),
                       [](wchar_t character) { return character < L' ' || character == 127; });
}

void checkValue(Errors& errors, const JsonValue& value, std::wstring_view text, Language language)
{
    const std::optional<std::size_t> length = ansiLength(text, language);
    if (hasControlCharacter(text)) {
        errors.add(value.begin, L"A value holds no control characters such as line breaks.");
    } else if (!length) {
        errors.add(value.begin, L"The text " + inQuotes(text) +
                                    L" holds a character that clients cannot get, for it is not in the Windows code "
                                    L"page of the language " +
                                    inQuotes(languageCode(language)) + L".");
    } else if (*length > maximumValueLength) {
        errors.add(value.begin, L"The value is " + std::to_wstring(*length) + L" characters long, but at most " +
                                    std::to_wstring(maximumValueLength) + L" are possible.");
    }
}

void checkName(Errors& errors, const JsonMember& member)
{
    const std::wstring& name = member.name;
    if (name.empty()) {
        errors.add(member.begin, L"A name must not be empty.");
    } else if (hasControlCharacter(name) || name.find(L'\\') != std::wstring::npos) {
        errors.add(member.begin,
                   L"The name " + inQuotes(name) + L" must not hold a backslash or a control character.");
    } else if (!ansiLength(name, Language::En)) {
        errors.add(member.begin,
                   L"The name " + inQuotes(name) +
                       L" holds a character that clients cannot send, for it is not in the Windows code "
                       L"page 1252.");
    } else if (name.size() > maximumNameLength) {
        errors.add(member.begin, L"The name is " + std::to_wstring(name.size()) + L" characters long, but at most " +
                                     std::to_wstring(maximumNameLength) + L" are possible.");
    }
}

}  // namespace

Fields::Fields(Errors& errors, const JsonValue& value, std::wstring_view what,
               std::initializer_list<std::wstring_view> known)
    : errors_(errors), value_(value), what_(what)
{
    if (!value.isObject()) reportKind(errors, value, L"The description of " + std::wstring(what), L"an object");
    for (const JsonMember& member : value.members) {
        if (member.name == comment || std::find(known.begin(), known.end(), member.name) != known.end()) continue;
        errors.add(member.begin, inQuotes(member.name) + L" is no key of " + std::wstring(what) +
                                     endWithSuggestion(member.name, {known.begin(), known.size()}));
    }
}

const JsonValue* Fields::required(std::wstring_view name) const
{
    const JsonValue* const found = value_.member(name);
    if (!found && value_.isObject())
        errors_.add(value_.begin, L"The key " + inQuotes(name) + L" of " + std::wstring(what_) + L" is missing.");
    return found;
}

std::wstring_view kindName(const JsonValue& value)
{
    switch (value.kind) {
        case Kind::Null:
            return L"null";
        case Kind::Boolean:
            return L"true or false";
        case Kind::Integer:
            return L"a number";
        case Kind::Fraction:
            return L"a fraction";
        case Kind::Text:
            return L"a text";
        case Kind::List:
            return L"a list";
        default:
            return L"an object";
    }
}

void reportKind(Errors& errors, const JsonValue& value, std::wstring_view subject, std::wstring_view wanted)
{
    errors.add(value.begin, std::wstring(subject) + L" must be " + std::wstring(wanted) + L", not " +
                                std::wstring(kindName(value)) + L".");
}

std::wstring readScalar(Errors& errors, const JsonValue& value, std::wstring_view subject)
{
    if (value.kind != Kind::Text && value.kind != Kind::Integer && value.kind != Kind::Boolean) {
        reportKind(errors, value, subject, L"a text, a whole number, true or false");
        return {};
    }
    checkValue(errors, value, value.text, Language::En);
    return value.text;
}

std::wstring readText(Errors& errors, const JsonValue& value, std::wstring_view subject)
{
    if (value.kind != Kind::Text) {
        reportKind(errors, value, subject, L"a text");
        return {};
    }
    checkValue(errors, value, value.text, Language::En);
    if (value.text.empty()) errors.add(value.begin, std::wstring(subject) + L" must not be empty.");
    return value.text;
}

std::vector<std::wstring> readTextList(Errors& errors, const JsonValue& value, std::wstring_view subject)
{
    std::vector<std::wstring> texts;
    if (value.kind != Kind::List) reportKind(errors, value, subject, L"a list of texts");
    for (const JsonValue& item : value.items) {
        std::wstring text = readText(errors, item, L"Each entry of this list");
        const bool twice = std::any_of(texts.begin(), texts.end(),
                                       [&](const std::wstring& other) { return equalNoCase(other, text); });
        if (twice && !text.empty()) errors.add(item.begin, inQuotes(text) + L" stands twice in this list.");
        texts.push_back(std::move(text));
    }
    return texts;
}

std::optional<bool> readBoolean(Errors& errors, const JsonValue& value, std::wstring_view subject)
{
    if (value.kind == Kind::Boolean) return value.text == L"true";
    reportKind(errors, value, subject, L"true or false");
    return std::nullopt;
}

std::optional<std::uint32_t> readNumber(Errors& errors, const JsonValue& value, std::wstring_view subject,
                                        std::uint32_t maximum)
{
    if (value.kind == Kind::Integer) {
        const std::optional<long long> number = parseNumber(value.text, 10);
        if (number && *number >= 0 && *number <= maximum) return static_cast<std::uint32_t>(*number);
        errors.add(value.begin,
                   std::wstring(subject) + L" must be a number from 0 to " + std::to_wstring(maximum) + L".");
    } else {
        reportKind(errors, value, subject, L"a whole number");
    }
    return std::nullopt;
}

LanguageTexts readLanguageTexts(Errors& errors, const JsonValue& value)
{
    LanguageTexts texts;
    if (!value.isObject()) {
        reportKind(errors, value, L"A text by language", L"an object such as {\"DE\": \"...\", \"EN\": \"...\"}");
        return texts;
    }
    std::vector<std::wstring_view> codes;
    for (const Language language : allLanguages)
        codes.push_back(languageCode(language));
    for (const JsonMember& member : value.members) {
        if (std::find(codes.begin(), codes.end(), member.name) == codes.end()) {
            errors.add(member.begin, inQuotes(member.name) + L" is no language (DE, EN, FR, ES, IT, JA, ZH)" +
                                         endWithSuggestion(member.name, codes));
            continue;
        }
        const Language language = *languageFromCode(member.name);
        if (member.value.kind != Kind::Text) {
            reportKind(errors, member.value, L"The text of a language", L"a text");
        } else {
            checkValue(errors, member.value, member.value.text, language);
        }
        texts[language] = member.value.text;
    }
    for (const Language language : {Language::De, Language::En})
        if (!texts.contains(language))
            errors.add(value.begin,
                       L"The text in the language " + inQuotes(languageCode(language)) + L" is missing.");
    return texts;
}

Values readValues(Errors& errors, const JsonValue& value, std::wstring_view subject, Texts* texts)
{
    Values values;
    for (const JsonMember* const member : readEntries(errors, &value, subject)) {
        if (texts && member->value.isObject()) {
            LanguageTexts byLanguage = readLanguageTexts(errors, member->value);
            values[member->name] = textIn(byLanguage, Language::En);
            texts->byId[member->name] = std::move(byLanguage);
        } else {
            values[member->name] = readScalar(errors, member->value, L"The value " + inQuotes(member->name));
        }
    }
    return values;
}

Node readNode(Errors& errors, const JsonValue& value)
{
    const Fields fields(errors, value, L"a registry key", {L"values", L"keys"});
    Node node;
    if (const JsonValue* const values = fields.optional(L"values"))
        node.values = readValues(errors, *values, L"\"values\"", nullptr);
    for (const JsonMember* const member : readEntries(errors, fields.optional(L"keys"), L"\"keys\""))
        node.keys[member->name] = readNode(errors, member->value);
    return node;
}

std::vector<const JsonMember*> readEntries(Errors& errors, const JsonValue* value, std::wstring_view subject)
{
    std::vector<const JsonMember*> entries;
    if (!value) return entries;
    if (!value->isObject()) reportKind(errors, *value, subject, L"an object");
    for (const JsonMember& member : value->members) {
        checkName(errors, member);
        entries.push_back(&member);
    }
    return entries;
}

}  // namespace catalogue
