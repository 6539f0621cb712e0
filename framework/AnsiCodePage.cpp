#include "AnsiCodePage.h"

#include <cstring>
#include <optional>

namespace {

unsigned char byteAt(const char* text) noexcept
{
    return static_cast<unsigned char>(*text);
}

std::optional<wchar_t> widen(UINT codePage, unsigned char byte) noexcept
{
    const char character = static_cast<char>(byte);
    wchar_t wide;
    if (MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &character, 1, &wide, 1) != 1) return std::nullopt;
    return wide;
}

// The code page's byte for a letter, or the given one when the letter has none there.
unsigned char narrowOr(UINT codePage, wchar_t letter, unsigned char otherwise) noexcept
{
    char character[2];
    BOOL replaced = FALSE;
    const int length =
        WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, &letter, 1, character, 2, nullptr, &replaced);
    return length == 1 && !replaced ? byteAt(character) : otherwise;
}

wchar_t toCase(DWORD(WINAPI* convert)(LPWSTR, DWORD), wchar_t letter) noexcept
{
    convert(&letter, 1);
    return letter;
}

}  // namespace

AnsiCodePage::AnsiCodePage(UINT codePage) noexcept
{
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        upper_[value] = lower_[value] = byte;
        lead_[value] = IsDBCSLeadByteEx(codePage, byte) != FALSE;
        twoByte_ |= lead_[value];
        if (lead_[value] || value == 0) continue;
        const auto letter = widen(codePage, byte);
        if (!letter) continue;
        upper_[value] = narrowOr(codePage, toCase(CharUpperBuffW, *letter), byte);
        lower_[value] = narrowOr(codePage, toCase(CharLowerBuffW, *letter), byte);
    }
}

const AnsiCodePage& AnsiCodePage::system() noexcept
{
    static const AnsiCodePage page(GetACP());
    return page;
}

int AnsiCodePage::width(const char* text) const noexcept
{
    return lead_[byteAt(text)] && text[1] != '\0' ? 2 : 1;
}

bool AnsiCodePage::contains(const char* set, const char* character) const noexcept
{
    const int length = width(character);
    for (; *set; set = next(set))
        if (width(set) == length && std::memcmp(set, character, static_cast<std::size_t>(length)) == 0) return true;
    return false;
}

const char* AnsiCodePage::findChar(const char* text, char wanted) const noexcept
{
    for (; *text; text = next(text))
        if (*text == wanted && width(text) == 1) return text;
    return nullptr;
}

const char* AnsiCodePage::findLastChar(const char* text, char wanted) const noexcept
{
    const char* found = nullptr;
    for (; *text; text = next(text))
        if (*text == wanted && width(text) == 1) found = text;
    return found;
}

const char* AnsiCodePage::findText(const char* text, const char* wanted) const noexcept
{
    if (!twoByte_) return std::strstr(text, wanted);
    const auto length = std::strlen(wanted);
    for (;; text = next(text)) {
        if (std::strncmp(text, wanted, length) == 0) return text;
        if (*text == '\0') return nullptr;
    }
}

const char* AnsiCodePage::findOneOf(const char* text, const char* set) const noexcept
{
    for (; *text; text = next(text))
        if (contains(set, text)) return text;
    return nullptr;
}

const char* AnsiCodePage::skip(const char* text, const char* set) const noexcept
{
    while (*text && contains(set, text))
        text = next(text);
    return text;
}

int AnsiCodePage::compareNoCase(const char* left, const char* right) const noexcept
{
    for (;;) {
        const int leftWidth = width(left);
        const int rightWidth = width(right);
        const int leftValue = leftWidth == 2 ? byteAt(left) << 8 | byteAt(left + 1) : lower_[byteAt(left)];
        const int rightValue = rightWidth == 2 ? byteAt(right) << 8 | byteAt(right + 1) : lower_[byteAt(right)];
        if (leftValue != rightValue) return leftValue < rightValue ? -1 : 1;
        if (leftValue == 0) return 0;
        left += leftWidth;
        right += rightWidth;
    }
}

void AnsiCodePage::change(char* text, const unsigned char (&table)[256]) const noexcept
{
    for (; *text; text += width(text))
        if (width(text) == 1) *text = static_cast<char>(table[byteAt(text)]);
}
