// The few pieces of the C++ run-time that this library needs, on the process heap. The compiler's own bring exception
// handling along, and that the thread run-time, which leaves kernel handles behind each time a DLL is unloaded.
#include <windows.h>

#include <cstddef>
#include <new>

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return HeapAlloc(GetProcessHeap(), 0, size);
}

void operator delete(void* block) noexcept
{
    if (block) HeapFree(GetProcessHeap(), 0, block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept
{
    operator delete(block);
}

// What a call of a pure virtual function would end in; there is none.
extern "C" void __cxa_pure_virtual()
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_INVALID_PARAMETER));
}
