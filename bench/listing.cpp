// What it costs to list the logical devices, with 10, 1 000 and 10 000 of them: a request a device; the whole list in
// one request where it fits (with requests for each where not), then the walk through the list that the library
// keeps; and in the same way the values of one device. Needs the configuration server; makes logical devices and
// deletes them.
#include <windows.h>

#include <cstdio>
#include <string>

#include "kxovaapi.h"
#include "support/measure.h"

namespace {

constexpr char definition[] = "NX3110.MPI";
constexpr char empty[] = "bench";
constexpr char withValues[] = "bench values";

struct Text
{
    char buffer[260];
    unsigned long length = sizeof buffer;
};

std::string numbered(const char* what, int number)
{
    char name[40];
    std::snprintf(name, sizeof name, "%s %05d", what, number);
    return name;
}

// A device without values, so that making ten thousand copies does not take minutes.
long makeEmptyDevice()
{
    LogDeviceDel(empty);
    if (const long result = LogDeviceCreateFromDef(empty, definition)) return result;
    for (;;) {
        Text name;
        Text value;
        if (LogDeviceGetEnumValue(empty, 0, name.buffer, &name.length, value.buffer, &value.length) != 0) return 0;
        if (const long result = LogDeviceDelValue(empty, name.buffer)) return result;
    }
}

int deviceCount()
{
    int count = 0;
    for (Text name; LogDeviceGetEnum(nullptr, static_cast<unsigned long>(count), name.buffer, &name.length) == 0;
         name.length = sizeof name.buffer)
        ++count;
    return count;
}

// One item a call until the list ends; the number of items. ask(index)
template <typename Ask>
int listAll(Ask ask, unsigned long from = 0)
{
    unsigned long index = from;
    while (ask(index) == 0)
        ++index;
    return static_cast<int>(index);
}

long single(unsigned long index)
{
    Text name;
    return LogDeviceGetEnum(nullptr, index, name.buffer, &name.length);
}

long cached(unsigned long index)
{
    Text name;
    return DCFG_LogDeviceGetEnum(index, name.buffer, &name.length);
}

long singleValue(unsigned long index)
{
    Text name;
    Text value;
    return LogDeviceGetEnumValue(withValues, index, name.buffer, &name.length, value.buffer, &value.length);
}

long cachedValue(unsigned long index)
{
    Text name;
    Text value;
    return DCFG_LogDeviceGetEnumValue(withValues, nullptr, index, name.buffer, &name.length, value.buffer,
                                      &value.length);
}

struct Row
{
    const char* what;
    int items;
    double total;
};

template <typename Single, typename Cached>
void measure(const char* what, int items, Single byRequests, Cached byList)
{
    const int rounds = items <= 10 ? 500 : items <= 1000 ? 20 : 5;
    Series requests;
    Series fetch;
    Series walk;
    for (int i = 0; i < rounds; ++i) {
        requests.measure([&] { listAll(byRequests); });
        fetch.measure([&] { byList(0); });
        walk.measure([&] { listAll(byList, 1); });
    }
    const Row rows[] = {
        {"a request each", items, requests.at(0.5)},
        {"the list's first item", items, fetch.at(0.5)},
        {"the list's other items", items, walk.at(0.5)},
    };
    for (const Row& row : rows)
        std::printf("  %-8s %6d  %-24s %10.0f us %9.3f us\n", what, row.items, row.what, row.total,
                    row.total / row.items);
    std::printf(
        "{\"bench\":\"listing\",\"of\":\"%s\",\"items\":%d,\"requests_us\":%.1f,\"fetch_us\":%.1f,"
        "\"walk_us\":%.1f}\n",
        what, items, rows[0].total, rows[1].total, rows[2].total);
}

}  // namespace

int main()
{
    if (const long result = makeEmptyDevice(); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    LogDeviceDel(withValues);
    LogDeviceCopy(empty, withValues);
    std::printf("listing, medians\n");
    std::printf("  %-8s %6s  %-24s %13s %12s\n", "", "number", "", "whole list", "an item");

    int made = 0;
    int values = 0;
    for (const int wanted : {10, 1000, 10000}) {
        for (int missing = wanted - deviceCount(); missing > 0; --missing)
            LogDeviceCopy(empty, numbered(empty, ++made).c_str());
        for (; values < wanted; ++values)
            LogDeviceSetValue(withValues, numbered("value", values).c_str(), "1");
        measure("devices", deviceCount(), single, cached);
        measure("values", values, singleValue, cachedValue);
    }
    for (; made > 0; --made)
        LogDeviceDel(numbered(empty, made).c_str());
    LogDeviceDel(withValues);
    LogDeviceDel(empty);
    return 0;
}
