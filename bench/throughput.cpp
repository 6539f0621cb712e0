// Calls a second, of all clients together: with 1 to 16 client processes, with 1 to 8 threads in one of them, and with
// four beside one that stands still; with as many processes over a bare message pipe, and with as many threads that only
// take and give back a mutex, as each call does. All groups are measured in turns. Needs the configuration server and
// bench_peers; makes a logical device of its own and deletes it.
#include <windows.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "kxovaapi.h"
#include "peers/client.h"
#include "support/crew.h"
#include "support/measure.h"
#include "support/options.h"
#include "support/table.h"
#include "wire/frame.h"

namespace {

constexpr char device[] = "kxova bench";
constexpr char definition[] = "NX3110.MPI";
constexpr char parameter[] = "baudrate";
constexpr int processes = 16;
constexpr int threads = 8;                              // of one more process, behind these
constexpr int bareProcesses = processes + threads;      // the first of as many that use a bare message pipe
constexpr int bareThreads = bareProcesses + processes;  // of a process that has nothing but a mutex
constexpr int turns = 10;

bool ask()
{
    char value[260];
    unsigned long length = sizeof value;
    return LogDeviceGetValue(device, parameter, value, &length) == 0;
}

std::function<bool()> takeAndGiveBack()
{
    return [mutex = CreateMutexA(nullptr, FALSE, nullptr)] {
        return WaitForSingleObject(mutex, INFINITE) == WAIT_OBJECT_0 && ReleaseMutex(mutex);
    };
}

// A client that sends requests and takes no reply, until nothing more goes out.
class DeafClient
{
 public:
    DeafClient()
    {
        const std::wstring name = std::wstring(L"\\\\.\\pipe\\") + wire::channelName;
        pipe_ = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                            FILE_FLAG_OVERLAPPED, nullptr);
        static const std::uint8_t noFrame[wire::frameHeaderLength] = {};  // answered as every message is
        for (int i = 0; i < most && connected(); ++i) {
            static OVERLAPPED pending[most];
            WriteFile(pipe_, noFrame, sizeof noFrame, nullptr, &pending[i]);
        }
    }
    ~DeafClient()
    {
        if (connected()) CloseHandle(pipe_);
    }
    DeafClient(const DeafClient&) = delete;
    DeafClient& operator=(const DeafClient&) = delete;

    bool connected() const noexcept { return pipe_ != INVALID_HANDLE_VALUE; }

 private:
    static constexpr int most = 500;
    HANDLE pipe_;
};

struct Group
{
    std::string name;
    std::function<double()> measure;
    std::size_t comparedWith;  // the row of the same crew without more of them
    enum class Of { Processes, Disturbed, Threads, Bare, Lock } of;
    std::vector<double> perSecond{};  // in each turn

    double median() const { return Series{perSecond}.median(); }
};

std::vector<Group> groups(crew::Crew& crew)
{
    using Of = Group::Of;
    std::vector<Group> all;
    for (const int count : {1, 2, 4, 8, 16})
        all.push_back({std::to_string(count) + (count == 1 ? " process" : " processes"),
                       [&crew, count] { return crew.perSecond(0, count); }, 0, Of::Processes});
    const std::size_t four = 2;
    all.push_back({"4 processes, another stands still in a call",
                   [&crew] {
                       crew.stall(processes - 1);
                       const double result = crew.perSecond(0, 4);
                       crew.wake(processes - 1);
                       return result;
                   },
                   four, Of::Disturbed});
    all.push_back({"4 processes, another never reads",
                   [&crew] {
                       const DeafClient deaf;
                       return crew.perSecond(0, 4);
                   },
                   four, Of::Disturbed});
    const std::size_t single = all.size();
    for (const int count : {1, 2, 4, 8})
        all.push_back({std::to_string(count) + (count == 1 ? " thread" : " threads in one process"),
                       [&crew, count] { return crew.perSecond(processes, count); }, single, Of::Threads});
    const std::size_t lock = all.size();
    for (const int count : {1, 2, 4, 8})
        all.push_back({std::to_string(count) + (count == 1 ? " thread, only the mutex" : " threads, only the mutex"),
                       [&crew, count] { return crew.perSecond(bareThreads, count); }, lock, Of::Lock});
    const std::size_t bare = all.size();
    for (const int count : {1, 4, 16})
        all.push_back({std::to_string(count) + " over a bare message pipe",
                       [&crew, count] { return crew.perSecond(bareProcesses, count); }, bare, Of::Bare});
    return all;
}

// To the figure of the row that it is compared with, in most turns.
double ratio(const std::vector<Group>& all, const Group& group)
{
    return inMostTurns(group.perSecond.size(), [&](std::size_t turn) {
        return group.perSecond[turn] / all[group.comparedWith].perSecond[turn];
    });
}

std::vector<const Group*> rowsOf(const std::vector<Group>& all, Group::Of of)
{
    std::vector<const Group*> rows;
    for (const Group& group : all)
        if (group.of == of) rows.push_back(&group);
    return rows;
}

// By which part of itself the time from one call's end to the next one's grew from one row to another, in most turns;
// without what `part`, which both rows have in them, grew by.
double growth(const Group& from, const Group& to, const Group* partFrom = nullptr, const Group* partTo = nullptr)
{
    return inMostTurns(from.perSecond.size(), [&](std::size_t turn) {
        const auto time = [turn](const Group& row) { return 1 / row.perSecond[turn]; };
        const double known = partFrom ? std::max(0.0, time(*partTo) - time(*partFrom)) : 0;
        return (time(to) - time(from) - known) / time(from);
    });
}

// The most by which it grew from a row to a later one, which has more clients.
double mostGrowth(const std::vector<const Group*>& rows, const std::vector<const Group*>& parts = {})
{
    double most = 0;
    for (std::size_t to = 0; to < rows.size(); ++to)
        for (std::size_t from = 0; from < to; ++from)
            most = std::max(most, parts.empty() ? growth(*rows[from], *rows[to])
                                                : growth(*rows[from], *rows[to], parts[from], parts[to]));
    return most;
}

double disturbance(const std::vector<Group>& all)
{
    double most = 0;
    for (const Group* const row : rowsOf(all, Group::Of::Disturbed))
        most = std::max(most, growth(all[row->comparedWith], *row));
    return most;
}

int run(const Options& options)
{
    crew::Crew crew;
    bool ready = true;
    for (int i = 0; i < processes; ++i)
        ready = ready && crew.add();
    ready = ready && crew.add(threads);
    for (int i = 0; i < processes; ++i)
        ready = ready && crew.add(1, "pipe");
    ready = ready && crew.add(threads, "mutex");
    if (!ready) {
        std::printf("bench: the clients do not start\n");
        return 1;
    }
    std::vector<Group> all = groups(crew);
    const int rounds = options.rounds ? options.rounds : turns;
    for (int turn = 0; turn < rounds; ++turn)
        for (Group& group : all)
            group.perSecond.push_back(group.measure());

    std::printf("throughput on %s, calls a second of all clients together, median of %d turns\n", options.on, rounds);
    std::printf("  %-48s %10s %10s\n", "", "calls/s", "ratio");
    Json rows = Json::array();
    for (const Group& group : all) {
        const double toOther = ratio(all, group);
        std::printf("  %-48s %10.0f %10.2f\n", group.name.c_str(), group.median(), toOther);
        rows.push_back({{"name", group.name}, {"calls_per_second", group.median()}, {"ratio", toOther}});
    }
    using Of = Group::Of;
    const Json goals = printGoals({{"a call's growth by more processes", mostGrowth(rowsOf(all, Of::Processes)), 0.1},
                                   {"a call's growth by one that hangs or never reads", disturbance(all), 0.1},
                                   {"a call's growth by more threads, without the mutex's",
                                    mostGrowth(rowsOf(all, Of::Threads), rowsOf(all, Of::Lock)), 0.1}});
    saveJson(options.json, {{"bench", "throughput"}, {"on", options.on}, {"rows", rows}, {"goals", goals}});
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    if (crew::isWorker(count, arguments)) {
        const std::string what = count > 4 ? arguments[4] : "";
        if (what == "pipe") return crew::workAs(arguments, peers::overMessagePipe());
        if (what == "mutex") return crew::workAs(arguments, takeAndGiveBack());
        return crew::workAs(arguments, ask);
    }
    LogDeviceDel(device);
    if (const long result = LogDeviceCreateFromDef(device, definition); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    const int status = run(Options(count, arguments));
    LogDeviceDel(device);
    return status;
}
