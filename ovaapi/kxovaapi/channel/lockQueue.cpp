#include "channel/lockQueue.h"

#include <algorithm>

#include "platform/support/srw_lock.h"

namespace {

using namespace std::chrono_literals;

constexpr auto turn = 1ms;           // a few dozen calls
constexpr auto longestWait = 500ms;  // many turns
constexpr int mostLooks = 400;       // a few calls; who waits for longer sleeps

}  // namespace

void LockQueue::own(DWORD thread) noexcept
{
    m_owner.store(thread, std::memory_order_relaxed);
    m_depth = 1;
}

// Whether it is the one that looks out.
bool LockQueue::add(Waiter& waiter) noexcept
{
    waiter.since = Clock::now();
    waiter.wakeUp = &m_wakeUps[m_tickets++ % wakeUps];
    if (!m_looking) {
        m_looking = &waiter;
        return true;
    }
    (m_last ? m_last->next : m_first) = &waiter;
    m_last = &waiter;
    return false;
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
    if (!m_looking || (m_first && m_first->since < m_looking->since)) return m_first;
    return m_looking;
}

void LockQueue::enter() noexcept
{
    const DWORD self = GetCurrentThreadId();
    Waiter waiter{self, {}, nullptr};
    bool looking;
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
        looking = add(waiter);
    }
    await(waiter, looking);
}

void LockQueue::await(Waiter& waiter, bool looking) noexcept
{
    for (;;) {
        for (int i = 0; looking && i < mostLooks && m_owner != 0 && !waiter.called; ++i)
            SwitchToThread();

        const platform::SrwGuard guard(m_lock);
        if (waiter.called) return;
        const bool isFree = m_owner == 0;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(waiter.since + longestWait - Clock::now());
        if (isFree || left <= 0ms) {
            remove(waiter);
            if (isFree) own(waiter.thread);
            return;
        }
        waiter.asleep = true;
        SleepConditionVariableSRW(waiter.wakeUp, &m_lock, static_cast<DWORD>(left.count()), 0);
        waiter.asleep = false;
        looking = m_looking == &waiter;
    }
}

void LockQueue::takeOver() noexcept
{
    const platform::SrwGuard guard(m_lock);
    const DWORD self = GetCurrentThreadId();
    if (m_owner != self) own(self);
}

// Of a queue that is not empty: who is called, has its turn; who is to look out, may be overtaken by whoever comes.
LockQueue::Waiter* LockQueue::chooseNext() noexcept
{
    Waiter* const longest = longestWaiting();
    const Clock::time_point now = Clock::now();
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
    CONDITION_VARIABLE* wakeUp = nullptr;
    {
        const platform::SrwGuard guard(m_lock);
        if (m_owner != GetCurrentThreadId() || --m_depth > 0) return;
        m_owner = 0;
        if (!longestWaiting()) return;
        Waiter* const next = chooseNext();
        if (next->asleep) wakeUp = next->wakeUp;
        next->asleep = false;
    }
    if (wakeUp) WakeAllConditionVariable(wakeUp);
}
