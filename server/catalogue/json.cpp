#include "json.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

namespace catalogue {

namespace {

using Json = nlohmann::json;

// Nobody nests a catalogue deeper; without a bound a hostile file could exhaust the stack of what walks the tree.
constexpr std::size_t maximumDepth = 32;

// The parser tells its handler what it read but not where. It reads through this iterator, whose place is shared by
// all its copies, so the handler knows how far reading has come.
class CountingIterator
{
 public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char** place, const char* end) : place_(place), end_(end) {}

    reference operator*() const { return **place_; }
    CountingIterator& operator++()
    {
        ++*place_;
        return *this;
    }
    bool operator==(const CountingIterator&) const { return *place_ == end_; }
    bool operator!=(const CountingIterator& other) const { return !(*this == other); }

 private:
    const char** place_;
    const char* end_;
};

bool isWordCharacter(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z') || character == '-' || character == '+' || character == '.';
}

// "[json.exception.parse_error.101] parse error at line 1, column 2: syntax error ...; last read: ..." without what
// the error says elsewhere, and without a piece of the file that may hold anything.
std::wstring plainMessage(std::string message)
{
    if (const std::size_t bracket = message.find("] "); bracket != std::string::npos) message.erase(0, bracket + 2);
    if (message.starts_with("parse error at "))
        if (const std::size_t colon = message.find(": "); colon != std::string::npos) message.erase(0, colon + 2);
    if (const std::size_t last = message.find("; last read: '"); last != std::string::npos) {
        const std::size_t expected = message.rfind("'; expected ");
        message.erase(last,
                      expected != std::string::npos && expected > last ? expected + 1 - last : std::string::npos);
    }
    std::wstring plain = L"This is no JSON: ";
    for (const char character : message)
        plain += character >= ' ' && character <= '~' ? static_cast<wchar_t>(character) : L'?';
    return plain + L".";
}

class TreeBuilder final : public nlohmann::json_sax<Json>
{
 public:
    TreeBuilder(std::string_view text, const char* const& place) : text_(text), place_(place) {}

    JsonResult take() { return std::move(result_); }

    bool null() override { return word(JsonValue::Kind::Null, {}); }
    bool boolean(bool value) override { return word(JsonValue::Kind::Boolean, value ? L"true" : L"false"); }
    bool number_integer(number_integer_t value) override
    {
        return word(JsonValue::Kind::Integer, std::to_wstring(value));
    }
    bool number_unsigned(number_unsigned_t value) override
    {
        return word(JsonValue::Kind::Integer, std::to_wstring(value));
    }
    bool number_float(number_float_t, const string_t&) override { return word(JsonValue::Kind::Fraction, {}); }
    bool string(string_t& value) override
    {
        const std::size_t end = read();
        return add({JsonValue::Kind::Text, quoteBefore(end), end, wideFromUtf8(value), {}, {}});
    }
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return open(JsonValue::Kind::Object); }
    bool start_array(std::size_t) override { return open(JsonValue::Kind::List); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t& name) override
    {
        open_.back()->members.push_back({wideFromUtf8(name), quoteBefore(read()), {}});
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override
    {
        return fail(position > 0 ? position - 1 : 0, plainMessage(error.what()));
    }

 private:
    std::size_t read() const { return static_cast<std::size_t>(place_ - text_.data()); }

    // A quote within a text has an odd number of backslashes before it, the opening one has none.
    std::size_t quoteBefore(std::size_t end) const
    {
        std::size_t at = end - 1;
        for (;;) {
            at = text_.rfind('"', at - 1);
            const std::size_t before = text_.find_last_not_of('\\', at == 0 ? 0 : at - 1);
            const std::size_t slashes = at == 0 || before == std::string_view::npos ? at : at - 1 - before;
            if (slashes % 2 == 0) return at;
        }
    }

    // A number ends where another character follows, which then has been read already.
    bool word(JsonValue::Kind kind, std::wstring text)
    {
        std::size_t end = read();
        if (!isWordCharacter(text_[end - 1])) --end;
        std::size_t begin = end;
        while (begin > 0 && isWordCharacter(text_[begin - 1]))
            --begin;
        return add({kind, begin, end, std::move(text), {}, {}});
    }

    bool open(JsonValue::Kind kind)
    {
        if (open_.size() == maximumDepth)
            return fail(read() - 1,
                        L"Objects and lists are nested deeper than " + std::to_wstring(maximumDepth) + L" levels.");
        const std::size_t begin = read() - 1;
        open_.push_back(&place({kind, begin, begin + 1, {}, {}, {}}));
        return true;
    }

    bool close()
    {
        open_.back()->end = read();
        open_.pop_back();
        return true;
    }

    bool add(JsonValue value)
    {
        place(std::move(value));
        return true;
    }

    // A container's address holds as long as it is open: its parent grows only after it is closed.
    JsonValue& place(JsonValue value)
    {
        if (open_.empty()) return result_.document.emplace(std::move(value));
        JsonValue& parent = *open_.back();
        if (parent.kind == JsonValue::Kind::List) return parent.items.emplace_back(std::move(value));
        return parent.members.back().value = std::move(value);
    }

    bool fail(std::size_t offset, std::wstring message)
    {
        result_ = {std::nullopt, {offset, std::move(message)}};
        return false;
    }

    std::string_view text_;
    const char* const& place_;
    JsonResult result_;
    std::vector<JsonValue*> open_;
};

// "~" and "/" within a name are written "~0" and "~1" in a pointer.
std::wstring pointerPart(std::wstring_view name)
{
    std::wstring part = L"/";
    for (const wchar_t character : name) {
        if (character == L'~') {
            part += L"~0";
        } else if (character == L'/') {
            part += L"~1";
        } else {
            part += character;
        }
    }
    return part;
}

}  // namespace

const JsonValue* JsonValue::member(std::wstring_view name) const
{
    const auto at = std::find_if(members.begin(), members.end(), [&](const JsonMember& m) { return m.name == name; });
    return at == members.end() ? nullptr : &at->value;
}

JsonResult parseJson(const Source& source)
{
    const std::string_view text = source.text();
    const char* place = text.data();
    const char* const end = text.data() + text.size();
    TreeBuilder builder(text, place);
    Json::sax_parse(CountingIterator(&place, end), CountingIterator(&place, end), &builder);
    return builder.take();
}

std::wstring pointerTo(const JsonValue& document, std::size_t offset)
{
    std::wstring pointer;
    for (const JsonValue* value = &document; value;) {
        const JsonValue* inner = nullptr;
        for (const JsonMember& member : value->members) {
            if (offset < member.begin || offset >= member.value.end) continue;
            pointer += pointerPart(member.name);
            inner = &member.value;
            break;
        }
        for (std::size_t i = 0; i < value->items.size(); ++i) {
            if (offset < value->items[i].begin || offset >= value->items[i].end) continue;
            pointer += L"/" + std::to_wstring(i);
            inner = &value->items[i];
            break;
        }
        value = inner;
    }
    return pointer;
}

}  // namespace catalogue
