// What starting the server, listing devices and asking for their values cost with 10 to 100 000 logical devices in the
// store. No server may run: this program writes the devices into the registry, starts one for each number, and removes
// them at the end.
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

#include "kxovaapi.h"
#include "support/growth.h"
#include "support/measure.h"
#include "support/options.h"
#include "support/program.h"

namespace {

constexpr char devicesKey[] = "SOFTWARE\\TAVRONE\\NORIX\\LogDevices";
constexpr int numbers[] = {10, 100, 1000, 10'000, 100'000};
constexpr int asked = 2000;  // items of a number are asked for, evenly spread
constexpr int changed = 200;

std::string nameOf(int number)
{
    char name[40];
    std::snprintf(name, sizeof name, "kxova bench %06d", number);
    return name;
}

// Straight into the store, because making a device takes the server far longer.
class Devices
{
 public:
    Devices()
    {
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, devicesKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
    }
    ~Devices()
    {
        for (; count_ > 0; --count_)
            RegDeleteKeyA(key_, nameOf(count_ - 1).c_str());
        RegCloseKey(key_);
    }
    Devices(const Devices&) = delete;
    Devices& operator=(const Devices&) = delete;

    // What the registry itself takes for a key among these.
    void makeAndDelete(const char* name) const
    {
        HKEY made = nullptr;
        RegCreateKeyExA(key_, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &made, nullptr);
        RegCloseKey(made);
        RegDeleteKeyA(key_, name);
    }

    void growTo(int count)
    {
        for (; count_ < count; ++count_) {
            HKEY device = nullptr;
            RegCreateKeyExA(key_, nameOf(count_).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &device, nullptr);
            for (const char* value : {"baudrate", "busparam", "note"})
                RegSetValueExA(device, value, 0, REG_SZ, reinterpret_cast<const BYTE*>("1"), 2);
            RegCloseKey(device);
        }
    }

 private:
    HKEY key_ = nullptr;
    int count_ = 0;
};

struct Text
{
    char buffer[260];
    unsigned long length = sizeof buffer;
};

// ask(number of the item), evenly spread over all of them. The numbers of devices cannot be measured in turns, so it is
// the quiet tenth that is compared.
template <typename Ask>
double spread(int items, int most, Ask ask)
{
    const int count = std::min(items * 20, most);
    Series each;
    for (int i = 0; i < count; ++i)
        each.measure([&] { ask(static_cast<int>(static_cast<long long>(i) * items / count)); });
    return each.at(0.1);
}

// Until the server can be reached; the quietest of several starts, the last of which leaves the server running.
double start(std::unique_ptr<Program>& server, int rounds)
{
    Series each;
    for (int i = 0; i < rounds; ++i) {
        server.reset();
        each.measure([&] {
            server = std::make_unique<Program>(serverProgram, "run --quiet");
            if (!startServer(*server))
                std::printf("bench: the server does not start: %s\n", server->output().c_str());
        });
    }
    return each.at(0);
}

// After the first change the server compares its memory with the registry, and then rests for long. Meanwhile it is as
// slow as with any other program on its processor.
void letItCompare(int items)
{
    LogDeviceSetValue(nameOf(0).c_str(), "note", "2");
    Sleep(static_cast<DWORD>(2'500 + items / 20));
}

int startsWith(int items)
{
    return items <= 1000 ? 9 : items <= 10'000 ? 5 : 3;
}

int measure(const Options& options)
{
    Growth growth("logical devices in the store");
    Devices devices;
    std::unique_ptr<Program> server;
    const double bare = start(server, startsWith(0));
    server.reset();
    for (const int items : numbers) {
        devices.growTo(items);
        const double started = start(server, startsWith(items));
        // What a start costs with none is more than a few devices cost.
        if (items >= 1000) growth.add("server start, without that of none", items, (started - bare) / items);
        letItCompare(items);
        growth.add("LogDeviceGetEnum", items, spread(items, asked, [](int index) {
                       Text name;
                       LogDeviceGetEnum(nullptr, static_cast<unsigned long>(index), name.buffer, &name.length);
                   }));
        growth.add("LogDeviceGetValue", items, spread(items, asked, [](int index) {
                       Text value;
                       LogDeviceGetValue(nameOf(index).c_str(), "note", value.buffer, &value.length);
                   }));
        growth.add("LogDeviceSetValue", items,
                   spread(items, changed, [](int index) { LogDeviceSetValue(nameOf(index).c_str(), "note", "2"); }));
        growth.show("RegCreateKey and RegDeleteKey there", items,
                    spread(items, changed, [&](int) { devices.makeAndDelete("kxova bench bare"); }));
        growth.add("LogDeviceCopy and LogDeviceDel", items, spread(items, changed, [](int index) {
                       LogDeviceCopy(nameOf(index).c_str(), "kxova bench copy");
                       LogDeviceDel("kxova bench copy");
                   }));
        server.reset();
    }
    growth.finish(options);
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    return measure(Options(count, arguments));
}
