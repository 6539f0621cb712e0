// Keys of the store that refuse access: the refusal is told, nothing is changed, nothing else is held up, and the same
// change works when the key refuses no more.
#include <gtest/gtest.h>

#include "handle_count.h"
#include "refusedKey.h"
#include "TestRegistry.h"

using srv::Content;
using srv::Family;
using srv::Section;

namespace {

constexpr srv::Result accessDenied = ERROR_ACCESS_DENIED;

const Content before{table({{L"a", L"old"}, {L"b", L"old"}}), table({{L"n", L"old"}})};
const Content after{table({{L"a", L"new"}, {L"c", L"new"}}), table({{L"m", L"new"}})};

struct StoreRefused : testing::Test
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    OpenStore now{registry};

    void SetUp() override
    {
        now.open();
        ASSERT_EQ(now.store.create(Family::Device, L"Dev", before), 0u);
        ASSERT_EQ(now.store.create(Family::Device, L"Other", before), 0u);
    }
    std::wstring pathOf(const std::wstring& below) const { return key.path() + L'\\' + below; }
    Content stored(std::wstring_view name)
    {
        OpenStore later(registry);
        return later.open().content(Family::Device, name);
    }
    srv::Result replace() { return now.store.replace(Family::Device, L"Dev", after); }
    srv::Result changeOther(std::wstring_view text)
    {
        return now.store.setValues(Family::Device, L"Other",
                                   {{L"a", std::wstring(text)}, {L"d", std::wstring(text)}});
    }
};

// The key of the object, or that of its Ndi values; all rights, or those to write.
struct Refusal
{
    const wchar_t* key;
    const char* rights;
};

struct StoreRefusedObject : StoreRefused, testing::WithParamInterface<Refusal>
{
    std::unique_ptr<RefusedKey> refuse() const
    {
        auto refused = std::make_unique<RefusedKey>(HKEY_CURRENT_USER, pathOf(GetParam().key), GetParam().rights);
        EXPECT_TRUE(refused->refuses());
        return refused;
    }
};

TEST_P(StoreRefusedObject, ChangeOfSeveralSteps_isRefusedAndWorksLater)
{
    const auto refused = refuse();
    EXPECT_EQ(replace(), accessDenied);
    EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
    refused->giveBack();
    EXPECT_EQ(stored(L"Dev"), before);
    EXPECT_EQ(replace(), 0u);
    EXPECT_EQ(stored(L"Dev"), after);
}

TEST_P(StoreRefusedObject, Removal_isRefusedAndWorksLater)
{
    const auto refused = refuse();
    EXPECT_EQ(now.store.remove(Family::Device, L"Dev"), accessDenied);
    EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
    refused->giveBack();
    EXPECT_EQ(stored(L"Dev"), before);
    EXPECT_EQ(now.store.remove(Family::Device, L"Dev"), 0u);
    EXPECT_FALSE(now.has(Family::Device, L"Dev"));
}

TEST_P(StoreRefusedObject, OtherObjects_areChangedMeanwhile)
{
    const auto refused = refuse();
    EXPECT_EQ(replace(), accessDenied);
    EXPECT_EQ(changeOther(L"1"), 0u);
    EXPECT_EQ(now.store.remove(Family::Device, L"Dev"), accessDenied);
    EXPECT_EQ(changeOther(L"2"), 0u);
    EXPECT_EQ(now.store.create(Family::Name, L"Next", {}), 0u);
    refused->giveBack();
    EXPECT_EQ(stored(L"Other").values, table({{L"a", L"2"}, {L"b", L"old"}, {L"d", L"2"}}));
}

TEST_P(StoreRefusedObject, ChangeOfSeveralObjects_isRefusedAsAWhole)
{
    const auto refused = refuse();
    using Kind = srv::Step::Kind;
    EXPECT_EQ(now.store.apply({{Kind::Put, Family::Device, L"Other", after},
                               {Kind::Put, Family::Device, L"Made", after},
                               {Kind::Put, Family::Device, L"Dev", after}}),
              accessDenied);
    EXPECT_EQ(now.content(Family::Device, L"Other"), before);
    EXPECT_FALSE(now.has(Family::Device, L"Made"));
    EXPECT_EQ(changeOther(L"1"), 0u);
    refused->giveBack();
    EXPECT_EQ(stored(L"Made"), Content{});
}

TEST_P(StoreRefusedObject, Handles_areAsBefore)
{
    const auto refused = refuse();
    replace();
    const std::size_t handles = handleCount();
    for (int i = 0; i < 20; ++i) {
        replace();
        now.store.remove(Family::Device, L"Dev");
    }
    EXPECT_EQ(handleCount(), handles);
}

INSTANTIATE_TEST_SUITE_P(Keys, StoreRefusedObject,
                         testing::Values(Refusal{L"LogDevices\\Dev", RefusedKey::everything},
                                         Refusal{L"LogDevices\\Dev", RefusedKey::writing},
                                         Refusal{L"LogDevices\\Dev\\Ndi", RefusedKey::everything},
                                         Refusal{L"LogDevices\\Dev\\Ndi", RefusedKey::writing}));

TEST_F(StoreRefused, SingleValue_isRefusedAndWorksLater)
{
    RefusedKey refused(HKEY_CURRENT_USER, pathOf(L"LogDevices\\Dev"));
    EXPECT_EQ(now.store.setValue(Family::Device, L"Dev", Section::Values, L"a", L"new"), accessDenied);
    EXPECT_EQ(now.store.deleteValue(Family::Device, L"Dev", Section::Values, L"a"), accessDenied);
    EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
    refused.giveBack();
    EXPECT_EQ(stored(L"Dev"), before);
    EXPECT_EQ(now.store.setValue(Family::Device, L"Dev", Section::Values, L"a", L"new"), 0u);
    EXPECT_EQ(now.store.deleteValue(Family::Device, L"Dev", Section::Values, L"b"), 0u);
}

// Wine asks the keys above for nothing when one is made below them, so here they refuse as Windows has them do it.
class NothingNewBelow : public PassingRegistry
{
 public:
    NothingNewBelow(srv::Registry& real, std::wstring above) : PassingRegistry(real), above_(std::move(above)) {}

    LSTATUS createKey(const std::wstring& path) override
    {
        if (!path.starts_with(above_)) return real_.createKey(path);
        std::vector<srv::Subkey> below;
        return real_.subkeys(path, below) == ERROR_SUCCESS ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    }

 private:
    std::wstring above_;
};

TEST_F(StoreRefused, NewObject_isRefusedAndHoldsNothingUp)
{
    NothingNewBelow refusing(registry, L"LogDevices\\");
    OpenStore later(refusing);
    later.open();
    EXPECT_EQ(later.store.create(Family::Device, L"Made", after), accessDenied);
    EXPECT_FALSE(later.has(Family::Device, L"Made"));
    EXPECT_EQ(later.store.create(Family::Name, L"Next", {}), 0u);
    EXPECT_EQ(later.store.replace(Family::Device, L"Dev", after), 0u);
    EXPECT_EQ(stored(L"Made"), Content{});
    EXPECT_EQ(stored(L"Dev"), after);
}

TEST_F(StoreRefused, Journal_refusesEveryChangeOfSeveralStepsUntilItRefusesNoMore)
{
    RefusedKey refused(HKEY_CURRENT_USER, pathOf(L"Journal"));
    EXPECT_EQ(replace(), accessDenied);
    EXPECT_EQ(replace(), accessDenied);
    EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
    EXPECT_EQ(now.store.setValue(Family::Device, L"Other", srv::Section::Values, L"b", L"1"), 0u);
    EXPECT_EQ(now.store.reload(), 0u);
    refused.giveBack();
    EXPECT_EQ(stored(L"Dev"), before);
    EXPECT_EQ(replace(), 0u);
    EXPECT_EQ(stored(L"Dev"), after);
}

TEST_F(StoreRefused, KeyThatRefusesAtTheStart_theStoreIsNotOpened)
{
    for (const wchar_t* const path : {L"LogDevices\\Dev", L"LogDevices\\Dev\\Ndi", L"LogDevices", L"Journal"}) {
        const RefusedKey refused(HKEY_CURRENT_USER, pathOf(path));
        srv::WindowsRegistry again = key.registry();
        OpenStore later(again);
        EXPECT_EQ(later.store.open(), accessDenied) << path;
    }
    EXPECT_EQ(stored(L"Dev"), before);
}

TEST_F(StoreRefused, RootThatRefusesAtTheStart_theStoreIsNotOpened)
{
    RefusedKey refused(HKEY_CURRENT_USER, key.path());
    srv::WindowsRegistry again = key.registry();
    OpenStore later(again);
    EXPECT_EQ(later.store.open(), accessDenied);
    refused.giveBack();
    EXPECT_EQ(later.store.open(), 0u);
    EXPECT_EQ(later.content(Family::Device, L"Dev"), before);
}

TEST_F(StoreRefused, ChangeByOthersInAKeyThatRefusesThen_isTakenOverLater)
{
    EXPECT_EQ(now.store.reload(), 0u);
    srv::writeText(registry, L"LogDevices\\Dev", L"a", L"others");
    RefusedKey refused(HKEY_CURRENT_USER, pathOf(L"LogDevices\\Dev"));
    EXPECT_EQ(now.store.reload(), accessDenied);
    EXPECT_EQ(now.content(Family::Device, L"Dev"), before);
    refused.giveBack();
    EXPECT_EQ(now.store.reload(), 0u);
    EXPECT_EQ(*now.content(Family::Device, L"Dev").values.find(L"a"), L"others");
}

TEST_F(StoreRefused, ChangeByOthersWhileOneOfOursIsUnsettled_isTakenOverLater)
{
    bool refusing = false;
    WatchedRegistry watched(registry, [&](unsigned) { return refusing ? ERROR_ACCESS_DENIED : ERROR_SUCCESS; });
    OpenStore later(watched);
    later.open();
    refusing = true;
    EXPECT_EQ(later.store.replace(Family::Device, L"Dev", after), accessDenied);
    srv::writeText(registry, L"LogDevices\\Other", L"a", L"others");
    registry.deleteKey(L"LogDevices\\Dev");
    EXPECT_EQ(later.store.reload(), accessDenied);
    refusing = false;
    EXPECT_EQ(later.store.reload(), 0u);
    EXPECT_EQ(*later.content(Family::Device, L"Other").values.find(L"a"), L"others");
    EXPECT_FALSE(later.has(Family::Device, L"Dev"));
}

TEST_F(StoreRefused, NdiThatMayNotBeDeleted_isReplacedAsLongAsItStays)
{
    const RefusedKey refused(HKEY_CURRENT_USER, pathOf(L"LogDevices\\Dev\\Ndi"), "D:(D;;SD;;;WD)(A;;KA;;;WD)");
    Content withNdi = after;
    withNdi.ndi = table({{L"n", L"9"}});
    EXPECT_EQ(now.store.replace(Family::Device, L"Dev", withNdi), 0u);
    EXPECT_EQ(stored(L"Dev"), withNdi);
    EXPECT_EQ(now.store.replace(Family::Device, L"Dev", {}), accessDenied);
    EXPECT_EQ(stored(L"Dev"), withNdi);
}

}  // namespace
