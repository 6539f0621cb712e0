#include "trcFilter.h"

#include <cctype>
#include <cstring>

namespace trc {
namespace {

char lower(char c) noexcept
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

// One pattern element: the character it stands for, or a wildcard, and where the next element begins.
struct Element
{
    explicit Element(const char* pattern) noexcept
    {
        const bool escaped = pattern[0] == '\\' && pattern[1] != 0;
        literal = escaped ? pattern[1] : pattern[0];
        run = !escaped && literal == '*';
        any = !escaped && literal == '?';
        next = pattern + (escaped ? 2 : 1);
    }

    char literal;
    bool run;
    bool any;
    const char* next;
};

}  // namespace

bool matches(const char* pattern, const char* subject, bool wholeSubject) noexcept
{
    // Where to go on when a later element fails: behind the last run, one character further into the subject.
    const char* retryPattern = nullptr;
    const char* retrySubject = nullptr;
    for (;;) {
        if (!*pattern) {
            if (!wholeSubject || !*subject) return true;
        } else {
            const Element element(pattern);
            if (element.run) {
                pattern = retryPattern = element.next;
                retrySubject = subject;
                continue;
            }
            if (*subject && (element.any || element.literal == *subject)) {
                pattern = element.next;
                ++subject;
                continue;
            }
        }
        if (!retryPattern || !*retrySubject) return false;
        pattern = retryPattern;
        subject = ++retrySubject;
    }
}

void FilterList::clear() noexcept
{
    count_ = 0;
}

void FilterList::assign(const char* text) noexcept
{
    clear();
    std::size_t length = 0;
    for (; length < copyLength - 1 && text[length]; ++length) copy_[length] = lower(text[length]);
    copy_[length] = 0;

    char* entry = copy_;
    while (count_ < maxEntries) {
        entries_[count_++] = entry;
        char* const blank = std::strchr(entry, ' ');
        if (!blank) break;
        *blank = 0;
        entry = blank + 1;
    }
}

bool FilterList::passes(const char* subject, bool wholeSubject) const noexcept
{
    if (count_ == 0 || !*entries_[0]) return true;

    char lowered[subjectLength + 1];
    std::size_t length = 0;
    for (; length < subjectLength && subject[length]; ++length) lowered[length] = lower(subject[length]);
    lowered[length] = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        if (matches(entries_[i], lowered, wholeSubject)) return true;
    }
    return false;
}

}  // namespace trc
