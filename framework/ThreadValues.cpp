// Thread-local variables of a module, by the compiler's emulation of them.
//
// The run-time's own emulation keeps a thread's values under a POSIX-threads key. In a library that is linked
// statically this costs two semaphores and a thread slot per load, and two handles per thread, that unloading does
// not give back: a process that loads the library again and again runs out of slots after about a thousand times and
// is aborted. Here the values hang on a fiber-local slot, whose release frees those of all threads.
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "ModuleUnload.h"

// One per variable; the compiler emits them. The index is ours: 0 until the variable is first used.
struct __emutls_object
{
    std::uintptr_t size;
    std::uintptr_t alignment;
    std::uintptr_t index;
    const void* initial;  // NULL: zeros
};

namespace {

std::atomic<DWORD> slot{FLS_OUT_OF_INDEXES};
std::atomic<std::uintptr_t> lastIndex{0};

// The values of one thread, each in a block of its own; NULL: not used yet.
struct Values
{
    std::uintptr_t count;
    void* value[1];
};

constexpr std::uintptr_t spareValues = 8;

void WINAPI releaseValues(void* memory)
{
    auto* values = static_cast<Values*>(memory);
    for (std::uintptr_t i = 0; i < values->count; ++i)
        if (values->value[i]) __mingw_aligned_free(values->value[i]);
    std::free(values);
}

// The run-time knows no way to report a failure from here either.
void* must(void* memory)
{
    if (!memory) std::abort();
    return memory;
}

std::uintptr_t indexOf(__emutls_object* variable)
{
    std::uintptr_t index = __atomic_load_n(&variable->index, __ATOMIC_ACQUIRE);
    if (index != 0) return index;
    std::uintptr_t fresh = ++lastIndex;
    return __atomic_compare_exchange_n(&variable->index, &index, fresh, false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE)
               ? fresh
               : index;
}

Values* valuesFor(std::uintptr_t index)
{
    auto* values = static_cast<Values*>(FlsGetValue(slot));
    if (values && values->count >= index) return values;
    const std::uintptr_t count = index + spareValues;
    const std::uintptr_t before = values ? values->count : 0;
    auto* larger = static_cast<Values*>(must(std::realloc(values, sizeof(Values) + count * sizeof(void*))));
    std::memset(larger->value + before, 0, (count - before) * sizeof(void*));
    larger->count = count;
    if (!FlsSetValue(slot, larger)) std::abort();
    return larger;
}

void* makeValue(const __emutls_object& variable)
{
    void* value = must(__mingw_aligned_malloc(variable.size, variable.alignment));
    if (variable.initial)
        std::memcpy(value, variable.initial, variable.size);
    else
        std::memset(value, 0, variable.size);
    return value;
}

}  // namespace

bool prepareThreadValues() noexcept
{
    if (slot == FLS_OUT_OF_INDEXES) slot = FlsAlloc(releaseValues);  // static constructors run on one thread
    return slot != FLS_OUT_OF_INDEXES;
}

void releaseThreadValues() noexcept
{
    const DWORD released = slot.exchange(FLS_OUT_OF_INDEXES);
    if (released != FLS_OUT_OF_INDEXES) FlsFree(released);
}

// Called by compiled code for the address of a thread-local variable on the calling thread.
extern "C" void* __emutls_get_address(__emutls_object* variable)
{
    const DWORD error = GetLastError();  // reading a slot clears it
    if (!prepareThreadValues()) std::abort();
    const std::uintptr_t index = indexOf(variable);
    void*& value = valuesFor(index)->value[index - 1];
    if (!value) value = makeValue(*variable);
    SetLastError(error);
    return value;
}
