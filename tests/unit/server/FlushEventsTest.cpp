// The three events by which clients have everything brought to the disk.
#include <gtest/gtest.h>

#include "notifications/FlushEvents.h"
#include "TestRegistry.h"

namespace {

// A registry that is flushed as the test wishes.
class FlushedRegistry : public WatchedRegistry
{
 public:
    explicit FlushedRegistry(srv::Registry& real) : WatchedRegistry(real, [](unsigned) { return ERROR_SUCCESS; }) {}

    LSTATUS flush() override
    {
        ++flushes;
        return status;
    }

    std::atomic<int> flushes = 0;
    std::atomic<LSTATUS> status = ERROR_SUCCESS;
};

struct Flush : testing::Test
{
    TestKey key;
    srv::WindowsRegistry real = key.registry();
    FlushedRegistry registry{real};
    OpenStore now{registry};
    std::wstring prefix = L"KxovaFlushTest" + std::to_wstring(GetCurrentProcessId());
    std::optional<srv::FlushEvents> events;
    srv::Handle request;
    srv::Handle done;
    srv::Handle failed;

    void SetUp() override
    {
        now.open();
        start();
        request = open(L"DCFG_FLUSH_LOGDEV", EVENT_MODIFY_STATE);
        done = open(L"DCFG_FLUSH_RESP_OK", EVENT_ALL_ACCESS);
        failed = open(L"DCFG_FLUSH_RESP_ERR", EVENT_ALL_ACCESS);
        ASSERT_TRUE(request && done && failed);
    }
    void start()
    {
        events.emplace(prefix, now.store, now.changes, now.log);
        ASSERT_TRUE(events->start());
    }
    srv::Handle open(const wchar_t* name, DWORD access) const
    {
        return srv::Handle(OpenEventW(access, TRUE, (prefix + name).c_str()));
    }
    // What a client gets: 0 done, 1 failed.
    DWORD flush()
    {
        SetEvent(request.get());
        return wait();
    }
    DWORD wait() const
    {
        const HANDLE answers[] = {done.get(), failed.get()};
        return WaitForMultipleObjects(2, answers, FALSE, 20'000);
    }
    bool isSet(const srv::Handle& event) const { return WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0; }
    void change(const wchar_t* name) { ASSERT_EQ(now.store.create(srv::Family::Device, name, {}), 0u); }
};

TEST_F(Flush, Request_flushesAndIsAnswered)
{
    EXPECT_FALSE(isSet(done));
    EXPECT_EQ(flush(), 0u);
    EXPECT_EQ(registry.flushes, 1);
}

TEST_F(Flush, AnswerOfBefore_isTakenBackByAChange)
{
    EXPECT_EQ(flush(), 0u);
    change(L"D");
    EXPECT_FALSE(isSet(done));
    EXPECT_EQ(flush(), 0u);
}

TEST_F(Flush, ClientsThatAskTogether_areAllAnswered)
{
    SetEvent(request.get());
    SetEvent(request.get());
    EXPECT_EQ(wait(), 0u);
    EXPECT_EQ(wait(), 0u);
}

TEST_F(Flush, ClientThatBeginsToWaitBehindAChange_isAnswered)
{
    EXPECT_EQ(flush(), 0u);
    change(L"D");
    EXPECT_EQ(wait(), 0u);
}

TEST_F(Flush, Failure_isToldUntilItWorksAgain)
{
    registry.status = ERROR_DISK_FULL;
    EXPECT_EQ(flush(), 1u);
    registry.status = ERROR_SUCCESS;
    EXPECT_EQ(WaitForSingleObject(done.get(), 20'000), WAIT_OBJECT_0);
    EXPECT_FALSE(isSet(failed));
}

TEST_F(Flush, ServerThatStops_letsNobodyWait)
{
    events->stop();
    EXPECT_EQ(wait(), 1u);
}

TEST_F(Flush, ClientOfAnEarlierServer_isAnsweredByTheNext)
{
    events->stop();
    ResetEvent(failed.get());
    start();
    EXPECT_EQ(wait(), 0u);
}

}  // namespace
