// The other client: does one thing and says what came of it.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "kxovaapi.h"

namespace {

// Registers for all logical devices, says so, and waits for its end.
int listen()
{
    HANDLE event = nullptr;
    unsigned long result = 0;
    do {
        result = LogDeviceNotifyChange(nullptr, 0, 0, "notify_client", &event, &event);
    } while (static_cast<long>(result) == -1);  // until the library's window is up
    std::printf("listening %lu\n", result);
    std::fflush(stdout);
    Sleep(INFINITE);
    return 0;
}

long burst(const char* device, const char* parameter, int count)
{
    long result = 0;
    for (int i = 1; i <= count && result == 0; ++i)
        result = LogDeviceSetValue(device, parameter, std::to_string(i).c_str());
    return result;
}

}  // namespace

int main(int count, char** arguments)
{
    const auto is = [&](const char* command, int operands) {
        return count == operands + 2 && std::strcmp(arguments[1], command) == 0;
    };
    long result = -2;
    if (is("listen", 0)) return listen();
    if (is("create", 1)) result = LogDeviceCreateFromDef(arguments[2], "NX3110.MPI");
    if (is("delete", 1)) result = LogDeviceDel(arguments[2]);
    if (is("set", 3)) result = LogDeviceSetValue(arguments[2], arguments[3], arguments[4]);
    if (is("burst", 3)) result = burst(arguments[2], arguments[3], std::atoi(arguments[4]));
    if (is("name", 2)) result = LogNameSetValue(arguments[2], "LogDevice", arguments[3]);
    std::printf("result %ld\n", result);
    return result == 0 ? 0 : 1;
}
