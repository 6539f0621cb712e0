#include "thread_error.h"

#include <cstdint>

namespace kxonlinx::threadError {

namespace {

DWORD slot = TLS_OUT_OF_INDEXES;

}  // namespace

bool start() noexcept
{
    slot = TlsAlloc();
    return slot != TLS_OUT_OF_INDEXES;
}

void stop() noexcept
{
    TlsFree(slot);
    slot = TLS_OUT_OF_INDEXES;
}

void set(kxonlinx_error error) noexcept
{
    TlsSetValue(slot, reinterpret_cast<void*>(static_cast<std::uintptr_t>(error)));
}

kxonlinx_error get() noexcept
{
    return static_cast<kxonlinx_error>(reinterpret_cast<std::uintptr_t>(TlsGetValue(slot)));
}

}  // namespace kxonlinx::threadError
