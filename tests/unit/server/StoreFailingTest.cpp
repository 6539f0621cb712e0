// A change that the registry refuses on the way is taken back.
#include <gtest/gtest.h>

#include "TestRegistry.h"

using srv::Content;
using srv::Family;

namespace {

const Content before{table({{L"a", L"old"}, {L"b", L"old"}}), table({{L"n", L"old"}})};
const Content after{table({{L"a", L"new"}, {L"c", L"new"}}), table({{L"m", L"new"}})};

struct StoreFailing : testing::Test
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    unsigned failFrom = ~0u;
    unsigned failCount = 0;
    WatchedRegistry watched{registry, [this](unsigned call) -> LSTATUS {
                                return call >= failFrom && call - failFrom < failCount ? ERROR_DISK_FULL
                                                                                       : ERROR_SUCCESS;
                            }};
    OpenStore now{watched};

    void SetUp() override
    {
        now.open();
        ASSERT_EQ(now.store.create(Family::Device, L"Dev", before), 0u);
    }
    void failAfter(unsigned calls, unsigned count)
    {
        failFrom = watched.calls() + calls;
        failCount = count;
    }
    Content stored()
    {
        OpenStore later(registry);
        return later.open().content(Family::Device, L"Dev");
    }
};

TEST_F(StoreFailing, OneStepRefused_theErrorIsReportedAndNothingChanged)
{
    unsigned failures = 0;
    for (unsigned step = 0;; ++step) {
        failAfter(step, 1);
        const srv::Result result = now.store.replace(Family::Device, L"Dev", after);
        if (result == 0) {
            // Only clearing away may fail without harm; then the change counts.
            EXPECT_EQ(now.content(Family::Device, L"Dev"), after);
            EXPECT_EQ(stored(), after);
            break;
        }
        ++failures;
        EXPECT_EQ(result, static_cast<srv::Result>(ERROR_DISK_FULL));
        EXPECT_EQ(now.content(Family::Device, L"Dev"), before) << "step " << step;
        EXPECT_EQ(stored(), before) << "step " << step;
    }
    EXPECT_GT(failures, 3u);
}

TEST_F(StoreFailing, EverythingRefusedFromSomeStepOn_theNextChangeSettlesItFirst)
{
    for (unsigned step = 0; step < 8; ++step) {
        failAfter(step, 1000);
        const srv::Result result = now.store.replace(Family::Device, L"Dev", after);
        failCount = 0;
        EXPECT_NE(result, 0u) << "step " << step;
        EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
        ASSERT_EQ(now.store.create(Family::Name, L"Next" + std::to_wstring(step), {}), 0u);
        EXPECT_EQ(stored(), before) << "step " << step;
    }
}

TEST_F(StoreFailing, RecordThatCannotBeCleared_doesNotUndoLaterChanges)
{
    // Clearing the record is the last call of a change: refuse it, and then everything until it succeeds.
    const unsigned start = watched.calls();
    ASSERT_EQ(now.store.replace(Family::Device, L"Dev", after), 0u);
    const unsigned calls = watched.calls() - start;
    ASSERT_EQ(now.store.replace(Family::Device, L"Dev", before), 0u);

    unsigned refused = 0;
    for (unsigned step = calls; step-- > 0 && refused == 0;) {
        failAfter(step, 1);
        if (now.store.replace(Family::Device, L"Dev", after) == 0) refused = 1;
        failCount = 0;
    }
    ASSERT_EQ(refused, 1u);
    ASSERT_EQ(now.store.setValue(Family::Device, L"Dev", srv::Section::Values, L"a", L"later"), 0u);
    EXPECT_EQ(*stored().values.find(L"a"), L"later");
}

TEST_F(StoreFailing, SingleValueRefused_isNotSeen)
{
    failAfter(0, 1);
    EXPECT_EQ(now.store.setValue(Family::Device, L"Dev", srv::Section::Values, L"a", L"new"),
              static_cast<srv::Result>(ERROR_DISK_FULL));
    EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
}

}  // namespace
