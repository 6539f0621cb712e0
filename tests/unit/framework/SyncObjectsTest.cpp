#include "SyncObjects.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

// What another thread finds when it tries to take the lock.
bool othersCanTake(CSyncObject& object)
{
    bool taken = false;
    std::thread([&] {
        CSingleLock lock(&object);
        taken = lock.Lock(0) != FALSE;
    }).join();
    return taken;
}

TEST(CSingleLock, InitialLock_isHeldUntilTheBlockEnds)
{
    CMutex mutex;
    {
        CSingleLock lock(&mutex, TRUE);
        EXPECT_TRUE(lock.IsLocked());
        EXPECT_FALSE(othersCanTake(mutex));
    }
    EXPECT_TRUE(othersCanTake(mutex));
}

TEST(CSingleLock, WithoutInitialLock_takesNothing)
{
    CMutex mutex;
    CSingleLock lock(&mutex);
    EXPECT_FALSE(lock.IsLocked());
    EXPECT_FALSE(lock.Unlock());
    EXPECT_TRUE(othersCanTake(mutex));
}

TEST(CSingleLock, LockedTwiceThroughOneObject_isTakenOnce)
{
    CMutex mutex;
    CSingleLock lock(&mutex, TRUE);
    EXPECT_TRUE(lock.Lock());
    EXPECT_TRUE(lock.Unlock());
    EXPECT_TRUE(othersCanTake(mutex));
}

TEST(CSingleLock, NoObject_failsToLock)
{
    CSingleLock lock(nullptr, TRUE);
    EXPECT_FALSE(lock.IsLocked());
}

TEST(CSingleLock, AbandonedMutex_isHeld)
{
    CMutex mutex;
    std::thread([&] { mutex.Lock(); }).join();
    CSingleLock lock(&mutex);
    EXPECT_TRUE(lock.Lock(0));
}

TEST(CCriticalSection, SameThread_nests)
{
    CCriticalSection section;
    CSingleLock outer(&section, TRUE);
    CSingleLock inner(&section, TRUE);
    EXPECT_TRUE(inner.IsLocked());
}

TEST(CCriticalSection, Held_keepsOthersOut)
{
    CCriticalSection section;
    CSingleLock lock(&section, TRUE);
    BOOL entered = TRUE;
    std::thread([&] { entered = TryEnterCriticalSection(&section.m_sect); }).join();
    EXPECT_FALSE(entered);
}

TEST(CMutex, Named_isSharedByName)
{
    CMutex first(TRUE, "Local\\kxframework test mutex");
    const CMutex second(FALSE, "Local\\kxframework test mutex");
    ASSERT_TRUE(second.m_hObject);
    std::thread([&] {
        EXPECT_EQ(WaitForSingleObject(second.m_hObject, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    }).join();
    first.Unlock();
}

}  // namespace
