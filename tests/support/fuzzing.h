// Chance for tests that feed damaged bytes: repeatable by its seed, and able to say what it was about when a crash ends
// the program.
//
// KXOVA_FUZZ_SEED and KXOVA_FUZZ_ROUNDS set seed and number of rounds; a failure names both.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace fuzzing {

using Bytes = std::vector<std::uint8_t>;

std::uint32_t seed();
std::uint32_t rounds(std::uint32_t unlessSet);

class Random
{
 public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() noexcept;
    std::uint32_t below(std::size_t bound) noexcept { return static_cast<std::uint32_t>(next() % bound); }
    bool oneIn(std::size_t count) noexcept { return below(count) == 0; }

    template <typename Range>
    auto& of(Range& range) noexcept
    {
        return range[below(std::size(range))];
    }

 private:
    std::uint64_t state_;
};

// A number that programs stumble over: at the ends of its width, at the sizes of buffers and messages, or any.
std::uint32_t awkwardNumber(Random& random);

// 0 to `longest` units: plain, German, zeros among them, halves of pairs.
std::u16string awkwardText(Random& random, std::size_t longest);

// Cuts, lengthens, overwrites, repeats or removes a part, once or several times; at most `longest` bytes remain.
void damage(Bytes& bytes, Random& random, std::size_t longest);

// The same for the text of a file; `tokens` are put in where something else stood.
std::string damagedText(std::string text, std::span<const char* const> tokens, Random& random);

// Prints what a test has done, in the form that the soak adds up.
void figure(const char* what, std::uint64_t rounds, std::uint64_t bytes);

// What is under way, for the message of a crash. The text is copied.
void under(const char* what, std::uint32_t round) noexcept;

// "LogDeviceGetValue, round 17 (KXOVA_FUZZ_SEED=1 KXOVA_FUZZ_ROUNDS=4000)"
std::string whereabouts();

// Ends the program as a crash does: what happened, and the whereabouts.
[[noreturn]] void giveUp(const char* why) noexcept;

// From now on a crash of this program names the whereabouts before the program ends.
void tellCrashes(std::uint32_t rounds) noexcept;

}  // namespace fuzzing
