// The enumeration of a whole directory: one request for all names, handed out one index at a time.
#pragma once

#include "frame/ListCache.h"

// Walks the list up to iValue, tracing each entry, and copies that one out; past the end drops the list and is 259.
long directoryEntry(ApiCall& call, ListCache& cache, const TextList& list, unsigned long iValue, char* buffer,
                    unsigned long* length);

// All names that a single-request enumeration yields until it fails.
template <typename Enumerate>
TextList namesOneByOne(Enumerate enumerate)
{
    TextList list;
    for (unsigned long i = 0;; ++i) {
        char name[textCapacity] = {};
        unsigned long length = sizeof name;
        if (enumerate(i, name, &length) != ERROR_SUCCESS) return list;
        list.emplace_back(name, length);
    }
}
