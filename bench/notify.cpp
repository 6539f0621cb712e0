// From LogDeviceSetValue in one process to the wake-up in another, beside a bare event between the same two
// processes, in turns, so that both meet the same machine. Needs the configuration server; makes a logical device of
// its own and deletes it.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "kxovaapi.h"
#include "support/measure.h"
#include "support/options.h"
#include "support/process.h"
#include "support/table.h"

namespace {

constexpr char device[] = "kxova bench notify";
constexpr char definition[] = "NX3110.MPI";
constexpr char bareName[] = "kxova bench bare";
constexpr char acknowledgeName[] = "kxova bench acknowledge";
constexpr char sharedName[] = "kxova bench shared";
constexpr int rounds = 2000;
constexpr int warmUp = 100;
constexpr DWORD longest = 20'000;

LONGLONG now()
{
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart;
}

double microseconds(LONGLONG ticks)
{
    LARGE_INTEGER none{};
    LARGE_INTEGER all{};
    all.QuadPart = ticks;
    return microseconds(none, all);
}

// What both processes see.
struct Shared
{
    volatile LONGLONG woken;  // when the other process was running again
};

struct Meeting
{
    HANDLE bare = CreateEventA(nullptr, FALSE, FALSE, bareName);
    HANDLE acknowledge = CreateEventA(nullptr, FALSE, FALSE, acknowledgeName);
    HANDLE section = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Shared), sharedName);
    Shared* shared = static_cast<Shared*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, sizeof(Shared)));
};

// The process that is woken, until it is killed.
int sleeper()
{
    const Meeting meeting;
    HANDLE changed = nullptr;
    while (static_cast<long>(LogDeviceNotifyChange(device, 0, 0, "kxova bench", &changed, &changed)) != 0)
        Sleep(10);
    SetEvent(meeting.acknowledge);
    const HANDLE events[] = {changed, meeting.bare};
    for (;;) {
        WaitForMultipleObjects(2, events, FALSE, INFINITE);
        meeting.shared->woken = now();
        SetEvent(meeting.acknowledge);
    }
}

void print(Series& series, const char* what)
{
    std::printf("  %-44s %6.1f us %6.1f us %6.1f us\n", what, series.median(), series.at(0.1), series.at(0.9));
}

bool acknowledged(const Meeting& meeting)
{
    return WaitForSingleObject(meeting.acknowledge, longest) == WAIT_OBJECT_0;
}

int measure(const Options& options)
{
    const Meeting meeting;
    Series notified;
    Series returned;
    Series bare;
    for (int i = 0; i < rounds + warmUp; ++i) {
        LONGLONG start = now();
        LogDeviceSetValue(device, "note", std::to_string(i).c_str());
        const LONGLONG back = now();
        if (!acknowledged(meeting)) return 1;
        const LONGLONG woken = meeting.shared->woken;
        if (i >= warmUp) {
            notified.times.push_back(microseconds(woken - start));
            returned.times.push_back(microseconds(back - start));
        }

        start = now();
        SetEvent(meeting.bare);
        if (!acknowledged(meeting)) return 1;
        if (i >= warmUp) bare.times.push_back(microseconds(meeting.shared->woken - start));
    }
    std::printf("wake-up of another process, %d rounds in turns\n", rounds);
    std::printf("  %-44s %9s %9s %9s\n", "", "median", "p10", "p90");
    print(notified, "from LogDeviceSetValue to the wake-up");
    print(returned, "LogDeviceSetValue itself");
    print(bare, "from SetEvent to the wake-up");
    std::printf("  %-44s %6.2f\n", "ratio of the medians", notified.at(0.5) / bare.at(0.5));
    saveJson(options.json, {{"bench", "notify"},
                            {"notified_us", notified.median()},
                            {"call_us", returned.median()},
                            {"bare_us", bare.median()},
                            {"ratio", notified.median() / bare.median()}});
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count > 1 && std::strcmp(arguments[1], "sleeper") == 0) return sleeper();

    LogDeviceDel(device);
    if (const long result = LogDeviceCreateFromDef(device, definition); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    const Meeting meeting;
    const OtherProcess other("sleeper");
    const int status = acknowledged(meeting) ? measure(Options(count, arguments)) : 1;
    if (status != 0) std::printf("bench: the second process does not wake up\n");
    LogDeviceDel(device);
    return status;
}
