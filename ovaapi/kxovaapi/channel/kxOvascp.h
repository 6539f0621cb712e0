// The channel client: the one connection of this process to the configuration server.
//
// Any thread may call any function here. The channel lock serialises the exchanges; a recursive mutex of the object
// guards its two maps.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "buffers/receivedData.h"
#include "buffers/sendData.h"

// Failures of sendReceive; API callers see them as 30.
inline constexpr std::int32_t SCP_ERR_LOCK_TIMEOUT = 8553;
inline constexpr std::int32_t SCP_ERR_CHANNELS_NOT_OPEN = 8557;

class kxOvascp
{
 public:
    // Opens the channel when it is not open; with synchronousInit also starts the event window. Always 1: a channel
    // that does not open is tried again with the next call.
    static int Init(bool synchronousInit) noexcept;

    // Deletes the object at library stop; does nothing when the channel lock cannot be had.
    static void destroy() noexcept;

    // The object, without making one or opening anything; NULL before first use.
    static kxOvascp* current() noexcept;

    kxOvascp() noexcept;
    virtual ~kxOvascp();
    kxOvascp(const kxOvascp&) = delete;
    kxOvascp& operator=(const kxOvascp&) = delete;

    // Carries one frame over the channel. *replyLength: in the room, out the bytes received. 0, or 8557 without a
    // channel, 8553 when the lock timed out, -1 when it failed otherwise, else the channel library's error number.
    std::int32_t sendReceive(std::uint16_t frameLength, void* frame, std::uint16_t replyCapacity, void* reply,
                             std::uint16_t* replyLength) noexcept;

    // Carries one request and fills the reply. 30 whenever the reply is empty, whatever the reason.
    std::uint32_t ExchangeFrame(const sendData& request, receivedData& reply) noexcept;

    // The exchange of operations whose answer is a result alone: that result, 30 for a reply of another kind.
    std::uint32_t send(const sendData& request, receivedData& reply) noexcept;

    // Has the channel library send its notifications to the event window. 0, or -1 without channel or window.
    static std::int32_t RegisterHwndMsg() noexcept;

    // The registrations for hardware changes; at most one window is registered, for any number of interface classes.
    bool otherWindowRegistered(HWND window) noexcept;
    bool addWindow(HWND window, const GUID& interfaceClass) noexcept;  // false: another window is registered
    bool removeWindow(const GUID& interfaceClass) noexcept;  // false: no window is registered for that class
    HWND registeredWindow() noexcept;                        // NULL: none
    bool setMessageType(HWND window, std::uint32_t messageType) noexcept;  // false: out of memory
    std::uint32_t messageType(HWND window) noexcept;                       // 1024 unless set

 private:
    static void openChannel() noexcept;
    static void closeChannel() noexcept;

    std::recursive_mutex m_mapMutex;
    std::multimap<HWND, std::unique_ptr<GUID>> m_windows;
    std::map<HWND, std::uint32_t> m_messageTypes;
    HANDLE m_sendMtx;
};

// The process's channel client, made on first use; initialises on every call. NULL when the channel lock could not
// be had or memory is exhausted.
kxOvascp* GetChannelClient(bool synchronousInit) noexcept;
