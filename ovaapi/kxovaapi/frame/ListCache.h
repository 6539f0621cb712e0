// The list behind an enumeration that is fetched whole and handed out one index at a time.
//
// One such list per enumeration and process, held from the call that fetches it until one asks past its end; it is
// not keyed by the arguments of that call. Enumerations that overlap, on one thread or on several, share the list and
// end it for each other; a list that a call is walking stays alive until the call returns.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frame/ApiCall.h"

using TextList = std::vector<std::string>;

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

// The texts of a block of zero-terminated texts. splitList takes all, empty ones too; for splitNames the zero in the
// last byte of the block only ends it, so that a list may be closed by an empty text.
TextList splitList(const char* block, std::size_t length);
TextList splitNames(const char* block, std::size_t length);

// Reads a reply that is to hold a list of at most `capacity` bytes: kind, result and the list itself must be as they
// should, else false and the caller falls back to single requests.
bool readList(Reply& reply, std::uint32_t capacity, TextList (*split)(const char*, std::size_t), TextList& list);

// Copies a listed text into a caller's buffer and stores its length; 234, with nothing written, when text and
// terminator do not fit or there is no buffer.
long copyOut(const std::string& text, char* buffer, unsigned long* length) noexcept;
bool fitsOut(const std::string& text, const char* buffer, const unsigned long* length) noexcept;
