#include "configuration/Import.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <map>

#include "kxova/results.h"

namespace {

using testing::HasSubstr;
using testing::SizeIs;

using Key = std::pair<Family, std::string>;

// A store in memory. A write takes two steps, and any step can be made to fail.
class FakeTarget : public ImportTarget
{
 public:
    explicit FakeTarget(const Configuration& content)
    {
        for (const Entry& entry : content)
            entries[{entry.family, entry.name}] = entry;
    }

    std::optional<Entry> read(Family family, const std::string& name) override
    {
        const auto at = entries.find({family, name});
        return at == entries.end() ? std::optional<Entry>() : at->second;
    }
    void write(const Entry& entry) override
    {
        step();
        entries[{entry.family, entry.name}].values = entry.values;
        step();
        entries[{entry.family, entry.name}] = entry;
    }
    void remove(Family family, const std::string& name) override
    {
        step();
        entries.erase({family, name});
    }

    std::map<Key, Entry> entries;
    int steps = 0;
    int failAt = 0;          // the step that fails, counted from 1
    int failFrom = INT_MAX;  // every step from this one fails
    long result = ERROR_ACCESS_DENIED;

 private:
    void step()
    {
        ++steps;
        if (steps == failAt || steps >= failFrom) throw Failure("write", result);
    }
};

const Configuration before = {
    {Family::Device, "changed", {{"a", "1"}, {"b", "2"}}, {{"n", "1"}}},
    {Family::Device, "same", {{"a", "1"}, {"b", "2"}}, {}},
    {Family::Device, "not named in the file", {{"a", "1"}}, {}},
    {Family::Name, "changed", {{"a", "1"}}, {}},
};

const Configuration wanted = {
    {Family::Device, "changed", {{"a", "3"}}, {}},
    {Family::Device, "created", {{"a", "1"}}, {{"n", "1"}}},
    {Family::Device, "same", {{"b", "2"}, {"a", "1"}}, {}},
    {Family::Name, "changed", {{"a", "1"}, {"b", ""}}, {}},
    {Family::Name, "created", {}, {}},
};

bool sameContent(const std::map<Key, Entry>& one, const std::map<Key, Entry>& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto& a, const auto& b) {
        return a.first == b.first && holdTheSame(a.second, b.second);
    });
}

int stepsOfTheWholeImport()
{
    FakeTarget target(before);
    carryOut(changesFor(wanted, target), target);
    return target.steps;
}

TEST(Import, makesTheNamedEntriesWhatTheFileSays)
{
    FakeTarget target(before);
    carryOut(changesFor(wanted, target), target);
    for (const Entry& entry : wanted) {
        const std::optional<Entry> now = target.read(entry.family, entry.name);
        ASSERT_TRUE(now) << entry.name;
        EXPECT_TRUE(holdTheSame(*now, entry)) << entry.name;
    }
    EXPECT_TRUE(target.read(Family::Device, "not named in the file"));
}

TEST(Import, leavesAloneWhatIsTheSameInAnotherOrder)
{
    FakeTarget target(before);
    EXPECT_THAT(changesFor({before[1]}, target), SizeIs(0));
    EXPECT_THAT(changesFor(wanted, target), SizeIs(4));
}

TEST(Import, tellsSpellingsOfAValuesNameApart)
{
    FakeTarget target({{Family::Device, "d", {{"busparam", "1"}}, {}}});
    EXPECT_THAT(changesFor({{Family::Device, "d", {{"Busparam", "1"}}, {}}}, target), SizeIs(1));
}

TEST(Import, leavesEverythingAsItWasWhicheverStepFails)
{
    const std::map<Key, Entry> untouched = FakeTarget(before).entries;
    const int steps = stepsOfTheWholeImport();
    ASSERT_GE(steps, 8);
    for (int failing = 1; failing <= steps; ++failing) {
        FakeTarget target(before);
        target.failAt = failing;
        try {
            carryOut(changesFor(wanted, target), target);
            FAIL() << "step " << failing << " was not taken";
        } catch (const NotUndone&) {
            FAIL() << "step " << failing << " was not undone";
        } catch (const Failure& failure) {
            EXPECT_THAT(failure.hint(), HasSubstr("nothing was imported; everything is as it was before"));
        }
        EXPECT_TRUE(sameContent(untouched, target.entries)) << "step " << failing;
    }
}

TEST(Import, handsOverWhatItCouldNotUndo)
{
    FakeTarget target(before);
    target.failFrom = 4;  // the creation's second step, and all that would undo it
    try {
        carryOut(changesFor(wanted, target), target);
        FAIL() << "was not noticed";
    } catch (const NotUndone& failure) {
        ASSERT_THAT(failure.left(), SizeIs(2));
        EXPECT_TRUE(failure.left()[0].before);
        EXPECT_FALSE(failure.left()[1].before);
        EXPECT_EQ(failure.result(), ERROR_ACCESS_DENIED);
    }
}

TEST(Import, asksAServerThatIsGoneOnlyOnce)
{
    FakeTarget target(before);
    target.failFrom = 4;
    target.result = ERROR_READ_FAULT;
    EXPECT_THROW(carryOut(changesFor(wanted, target), target), NotUndone);
    EXPECT_EQ(target.steps, 5);
}

}  // namespace
