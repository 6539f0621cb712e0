// Helpers on 8-bit text that the pure parts of the trace share. Nothing here needs Windows.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace trc {

// The text up to its terminator, but never more than `limit` characters; NULL counts as empty. The bound also holds
// when another thread changes the text meanwhile, which can happen after a failed wait for the trace's mutex.
inline std::string_view bounded(const char* text, std::size_t limit) noexcept
{
    if (!text) return {};
    const void* const end = std::memchr(text, 0, limit);
    return {text, end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : limit};
}

// Lower case of the letters A to Z only: what a line is compared with must not depend on the locale that the
// application has set.
constexpr char lower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline bool equalsNoCase(std::string_view a, std::string_view b) noexcept
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i])) return false;
    }
    return true;
}

// Copies into a fixed array, cuts what does not fit, terminates. Returns the number of characters copied.
template <std::size_t Size>
std::size_t copyCut(char (&target)[Size], std::string_view text) noexcept
{
    const std::size_t length = text.size() < Size ? text.size() : Size - 1;
    if (length != 0) std::memcpy(target, text.data(), length);
    target[length] = 0;
    return length;
}

}  // namespace trc
