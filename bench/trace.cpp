// What a trace call costs: one that is off, beside the empty loop; a line to each output, beside the bare cost of what
// the output demands; four processes that trace at once. The configuration is a key of this program's own that stands
// in for the machine's.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Kxotrc.h"
#include "support/crew.h"
#include "support/measure.h"
#include "support/options.h"
#include "support/requests.h"
#include "support/table.h"

namespace {

constexpr char machineKey[] = "Software\\kxova bench trace";
constexpr int turns = 60;
constexpr int linesInATurn = 40;
constexpr int countedLines = 200;
constexpr int processes = 4;
constexpr int processTurns = 8;

std::string folder()
{
    char path[MAX_PATH];
    GetTempPathA(MAX_PATH, path);
    return path;
}

const std::string bareFile = folder() + "kxova bench bare.TRC";

void writeLine()
{
    static const char* volatile device = "kxova bench device";
    static const char* volatile parameter = "a parameter of some bench";
    KXTRACE("LogDeviceGetValue: ", TRC_ENTRY, ">> lpszLogDevice=%s lpszParameter=%s - Pid %d Tid %d", device,
            parameter, 288, 292);
}

// The line as it is written, in the format LONG.
const char line[] =
    "L KXOVATDX P000000288T000000292 FA CFP          12:47:03,948 trace.cpp   ,00074 LogDeviceGetValue:  >> "
    "lpszLogDevice=kxova bench device lpszParameter=a parameter of some bench - Pid 288 Tid 292\r\n";

HANDLE bareMutex()
{
    static const HANDLE mutex = CreateMutexA(nullptr, FALSE, "Global\\kxova bench trace");
    return mutex;
}

// What an output demands of everybody who writes to it under the mutex.
template <typename Work>
void underMutex(Work work)
{
    WaitForSingleObject(bareMutex(), INFINITE);
    work();
    ReleaseMutex(bareMutex());
}

void bareToFile()
{
    underMutex([] {
        const HANDLE file = CreateFileA(bareFile.c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        WriteFile(file, line, sizeof line - 2, &written, nullptr);
        CloseHandle(file);
    });
}

void bareToRing()
{
    constexpr DWORD capacity = 2'000'000;
    struct Ring
    {
        volatile DWORD position;
        char data[capacity];
    };
    static const HANDLE section =
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Ring), "kxova bench ring");
    static auto* const ring = static_cast<Ring*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 0));
    underMutex([] {
        DWORD position = ring->position;
        if (position + sizeof line > capacity) position = 0;
        std::memcpy(ring->data + position, line, sizeof line - 1);
        ring->position = position + sizeof line - 1;
    });
}

void bareToDebugger()
{
    underMutex([] { OutputDebugStringA(line); });
}

struct Output
{
    const char* name;  // in the configuration
    const char* what;
    void (*bare)();
    const char* bareWhat;
};

constexpr Output outputs[] = {
    {"SM", "a line to the ring", bareToRing, "mutex, copy into shared memory"},
    {"FILE", "a line to a file", bareToFile, "mutex, open, append, close"},
    {"DBG", "a line to the debugger", bareToDebugger, "mutex, OutputDebugString"},
};
constexpr int outputsForProcesses = 2;  // the debugger's has a lock of its own

const Output* outputNamed(const char* name)
{
    for (const Output& output : outputs)
        if (std::strcmp(output.name, name) == 0) return &output;
    return nullptr;
}

// The trace with one output; none: off.
class Tracing
{
 public:
    explicit Tracing(const char* output)
    {
        HKEY parameters = nullptr;
        RegCreateKeyExA(HKEY_CURRENT_USER, machineKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &machine_, nullptr);
        RegCreateKeyExA(machine_, "Software\\TAVRONE\\NORIX\\TrcParams", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &parameters, nullptr);
        set(parameters, "Level", output ? "0xFF" : "0");
        set(parameters, "Output", output ? output : "SM");
        set(parameters, "Path", folder());
        set(parameters, "FileName", "kxova bench");
        RegCloseKey(parameters);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_);
        TrcStart(nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    }
    ~Tracing()
    {
        TrcStop();
        RegDeleteTreeA(machine_, nullptr);
        RegCloseKey(machine_);
        RegDeleteKeyA(HKEY_CURRENT_USER, machineKey);
    }
    Tracing(const Tracing&) = delete;
    Tracing& operator=(const Tracing&) = delete;

 private:
    static void set(HKEY key, const char* name, const std::string& text)
    {
        RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size() + 1));
    }

    HKEY machine_ = nullptr;
};

void removeFiles()
{
    DeleteFileA(bareFile.c_str());
    for (const char* number : {"1", "2"})
        DeleteFileA((folder() + "kxova bench" + number + ".TRC").c_str());
}

// Nanoseconds of a call that is off, and of the loop without it.
std::pair<double, double> disabled()
{
    constexpr int calls = 200'000;
    constexpr int times = 50;
    const Tracing off(nullptr);
    Series call;
    Series loop;
    for (int i = 0; i < times; ++i) {
        call.measureEach(calls, [] {
            writeLine();
            asm volatile("");
        });
        loop.measureEach(calls, [] { asm volatile(""); });
    }
    return {call.median() * 1000, loop.median() * 1000};
}

struct Row
{
    const Output* output;
    Series line{};
    Series bare{};
};

Row timed(const Output& output, int rounds)
{
    Row row{&output};
    const Tracing tracing(output.name);
    for (int turn = 0; turn < rounds; ++turn) {
        for (int i = 0; i < linesInATurn; ++i) {
            row.line.measure(writeLine);
            row.bare.measure(output.bare);
        }
    }
    return row;
}

// Lines a second of four processes together, beside as many that do the bare thing.
Row together(const Output& output)
{
    Row row{&output};
    crew::Crew crew;
    bool ready = true;
    for (const char* how : {" line", " bare"})
        for (int i = 0; i < processes; ++i)
            ready = ready && crew.add(1, output.name + std::string(how));
    for (int turn = 0; ready && turn < processTurns; ++turn) {
        row.line.times.push_back(1e6 / crew.perSecond(0, processes));
        row.bare.times.push_back(1e6 / crew.perSecond(processes, processes));
    }
    return row;
}

int work(char** arguments)
{
    const Output* const output = outputNamed(arguments[4]);
    if (!output) return 1;
    const Tracing tracing(output->name);
    const bool bare = std::strcmp(arguments[5], "bare") == 0;
    return crew::workAs(arguments, [bare, output] {
        bare ? output->bare() : writeLine();
        return true;
    });
}

int count(const Options& options)
{
    Requests requests(options.log);
    Requests::Table table;
    for (const Output& output : outputs) {
        const Tracing tracing(output.name);
        writeLine();
        table[output.what] = requests.each(countedLines, writeLine);
        output.bare();
        table[output.bareWhat] = requests.each(countedLines, output.bare);
    }
    Requests::save(options.requests, table);
    return 0;
}

class Report
{
 public:
    explicit Report(const Options& options) : requests_(Requests::load(options.requests)) {}

    void add(const std::string& name, const char* bareName, double time, double bare, const char* unit)
    {
        const auto requests = Requests::find(requests_, name);
        const auto bareRequests = Requests::find(requests_, bareName);
        std::printf("  %-34s %7.2f %s   %-32s %7.2f %s %6.2f %6s %6s\n", name.c_str(), time, unit, bareName, bare,
                    unit, time / bare, orDash(requests, 1).c_str(), orDash(bareRequests, 1).c_str());
        rows_.push_back({{"name", name}, {"time", time}, {"bare_name", bareName}, {"bare", bare}, {"unit", unit}});
        if (!requests || !bareRequests) return;
        rows_.back()["requests"] = *requests;
        rows_.back()["bare_requests"] = *bareRequests;
        goals_.push_back({name + ": requests above the bare ones", *requests - *bareRequests, 0});
    }
    void goal(const std::string& what, double value, double atMost) { goals_.push_back({what, value, atMost}); }
    Json finish() { return {{"bench", "trace"}, {"rows", rows_}, {"goals", printGoals(goals_)}}; }

 private:
    Requests::Table requests_;
    Json rows_ = Json::array();
    std::vector<Goal> goals_;
};

int measure(const Options& options)
{
    Report report(options);
    std::printf("trace, medians\n");
    std::printf("  %-34s %10s   %-32s %10s %6s %13s\n", "", "", "bare", "", "ratio", "requests each");
    const auto [call, loop] = disabled();
    report.add("a call that is off", "the empty loop", call, loop, "ns");
    report.goal("a call that is off, ns above the empty loop", call - loop, 2);
    for (const Output& output : outputs) {
        Row row = timed(output, options.rounds ? options.rounds : turns);
        const double ratio = row.line.median() / row.bare.median();
        report.add(output.what, output.bareWhat, row.line.median(), row.bare.median(), "us");
        report.goal(std::string(output.what) + " to the bare cost", ratio, 1.1);
    }
    for (int i = 0; i < outputsForProcesses; ++i) {
        Row row = together(outputs[i]);
        report.add(std::string(outputs[i].what) + ", 4 processes", outputs[i].bareWhat, row.line.median(),
                   row.bare.median(), "us");
    }
    saveJson(options.json, report.finish());
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    if (crew::isWorker(argumentCount, arguments) && argumentCount == 6) return work(arguments);
    const Options options(argumentCount, arguments);
    const int status = options.counts() ? count(options) : measure(options);
    removeFiles();
    return status;
}
