// What the loader entry asks of the rest.
#pragma once

namespace kxonlinx {

// Closes what the program left open.
void closeAllChannels() noexcept;

}  // namespace kxonlinx
