#include "store/Store.h"

#include <gtest/gtest.h>

#include <thread>

#include "TestRegistry.h"

using srv::Content;
using srv::Family;
using srv::Section;

namespace {

constexpr auto Device = Family::Device;
constexpr auto Name = Family::Name;

struct StoreTest : testing::Test
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    OpenStore now{registry};
    srv::Store& store = now.store;
    Content content{table({{L"CP_TYPE", L"MPI"}, {L"busparam", L"1"}}), table({{L"PropSheet", L"a.dll,Show"}})};

    void SetUp() override { now.open(); }

    // What a server would find that starts now.
    Content stored(Family family, std::wstring_view name)
    {
        OpenStore later(registry);
        return later.open().content(family, name);
    }
    std::wstring registryText(const std::wstring& path, const std::wstring& name)
    {
        std::vector<srv::RawValue> values;
        registry.values(path, values);
        for (const srv::RawValue& value : values)
            if (value.name == name && value.type == REG_SZ) return srv::textOf(value);
        return L"(none)";
    }
};

TEST_F(StoreTest, Create_isSeenAndStored)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    EXPECT_EQ(now.content(Device, L"dev"), content);
    EXPECT_EQ(stored(Device, L"Dev"), content);
}

TEST_F(StoreTest, Create_usesTheDocumentedKeys)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    EXPECT_EQ(registryText(L"LogDevices\\Dev", L"busparam"), L"1");
    EXPECT_EQ(registryText(L"LogDevices\\Dev\\Ndi", L"PropSheet"), L"a.dll,Show");
    ASSERT_EQ(store.create(Name, L"PLC", {}), 0u);
    ASSERT_EQ(store.setValue(Name, L"PLC", Section::Values, L"LogDevice", L"Dev"), 0u);
    EXPECT_EQ(registryText(L"LogNames\\PLC", L"LogDevice"), L"Dev");
}

TEST_F(StoreTest, Create_existingNameInOtherCase_is183AndChangesNothing)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    EXPECT_EQ(store.create(Device, L"DEV", {}), 183u);
    EXPECT_EQ(now.content(Device, L"Dev"), content);
}

TEST_F(StoreTest, Create_badName_is87)
{
    EXPECT_EQ(store.create(Device, L"", content), 87u);
    EXPECT_EQ(store.create(Device, L"a\\b", content), 87u);
    EXPECT_EQ(store.create(Device, std::wstring(256, L'x'), content), 87u);
}

TEST_F(StoreTest, DeviceAndNameOfOneName_areTwo)
{
    ASSERT_EQ(store.create(Device, L"X", content), 0u);
    EXPECT_FALSE(now.has(Name, L"X"));
    EXPECT_EQ(store.create(Name, L"X", {}), 0u);
}

TEST_F(StoreTest, SetValue_isSeenAndStored)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    ASSERT_EQ(store.setValue(Device, L"dev", Section::Values, L"BusParam", L"3"), 0u);
    EXPECT_EQ(*now.content(Device, L"Dev").values.find(L"busparam"), L"3");
    EXPECT_EQ(stored(Device, L"Dev"), now.content(Device, L"Dev"));
}

TEST_F(StoreTest, SetNdiValue_makesItsKeyWithTheFirst)
{
    ASSERT_EQ(store.create(Device, L"Dev", {table({{L"a", L"1"}}), {}}), 0u);
    ASSERT_EQ(store.setValue(Device, L"Dev", Section::Ndi, L"hidden", L"false"), 0u);
    EXPECT_EQ(registryText(L"LogDevices\\Dev\\Ndi", L"hidden"), L"false");
    EXPECT_EQ(stored(Device, L"Dev"), now.content(Device, L"Dev"));
}

TEST_F(StoreTest, SetValue_ofUnknownObject_is8012)
{
    EXPECT_EQ(store.setValue(Device, L"none", Section::Values, L"a", L"1"), 8012u);
}

TEST_F(StoreTest, SetValue_thatNobodyCouldRead_is87)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    EXPECT_EQ(store.setValue(Device, L"Dev", Section::Values, L"a", std::wstring(260, L'x')), 87u);
    EXPECT_EQ(store.setValue(Device, L"Dev", Section::Values, L"", L"x"), 87u);
    EXPECT_EQ(store.setValue(Device, L"Dev", Section::Values, L"a", std::wstring(259, L'x')), 0u);
}

TEST_F(StoreTest, DeleteValue_isSeenAndStored)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    EXPECT_EQ(store.deleteValue(Device, L"Dev", Section::Values, L"BUSPARAM"), 0u);
    EXPECT_EQ(store.deleteValue(Device, L"Dev", Section::Ndi, L"PropSheet"), 0u);
    EXPECT_EQ(now.content(Device, L"Dev"), (Content{table({{L"CP_TYPE", L"MPI"}}), {}}));
    EXPECT_EQ(stored(Device, L"Dev"), now.content(Device, L"Dev"));
    EXPECT_EQ(store.deleteValue(Device, L"Dev", Section::Values, L"busparam"), 8012u);
}

TEST_F(StoreTest, Replace_leavesNothingOfTheOldContent)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    const Content other{table({{L"CP_TYPE", L"PROFI"}, {L"new", L"x"}}), {}};
    ASSERT_EQ(store.replace(Device, L"DEV", other), 0u);
    EXPECT_EQ(now.content(Device, L"Dev"), other);
    EXPECT_EQ(stored(Device, L"Dev"), other);
    EXPECT_EQ(store.replace(Device, L"none", other), 8012u);
}

TEST_F(StoreTest, Replace_leavesAloneWhatIsNoConfiguration)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    const std::uint8_t binary[] = {1, 2, 3};
    registry.setValue(L"LogDevices\\Dev", L"Cache", REG_BINARY, binary);
    registry.createKey(L"LogDevices\\Dev\\Foreign");
    ASSERT_EQ(store.replace(Device, L"Dev", {}), 0u);
    std::vector<srv::RawValue> values;
    registry.values(L"LogDevices\\Dev", values);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].name, L"Cache");
    EXPECT_EQ(registry.values(L"LogDevices\\Dev\\Foreign", values), ERROR_SUCCESS);
}

TEST_F(StoreTest, Remove_takesTheKeyAway)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    ASSERT_EQ(store.remove(Device, L"dev"), 0u);
    EXPECT_FALSE(now.has(Device, L"Dev"));
    std::vector<srv::RawValue> values;
    EXPECT_EQ(registry.values(L"LogDevices\\Dev", values), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(store.remove(Device, L"Dev"), 8012u);
}

TEST_F(StoreTest, SetValues_changesThemTogether)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    ASSERT_EQ(store.setValues(Device, L"Dev", {{L"busparam", L"2"}, {L"tslot", L"300"}}), 0u);
    EXPECT_EQ(now.content(Device, L"Dev").values,
              table({{L"CP_TYPE", L"MPI"}, {L"busparam", L"2"}, {L"tslot", L"300"}}));
    EXPECT_EQ(stored(Device, L"Dev"), now.content(Device, L"Dev"));
}

TEST_F(StoreTest, ForeignValues_areReadAsText)
{
    ASSERT_EQ(store.create(Device, L"Dev", {}), 0u);
    const std::uint8_t dword[] = {0x39, 0x30, 0, 0};
    const std::uint8_t unterminated[] = {'h', 0, 'i', 0};
    const std::uint8_t binary[] = {1};
    registry.setValue(L"LogDevices\\Dev", L"number", REG_DWORD, dword);
    registry.setValue(L"LogDevices\\Dev", L"text", REG_SZ, unterminated);
    registry.setValue(L"LogDevices\\Dev", L"blob", REG_BINARY, binary);
    registry.setValue(L"LogDevices\\Dev", L"", REG_SZ, unterminated);
    EXPECT_EQ(stored(Device, L"Dev").values, table({{L"number", L"12345"}, {L"text", L"hi"}}));
}

TEST_F(StoreTest, Enumeration_isInTheSameOrderAfterARestart)
{
    for (const wchar_t* const name : {L"gamma", L"Alpha", L"beta", L"Delta"})
        ASSERT_EQ(store.create(Device, name, {}), 0u);
    const auto order = [](const OpenStore& in) {
        return in.store.read([](const srv::Configuration& all) {
            std::vector<std::wstring> result;
            for (std::size_t i = 0; i < all.devices.size(); ++i)
                result.push_back(all.devices[i].name);
            return result;
        });
    };
    OpenStore later(registry);
    EXPECT_EQ(order(now), (std::vector<std::wstring>{L"Alpha", L"beta", L"Delta", L"gamma"}));
    EXPECT_EQ(order(later.open()), order(now));
}

TEST_F(StoreTest, Reload_takesOverWhatOthersChanged)
{
    ASSERT_EQ(store.create(Device, L"Kept", content), 0u);
    ASSERT_EQ(store.create(Device, L"Gone", content), 0u);
    srv::writeText(registry, L"LogDevices\\Kept", L"busparam", L"9");
    registry.deleteKey(L"LogDevices\\Gone");
    registry.createKey(L"LogNames\\New");
    ASSERT_EQ(store.reload(), 0u);
    EXPECT_EQ(*now.content(Device, L"Kept").values.find(L"busparam"), L"9");
    EXPECT_FALSE(now.has(Device, L"Gone"));
    EXPECT_TRUE(now.has(Name, L"New"));
}

TEST_F(StoreTest, NewStore_isNewUntilSomethingWasStored)
{
    EXPECT_TRUE(store.isNew(Name));
    ASSERT_EQ(store.create(Name, L"PLC", {}), 0u);
    ASSERT_EQ(store.remove(Name, L"PLC"), 0u);
    OpenStore later(registry);
    EXPECT_FALSE(later.open().store.isNew(Name));
    EXPECT_TRUE(later.store.isNew(Device));
}

TEST_F(StoreTest, Apply_changesAllObjectsOrNone)
{
    using Kind = srv::Step::Kind;
    ASSERT_EQ(store.create(Device, L"Old", content), 0u);
    EXPECT_EQ(store.apply({{Kind::Put, Name, L"PLC", {}}, {Kind::Put, Device, L"bad\\name", {}}}), 87u);
    EXPECT_FALSE(now.has(Name, L"PLC"));
    EXPECT_EQ(store.apply({{Kind::Put, Name, L"PLC", {}},
                           {Kind::Put, Device, L"New", content},
                           {Kind::Remove, Device, L"Old", {}}}),
              0u);
    EXPECT_TRUE(now.has(Name, L"PLC"));
    EXPECT_EQ(now.content(Device, L"New"), content);
    EXPECT_FALSE(now.has(Device, L"Old"));
}

TEST_F(StoreTest, DamagedJournal_isDroppedAndTheStoreOpens)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    const std::uint8_t rubbish[] = {1, 2, 3};
    registry.createKey(L"Journal");
    registry.setValue(L"Journal", L"Record", REG_BINARY, rubbish);
    EXPECT_EQ(stored(Device, L"Dev"), content);
}

struct Recorder : srv::ChangeObserver
{
    std::vector<std::wstring> seen;
    void changed(const srv::Change& change) noexcept override
    {
        const wchar_t* const kinds[] = {L"created ", L"changed ", L"deleted "};
        seen.push_back(kinds[static_cast<int>(change.kind)] + srv::familyKey(change.family) + L" " +
                       std::wstring(change.name));
    }
};

TEST_F(StoreTest, Observers_areToldOfEachChangeOnceInOrder)
{
    Recorder recorder;
    now.changes.add(recorder);
    store.create(Device, L"Dev", content);
    store.setValue(Device, L"DEV", Section::Values, L"a", L"1");
    store.deleteValue(Device, L"Dev", Section::Values, L"a");
    store.replace(Device, L"Dev", {});
    store.create(Name, L"PLC", {});
    store.remove(Device, L"Dev");
    store.remove(Device, L"Dev");
    now.changes.remove(recorder);
    store.remove(Name, L"PLC");
    EXPECT_EQ(recorder.seen, (std::vector<std::wstring>{L"created LogDevices Dev", L"changed LogDevices Dev",
                                                        L"changed LogDevices Dev", L"changed LogDevices Dev",
                                                        L"created LogNames PLC", L"deleted LogDevices Dev"}));
}

TEST_F(StoreTest, Reader_seesTheOldOrTheNewContentAndNeverAMixture)
{
    const Content one{table({{L"a", L"1"}, {L"b", L"1"}}), table({{L"n", L"1"}})};
    const Content two{table({{L"a", L"2"}, {L"b", L"2"}}), table({{L"n", L"2"}})};
    ASSERT_EQ(store.create(Device, L"Dev", one), 0u);
    std::atomic<bool> done = false;
    unsigned mixtures = 0;
    std::thread reader([&] {
        while (!done) {
            const Content seen = now.content(Device, L"Dev");
            if (seen != one && seen != two) ++mixtures;
        }
    });
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(store.replace(Device, L"Dev", i % 2 ? one : two), 0u);
    done = true;
    reader.join();
    EXPECT_EQ(mixtures, 0u);
}

TEST(WindowsRegistry, Store_liesInThe32BitView)
{
    const std::wstring path = L"KxovaTests" + std::to_wstring(GetCurrentProcessId());
    srv::WindowsRegistry registry(HKEY_LOCAL_MACHINE, L"SOFTWARE\\" + path);
    ASSERT_EQ(registry.createKey(L"sub"), ERROR_SUCCESS);
    srv::Key key;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (L"SOFTWARE\\WOW6432Node\\" + path + L"\\sub").c_str(), 0, KEY_READ,
                            key.put()),
              ERROR_SUCCESS);
    key.reset();
    EXPECT_EQ(registry.deleteKey(L""), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (L"SOFTWARE\\WOW6432Node\\" + path).c_str(), 0, KEY_READ, key.put()),
              ERROR_FILE_NOT_FOUND);
}

TEST(WindowsRegistry, RootDeletedByOthers_isMissingAndMadeAgainWithTheNextKey)
{
    const TestKey key;
    srv::WindowsRegistry registry(HKEY_CURRENT_USER, key.path());
    ASSERT_EQ(registry.createKey(L"sub"), ERROR_SUCCESS);
    ASSERT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, key.path().c_str()), ERROR_SUCCESS);

    std::vector<srv::RawValue> values;
    EXPECT_EQ(registry.values(L"sub", values), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(registry.setValue(L"sub", L"a", REG_SZ, {}), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(registry.deleteKey(L"sub"), ERROR_SUCCESS);
    EXPECT_EQ(registry.createKey(L"sub"), ERROR_SUCCESS);
    EXPECT_EQ(registry.setValue(L"sub", L"a", REG_SZ, {}), ERROR_SUCCESS);
    EXPECT_EQ(registry.values(L"sub", values), ERROR_SUCCESS);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(StoreTest, ClearNdi_takesAllNdiValuesAndNothingElse)
{
    ASSERT_EQ(store.create(Device, L"Dev", content), 0u);
    EXPECT_EQ(store.clearNdi(L"dev"), 0u);
    EXPECT_EQ(stored(Device, L"Dev"), (Content{content.values, {}}));
    EXPECT_EQ(now.content(Device, L"Dev"), (Content{content.values, {}}));
    EXPECT_EQ(store.clearNdi(L"Dev"), srv::result::notFound);
    EXPECT_EQ(store.clearNdi(L"none"), srv::result::notFound);
}

}  // namespace
