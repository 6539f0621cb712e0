// Requests whose keys refuse the server: the client gets 5, and the same request works when they refuse no more.
#include <gtest/gtest.h>

#include "handle_count.h"
#include "MachineTest.h"
#include "refusedKey.h"

using namespace bytes;

namespace {

struct RefusedKeys : MachineTest
{
    RefusedKey refuse(const std::wstring& below) const
    {
        return RefusedKey(HKEY_CURRENT_USER, key.path() + L"\\NORIX" + below);
    }

    // A text in a key of its own, by the beginnings of the requests that read and set it.
    void expectOneText(const std::wstring& below, const Bytes& read, const Bytes& set)
    {
        ASSERT_EQ(ask(set + str(u"1")), reply(0));
        RefusedKey refused = refuse(below);
        EXPECT_EQ(ask(read + u32(260)), reply(5));
        EXPECT_EQ(ask(set + str(u"2")), reply(5));
        refused.giveBack();
        EXPECT_EQ(ask(read + u32(260)), reply(0, replyStr(u"1")));
        EXPECT_EQ(ask(set + str(u"2")), reply(0));
    }
};

TEST_F(RefusedKeys, Device_isReadButNotChanged)
{
    createDevice(u"Dev");
    RefusedKey refused = refuse(L"\\LogDevices\\Dev");
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(set(u"Dev", u"busparam", u"0"), reply(5));
    EXPECT_EQ(ask(u16(50) + str(u"Dev") + u32(0)), reply(5));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"1")));
    refused.giveBack();
    EXPECT_EQ(set(u"Dev", u"busparam", u"0"), reply(0));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"0")));
    EXPECT_EQ(ask(u16(50) + str(u"Dev") + u32(0)), reply(0));
}

TEST_F(RefusedKeys, Metadata)
{
    const Bytes place = str(u"F") + str(u"S") + str(u"I") + str(u"P");
    expectOneText(L"\\MetaData\\F\\S\\I", u16(202) + place, u16(203) + place);
}

TEST_F(RefusedKeys, SpecialValues)
{
    const Bytes name = str(u"Mine");
    expectOneText(L"\\Special", u16(139) + name, u16(138) + name);
}

TEST_F(RefusedKeys, HardwareAndInstances)
{
    ASSERT_EQ(scan(), reply(0));
    for (const wchar_t* const list : {L"\\Hardware", L"\\Instances"}) {
        RefusedKey refused = refuse(list);
        EXPECT_EQ(scan(), reply(5));
        refused.giveBack();
        EXPECT_EQ(scan(), reply(0));
    }
    RefusedKey refused = refuse(L"\\Instances");
    EXPECT_EQ(instanceAt(0), reply(5));
    EXPECT_EQ(install(u"*TVRA081", u""), reply(5));
    EXPECT_EQ(deinstall(u"*TVRA010", u"NX200-1", u""), reply(5));
    refused.giveBack();
    EXPECT_EQ(instanceAt(0), instance(u"ACPI\\TVRA010\\0", u"NX200-1"));
    EXPECT_EQ(instanceAt(1), reply(259));
}

TEST_F(RefusedKeys, CanSaveParameters_tellsThatTheStoreRefuses)
{
    RefusedKey refused = refuse(L"");
    EXPECT_EQ(ask(u16(81)), reply(5));
    refused.giveBack();
    EXPECT_EQ(ask(u16(81)), reply(0));
}

TEST_F(RefusedKeys, Handles_areAsBefore)
{
    createDevice(u"Dev");
    scan();
    const RefusedKey device = refuse(L"\\LogDevices\\Dev");
    const RefusedKey instances = refuse(L"\\Instances");
    set(u"Dev", u"busparam", u"0");
    const std::size_t handles = handleCount();
    for (int i = 0; i < 20; ++i) {
        set(u"Dev", u"busparam", u"0");
        ask(u16(50) + str(u"Dev") + u32(0));
        scan();
        instanceAt(0);
    }
    EXPECT_EQ(handleCount(), handles);
}

}  // namespace
