// The list behind an enumeration that is fetched whole and handed out one index at a time.
//
// One such list per enumeration and process, held from the call that fetches it until one asks past its end; it is
// not keyed by the arguments of that call. Enumerations that overlap, on one thread or on several, share the list and
// end it for each other; a list that a call is walking stays alive until the call returns.
#pragma once

#include <memory>

#include "frame/ApiCall.h"
#include "frame/textList.h"

class ListCache
{
 public:
    using Handle = std::shared_ptr<const TextList>;

    Handle get() const;
    Handle put(TextList list);
    void drop();

 private:
    mutable SRWLOCK lock_ = SRWLOCK_INIT;
    Handle list_;
};

// Reads a reply that is to hold a list of at most `capacity` bytes: kind, result and the list itself must be as they
// should, else false and the caller falls back to single requests.
bool readList(Reply& reply, std::uint32_t capacity, TextList (*split)(const char*, std::size_t), TextList& list);
