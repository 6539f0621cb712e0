#include "configuration/LocatedJson.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

namespace {

using Parser = nlohmann::json;

// Deeper than anything that is read here; a bound for what is kept while reading.
constexpr std::size_t deepest = 32;

// Counts the lines that the parser has read.
struct LineCounter
{
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    reference operator*() const { return *at; }
    LineCounter& operator++()
    {
        if (*at == '\n') ++*line;
        ++at;
        return *this;
    }
    LineCounter operator++(int)
    {
        const LineCounter before = *this;
        ++*this;
        return before;
    }
    bool operator==(const LineCounter& other) const { return at == other.at; }

    const char* at;
    int* line;
};

std::pair<int, int> lineAndColumn(std::string_view text, std::size_t offset)
{
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const auto line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::size_t start = before.rfind('\n') + 1;  // npos + 1 is 0
    return {line, static_cast<int>(before.size() - start) + 1};
}

// The parser's reason without its own prefix and position.
std::string reason(std::string why)
{
    if (const std::size_t position = why.find("column "); position != std::string::npos)
        if (const std::size_t colon = why.find(": ", position); colon != std::string::npos) why.erase(0, colon + 2);
    return why;
}

// Builds the tree; containers that are being read are on a stack. Only the last element of a container is ever open,
// so pointers to open ones stay valid.
class Builder : public nlohmann::json_sax<Parser>
{
 public:
    using Kind = LocatedJson::Kind;

    Builder(std::string_view text, const int& line) : text_(text), line_(line) {}

    LocatedJson take() { return std::move(root_); }

    bool null() override { return add(Kind::Null); }
    bool boolean(bool value) override { return add(Kind::Bool, value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override { return add(Kind::Number, std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return add(Kind::Number, std::to_string(value)); }
    bool number_float(number_float_t, const string_t& written) override { return add(Kind::Number, written); }
    bool string(string_t& value) override { return add(Kind::Text, std::move(value)); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open(Kind::Object); }
    bool start_array(std::size_t) override { return open(Kind::Array); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t& name) override
    {
        open_.back()->members.emplace_back(std::move(name), LocatedJson{});
        return true;
    }
    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override
    {
        // The position counts what was read, the offending character included.
        const auto [line, column] = lineAndColumn(text_, position == 0 ? 0 : position - 1);
        throw JsonSyntaxError(line, column, reason(error.what()));
    }

 private:
    LocatedJson& place()
    {
        if (open_.empty()) return root_;
        LocatedJson& parent = *open_.back();
        return parent.kind == Kind::Object ? parent.members.back().second : parent.items.emplace_back();
    }
    bool add(Kind kind, std::string text = {})
    {
        LocatedJson& value = place();
        value.kind = kind;
        value.line = line_;
        value.text = std::move(text);
        return true;
    }
    bool open(Kind kind)
    {
        if (open_.size() == deepest) throw JsonSyntaxError(line_, 1, "the file is nested too deeply");
        LocatedJson& value = place();
        value.kind = kind;
        value.line = line_;
        open_.push_back(&value);
        return true;
    }
    bool close()
    {
        open_.pop_back();
        return true;
    }

    std::string_view text_;
    const int& line_;
    LocatedJson root_;
    std::vector<LocatedJson*> open_;
};

}  // namespace

LocatedJson parseLocatedJson(std::string_view text)
{
    int line = 1;
    Builder builder(text, line);
    const LineCounter begin{text.data(), &line};
    const LineCounter end{text.data() + text.size(), &line};
    Parser::sax_parse(begin, end, &builder);
    return builder.take();
}
