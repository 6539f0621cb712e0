// Characters of an ANSI code page: which bytes begin a two-byte character, and the two cases of the others.
//
// Searching goes by characters and not by bytes: in Japanese text the second byte of a character may be a backslash.
// Only one-byte characters have cases here.
#pragma once

#include <windows.h>

class AnsiCodePage
{
 public:
    explicit AnsiCodePage(UINT codePage) noexcept;

    // The system's own, which all texts at the library's interface are in.
    static const AnsiCodePage& system() noexcept;

    // The first occurrence, or NULL. The arguments are zero-terminated; a NUL is in no set and is never found.
    const char* findChar(const char* text, char wanted) const noexcept;
    const char* findLastChar(const char* text, char wanted) const noexcept;
    const char* findText(const char* text, const char* wanted) const noexcept;
    const char* findOneOf(const char* text, const char* set) const noexcept;
    // The first character that is not in the set, or the terminator.
    const char* skip(const char* text, const char* set) const noexcept;
    // The next character; a terminator right behind a leading byte is never stepped over.
    const char* next(const char* text) const noexcept { return text + width(text); }

    int compareNoCase(const char* left, const char* right) const noexcept;
    void makeUpper(char* text) const noexcept { change(text, upper_); }
    void makeLower(char* text) const noexcept { change(text, lower_); }

 private:
    int width(const char* text) const noexcept;
    bool contains(const char* set, const char* character) const noexcept;
    void change(char* text, const unsigned char (&table)[256]) const noexcept;

    bool twoByte_ = false;
    bool lead_[256] = {};
    unsigned char upper_[256];
    unsigned char lower_[256];
};
