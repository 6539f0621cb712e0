// What it costs a program to load the library and do nothing with it: time, memory, handles and threads, beside a
// library of the system that talks to servers, too.
#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <cstdio>
#include <string>

#include "support/measure.h"
#include "support/options.h"
#include "support/requests.h"
#include "support/table.h"
#include "tests/support/handle_count.h"

namespace {

constexpr int turns = 100;
constexpr int countedLoads = 20;
constexpr const char* libraries[] = {"kxovaapi.dll", "KXONLINX.dll", "winhttp.dll"};

double kib(std::size_t bytes)
{
    return static_cast<double>(bytes) / 1024;
}

int threads()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

// What this process has.
struct Holdings
{
    PROCESS_MEMORY_COUNTERS memory{};
    double handles = 0;
    double threads = 0;

    Holdings()
    {
        GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
        handles = static_cast<double>(handleCount());
        threads = ::threads();
    }
};

double imageSize(HMODULE library)
{
    MODULEINFO info{};
    GetModuleInformation(GetCurrentProcess(), library, &info, sizeof info);
    return kib(info.SizeOfImage);
}

Json measure(const char* name, int rounds, const Requests::Table& requests)
{
    const Holdings before;
    const HMODULE library = LoadLibraryA(name);
    if (!library) {
        std::printf("  %-14s cannot be loaded (%lu)\n", name, GetLastError());
        return {};
    }
    const double image = imageSize(library);
    const Holdings loaded;
    FreeLibrary(library);
    const Holdings freed;  // what the system's own libraries keep once they were loaded does not count

    Series load;
    Series free;
    for (int i = 0; i < rounds; ++i) {
        HMODULE again = nullptr;
        load.measure([&] { again = LoadLibraryA(name); });
        free.measure([&] { FreeLibrary(again); });
    }
    const Holdings after;
    const double workingSet = kib(loaded.memory.WorkingSetSize) - kib(before.memory.WorkingSetSize);
    const double privateBytes = kib(loaded.memory.PagefileUsage) - kib(before.memory.PagefileUsage);
    const auto requestsEach = Requests::find(requests, name);
    std::printf("  %-14s %8.0f us %8.0f us %8s %9.0f KiB %9.0f KiB %9.0f KiB %7.0f %7.0f %12.0f\n", name,
                load.median(), free.median(), orDash(requestsEach, 0).c_str(), image, workingSet, privateBytes,
                loaded.handles - before.handles, loaded.threads - before.threads, after.handles - freed.handles);
    Json row = {{"name", name},
                {"load_us", load.median()},
                {"free_us", free.median()},
                {"image_kib", image},
                {"working_set_kib", workingSet},
                {"private_kib", privateBytes},
                {"handles", loaded.handles - before.handles},
                {"threads", loaded.threads - before.threads},
                {"handles_left", after.handles - freed.handles}};
    if (requestsEach) row["requests"] = *requestsEach;
    return row;
}

int count(const Options& options)
{
    Requests requests(options.log);
    Requests::Table table;
    for (const char* name : libraries) {
        const auto loadAndFree = [name] { FreeLibrary(LoadLibraryA(name)); };
        loadAndFree();
        table[name] = requests.each(countedLoads, loadAndFree);
    }
    Requests::save(options.requests, table);
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    const Options options(argumentCount, arguments);
    if (options.counts()) return count(options);
    const Requests::Table requests = Requests::load(options.requests);
    std::printf("loading and nothing else, medians; memory, handles and threads that it takes\n");
    std::printf("  %-14s %11s %11s %8s %13s %13s %13s %7s %7s %12s\n", "", "load", "free", "requests", "image",
                "working set", "private", "handles", "threads", "handles left");
    Json rows = Json::array();
    for (const char* name : libraries)
        rows.push_back(measure(name, options.rounds ? options.rounds : turns, requests));
    saveJson(options.json, {{"bench", "load"}, {"rows", rows}});
    return 0;
}
