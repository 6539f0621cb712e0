// The text of a catalogue file, and where in it something stands.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

struct Position
{
    std::size_t line;    // from 1
    std::size_t column;  // from 1, in characters
};

class Source
{
 public:
    // A byte order mark at the beginning is skipped.
    Source(std::string_view utf8, std::filesystem::path name);

    const std::filesystem::path& name() const { return name_; }
    std::string_view text() const { return text_; }

    // Of a byte of the text; one past the end is the end.
    Position positionOf(std::size_t offset) const;

    // The first byte of each line that is no UTF-8.
    std::vector<std::size_t> invalidBytes() const;

 private:
    std::filesystem::path name_;
    std::string_view text_;
    std::vector<std::size_t> lineStarts_;
};

// The length of the UTF-8 sequence at the beginning of a text that is not empty; 0: it begins with none. Overlong
// forms, surrogates and numbers beyond Unicode are none.
std::size_t utf8Length(std::string_view text);

// A text that is UTF-8 already.
std::wstring wideFromUtf8(std::string_view utf8);

}  // namespace catalogue
