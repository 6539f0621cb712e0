// What listing the values of one logical device costs with 1 to 1 000 of them: a request each, or the whole list in one
// request where it fits (with requests for each where not) and then the walk through it. Needs the configuration server;
// makes a logical device of its own and deletes it.
#include <windows.h>

#include <cstdio>
#include <string>

#include "kxovaapi.h"
#include "support/growth.h"
#include "support/measure.h"
#include "support/options.h"

namespace {

constexpr char definition[] = "NX3110.MPI";
constexpr char device[] = "kxova bench values";
constexpr int numbers[] = {1, 10, 100, 1000};

struct Text
{
    char buffer[260];
    unsigned long length = sizeof buffer;
};

// A device without values.
long makeDevice()
{
    LogDeviceDel(device);
    if (const long result = LogDeviceCreateFromDef(device, definition)) return result;
    for (;;) {
        Text name;
        Text value;
        if (LogDeviceGetEnumValue(device, 0, name.buffer, &name.length, value.buffer, &value.length) != 0) return 0;
        if (const long result = LogDeviceDelValue(device, name.buffer)) return result;
    }
}

long byRequest(unsigned long index)
{
    Text name;
    Text value;
    return LogDeviceGetEnumValue(device, index, name.buffer, &name.length, value.buffer, &value.length);
}

long byList(unsigned long index)
{
    Text name;
    Text value;
    return DCFG_LogDeviceGetEnumValue(device, nullptr, index, name.buffer, &name.length, value.buffer, &value.length);
}

// All items from `first` on, and the end, which is asked for too: the library drops its list there.
template <typename Ask>
void listFrom(int first, Ask ask)
{
    for (auto index = static_cast<unsigned long>(first); ask(index) == 0;)
        ++index;
}

int measure(const Options& options)
{
    Growth growth("values of a logical device");
    int made = 0;
    for (const int items : numbers) {
        for (; made < items; ++made) {
            char name[20];
            std::snprintf(name, sizeof name, "value %05d", made);
            LogDeviceSetValue(device, name, "1");
        }
        const int rounds = std::max(2000 / items, 5);
        Series requests;
        Series fetch;
        Series walk;
        for (int i = 0; i < rounds; ++i) {
            requests.measure([&] { listFrom(0, byRequest); });
            fetch.measure([&] { byList(0); });
            walk.measure([] { listFrom(1, byList); });
        }
        growth.add("LogDeviceGetEnumValue, a request each", items, requests.median() / (items + 1));
        growth.add("DCFG_LogDeviceGetEnumValue, the list kept", items, walk.median() / items);
        std::printf("  %-44s %7d items %10.2f us in all\n", "DCFG_LogDeviceGetEnumValue, fetching the list", items,
                    fetch.median());
    }
    growth.finish(options);
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    if (const long result = makeDevice(); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    const int status = measure(Options(count, arguments));
    LogDeviceDel(device);
    return status;
}
