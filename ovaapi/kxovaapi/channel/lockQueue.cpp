#include "channel/lockQueue.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "platform/support/srw_lock.h"

namespace {

using namespace std::chrono_literals;

constexpr auto turn = 10ms;          // hundreds of calls; less than the scheduler lets a thread run
constexpr auto longestWait = 500ms;  // many turns
constexpr DWORD nap = 2;             // milliseconds
constexpr int mostLooks = 2000;      // to be woken costs more than a call takes
constexpr auto longestLook = 5ms;    // on a busy machine each look can take as long

DWORD milliseconds(std::chrono::steady_clock::duration time) noexcept
{
    return static_cast<DWORD>(std::max(0ms, std::chrono::ceil<std::chrono::milliseconds>(time)).count());
}

// On the only processor a look is the others' turn, so one or two see the end of a call, and more slow down the next ones.
// Found out once, by whoever comes first: a thread that is ended meanwhile must not leave the others waiting for it.
int firstLooks() noexcept
{
    static std::atomic<int> looks = 0;
    if (looks == 0) {
        DWORD_PTR ours = 0;
        DWORD_PTR all = 0;
        const bool oneProcessor =
            GetProcessAffinityMask(GetCurrentProcess(), &ours, &all) && std::has_single_bit(ours);
        looks = oneProcessor ? 3 : mostLooks;
    }
    return looks;
}

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
    waiter.is = Is::Awake;
    waiter.called = false;
    if (!m_looking)
        m_looking = &waiter;
    else
        append(waiter);
    return &waiter;
}

void LockQueue::append(Waiter& waiter) noexcept
{
    waiter.next = nullptr;
    (m_last ? m_last->next : m_first) = &waiter;
    m_last = &waiter;
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

bool LockQueue::isDue(const Waiter& waiter, Clock::time_point now) const noexcept
{
    return now - std::max(waiter.since, m_handedOver) >= turn;
}

void LockQueue::giveTo(const Waiter& waiter, Clock::time_point now) noexcept
{
    if (isDue(waiter, now)) m_handedOver = now;
    own(waiter.thread);
}

void LockQueue::await(Waiter& waiter) noexcept
{
    for (int looks = firstLooks();;) {
        const Clock::time_point end = Clock::now() + longestLook;
        for (; looks > 0 && m_looking == &waiter && m_owner != 0 && !waiter.called && Clock::now() < end; --looks)
            SwitchToThread();
        const Then then = decide(waiter);
        if (then == Then::GoIn) return;
        if (then == Then::Nap)
            Sleep(nap);
        else
            WaitForSingleObject(waiter.wakeUp, milliseconds(waiter.since + longestWait - Clock::now()));
        const platform::SrwGuard guard(m_lock);
        waiter.is = Is::Awake;
        looks = isDue(waiter, Clock::now()) ? mostLooks : firstLooks();
    }
}

// Who looks out may find the lock free at any time until its turn is due, so it naps; from then on it can rely on being
// called. Only the one that has waited longest uses up the turn that is due: another that finds the lock free goes in
// between.
LockQueue::Then LockQueue::decide(Waiter& waiter) noexcept
{
    const platform::SrwGuard guard(m_lock);
    const Clock::time_point now = Clock::now();
    const bool isFree = m_owner == 0;
    if (!waiter.called && (isFree || now - waiter.since >= longestWait)) {
        const bool isNext = &waiter == longestWaiting();
        remove(waiter);
        if (isFree && isNext)
            giveTo(waiter, now);
        else if (isFree)
            own(waiter.thread);
        waiter.called = true;
    }
    if (waiter.called) {
        waiter.thread = 0;
        return Then::GoIn;
    }
    const bool naps = m_looking == &waiter && !isDue(waiter, now);
    waiter.is = naps ? Is::OnItsWay : Is::Asleep;
    return naps ? Then::Nap : Then::Sleep;
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

void LockQueue::letLookOut(Waiter& waiter) noexcept
{
    remove(waiter);
    if (Waiter* const before = m_looking.exchange(&waiter)) append(*before);
}

// Who looks out may be overtaken by whoever comes, until the turn is handed to it: not while it is on its way, so that
// the lock does not stay free meanwhile.
LockQueue::Waiter* LockQueue::chooseNext() noexcept
{
    const Clock::time_point now = Clock::now();
    dropOverdue(now);
    Waiter* const longest = longestWaiting();
    if (!longest || (m_looking && !isDue(*longest, now))) return nullptr;
    if (longest != m_looking) {
        letLookOut(*longest);
        return longest;
    }
    if (longest->is == Is::OnItsWay) return nullptr;
    remove(*longest);
    giveTo(*longest, now);
    longest->called = true;
    return longest;
}

LockQueue::WakeUp LockQueue::leave() noexcept
{
    const platform::SrwGuard guard(m_lock);
    if (m_owner != GetCurrentThreadId() || --m_depth > 0) return WakeUp();
    m_owner = 0;
    if (!longestWaiting()) return WakeUp();
    Waiter* const next = chooseNext();
    if (!next || next->is != Is::Asleep) return WakeUp();
    next->is = Is::OnItsWay;
    return WakeUp(next->wakeUp);
}

LockQueue::WakeUp::~WakeUp()
{
    if (m_event) SetEvent(m_event);
}

void LockQueue::close() noexcept
{
    for (Waiter& waiter : m_waiters)
        if (const HANDLE wakeUp = std::exchange(waiter.wakeUp, nullptr)) CloseHandle(wakeUp);
}
