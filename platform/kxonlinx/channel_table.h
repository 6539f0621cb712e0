// The open channels of this process and their handles.
//
// A handle holds the place in the table and how often that place has been used, so that a handle that was closed is
// told apart from the channel that has its place now. Handles are greater than 0.
#pragma once

#include <windows.h>

#include <cstddef>

#include "channel.h"

namespace kxonlinx {

class ChannelTable
{
 public:
    static constexpr std::size_t capacity = 64;
    static constexpr int noHandle = -1;

    // noHandle when the table is full; the channel is then dropped.
    int add(Ref<Channel> channel) noexcept;

    // The channel of a handle; none: `error` says whether it was closed or never given.
    Ref<Channel> find(int handle, kxonlinx_error& error) noexcept;

    // The same, and the handle is no longer valid.
    Ref<Channel> remove(int handle, kxonlinx_error& error) noexcept;

    // The channel at a place, none where none is open.
    Ref<Channel> at(std::size_t place) noexcept;

    void closeAll() noexcept;

 private:
    // Nothing here has a destructor: at the end of a process other threads may have been stopped with the lock held.
    struct Place
    {
        Channel* channel;
        int uses;
    };

    Place* placeOf(int handle, kxonlinx_error& error) noexcept;

    SRWLOCK lock_ = SRWLOCK_INIT;
    Place places_[capacity]{};
};

}  // namespace kxonlinx
