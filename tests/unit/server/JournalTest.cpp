#include "store/Journal.h"

#include <gtest/gtest.h>

#include "TestRegistry.h"

using srv::Family;
using srv::Journal;
using srv::Step;
using Steps = std::vector<Step>;

namespace {

struct JournalTest : testing::Test
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    Journal journal{registry};

    Steps steps{{Step::Kind::Put,
                 Family::Device,
                 L"Device \u00E4",
                 {table({{L"a", L"1"}, {L"b", L""}}), table({{L"n", L"x"}})}},
                {Step::Kind::Remove, Family::Name, L"Name", {}}};

    // What a server finds that starts now.
    std::optional<Steps> found(bool expectDamage = false)
    {
        std::optional<Steps> result;
        bool damaged = false;
        EXPECT_EQ(Journal(registry).read(result, damaged), ERROR_SUCCESS);
        EXPECT_EQ(damaged, expectDamage);
        return result;
    }
    void expectFound()
    {
        const std::optional<Steps> all = found();
        ASSERT_TRUE(all.has_value());
        ASSERT_EQ(all->size(), 2u);
        EXPECT_EQ((*all)[0].name, steps[0].name);
        EXPECT_EQ((*all)[0].content, steps[0].content);
        EXPECT_EQ((*all)[1].kind, Step::Kind::Remove);
        EXPECT_EQ((*all)[1].family, Family::Name);
        EXPECT_EQ((*all)[1].name, L"Name");
    }
    std::vector<srv::RawValue> values()
    {
        std::vector<srv::RawValue> result;
        registry.values(L"Journal", result);
        return result;
    }
};

TEST_F(JournalTest, NothingWritten_nothingFound)
{
    EXPECT_FALSE(found().has_value());
}

TEST_F(JournalTest, Written_isFoundAsItWas)
{
    ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
    EXPECT_EQ(values().size(), 1u);
    expectFound();
}

TEST_F(JournalTest, WrittenInParts_isFoundAsItWas)
{
    journal.setPartSize(16);
    ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
    EXPECT_GT(values().size(), 3u);
    expectFound();
}

TEST_F(JournalTest, Cleared_leavesNothingBehind)
{
    journal.setPartSize(16);
    ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
    ASSERT_EQ(journal.clear(), ERROR_SUCCESS);
    EXPECT_FALSE(found().has_value());
    EXPECT_TRUE(values().empty());
}

TEST_F(JournalTest, PartsWithoutRecord_meanNothing)
{
    journal.setPartSize(16);
    ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
    ASSERT_EQ(registry.deleteValue(L"Journal", L"Record"), ERROR_SUCCESS);
    EXPECT_FALSE(found().has_value());
}

TEST_F(JournalTest, MissingPart_isDamage)
{
    journal.setPartSize(16);
    ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
    ASSERT_EQ(registry.deleteValue(L"Journal", L"Part1.1"), ERROR_SUCCESS);
    EXPECT_FALSE(found(true).has_value());
}

TEST_F(JournalTest, EveryCutAndEveryFlippedByte_isDamageAndNeverAnotherRecord)
{
    ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
    const std::vector<std::uint8_t> whole = values().at(0).data;
    constexpr std::size_t generation = 4, reserved = 12;  // have no meaning here
    for (std::size_t at = 0; at < whole.size(); ++at) {
        const std::span<const std::uint8_t> cut(whole.data(), at);
        registry.setValue(L"Journal", L"Record", REG_BINARY, cut);
        EXPECT_FALSE(found(true).has_value()) << "cut at " << at;
        if ((at >= generation && at < generation + 4) || (at >= reserved && at < reserved + 4)) continue;
        std::vector<std::uint8_t> flipped = whole;
        flipped[at] ^= 0x10;
        registry.setValue(L"Journal", L"Record", REG_BINARY, flipped);
        EXPECT_FALSE(found(true).has_value()) << "flipped at " << at;
    }
}

TEST_F(JournalTest, WritingASecondRecordInParts_leavesOneOfTheTwoAtEveryStep)
{
    const Steps second{{Step::Kind::Put, Family::Device, L"Second", steps[0].content}};
    for (unsigned killedAt = 0;; ++killedAt) {
        journal.setPartSize(16);
        ASSERT_EQ(journal.write(steps), ERROR_SUCCESS);
        WatchedRegistry watched(registry, [&](unsigned call) -> LSTATUS {
            if (call == killedAt) throw Killed{};
            return ERROR_SUCCESS;
        });
        Journal other(watched);
        other.setPartSize(16);
        std::optional<Steps> before;
        bool damaged = false;
        other.read(before, damaged);
        bool killed = false;
        try {
            other.write(second);
        } catch (const Killed&) {
            killed = true;
        }
        const std::optional<Steps> now = found();
        ASSERT_TRUE(now.has_value()) << "killed at " << killedAt;
        EXPECT_EQ(now->at(0).name, killed ? L"Device \u00E4" : L"Second") << "killed at " << killedAt;
        if (!killed) break;
    }
}

}  // namespace
