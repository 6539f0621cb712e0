// Filter lists: which lines the configuration lets through, by trace id, module, function name and text. Pure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace trc {

enum class Match {
    whole,     // the pattern must cover the whole subject
    beginning  // the pattern need only match a beginning of the subject
};

// Pattern: "*" any run of characters, "?" any one, "\" makes the next character literal (a last "\" stands for
// itself). Upper and lower case are different here.
bool patternMatches(std::string_view pattern, std::string_view subject, Match match) noexcept;

// Up to 100 patterns, any one of which lets a line pass. The list refers to its own text by position only, so it can
// be copied, and a reader that runs beside a change of the list stays inside it.
class FilterList
{
 public:
    static constexpr std::size_t maxEntries = 100;
    static constexpr std::size_t textSize = 256;      // with terminator; a longer value is cut
    static constexpr std::size_t subjectLimit = 256;  // characters of a subject that are compared

    constexpr FilterList() noexcept = default;

    // Splits the text at every blank: two blanks in a row make an empty entry.
    explicit FilterList(std::string_view text) noexcept;

    // An empty list, or one whose first entry is empty, lets everything pass. Compares in lower case.
    bool passes(std::string_view subject, Match match) const noexcept;

    std::size_t size() const noexcept { return count_; }

 private:
    char text_[textSize] = {};
    std::uint8_t start_[maxEntries] = {};
    std::uint32_t count_ = 0;
};

}  // namespace trc
