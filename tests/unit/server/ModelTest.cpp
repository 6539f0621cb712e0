#include "store/Model.h"

#include <gtest/gtest.h>

using srv::Content;
using srv::ObjectTable;
using srv::ValueTable;

namespace {

Content withType(std::wstring_view type)
{
    Content content;
    content.values.set(L"CP_TYPE", type);
    return content;
}

std::vector<std::wstring> names(const ObjectTable& table)
{
    std::vector<std::wstring> result;
    for (std::size_t i = 0; i < table.size(); ++i)
        result.push_back(table[i].name);
    return result;
}

std::vector<std::wstring> group(const ObjectTable& table, std::wstring_view group)
{
    std::vector<std::wstring> result;
    while (const srv::Object* const object = table.inGroup(group, result.size()))
        result.push_back(object->name);
    return result;
}

using Names = std::vector<std::wstring>;

}  // namespace

TEST(ValueTable, Values_comeSortedWithoutRegardToCase)
{
    ValueTable table;
    table.set(L"b", L"2");
    table.set(L"A", L"1");
    table.set(L"C", L"3");
    ASSERT_EQ(table.size(), 3u);
    EXPECT_EQ(table[0].name, L"A");
    EXPECT_EQ(table[1].name, L"b");
    EXPECT_EQ(table[2].name, L"C");
}

TEST(ValueTable, NameInOtherCase_isTheSameValueAndKeepsItsFirstCase)
{
    ValueTable table;
    table.set(L"BusParam", L"1");
    table.set(L"BUSPARAM", L"2");
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table[0].name, L"BusParam");
    EXPECT_EQ(*table.find(L"busparam"), L"2");
}

TEST(ValueTable, Erase_saysWhetherThereWasOne)
{
    ValueTable table;
    table.set(L"a", L"1");
    EXPECT_TRUE(table.erase(L"A"));
    EXPECT_FALSE(table.erase(L"a"));
    EXPECT_EQ(table.find(L"a"), nullptr);
}

TEST(ObjectTable, Objects_areFoundByNameInAnyCaseAndByPosition)
{
    ObjectTable table;
    table.put(L"beta", {});
    table.put(L"Alpha", {});
    EXPECT_EQ(names(table), (Names{L"Alpha", L"beta"}));
    EXPECT_EQ(table.find(L"ALPHA")->name, L"Alpha");
    EXPECT_EQ(table.find(L"gamma"), nullptr);
}

TEST(ObjectTable, PutAgain_replacesTheContentAndKeepsTheName)
{
    ObjectTable table;
    table.put(L"Alpha", withType(L"MPI"));
    table.put(L"ALPHA", withType(L"PROFI"));
    EXPECT_EQ(names(table), (Names{L"Alpha"}));
    EXPECT_EQ(*table.find(L"alpha")->content.values.find(L"CP_TYPE"), L"PROFI");
}

TEST(ObjectTable, Groups_followTheGroupingValue)
{
    ObjectTable table(L"CP_TYPE");
    table.put(L"b", withType(L"MPI"));
    table.put(L"a", withType(L"mpi"));
    table.put(L"c", withType(L"ISO"));
    table.put(L"d", {});
    EXPECT_EQ(group(table, L"Mpi"), (Names{L"a", L"b"}));

    table.setValue(L"b", L"cp_type", L"ISO");
    EXPECT_EQ(group(table, L"MPI"), (Names{L"a"}));
    EXPECT_EQ(group(table, L"ISO"), (Names{L"b", L"c"}));

    table.eraseValue(L"b", L"CP_TYPE");
    EXPECT_EQ(group(table, L"ISO"), (Names{L"c"}));

    table.put(L"d", withType(L"ISO"));
    table.erase(L"c");
    EXPECT_EQ(group(table, L"ISO"), (Names{L"d"}));
    EXPECT_EQ(group(table, L"unknown"), (Names{}));
}
