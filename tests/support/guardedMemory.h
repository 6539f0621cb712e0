// Memory that ends where the next byte must not be touched: reading or writing past it is an access violation.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>

class GuardedMemory
{
 public:
    explicit GuardedMemory(std::size_t capacity)
        : capacity_((capacity + page - 1) / page * page),
          begin_(static_cast<std::uint8_t*>(VirtualAlloc(nullptr, capacity_ + page, MEM_RESERVE, PAGE_NOACCESS)))
    {
        if (!begin_ || !VirtualAlloc(begin_, capacity_, MEM_COMMIT, PAGE_READWRITE)) throw std::bad_alloc();
    }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;
    ~GuardedMemory() { VirtualFree(begin_, 0, MEM_RELEASE); }

    // The last bytes before the guard.
    std::span<std::uint8_t> last(std::size_t count) { return {begin_ + capacity_ - count, count}; }

    // These bytes, placed there.
    std::span<const std::uint8_t> holding(std::span<const std::uint8_t> bytes)
    {
        const std::span<std::uint8_t> place = last(bytes.size());
        std::copy(bytes.begin(), bytes.end(), place.begin());
        return place;
    }

 private:
    static constexpr std::size_t page = 4096;

    std::size_t capacity_;
    std::uint8_t* begin_;
};
