// The queue before the channel lock. A lock of the system that several threads of a process take without a pause changes
// hands on every call, and each change is a turn of the scheduler. Here one thread is at the lock and one looks out for
// it to come free; the others sleep, and every now and then the one that has waited longest is next.
#pragma once

#include <windows.h>

#include <atomic>
#include <chrono>

class LockQueue
{
 public:
    // Returns when it is the calling thread's turn to go to the lock, or when it has waited so long that the one whose
    // turn it is may have died; it then goes there all the same, and the lock decides.
    void enter() noexcept;

    // The calling thread has the lock: it is its turn, whoever's it was.
    void takeOver() noexcept;

    // Wakes a thread that sleeps in the queue, when it goes out of scope.
    class WakeUp
    {
     public:
        explicit WakeUp(HANDLE event = nullptr) noexcept : m_event(event) {}
        ~WakeUp();
        WakeUp(const WakeUp&) = delete;
        WakeUp& operator=(const WakeUp&) = delete;

     private:
        const HANDLE m_event;
    };

    // Ends the turn; without effect when it is not the calling thread's. To wake the next one takes longer than to give
    // the lock back, so whoever holds the lock keeps the answer until it is free.
    WakeUp leave() noexcept;

    // When nobody will come any more.
    void close() noexcept;

 private:
    using Clock = std::chrono::steady_clock;

    enum class Is {
        Awake,
        OnItsWay,  // wakes up by itself, or is being woken
        Asleep
    };

    // In memory of the queue's own, and woken by an event of the system: a thread may be ended while it waits, and its
    // stack go with it.
    struct Waiter
    {
        DWORD thread = 0;  // 0: nobody's
        Clock::time_point since;
        HANDLE wakeUp = nullptr;
        Is is = Is::Awake;
        std::atomic<bool> called = false;  // it waits no more
        Waiter* next = nullptr;
    };

    enum class Then { GoIn, Nap, Sleep };

    void own(DWORD thread) noexcept;
    Waiter* add(DWORD thread) noexcept;
    void append(Waiter& waiter) noexcept;
    void remove(Waiter& waiter) noexcept;
    void await(Waiter& waiter) noexcept;
    Then decide(Waiter& waiter) noexcept;
    Waiter* longestWaiting() const noexcept;  // the first of the list or the lookout
    bool isDue(const Waiter& waiter, Clock::time_point now) const noexcept;
    void giveTo(const Waiter& waiter, Clock::time_point now) noexcept;
    void dropOverdue(Clock::time_point now) noexcept;
    void letLookOut(Waiter& waiter) noexcept;
    Waiter* chooseNext() noexcept;

    SRWLOCK m_lock = SRWLOCK_INIT;
    std::atomic<DWORD> m_owner = 0;  // the thread whose turn it is
    int m_depth = 0;                 // who has the lock may lock it again
    Clock::time_point m_handedOver;  // when one that was due was last given its turn
    std::atomic<Waiter*> m_looking = nullptr;
    Waiter* m_first = nullptr;  // of those that are to look out later, and sleep or are about to
    Waiter* m_last = nullptr;
    Waiter m_waiters[64];  // who finds no place goes to the lock at once
};
