// Lists of texts as they come in replies, and texts of them for callers. Pure.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

using TextList = std::vector<std::string>;

// The texts of a block of zero-terminated texts. splitList takes all, empty ones too; for splitNames the zero in the
// last byte of the block only ends it, so that a list may be closed by an empty text.
TextList splitList(const char* block, std::size_t length);
TextList splitNames(const char* block, std::size_t length);

// Copies a listed text into a caller's buffer and stores its length; 234, with nothing written, when text and
// terminator do not fit or there is no buffer.
long copyOut(const std::string& text, char* buffer, unsigned long* length) noexcept;
bool fitsOut(const std::string& text, const char* buffer, const unsigned long* length) noexcept;
