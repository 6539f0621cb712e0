#include "frame/ListCache.h"

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

bool readList(Reply& reply, std::uint32_t capacity, TextList (*split)(const char*, std::size_t), TextList& list)
{
    std::vector<char> block(capacity, 0);
    unsigned long length = capacity;
    if (!reply.orInvalidResponse().list(block.data(), &length).ok()) return false;
    list = split(block.data(), length);
    return true;
}
