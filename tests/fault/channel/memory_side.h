// The server's side of memory shared with one client, for the test's scripts: it can say more, less and other things
// than a server would.
#pragma once

#include <windows.h>

#include "frames.h"
#include "support/win_handle.h"
#include "wire/memory.h"

class MemorySide
{
 public:
    explicit operator bool() const { return static_cast<bool>(block_); }

    // Makes the memory and offers it to the client at `door`. False: it has gone.
    bool offer(HANDLE door);

    // The next request; false when the client has left the door, or `stopping` is set.
    bool read(frames::Bytes& request, HANDLE door, HANDLE stopping);

    // The reply to the last request, and after that one to a request that was never made.
    bool write(const frames::Bytes& reply);

    void close();

    wire::MemoryBlock& block() { return *block_.get(); }

    // What offer() would say, as it is written down for the client's process.
    wire::MemoryOffer make(HANDLE client);

 private:
    platform::View<wire::MemoryBlock> block_;
    platform::KernelObject requested_;
    platform::KernelObject replied_;
    platform::KernelObject doorEvent_;
    std::uint32_t answered_ = 0;
};

// Writes a message to a pipe.
bool say(HANDLE pipe, const void* message, std::size_t length);
