#include "support/fuzzing.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace fuzzing {

namespace {

struct Whereabouts
{
    char what[128] = "nothing yet";
    std::uint32_t round = 0;
    std::uint32_t rounds = 0;
};

Whereabouts now;

std::uint32_t fromEnvironment(const char* name, std::uint32_t unlessSet)
{
    const char* const text = std::getenv(name);
    return text && *text ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 0)) : unlessSet;
}

void writeNumber(Bytes& bytes, std::size_t at, std::uint32_t number)
{
    for (std::size_t i = 0; i < 4 && at + i < bytes.size(); ++i)
        bytes[at + i] = static_cast<std::uint8_t>(number >> (8 * i));
}

void append(Bytes& bytes, Random& random, std::size_t count)
{
    const bool same = random.oneIn(2);
    const auto first = static_cast<std::uint8_t>(random.next());
    while (count-- > 0)
        bytes.push_back(same ? first : static_cast<std::uint8_t>(random.next()));
}

// Without heap or streams: what crashed may have left neither in order.
[[noreturn]] void end(const char* what) noexcept
{
    char text[384];
    const int length =
        std::snprintf(text, sizeof text, "%s in %s, round %lu (KXOVA_FUZZ_SEED=%lu KXOVA_FUZZ_ROUNDS=%lu)\n", what,
                      now.what, static_cast<unsigned long>(now.round), static_cast<unsigned long>(seed()),
                      static_cast<unsigned long>(now.rounds));
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text, static_cast<DWORD>(length), &written, nullptr);
    TerminateProcess(GetCurrentProcess(), 3);
    std::abort();
}

LONG WINAPI tellCrash(EXCEPTION_POINTERS* crash)
{
    const EXCEPTION_RECORD& record = *crash->ExceptionRecord;
    char what[96];
    std::snprintf(what, sizeof what, "CRASH: exception %08lX at %p (%p)", record.ExceptionCode,
                  record.ExceptionAddress,
                  record.NumberParameters > 1 ? reinterpret_cast<void*>(record.ExceptionInformation[1]) : nullptr);
    end(what);
}

}  // namespace

std::uint32_t seed()
{
    static const std::uint32_t value = fromEnvironment("KXOVA_FUZZ_SEED", 20261121);
    return value;
}

std::uint32_t rounds(std::uint32_t unlessSet)
{
    return fromEnvironment("KXOVA_FUZZ_ROUNDS", unlessSet);
}

// SplitMix64: each seed, 0 too, gives a sequence of its own, and each step is a few instructions.
std::uint64_t Random::next() noexcept
{
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
}

std::uint32_t awkwardNumber(Random& random)
{
    static constexpr std::uint32_t numbers[] = {0,      1,      2,          3,          4,          255,       256,
                                                259,    260,    261,        518,        520,        0x7FFF,    0x8000,
                                                0xFFFE, 0xFFFF, 0x10000,    8184,       8191,       8192,      8193,
                                                16384,  65534,  0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};
    switch (random.below(4)) {
        case 0:
            return static_cast<std::uint32_t>(random.next());
        case 1:
            return random.below(600);
        default:
            return random.of(numbers);
    }
}

std::u16string awkwardText(Random& random, std::size_t longest)
{
    static constexpr char16_t units[] = {u'a',   u'Z',   u'7',   u'ä',   u'Ö',   u'ß',   u'\\', u'/',  u'.',
                                         u',',   u';',   u'|',   u'"',   u'%',   u'\0',  u'\r', u'\n', u' ',
                                         0x20AC, 0x03A9, 0xD800, 0xDC00, 0xFFFF, 0x0130, 0x0081};
    const bool plain = random.oneIn(2);
    std::u16string text(random.below(std::min<std::size_t>(longest, random.oneIn(4) ? longest : 24) + 1), u'x');
    for (char16_t& unit : text)
        unit = plain ? static_cast<char16_t>(u'a' + random.below(26)) : random.of(units);
    return text;
}

void damage(Bytes& bytes, Random& random, std::size_t longest)
{
    for (std::uint32_t count = 1 + random.below(3); count > 0; --count) {
        const std::size_t at = random.below(bytes.size() + 1);
        const std::size_t part = random.below(std::min<std::size_t>(bytes.size() - at, 16) + 1);
        const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        switch (random.below(8)) {
            case 0:
                bytes.resize(at);
                break;
            case 1:
                append(bytes, random, random.oneIn(4) ? random.below(longest + 1) : random.below(12));
                break;
            case 2:
                if (at < bytes.size()) bytes[at] = static_cast<std::uint8_t>(random.next());
                break;
            case 3:
                writeNumber(bytes, at, awkwardNumber(random));
                break;
            case 4: {
                const Bytes repeated(place, place + static_cast<std::ptrdiff_t>(part));
                bytes.insert(place, repeated.begin(), repeated.end());
                break;
            }
            case 5:
                bytes.erase(place, place + static_cast<std::ptrdiff_t>(part));
                break;
            case 6:
                std::fill_n(place, part, static_cast<std::uint8_t>(random.oneIn(2) ? 0 : 0xFF));
                break;
            default:
                if (!bytes.empty()) bytes.pop_back();
                break;
        }
        if (bytes.size() > longest) bytes.resize(longest);
    }
}

std::string damagedText(std::string text, std::span<const char* const> tokens, Random& random)
{
    static constexpr char signs[] = "{}[],:\"\\0-.enul\n\t";
    for (std::uint32_t count = 1 + random.below(3); count > 0 && !text.empty(); --count) {
        const std::size_t at = random.below(text.size());
        const std::size_t length = 1 + random.below(std::min<std::size_t>(text.size() - at, 24));
        switch (random.below(6)) {
            case 0:
                text[at] = static_cast<char>(random.next());
                break;
            case 1:
                text.erase(at, length);
                break;
            case 2:
                text.insert(at, text.substr(random.below(text.size()), length));
                break;
            case 3:
                text.insert(at, 1, signs[random.below(sizeof signs - 1)]);
                break;
            case 4:
                std::swap(text[at], text[random.below(text.size())]);
                break;
            default:
                text.replace(at, length, random.of(tokens));
        }
    }
    return text;
}

void figure(const char* what, std::uint64_t rounds, std::uint64_t bytes)
{
    std::printf("figure: %s %llu rounds %llu bytes\n", what, rounds, bytes);
}

void under(const char* what, std::uint32_t round) noexcept
{
    std::snprintf(now.what, sizeof now.what, "%s", what);
    now.round = round;
}

std::string whereabouts()
{
    return std::string(now.what) + ", round " + std::to_string(now.round) +
           " (KXOVA_FUZZ_SEED=" + std::to_string(seed()) + " KXOVA_FUZZ_ROUNDS=" + std::to_string(now.rounds) + ")";
}

void giveUp(const char* why) noexcept
{
    end(why);
}

void tellCrashes(std::uint32_t rounds) noexcept
{
    now.rounds = rounds;
    SetUnhandledExceptionFilter(tellCrash);
}

}  // namespace fuzzing
