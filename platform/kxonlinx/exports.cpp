// The exported functions: what the arguments must be, which channel a handle means, and what the caller is told.
#include <cstdint>
#include <memory>
#include <new>

#include "channel_table.h"
#include "kxonlinx.h"
#include "library.h"
#include "local_transport.h"
#include "thread_error.h"
#include "timeout.h"
#include "wire/frame.h"

namespace {

using namespace kxonlinx;

constinit ChannelTable channels;

constexpr UINT lowestMessage = WM_USER;  // below are the system's own, which do things to a window
constexpr UINT highestMessage = 0xFFFF;

// What the functions that give 0 or -1 end with.
int result(kxonlinx_error error) noexcept
{
    threadError::set(error);
    return error == KXONLINX_OK ? 0 : -1;
}

bool isWindowOfThisProcess(HWND window) noexcept
{
    DWORD process = 0;
    return GetWindowThreadProcessId(window, &process) != 0 && process == GetCurrentProcessId();
}

kxonlinx_error openChannel(const wchar_t* name, int& handle) noexcept
{
    if (!PipeTransport::isName(name)) return KXONLINX_BAD_ARGUMENT;

    std::unique_ptr<Transport> transport(new (std::nothrow) LocalTransport(name, LocalTransport::isMemoryWanted()));
    Ref<Channel> channel = Channel::create(std::move(transport), configuredTimeout());
    if (!channel) return KXONLINX_OUT_OF_MEMORY;
    if (const kxonlinx_error error = channel->open()) return error;
    handle = channels.add(std::move(channel));
    return handle == ChannelTable::noHandle ? KXONLINX_TOO_MANY_CHANNELS : KXONLINX_OK;
}

kxonlinx_error sendReceive(int handle, unsigned short frameLength, const void* frame, unsigned short replyCapacity,
                           void* reply, unsigned short* replyLength) noexcept
{
    kxonlinx_error error;
    const Ref<Channel> channel = channels.find(handle, error);
    if (!channel) return error;
    // A reply that cannot fit in any case is refused before the server has done what it was asked.
    if (!frame || !reply || !replyLength || replyCapacity < wire::frameHeaderLength) return KXONLINX_BAD_ARGUMENT;
    return channel->sendReceive({static_cast<const std::uint8_t*>(frame), frameLength},
                                {static_cast<std::uint8_t*>(reply), replyCapacity}, *replyLength);
}

kxonlinx_error closeChannel(int handle) noexcept
{
    kxonlinx_error error;
    const Ref<Channel> channel = channels.remove(handle, error);
    if (channel) channel->close();
    return error;
}

kxonlinx_error setNotification(int handle, HWND window, UINT message) noexcept
{
    kxonlinx_error error;
    const Ref<Channel> channel = channels.find(handle, error);
    if (!channel) return error;
    if (message < lowestMessage || message > highestMessage || !isWindowOfThisProcess(window)) {
        return KXONLINX_BAD_ARGUMENT;
    }
    return channel->setNotification(window, message);
}

}  // namespace

void kxonlinx::closeAllChannels() noexcept
{
    channels.closeAll();
}

int SCP_openW(const wchar_t* name)
{
    int handle = ChannelTable::noHandle;
    threadError::set(openChannel(name, handle));
    return handle;
}

int SCP_send_receive(int handle, unsigned short frameLength, void* frame, unsigned short replyCapacity, void* reply,
                     unsigned short* replyLength)
{
    return result(sendReceive(handle, frameLength, frame, replyCapacity, reply, replyLength));
}

int SCP_get_errno()
{
    return threadError::get();
}

int SCP_close(int handle)
{
    return result(closeChannel(handle));
}

int SetNorixHWndMsg(int handle, HWND window, UINT message)
{
    return result(setNotification(handle, window, message));
}

int OnlDll_CheckDevOpen()
{
    for (std::size_t place = 0; place < ChannelTable::capacity; ++place) {
        if (const Ref<Channel> channel = channels.at(place); channel && channel->reachable()) return 1;
    }
    return PipeTransport(wire::channelName).reachable();
}
