// What listing the values of one logical device costs with 1 to 1 000 of them: a request each, or the whole list in one
// request where it fits (with requests for each where not) and then the walk through it; all of them in turns. Needs the
// configuration server; makes logical devices of its own and deletes them.
#include <windows.h>

#include <cstdio>
#include <iterator>
#include <string>

#include "kxovaapi.h"
#include "support/growth.h"
#include "support/measure.h"
#include "support/options.h"

namespace {

constexpr char definition[] = "NX3110.MPI";
constexpr int numbers[] = {1, 10, 100, 1000};
constexpr int turns = 30;
constexpr int asked = 50;  // requests to each device in a turn

std::string deviceWith(int values)
{
    return "kxova bench values " + std::to_string(values);
}

struct Text
{
    char buffer[260];
    unsigned long length = sizeof buffer;
};

long makeDevice(int values)
{
    const std::string device = deviceWith(values);
    LogDeviceDel(device.c_str());
    if (const long result = LogDeviceCreateFromDef(device.c_str(), definition)) return result;
    for (;;) {
        Text name;
        Text value;
        if (LogDeviceGetEnumValue(device.c_str(), 0, name.buffer, &name.length, value.buffer, &value.length) != 0)
            break;
        if (const long result = LogDeviceDelValue(device.c_str(), name.buffer)) return result;
    }
    for (int i = 0; i < values; ++i) {
        char name[20];
        std::snprintf(name, sizeof name, "value %05d", i);
        LogDeviceSetValue(device.c_str(), name, "1");
    }
    return 0;
}

long byRequest(const std::string& device, unsigned long index)
{
    Text name;
    Text value;
    return LogDeviceGetEnumValue(device.c_str(), index, name.buffer, &name.length, value.buffer, &value.length);
}

long byList(const std::string& device, unsigned long index)
{
    Text name;
    Text value;
    return DCFG_LogDeviceGetEnumValue(device.c_str(), nullptr, index, name.buffer, &name.length, value.buffer,
                                      &value.length);
}

struct Figures
{
    Series request;
    Series fetch;
    Series walk;

    void measure(int values)
    {
        const std::string device = deviceWith(values);
        for (int i = 0; i < asked; ++i)
            request.measure([&] { byRequest(device, static_cast<unsigned long>(i) * values / asked); });
        fetch.measure([&] { byList(device, 0); });
        // To the end, where the library drops its list.
        walk.measure([&] {
            for (unsigned long index = 1; byList(device, index) == 0;)
                ++index;
        });
    }
};

int measure(const Options& options)
{
    Figures figures[std::size(numbers)];
    for (int turn = 0; turn < turns; ++turn)
        for (std::size_t i = 0; i < std::size(numbers); ++i)
            figures[i].measure(numbers[i]);

    Growth growth("values of a logical device");
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        growth.add("LogDeviceGetEnumValue, a request each", numbers[i], figures[i].request.median());
        growth.add("DCFG_LogDeviceGetEnumValue, the list kept", numbers[i], figures[i].walk.median() / numbers[i]);
        std::printf("  %-44s %7d items %10.2f us in all\n", "DCFG_LogDeviceGetEnumValue, fetching the list",
                    numbers[i], figures[i].fetch.median());
    }
    growth.finish(options);
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    for (const int values : numbers) {
        if (const long result = makeDevice(values); result != 0) {
            std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n",
                        result);
            return 1;
        }
    }
    const int status = measure(Options(count, arguments));
    for (const int values : numbers)
        LogDeviceDel(deviceWith(values).c_str());
    return status;
}
