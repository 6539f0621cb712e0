#include "ModuleState.h"

#include <atomic>

#include "ModuleUnload.h"

extern "C" HINSTANCE__ __ImageBase;  // the linker's: the start of the module that this code is in

namespace {

constinit AFX_MODULE_STATE ownState{nullptr, &__ImageBase, &__ImageBase};

// The thread slot that holds a thread's current state; NULL there stands for the module's own. It is taken on first
// use; without one (a process has about a thousand) the module's own state is always current.
std::atomic<DWORD> stateSlot{TLS_OUT_OF_INDEXES};

DWORD takeSlot() noexcept
{
    DWORD taken = stateSlot.load(std::memory_order_acquire);
    if (taken != TLS_OUT_OF_INDEXES) return taken;
    const DWORD fresh = TlsAlloc();
    if (fresh == TLS_OUT_OF_INDEXES || stateSlot.compare_exchange_strong(taken, fresh)) return fresh;
    TlsFree(fresh);  // another thread was first
    return taken;
}

AFX_MODULE_STATE* currentIn(DWORD slot) noexcept
{
    const DWORD error = GetLastError();  // which TlsGetValue clears
    auto* state = static_cast<AFX_MODULE_STATE*>(TlsGetValue(slot));
    SetLastError(error);
    return state ? state : &ownState;
}

std::atomic<bool> ending{false};

}  // namespace

AFX_MODULE_STATE* AfxGetStaticModuleState() noexcept
{
    return &ownState;
}

AFX_MODULE_STATE* AfxGetModuleState() noexcept
{
    const DWORD slot = stateSlot.load(std::memory_order_acquire);
    return slot == TLS_OUT_OF_INDEXES ? &ownState : currentIn(slot);
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) noexcept
{
    const DWORD slot = takeSlot();
    if (slot == TLS_OUT_OF_INDEXES) return &ownState;
    auto* previous = currentIn(slot);
    TlsSetValue(slot, state == &ownState ? nullptr : state);
    return previous;
}

void releaseModuleState() noexcept
{
    const DWORD slot = stateSlot.exchange(TLS_OUT_OF_INDEXES);
    if (slot != TLS_OUT_OF_INDEXES) TlsFree(slot);
}

void noteProcessIsEnding() noexcept
{
    ending = true;
}

bool ProcessIsEnding() noexcept
{
    return ending;
}
