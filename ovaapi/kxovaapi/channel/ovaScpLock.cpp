#include "channel/ovaScpLock.h"

#include <utility>

#include "channel/lockQueue.h"
#include "channel/traceValues.h"
#include "kxframework.h"
#include "Kxotrc.h"

namespace {

HANDLE s_lock = nullptr;
constinit LockQueue s_queue;

bool valid(HANDLE lock) noexcept
{
    return lock != nullptr && lock != INVALID_HANDLE_VALUE;
}

}  // namespace

void createOvaScpLock() noexcept
{
    s_lock = CreateMutexA(nullptr, FALSE, nullptr);
    if (!s_lock) {
        const DWORD error = GetLastError();
        KXTRACE("InitInstance: ", TRC_DETAIL, "createMutexFailed: 0x%x", hex(error));
    }
}

void closeOvaScpLock() noexcept
{
    const HANDLE lock = std::exchange(s_lock, nullptr);
    if (!valid(lock)) return;
    ReleaseMutex(lock);
    CloseHandle(lock);
    s_queue.close();
}

std::uint32_t OvaScpLock(HANDLE giveUp) noexcept
{
    constexpr char function[] = "OvaScpLock: ";
    // Who may have to give up must not wait where nobody can tell it to; and of a process that ends the other threads are
    // gone, wherever they were.
    const bool queued = !giveUp && valid(s_lock) && !ProcessIsEnding();
    if (queued) s_queue.enter();
    const HANDLE lock = s_lock;
    if (!valid(lock)) {
        if (queued) s_queue.leave();
        return ERROR_INVALID_HANDLE;
    }

    const HANDLE ends[] = {lock, giveUp};
    const DWORD result = WaitForMultipleObjects(giveUp ? 2 : 1, ends, FALSE, ovaScpLockTimeout);
    const DWORD error = GetLastError();
    if (queued && (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED_0)) s_queue.takeOver();
    if (result == WAIT_OBJECT_0) return result;

    if (queued) s_queue.leave();
    KXTRACE(function, TRC_DETAIL, "return - error getting mutex 0x%x 0x%x; Thread 0x%x, Process 0x%x", hex(lock),
            hex(result), hex(GetCurrentThreadId()), hex(GetCurrentProcessId()));
    if (result == WAIT_FAILED) KXTRACE(function, TRC_DETAIL, "return - WAIT_FAILED - LastErr = 0x%x ", hex(error));
    return result;
}

std::uint32_t OvaScpUnLock() noexcept
{
    const HANDLE lock = s_lock;
    // Before the lock is free: the next thread's way to it takes as long as this one's out of it. Should it sleep, it is
    // woken after that.
    const auto next = ProcessIsEnding() ? LockQueue::WakeUp() : s_queue.leave();
    if (valid(lock) && !ReleaseMutex(lock)) {
        const DWORD error = GetLastError();
        KXTRACE("OvaScpUnLock: ", TRC_DETAIL, "return - releasing mutex 0x%x 0x%x; Thread 0x%x, Process 0x%x",
                hex(lock), hex(error), hex(GetCurrentThreadId()), hex(GetCurrentProcessId()));
    }
    return 0;
}
