// What "kxova export" and "kxova import" cost for each logical device, with 200 to 2000 of them. Needs the configuration
// server; makes logical devices of its own and deletes them.
#include <windows.h>

#include <cstdio>
#include <string>

#include "kxovaapi.h"
#include "support/growth.h"
#include "support/measure.h"
#include "support/options.h"
#include "support/program.h"

namespace {

constexpr char definition[] = "NX3110.MPI";
constexpr int numbers[] = {200, 2000};
constexpr int startRounds = 5;

std::string nameOf(int number)
{
    char name[40];
    std::snprintf(name, sizeof name, "kxova bench %06d", number);
    return name;
}

void removeDevices(int count)
{
    for (int i = 0; i < count; ++i)
        LogDeviceDel(nameOf(i).c_str());
}

double command(const std::string& arguments)
{
    return microsecondsOf([&] {
        Program kxova("kxova.exe", arguments);
        if (kxova.exitStatus() != 0) std::printf("bench: kxova %s: %s\n", arguments.c_str(), kxova.output().c_str());
    });
}

int measure(const Options& options)
{
    char folder[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    const std::string file = folder + std::string("kxova bench.json");
    const std::string toFile = "export --file \"" + file + '"';
    const std::string fromFile = "import \"" + file + '"';

    Growth growth("export and import");
    // With nothing of ours: what starting the program and everything else in the store cost.
    Series noExport;
    Series noImport;
    for (int i = 0; i < startRounds; ++i) {
        noExport.times.push_back(command(toFile));
        noImport.times.push_back(command(fromFile));
    }
    int made = 0;
    for (const int items : numbers) {
        for (; made < items; ++made)
            LogDeviceCreateFromDef(nameOf(made).c_str(), definition);
        const int rounds = items < 1000 ? 7 : 3;
        Series exported;
        Series imported;
        Series unchanged;
        for (int i = 0; i < rounds; ++i) {
            exported.times.push_back(command(toFile));
            removeDevices(items);
            imported.times.push_back(command(fromFile));
            unchanged.times.push_back(command(fromFile));
        }
        // A few long runs: it is the quietest of them that is compared.
        growth.add("kxova export", items, (exported.at(0) - noExport.at(0)) / items);
        growth.add("kxova import, all new", items, (imported.at(0) - noImport.at(0)) / items);
        growth.add("kxova import, all there", items, (unchanged.at(0) - noImport.at(0)) / items);
    }
    removeDevices(made);
    DeleteFileA(file.c_str());
    growth.finish(options);
    return 0;
}

}  // namespace

int main(int count, char** arguments)
{
    LogDeviceDel(nameOf(0).c_str());
    if (const long result = LogDeviceCreateFromDef(nameOf(0).c_str(), definition); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    LogDeviceDel(nameOf(0).c_str());
    return measure(Options(count, arguments));
}
