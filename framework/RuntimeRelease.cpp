// What the statically linked run-time holds and would leave behind when a library is unloaded.
//
// The POSIX threads layer keeps a record with two handles for each thread that it met, and one thread slot for the
// module. It frees a record when its thread ends, through the module's thread callbacks; a thread that outlives the
// module never tells it. So the loading and the unloading thread are reported as ended here, other threads are kept
// from having records (see warmUpRuntime), and the slot is found and freed.
#include <windows.h>

#include <pthread.h>

#include <string>

#include "ModuleUnload.h"

extern "C" const IMAGE_TLS_DIRECTORY _tls_used;  // the module's thread callbacks
extern "C" HINSTANCE__ __ImageBase;              // the module

namespace __gnu_cxx {
void __freeres();  // the C++ run-time's: frees the reserve memory for exceptions
}

namespace {

constexpr DWORD slotCount = TLS_MINIMUM_AVAILABLE + 1024;  // as many as a process can have

// Which slots hold a value on this thread. Slots of other owners among them: they are only looked at.
struct UsedSlots
{
    bool used[slotCount];

    void read() noexcept
    {
        for (DWORD i = 0; i < slotCount; ++i)
            used[i] = TlsGetValue(i) != nullptr;
    }
};

}  // namespace

void releaseRuntimeThread() noexcept
{
    const auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
    for (; callback && *callback; ++callback)
        (*callback)(&__ImageBase, DLL_THREAD_DETACH, nullptr);
}

// The first throw and the first local static of a module run the threads layer's once-only code, which makes a record
// for the thread that meets it.
void warmUpRuntime() noexcept
{
    try {
        throw 0;
    } catch (int) {
    }
    static const std::string local(1, '\0');
    static_cast<void>(local);
}

void releaseRuntime() noexcept
{
    static UsedSlots before;
    static UsedSlots after;
    pthread_self();  // makes sure that there is a record and with it a slot
    before.read();
    releaseRuntimeThread();
    after.read();
    DWORD slot = TLS_OUT_OF_INDEXES;
    int emptied = 0;
    for (DWORD i = 0; i < slotCount; ++i) {
        if (!before.used[i] || after.used[i]) continue;
        slot = i;
        ++emptied;
    }
    if (emptied == 1) TlsFree(slot);  // anything else is a run-time that this code does not know: leave it alone
    releaseThreadValues();
    __gnu_cxx::__freeres();
}
