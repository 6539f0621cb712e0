// The four parameters of a logical device whose stored texts are shown to callers in words.
#pragma once

namespace valueTranslation {

// The word for a stored text, and the text to store for a word; what is not translated comes back as it is. Parameter
// names and texts compare without regard to case. NULL arguments are not translated.
const char* shown(const char* parameter, const char* stored) noexcept;
const char* stored(const char* parameter, const char* shown) noexcept;

}  // namespace valueTranslation
