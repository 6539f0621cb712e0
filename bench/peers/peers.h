// What the client and the server of the bare transports agree on.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace peers {

// The sizes of the frames that LogDeviceGetValue sends and gets in this measurement.
inline constexpr std::size_t requestBytes = 180;
inline constexpr std::size_t replyBytes = 230;
using Request = std::array<std::uint8_t, requestBytes>;
using Reply = std::array<std::uint8_t, replyBytes>;

inline constexpr wchar_t messagePipeName[] = L"\\\\.\\pipe\\kxova bench messages";
inline constexpr wchar_t bytePipeName[] = L"\\\\.\\pipe\\kxova bench bytes";
inline constexpr std::uint16_t port = 47631;
inline constexpr wchar_t rpcEndpoint[] = L"kxova_bench";

// The texts of the same question and answer in a typed call.
inline constexpr wchar_t device[] = L"kxova bench device";
inline constexpr wchar_t parameter[] = L"a parameter of some bench";
inline constexpr wchar_t language[] = L"EN";
inline constexpr std::size_t valueLength = 60;
inline constexpr std::size_t unitLength = 8;

// One request and one reply in memory that both processes see.
struct Area
{
    std::atomic<std::uint32_t> asked;     // the number of the newest request
    std::atomic<std::uint32_t> answered;  // the number of the newest reply
    std::atomic<std::uint32_t> serverSleeps;
    std::atomic<std::uint32_t> clientSleeps;
    Request request;
    Reply reply;
};

enum Way { twoEvents, signalAndWait, spinThenWait, ways };

inline constexpr const wchar_t* wayNames[ways] = {L"two events", L"signal and wait", L"spin then wait"};

// An area and its two events; whoever comes first makes them.
class Shared
{
 public:
    explicit Shared(Way way)
    {
        wchar_t name[80];
        const auto named = [&](const wchar_t* what) {
            wsprintfW(name, L"kxova bench %s %s", wayNames[way], what);
            return name;
        };
        section_ = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Area), named(L"area"));
        area = static_cast<Area*>(MapViewOfFile(section_, FILE_MAP_WRITE, 0, 0, sizeof(Area)));
        asked = CreateEventW(nullptr, FALSE, FALSE, named(L"asked"));
        answered = CreateEventW(nullptr, FALSE, FALSE, named(L"answered"));
    }
    ~Shared()
    {
        CloseHandle(answered);
        CloseHandle(asked);
        UnmapViewOfFile(area);
        CloseHandle(section_);
    }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    Area* area;
    HANDLE asked;
    HANDLE answered;

 private:
    HANDLE section_;
};

// Waits until the word has the value: some looks with the processor given away between them, then the event.
// `sleeps` tells the other side that the event is needed; every store and load here is in one total order, so either
// this side sees the value or the other side sees that it sleeps.
inline void await(const std::atomic<std::uint32_t>& word, std::uint32_t value, std::atomic<std::uint32_t>& sleeps,
                  HANDLE event)
{
    constexpr int looks = 50;
    for (int i = 0; i < looks; ++i) {
        if (word.load() == value) return;
        SwitchToThread();
    }
    sleeps.store(1);
    while (word.load() != value)
        WaitForSingleObject(event, INFINITE);
    sleeps.store(0);
}

// Tells the other side, and wakes it if it sleeps.
inline void publish(std::atomic<std::uint32_t>& word, std::uint32_t value, std::atomic<std::uint32_t>& sleeps,
                    HANDLE event)
{
    word.store(value);
    if (sleeps.exchange(0) != 0) SetEvent(event);
}

}  // namespace peers
