#include "frame/textList.h"

#include <windows.h>

#include <cstring>

#include "kxova/results.h"

namespace {

// The texts that begin before `end`; none goes on behind `length`.
TextList split(const char* block, std::size_t length, std::size_t end)
{
    TextList list;
    for (std::size_t at = 0; at < end;) {
        const std::size_t size = strnlen(block + at, length - at);
        list.emplace_back(block + at, size);
        at += size + 1;
    }
    return list;
}

}  // namespace

TextList splitList(const char* block, std::size_t length)
{
    return split(block, length, length);
}

TextList splitNames(const char* block, std::size_t length)
{
    return split(block, length, length > 0 ? length - 1 : 0);
}

bool fitsOut(const std::string& text, const char* buffer, const unsigned long* length) noexcept
{
    return buffer && length && text.size() < *length;
}

long copyOut(const std::string& text, char* buffer, unsigned long* length) noexcept
{
    if (!fitsOut(text, buffer, length)) return DCFG_ERR_BUFFER_TOO_SHORT;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    *length = static_cast<unsigned long>(text.size());
    return ERROR_SUCCESS;
}
