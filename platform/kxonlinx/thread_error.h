// How the calling thread's last call ended. Kept in a thread slot of the system's rather than in a thread_local,
// which would bring the compiler's thread run-time, and its kernel objects, into the DLL.
#pragma once

#include "kxonlinx.h"

namespace kxonlinx::threadError {

bool start() noexcept;  // when the DLL is loaded; false: no slot is left
void stop() noexcept;

void set(kxonlinx_error error) noexcept;
kxonlinx_error get() noexcept;

}  // namespace kxonlinx::threadError
