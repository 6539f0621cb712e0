// The bytes of one run, taken apart as a target needs them; where they end there are zeros.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

class Input
{
 public:
    Input(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

    bool empty() const { return at_ == end_; }
    std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }
    const std::uint8_t* rest() const { return at_; }

    std::uint8_t byte() { return empty() ? std::uint8_t{0} : *at_++; }
    std::uint16_t word()
    {
        const std::uint8_t low = byte();
        return static_cast<std::uint16_t>(low | byte() << 8);
    }

    // The text up to the next line feed, or all that is left; zeros end what a C string shows of it.
    std::string line()
    {
        const std::uint8_t* const end = std::find(at_, end_, std::uint8_t{'\n'});
        std::string text(at_, end);
        at_ = end == end_ ? end : end + 1;
        return text;
    }

 private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

// Memory of exactly this size, so that a byte too much is noticed.
template <typename T>
std::unique_ptr<T[]> exactly(std::size_t count)
{
    return std::unique_ptr<T[]>(new T[count]());
}

inline void require(bool kept, const char* promise)
{
    if (kept) return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}
