// The other process of the trace's tests:
//   write KEY ID COUNT      traces COUNT numbered lines with the configuration below HKEY_CURRENT_USER\KEY
//   hold READY RELEASE      holds the trace mutex from setting one event until the other one is set
//   abandon                 ends while it holds the trace mutex
//   raise                   changes the generation word
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "Kxotrc.h"
#include "trcObjects.h"

namespace {

int write(const char* keyName, int id, int count)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, keyName, 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) return 10;
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, key);
    TrcStart(nullptr);
    for (int i = 0; i < count; ++i) {
        // Lines of different length, so that mixed ones cannot look whole.
        KXTRACE("writer", TRC_DETAIL, "[%d:%04d:%.*s]", id, i, i % 90,
                "0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890");
    }
    TrcStop();
    RegCloseKey(key);
    return 0;
}

HANDLE takeMutex()
{
    const HANDLE mutex = CreateMutexExA(nullptr, trc::mutexName, 0, SYNCHRONIZE);
    if (!mutex || WaitForSingleObject(mutex, 60000) == WAIT_TIMEOUT) std::exit(20);
    return mutex;
}

int hold(const char* ready, const char* release)
{
    const HANDLE readyEvent = OpenEventA(EVENT_MODIFY_STATE, FALSE, ready);
    const HANDLE releaseEvent = OpenEventA(SYNCHRONIZE, FALSE, release);
    if (!readyEvent || !releaseEvent) return 30;
    const HANDLE mutex = takeMutex();
    SetEvent(readyEvent);
    WaitForSingleObject(releaseEvent, 60000);
    ReleaseMutex(mutex);
    return 0;
}

int raise()
{
    const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, trc::generationName);
    if (!section) return 40;
    const auto word = static_cast<volatile std::uint32_t*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 4));
    if (!word) return 41;
    *word = *word + 1;
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const char* const task = argc > 1 ? argv[1] : "";
    if (std::strcmp(task, "write") == 0 && argc == 5) return write(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
    if (std::strcmp(task, "hold") == 0 && argc == 4) return hold(argv[2], argv[3]);
    if (std::strcmp(task, "raise") == 0) return raise();
    if (std::strcmp(task, "abandon") == 0) {
        takeMutex();
        ExitProcess(0);
    }
    return 1;
}
