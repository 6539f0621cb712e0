// Filter lists of the trace: patterns separated by blanks, of which any one lets a line pass. Free of Windows state.
#pragma once

#include <cstddef>

namespace trc {

// Pattern: "*" any run of characters, "?" any one, "\" makes the next character literal; both texts in lower case.
bool matches(const char* pattern, const char* subject, bool wholeSubject) noexcept;

class FilterList
{
 public:
    static constexpr std::size_t maxEntries = 100;
    static constexpr std::size_t copyLength = 256;
    static constexpr std::size_t subjectLength = 256;

    void clear() noexcept;

    // Splits a copy of the text (its first 255 characters) at every blank.
    void assign(const char* text) noexcept;

    // An empty list, or one whose first entry is empty, lets everything pass. The subject counts with its first 256
    // characters, without regard to case; wholeSubject false: a pattern need only match its beginning.
    bool passes(const char* subject, bool wholeSubject) const noexcept;

    std::size_t size() const noexcept { return count_; }

 private:
    char copy_[copyLength] = {};
    const char* entries_[maxEntries] = {};
    std::size_t count_ = 0;
};

}  // namespace trc
