#include "listener.h"

#include <algorithm>
#include <memory>
#include <new>

#include "own_frame.h"
#include "wire/notifications.h"

namespace kxonlinx {

namespace {

constexpr SIZE_T stackReserve = 128 * 1024;

// Between attempts to find a server, in milliseconds. There is nothing to wait for that tells of a server's coming.
constexpr DWORD firstPause = 20;
constexpr DWORD longestPause = 1'000;

constexpr DWORD fullQueuePause = 10;   // until the window's thread has taken some messages
constexpr DWORD windowCheck = 60'000;  // how often a window is looked for to which nothing is posted

class Listening
{
 public:
    explicit Listening(Ref<Channel> channel) noexcept : channel_(std::move(channel)), transport_(channel_->sibling())
    {}

    void run() noexcept
    {
        if (!transport_) return;
        for (DWORD pause = 0; channel_->stillListening(); pause = std::min(2 * pause, longestPause)) {
            if (closedWithin(pause)) return;
            if (connect() == KXONLINX_OK) {
                pause = firstPause / 2;
                while (receive()) {
                }
            }
            transport_->close();
            pause = std::max(pause, firstPause / 2);
        }
    }

 private:
    bool closedWithin(DWORD milliseconds) const noexcept
    {
        return WaitForSingleObject(channel_->bounds().closing, milliseconds) != WAIT_TIMEOUT;
    }

    kxonlinx_error connect() noexcept
    {
        const Bounds bounds = channel_->bounds();
        if (const kxonlinx_error error = transport_->connect(bounds)) return error;
        OwnFrame<2 * sizeof(std::uint32_t)> request(wire::opcode::NotifyListen);
        request.u64(channel_->id());
        const ExchangeResult result = transport_->exchange(request.bytes(), frame_, bounds);
        if (result.error != KXONLINX_OK) return result.error;
        const Bytes reply = Bytes(frame_).first(result.replyLength);
        if (!isReplyTo(request.bytes(), reply) || !isSuccess(reply)) return KXONLINX_BAD_REPLY;
        return channel_->renew();
    }

    // False: the connection is of no more use.
    bool receive() noexcept
    {
        std::size_t length = 0;
        Bounds bounds = channel_->bounds();
        bounds.deadline = Deadline::after(windowCheck);
        switch (transport_->receive(frame_, length, channel_->renewWanted(), bounds)) {
            case KXONLINX_OK:
                return length == 0 ? channel_->renew() == KXONLINX_OK : post(Bytes(frame_).first(length));
            case KXONLINX_TIMED_OUT:
                return channel_->hasWindow();
            default:
                return false;
        }
    }

    bool post(Bytes frame) noexcept
    {
        if (!isPush(frame)) return false;
        Bytes items = frame.subspan(wire::frameHeaderLength + sizeof(std::uint16_t));
        for (; items.size() >= wire::pushedItemLength; items = items.subspan(wire::pushedItemLength)) {
            std::uint32_t item[2];
            std::memcpy(item, items.data(), sizeof item);
            if (!post(item[0], static_cast<LPARAM>(item[1]))) return false;
        }
        return true;
    }

    // A queue takes 10000 messages. One that is full is waited for, and the server keeps what is to come until then.
    bool post(WPARAM what, LPARAM value) noexcept
    {
        for (;;) {
            switch (channel_->post(what, value)) {
                case Channel::Post::done:
                    return true;
                case Channel::Post::noWindow:
                    return false;
                case Channel::Post::queueIsFull:
                    if (closedWithin(fullQueuePause)) return false;
            }
        }
    }

    Ref<Channel> channel_;
    std::unique_ptr<Transport> transport_;
    std::uint8_t frame_[wire::replyFrameCapacity];
};

struct Start
{
    std::unique_ptr<Listening> listening;
    HMODULE module;
};

DWORD WINAPI listenThread(void* argument)
{
    HMODULE module;
    {
        const std::unique_ptr<Start> start(static_cast<Start*>(argument));
        module = start->module;
        start->listening->run();
    }
    FreeLibraryAndExitThread(module, 0);
}

// Counts one more use of the module that this code is in.
HMODULE holdModule() noexcept
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&listenThread),
                       &module);
    return module;
}

}  // namespace

bool startListener(Ref<Channel> channel) noexcept
{
    std::unique_ptr<Start> start(new (std::nothrow) Start{});
    if (!start) return false;
    start->listening.reset(new (std::nothrow) Listening(std::move(channel)));
    if (!start->listening) return false;
    start->module = holdModule();
    if (!start->module) return false;
    const HANDLE thread =
        CreateThread(nullptr, stackReserve, listenThread, start.get(), STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (!thread) {
        FreeLibrary(start->module);
        return false;
    }
    CloseHandle(thread);
    static_cast<void>(start.release());  // the thread's now
    return true;
}

}  // namespace kxonlinx
