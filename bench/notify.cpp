// From LogDeviceSetValue in one process to the wake-up in another, beside a bare event between the same two
// processes, in turns, so that both meet the same machine. Needs the configuration server; makes a logical device of
// its own and deletes it.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "kxovaapi.h"

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
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks) * 1e6 / static_cast<double>(frequency.QuadPart);
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

struct Series
{
    std::vector<double> times;

    double at(double part)
    {
        std::sort(times.begin(), times.end());
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    }
    void print(const char* what)
    {
        std::printf("  %-44s %6.1f us %6.1f us %6.1f us\n", what, at(0.5), at(0.1), at(0.9));
    }
};

bool acknowledged(const Meeting& meeting)
{
    return WaitForSingleObject(meeting.acknowledge, longest) == WAIT_OBJECT_0;
}

int measure()
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
    notified.print("from LogDeviceSetValue to the wake-up");
    returned.print("LogDeviceSetValue itself");
    bare.print("from SetEvent to the wake-up");
    std::printf("  %-44s %6.2f\n", "ratio of the medians", notified.at(0.5) / bare.at(0.5));
    std::printf("{\"bench\":\"notify\",\"notified_us\":%.1f,\"call_us\":%.1f,\"bare_us\":%.1f,\"ratio\":%.3f}\n",
                notified.at(0.5), returned.at(0.5), bare.at(0.5), notified.at(0.5) / bare.at(0.5));
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
    std::string command = std::string("\"") + arguments[0] + "\" sleeper";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION other{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &other)) {
        std::printf("bench: the second process does not start (%lu)\n", GetLastError());
        return 1;
    }
    const int status = acknowledged(meeting) ? measure() : 1;
    if (status != 0) std::printf("bench: the second process does not wake up\n");
    TerminateProcess(other.hProcess, 0);
    LogDeviceDel(device);
    return status;
}
