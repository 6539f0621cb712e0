#include "Thread.h"

#include <process.h>

#include <memory>

namespace srv {

namespace {

// Connections' threads need little, and there may be many of them.
constexpr unsigned stackReserve = 256 * 1024;

unsigned __stdcall entry(void* argument)
{
    const std::unique_ptr<std::function<void()>> body(static_cast<std::function<void()>*>(argument));
    (*body)();
    return 0;
}

Handle begin(std::function<void()>&& function)
{
    auto body = std::make_unique<std::function<void()>>(std::move(function));
    Handle thread(reinterpret_cast<HANDLE>(
        _beginthreadex(nullptr, stackReserve, entry, body.get(), STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr)));
    if (thread) static_cast<void>(body.release());  // the thread's now
    return thread;
}

}  // namespace

bool Thread::start(std::function<void()> body)
{
    handle_ = begin(std::move(body));
    return running();
}

bool Thread::startDetached(std::function<void()> body)
{
    return static_cast<bool>(begin(std::move(body)));
}

bool Thread::join(DWORD milliseconds) noexcept
{
    if (!handle_) return true;
    if (WaitForSingleObject(handle_.get(), milliseconds) != WAIT_OBJECT_0) return false;
    handle_.reset();
    return true;
}

}  // namespace srv
