// The catalogue's definitions in the registry.
#include <gtest/gtest.h>

#include "store/Codec.h"
#include "store/Definitions.h"
#include "TestServer.h"

namespace {

struct Definitions : testing::Test
{
    TestKey key;
    srv::WindowsRegistry registry = key.registry();
    catalogue::Catalogue catalogue = smallCatalogue();

    srv::Result publish() { return srv::publishDefinitions(HKEY_CURRENT_USER, key.path(), catalogue); }

    // A value's text; "-" if it is not there.
    std::wstring at(const std::wstring& path, const std::wstring& name)
    {
        std::vector<srv::RawValue> values;
        registry.values(L"DefDevices\\" + path, values);
        for (const srv::RawValue& value : values)
            if (value.name == name) return srv::textOf(value);
        return L"-";
    }
};

TEST_F(Definitions, AreThereWithTheirValuesAndKeys)
{
    ASSERT_EQ(publish(), 0u);
    EXPECT_EQ(at(L"DeviceID\\*TVRA010", L"Alias"), L"NX200");
    EXPECT_EQ(at(L"DeviceID\\*TVRA010\\Resources", L"IRQ"), L"5,10, 11");
    EXPECT_EQ(at(L"CP_TYPE\\MPI\\Params\\busparam\\0\\1500000", L"tqui"), L"0");
    EXPECT_EQ(at(L"DefaultLogDevices\\NX1611.MPI", L"busparam"), L"1");
    EXPECT_EQ(at(L"DefaultLogDevices\\NX1611.MPI\\Ndi", L"PropSheet"), L"nxprop.dll,ShowSheet");
}

TEST_F(Definitions, OfAnotherCatalogue_replaceThoseBefore)
{
    ASSERT_EQ(publish(), 0u);
    catalogue.boards.clear();
    catalogue.protocols[L"MPI"].tree.values[L"Alias"] = L"Other";
    ASSERT_EQ(publish(), 0u);
    EXPECT_EQ(at(L"DeviceID\\*TVRA010", L"Alias"), L"-");
    EXPECT_EQ(at(L"CP_TYPE\\MPI", L"Alias"), L"Other");
}

TEST_F(Definitions, OfTheSameCatalogue_areNotWrittenAgain)
{
    ASSERT_EQ(publish(), 0u);
    ASSERT_EQ(registry.deleteValue(L"DefDevices\\CP_TYPE\\MPI", L"Alias"), ERROR_SUCCESS);
    ASSERT_EQ(publish(), 0u);
    EXPECT_EQ(at(L"CP_TYPE\\MPI", L"Alias"), L"-");
}

TEST_F(Definitions, ThatWereNotWrittenToTheEnd_areWrittenAgain)
{
    ASSERT_EQ(publish(), 0u);
    ASSERT_EQ(registry.deleteValue(L"DefDevices", L"Catalogue"), ERROR_SUCCESS);
    ASSERT_EQ(registry.deleteValue(L"DefDevices\\CP_TYPE\\MPI", L"Alias"), ERROR_SUCCESS);
    ASSERT_EQ(publish(), 0u);
    EXPECT_EQ(at(L"CP_TYPE\\MPI", L"Alias"), L"Multipoint");
}

}  // namespace
