#include "channel/lockQueue.h"

#include <algorithm>
#include <utility>

#include "platform/support/srw_lock.h"

namespace {

using namespace std::chrono_literals;

constexpr auto turn = 4ms;           // a hundred calls or so
constexpr auto longestWait = 500ms;  // many turns
constexpr int mostLooks = 2000;      // to be woken costs more than a call takes

}  // namespace

void LockQueue::own(DWORD thread) noexcept
{
    m_owner.store(thread, std::memory_order_relaxed);
    m_depth = 1;
}

LockQueue::Waiter* LockQueue::add(DWORD thread) noexcept
{
    const auto place = std::ranges::find(m_waiters, DWORD{0}, &Waiter::thread);
    if (place == std::end(m_waiters)) return nullptr;
    Waiter& waiter = *place;
    if (!waiter.wakeUp) waiter.wakeUp = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    if (!waiter.wakeUp) return nullptr;
    waiter.thread = thread;
    waiter.since = Clock::now();
    waiter.asleep = false;
    waiter.called = false;
    waiter.next = nullptr;
    if (!m_looking) {
        m_looking = &waiter;
    } else {
        (m_last ? m_last->next : m_first) = &waiter;
        m_last = &waiter;
    }
    return &waiter;
}

void LockQueue::remove(Waiter& waiter) noexcept
{
    if (m_looking == &waiter) {
        m_looking = nullptr;
        return;
    }
    Waiter* before = nullptr;
    for (Waiter* at = m_first; at != &waiter; at = at->next)
        before = at;
    (before ? before->next : m_first) = waiter.next;
    if (m_last == &waiter) m_last = before;
}

LockQueue::Waiter* LockQueue::longestWaiting() const noexcept
{
    Waiter* const looking = m_looking;
    return !looking || (m_first && m_first->since < looking->since) ? m_first : looking;
}

void LockQueue::enter() noexcept
{
    const DWORD self = GetCurrentThreadId();
    Waiter* waiter;
    {
        const platform::SrwGuard guard(m_lock);
        if (m_owner == self) {
            ++m_depth;
            return;
        }
        if (m_owner == 0) {
            own(self);
            return;
        }
        waiter = add(self);
    }
    if (waiter) await(*waiter);
}

void LockQueue::await(Waiter& waiter) noexcept
{
    for (;;) {
        for (int i = 0; m_looking == &waiter && i < mostLooks && m_owner != 0 && !waiter.called; ++i)
            SwitchToThread();

        Clock::duration left;
        {
            const platform::SrwGuard guard(m_lock);
            waiter.asleep = false;
            const bool isFree = m_owner == 0;
            left = waiter.since + longestWait - Clock::now();
            if (waiter.called || isFree || left <= 0ms) {
                if (!waiter.called) {
                    remove(waiter);
                    if (isFree) own(waiter.thread);
                }
                waiter.thread = 0;
                return;
            }
            waiter.asleep = true;
        }
        WaitForSingleObject(waiter.wakeUp,
                            static_cast<DWORD>(std::chrono::ceil<std::chrono::milliseconds>(left).count()));
    }
}

void LockQueue::takeOver() noexcept
{
    const platform::SrwGuard guard(m_lock);
    const DWORD self = GetCurrentThreadId();
    if (m_owner != self) own(self);
}

// Who has waited for too long is about to go to the lock by itself, or dead.
void LockQueue::dropOverdue(Clock::time_point now) noexcept
{
    for (Waiter* longest; (longest = longestWaiting()) && now - longest->since > longestWait;) {
        remove(*longest);
        longest->called = true;
    }
}

// Who is called, has its turn; who is to look out, may be overtaken by whoever comes.
LockQueue::Waiter* LockQueue::chooseNext() noexcept
{
    const Clock::time_point now = Clock::now();
    dropOverdue(now);
    Waiter* const longest = longestWaiting();
    if (!longest) return nullptr;
    if (now - std::max(longest->since, m_handedOver) >= turn) {
        remove(*longest);
        own(longest->thread);
        longest->called = true;
        m_handedOver = now;
        return longest;
    }
    if (!m_looking) {
        remove(*longest);
        m_looking = longest;
    }
    return m_looking;
}

void LockQueue::leave() noexcept
{
    HANDLE wakeUp = nullptr;
    {
        const platform::SrwGuard guard(m_lock);
        if (m_owner != GetCurrentThreadId() || --m_depth > 0) return;
        m_owner = 0;
        if (!longestWaiting()) return;
        Waiter* const next = chooseNext();
        if (!next) return;
        if (next->asleep) wakeUp = next->wakeUp;
        next->asleep = false;
    }
    if (wakeUp) SetEvent(wakeUp);
}

void LockQueue::close() noexcept
{
    for (Waiter& waiter : m_waiters)
        if (const HANDLE wakeUp = std::exchange(waiter.wakeUp, nullptr)) CloseHandle(wakeUp);
}
