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
    Series perSecond{};
    Series ratio{};  // to the other row's figure in the same turn
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

// Microseconds from one call's end to the next one's, whoever makes them; first those of the row that it is compared with.
std::vector<double> timesOf(std::vector<Group>& all, Group::Of of)
{
    std::vector<double> times;
    for (Group& group : all) {
        if (group.of != of) continue;
        Group& beside = all[group.comparedWith];
        if (times.empty() && beside.of != of) times.push_back(1e6 / beside.perSecond.median());
        times.push_back(1e6 / group.perSecond.median());
    }
    return times;
}

// The most by which a time is longer than an earlier one, as a part of that, less what `part` of it grew by meanwhile.
double growth(const std::vector<double>& times, const std::vector<double>& part)
{
    double most = 0;
    for (std::size_t later = 0; later < times.size(); ++later)
        for (std::size_t earlier = 0; earlier < later; ++earlier) {
            const double known = part.empty() ? 0 : std::max(0.0, part[later] - part[earlier]);
            most = std::max(most, (times[later] - times[earlier] - known) / times[earlier]);
        }
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
        for (Group& group : all) {
            group.perSecond.times.push_back(group.measure());
            group.ratio.times.push_back(group.perSecond.times.back() /
                                        all[group.comparedWith].perSecond.times.back());
        }

    std::printf("throughput on %s, calls a second of all clients together, median of %d turns\n", options.on, rounds);
    std::printf("  %-48s %10s %10s\n", "", "calls/s", "ratio");
    Json rows = Json::array();
    for (Group& group : all) {
        const double calls = group.perSecond.median();
        const double ratio = group.ratio.median();
        std::printf("  %-48s %10.0f %10.2f\n", group.name.c_str(), calls, ratio);
        rows.push_back({{"name", group.name}, {"calls_per_second", calls}, {"ratio", ratio}});
    }
    const std::vector<double> processTimes = timesOf(all, Group::Of::Processes);
    const std::vector<double> threadTimes = timesOf(all, Group::Of::Threads);
    const Json goals = printGoals(
        {{"a call's growth by more processes", growth(processTimes, {}), 0.1},
         {"a call's growth by one that hangs or never reads", growth(timesOf(all, Group::Of::Disturbed), {}), 0.1},
         {"a call's growth by more threads, without the mutex's", growth(threadTimes, timesOf(all, Group::Of::Lock)),
          0.1}});
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
