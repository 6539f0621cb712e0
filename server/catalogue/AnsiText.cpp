#include "AnsiText.h"

#include <windows.h>

namespace catalogue {

namespace {

unsigned codePageOf(Language language)
{
    switch (language) {
        case Language::Ja:
            return 932;
        case Language::Zh:
            return 936;
        default:
            return 1252;
    }
}

}  // namespace

std::optional<std::size_t> ansiLength(std::wstring_view text, Language language)
{
    if (text.empty()) return 0;
    BOOL replaced = FALSE;
    const int length = WideCharToMultiByte(codePageOf(language), WC_NO_BEST_FIT_CHARS, text.data(),
                                           static_cast<int>(text.size()), nullptr, 0, nullptr, &replaced);
    if (length <= 0 || replaced) return std::nullopt;
    return static_cast<std::size_t>(length);
}

}  // namespace catalogue
