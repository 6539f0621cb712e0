#include "trcFilter.h"

#include <algorithm>

#include "trcText.h"

namespace trc {

bool patternMatches(std::string_view pattern, std::string_view subject, Match match) noexcept
{
    std::size_t p = 0;
    std::size_t s = 0;
    // Where to go on when a later character fails: behind the last "*", which then takes one character more.
    std::size_t behindStar = std::string_view::npos;
    std::size_t starEnd = 0;
    for (;;) {
        if (p == pattern.size()) {
            if (match == Match::beginning || s == subject.size()) return true;
        } else if (pattern[p] == '*') {
            behindStar = ++p;
            starEnd = s;
            continue;
        } else if (s == subject.size()) {
            return false;
        } else {
            const bool escaped = pattern[p] == '\\' && p + 1 < pattern.size();
            const char wanted = pattern[escaped ? p + 1 : p];
            if (wanted == subject[s] || (wanted == '?' && !escaped)) {
                p += escaped ? 2 : 1;
                ++s;
                continue;
            }
        }
        if (behindStar == std::string_view::npos || starEnd == subject.size()) return false;
        p = behindStar;
        s = ++starEnd;
    }
}

FilterList::FilterList(std::string_view text) noexcept
{
    text = text.substr(0, textSize - 1);
    if (text.empty()) return;
    std::transform(text.begin(), text.end(), text_, lower);
    std::size_t begin = 0;
    while (count_ < maxEntries) {
        start_[count_++] = static_cast<std::uint8_t>(begin);
        const std::size_t blank = text.find(' ', begin);
        if (blank == std::string_view::npos) break;
        text_[blank] = 0;
        begin = blank + 1;
    }
}

bool FilterList::passes(std::string_view subject, Match match) const noexcept
{
    if (count_ == 0 || text_[0] == 0) return true;
    subject = subject.substr(0, subjectLimit);
    char lowered[subjectLimit];
    std::transform(subject.begin(), subject.end(), lowered, lower);
    for (std::size_t i = 0; i < count_ && i < maxEntries; ++i) {
        const std::size_t start = start_[i];
        const std::string_view pattern = bounded(text_ + start, textSize - start);
        if (patternMatches(pattern, {lowered, subject.size()}, match)) return true;
    }
    return false;
}

}  // namespace trc
