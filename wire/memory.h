// The channel through shared memory: no system call carries a frame while both sides are awake.
//
// A client connects to the door, the pipe \\.\pipe\ + the channel's name + memoryDoorSuffix, and reads one message, the
// offer. The section that the offer names, a handle in the client's process, has no name and holds one MemoryBlock with
// the offer's nonce; only then are the handle and those in the block the client's to use and to close. The door stays
// open as long as the connection lasts, and nothing more is said on it.
//
// A request is put into the block, and then its number, one more than the last, into requestNumber; the reply
// likewise, with its request's number in replyNumber. Who waits looks a while, then says that he sleeps, looks once
// more and waits for his event; who puts something there sets the event of a sleeper. Nothing is read in place: it is
// copied first, for the other side could still change it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "wire/frame.h"

namespace wire {

inline constexpr wchar_t memoryDoorSuffix[] = L".memory";

struct MemoryOffer
{
    static constexpr std::uint32_t expectedMagic = 0x4D58'4B31;
    static constexpr std::uint32_t expectedLayout = 1;

    std::uint32_t magic;
    std::uint32_t layout;
    std::uint64_t nonce;
    std::uint64_t section;  // 0: there is none for this client; it is to use the channel's pipe
};

struct MemoryBlock
{
    using Word = std::atomic<std::uint32_t>;
    static_assert(Word::is_always_lock_free);

    // The server's, before the offer. Handles in the client's process.
    std::uint64_t nonce;
    std::uint64_t requestEvent;   // resets itself
    std::uint64_t replyEvent;     // resets itself
    std::uint64_t serverProcess;  // ends with the server

    // The client's.
    alignas(64) Word requestNumber;
    Word requestLength;
    Word clientSleeps;

    // The server's.
    alignas(64) Word replyNumber;
    Word replyLength;
    Word serverSleeps;
    Word takenNumber;  // of the last request that was begun
    Word closed;       // no request is begun any more

    alignas(64) std::uint8_t request[replyFrameCapacity];
    alignas(64) std::uint8_t reply[replyFrameCapacity];
};

static_assert(offsetof(MemoryBlock, requestNumber) == 64 && offsetof(MemoryBlock, replyNumber) == 128);
static_assert(offsetof(MemoryBlock, request) == 192 && offsetof(MemoryBlock, reply) == 8512);
static_assert(sizeof(MemoryBlock) == 16832);

// How often a waiting side looks, and lets others run, before it sleeps: some ten microseconds, which is longer than most
// requests take. Not more, because where all share one processor others may have to wait for it: a yield does not always
// give way to them.
inline constexpr int looksBeforeSleep = 30;

}  // namespace wire
