#include "frame/ListCache.h"

#include <cstring>
#include <utility>

ListCache::Handle ListCache::get() const
{
    AcquireSRWLockShared(&lock_);
    Handle list = list_;
    ReleaseSRWLockShared(&lock_);
    return list;
}

ListCache::Handle ListCache::put(TextList list)
{
    Handle fresh = std::make_shared<const TextList>(std::move(list));
    Handle old = fresh;
    AcquireSRWLockExclusive(&lock_);
    std::swap(list_, old);
    ReleaseSRWLockExclusive(&lock_);
    return fresh;
}

void ListCache::drop()
{
    Handle old;
    AcquireSRWLockExclusive(&lock_);
    std::swap(list_, old);
    ReleaseSRWLockExclusive(&lock_);
}

TextList splitList(const char* block, std::size_t length)
{
    TextList list;
    for (std::size_t at = 0; at < length;) {
        const std::size_t size = strnlen(block + at, length - at);
        list.emplace_back(block + at, size);
        at += size + 1;
    }
    return list;
}

TextList splitNames(const char* block, std::size_t length)
{
    TextList list;
    for (std::size_t at = 0; at + 1 < length;) {
        const std::size_t size = strnlen(block + at, length - at);
        list.emplace_back(block + at, size);
        at += size + 1;
    }
    return list;
}

bool readList(Reply& reply, std::uint32_t capacity, TextList (*split)(const char*, std::size_t), TextList& list)
{
    std::vector<char> block(capacity, 0);
    unsigned long length = capacity;
    if (!reply.orInvalidResponse().list(block.data(), &length).ok()) return false;
    list = split(block.data(), length);
    return true;
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
