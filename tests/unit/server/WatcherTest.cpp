#include "comesTrue.h"
#include "store/Watcher.h"

#include <gtest/gtest.h>

#include "refusedKey.h"
#include "TestRegistry.h"

using srv::Family;

namespace {

struct WatcherTest : testing::Test
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    OpenStore now{registry};
    srv::Watcher watcher{HKEY_CURRENT_USER, key.path(), now.store, now.log};

    void SetUp() override
    {
        now.open();
        ASSERT_EQ(now.store.create(Family::Device, L"Dev", {table({{L"a", L"1"}}), table({{L"n", L"1"}})}), 0u);
        ASSERT_TRUE(watcher.start());
    }

    bool becomes(std::wstring_view text)
    {
        return comesTrue([&] {
            const srv::Content content = now.content(Family::Device, L"Dev");
            const std::wstring* const value = content.values.find(L"a");
            return value && *value == text;
        });
    }
    void writeAsOther(const wchar_t* text) { srv::writeText(registry, L"LogDevices\\Dev", L"a", text); }
};

TEST_F(WatcherTest, ChangeByOthers_isTakenOver)
{
    writeAsOther(L"2");
    EXPECT_TRUE(becomes(L"2"));
}

TEST_F(WatcherTest, EachOfSeveralChanges_isTakenOver)
{
    for (const wchar_t* const text : {L"2", L"3", L"4"}) {
        writeAsOther(text);
        EXPECT_TRUE(becomes(text));
    }
}

TEST_F(WatcherTest, ChangeAmongTheServersOwn_isTakenOver)
{
    now.store.setValue(Family::Device, L"Dev", srv::Section::Values, L"b", L"1");
    writeAsOther(L"2");
    now.store.setValue(Family::Device, L"Dev", srv::Section::Values, L"b", L"2");
    EXPECT_TRUE(becomes(L"2"));
    EXPECT_EQ(*now.content(Family::Device, L"Dev").values.find(L"b"), L"2");
}

TEST_F(WatcherTest, ChangedNdiValue_isTakenOver)
{
    srv::writeText(registry, L"LogDevices\\Dev\\Ndi", L"n", L"2");
    EXPECT_TRUE(comesTrue([&] { return *now.content(Family::Device, L"Dev").ndi.find(L"n") == L"2"; }));
}

TEST_F(WatcherTest, WholeStoreDeletedByOthers_isTakenOverAndLaterChangesToo)
{
    registry.deleteKey(L"");
    EXPECT_TRUE(comesTrue([&] { return !now.has(Family::Device, L"Dev"); }));
    registry.createKey(L"LogDevices\\New");
    EXPECT_TRUE(comesTrue([&] { return now.has(Family::Device, L"New"); }));
}

TEST_F(WatcherTest, KeyThatRefuses_isReadAgainWhenItRefusesNoMoreAndHoldsNoOtherUp)
{
    ASSERT_EQ(now.store.create(Family::Device, L"Other", {table({{L"a", L"1"}}), {}}), 0u);
    watcher.stop();
    srv::Watcher again{HKEY_CURRENT_USER, key.path(), now.store, now.log};
    again.setRetryAfter(100);
    ASSERT_TRUE(again.start());
    RefusedKey refused(HKEY_CURRENT_USER, key.path() + L"\\LogDevices\\Dev");
    ASSERT_TRUE(refused.refuses());
    srv::writeText(registry, L"LogDevices\\Other", L"a", L"2");
    EXPECT_TRUE(comesTrue([&] { return *now.content(Family::Device, L"Other").values.find(L"a") == L"2"; }));
    srv::writeText(registry, L"LogDevices\\Other", L"a", L"3");
    EXPECT_TRUE(comesTrue([&] { return *now.content(Family::Device, L"Other").values.find(L"a") == L"3"; }));
    refused.giveBack();
    writeAsOther(L"4");
    EXPECT_TRUE(becomes(L"4"));
}

TEST_F(WatcherTest, Stop_isPrompt)
{
    writeAsOther(L"2");
    watcher.stop();
}

}  // namespace
