// A server that is killed at any step of a change leaves a store in which the change was made whole or not at all.
#include <gtest/gtest.h>

#include "TestRegistry.h"

using srv::Content;
using srv::Family;

namespace {

const Content before{table({{L"a", L"old"}, {L"b", L"old"}, {L"only old", L"x"}}),
                     table({{L"n", L"old"}, {L"m", L"old"}})};
const Content after{table({{L"A", L"new"}, {L"b", L"new"}, {L"only new", L"x"}}), table({{L"n", L"new"}})};

struct Operation
{
    const char* name;
    bool exists;  // whether the device is there before
    std::function<srv::Result(srv::Store&)> run;
    std::optional<Content> result;  // what is there after; nothing: the device is gone
};

void PrintTo(const Operation& operation, std::ostream* stream)
{
    *stream << operation.name;
}

std::optional<Content> deviceIn(srv::Registry& registry)
{
    OpenStore store(registry);
    store.open();
    if (!store.has(Family::Device, L"Dev")) return std::nullopt;
    return store.content(Family::Device, L"Dev");
}

// Runs until the kill; true if it was not reached.
template <typename F>
bool survives(unsigned killedAt, srv::Registry& registry, F run)
{
    WatchedRegistry watched(registry, [&](unsigned call) -> LSTATUS {
        if (call == killedAt) throw Killed{};
        return ERROR_SUCCESS;
    });
    try {
        run(watched);
        return watched.calls() <= killedAt;
    } catch (const Killed&) {
        return false;
    }
}

class StoreKilled : public testing::TestWithParam<Operation>
{
 protected:
    void prepare(srv::Registry& registry)
    {
        OpenStore store(registry);
        store.open();
        store.store.remove(Family::Device, L"Dev");
        if (!GetParam().exists) return;
        ASSERT_EQ(store.store.create(Family::Device, L"Dev", before), 0u);
    }
    std::optional<Content> old() const { return GetParam().exists ? std::optional(before) : std::nullopt; }
};

TEST_P(StoreKilled, AtEveryStep_theChangeIsWholeOrNotThere)
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    unsigned kills = 0;
    bool madeOnce = false;
    for (unsigned killedAt = 0;; ++killedAt) {
        prepare(registry);
        const bool done = survives(killedAt, registry, [&](srv::Registry& watched) {
            OpenStore store(watched);
            store.open();
            EXPECT_EQ(GetParam().run(store.store), 0u);
        });
        const std::optional<Content> now = deviceIn(registry);
        if (done) {
            EXPECT_EQ(now, GetParam().result);
            break;
        }
        ++kills;
        EXPECT_TRUE(now == old() || now == GetParam().result) << "killed at " << killedAt;
        if (now == GetParam().result) madeOnce = true;
        // Nothing is left over that would come back later.
        EXPECT_EQ(deviceIn(registry), now) << "killed at " << killedAt;
    }
    EXPECT_GT(kills, 3u);
    EXPECT_TRUE(madeOnce);
}

TEST_P(StoreKilled, AndKilledAgainWhileItRecovers_theChangeIsWholeOrNotThere)
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    for (unsigned killedAt = 0;; ++killedAt) {
        bool done = false;
        for (unsigned againAt = 0;; ++againAt) {
            prepare(registry);
            done = survives(killedAt, registry, [&](srv::Registry& watched) {
                OpenStore store(watched);
                store.open();
                GetParam().run(store.store);
            });
            const bool recovered =
                survives(againAt, registry, [](srv::Registry& watched) { OpenStore(watched).open(); });
            const std::optional<Content> now = deviceIn(registry);
            EXPECT_TRUE(now == old() || now == GetParam().result) << "killed at " << killedAt << ", " << againAt;
            if (recovered) break;
        }
        if (done) break;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Operations, StoreKilled,
    testing::Values(
        Operation{"create", false, [](srv::Store& s) { return s.create(Family::Device, L"Dev", after); }, after},
        Operation{"replace", true, [](srv::Store& s) { return s.replace(Family::Device, L"Dev", after); }, after},
        Operation{"remove", true, [](srv::Store& s) { return s.remove(Family::Device, L"Dev"); }, std::nullopt},
        Operation{"setValues", true,
                  [](srv::Store& s) {
                      return s.setValues(Family::Device, L"Dev", {{L"a", L"2"}, {L"b", L"2"}, {L"c", L"2"}});
                  },
                  Content{table({{L"a", L"2"}, {L"b", L"2"}, {L"c", L"2"}, {L"only old", L"x"}}), before.ndi}}),
    [](const auto& row) { return row.param.name; });

}  // namespace
