// The thread that listens for a channel's notifications and posts them to its window.
//
// It has a connection of its own, makes it again when it was lost, and then has the channel renew its registrations.
// It ends when the channel is closed or its window is gone. Nobody waits for it: it keeps this library loaded until
// then, and lets go of it with its last step.
#pragma once

#include "channel.h"

namespace kxonlinx {

// False: no memory, or no thread to be had.
bool startListener(Ref<Channel> channel) noexcept;

}  // namespace kxonlinx
