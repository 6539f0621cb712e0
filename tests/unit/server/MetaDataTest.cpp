// Metadata of parameters and the LLDP settings, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct MetaData : TestServer
{
    Bytes set(const Bytes& folder, const Bytes& subfolder, const Bytes& item, std::u16string_view parameter,
              std::u16string_view text)
    {
        return ask(u16(203) + folder + subfolder + item + str(parameter) + str(text));
    }
    Bytes get(const Bytes& folder, const Bytes& subfolder, const Bytes& item, std::u16string_view parameter,
              std::uint32_t capacity = 260)
    {
        return ask(u16(202) + folder + subfolder + item + str(parameter) + u32(capacity));
    }
    Bytes lldpAt(std::uint32_t index)
    {
        return ask(u16(205) + str(u"data") + null() + str(u"LLDP") + u32(index) + u32(260) + u32(260));
    }
};

TEST_F(MetaData, WhatIsSet_isReadBackInAnyCase)
{
    EXPECT_EQ(set(str(u"Boards"), str(u"NX"), str(u"Pages"), u"Order", u"2"), reply(0));
    EXPECT_EQ(get(str(u"boards"), str(u"nx"), str(u"pages"), u"order"), reply(0, replyStr(u"2")));
    EXPECT_EQ(set(str(u"Boards"), str(u"NX"), str(u"Pages"), u"Order", u""), reply(0));
    EXPECT_EQ(get(str(u"Boards"), str(u"NX"), str(u"Pages"), u"Order"), reply(0, replyStr(u"")));
}

TEST_F(MetaData, FolderSubfolderItemAndParameter_allCount)
{
    set(str(u"F"), str(u"S"), str(u"I"), u"P", u"1");
    EXPECT_EQ(get(str(u"F2"), str(u"S"), str(u"I"), u"P"), reply(8012));
    EXPECT_EQ(get(str(u"F"), str(u"S2"), str(u"I"), u"P"), reply(8012));
    EXPECT_EQ(get(str(u"F"), null(), str(u"I"), u"P"), reply(8012));
    EXPECT_EQ(get(str(u"F"), null(), str(u"S"), u"P"), reply(8012));
    EXPECT_EQ(get(str(u"F"), str(u"S"), str(u"I2"), u"P"), reply(8012));
    EXPECT_EQ(get(str(u"F"), str(u"S"), str(u"I"), u"P2"), reply(8012));
}

TEST_F(MetaData, EmptyAndNullSubfolder_areTheSame)
{
    EXPECT_EQ(set(str(u"F"), null(), str(u"I"), u"P", u"1"), reply(0));
    EXPECT_EQ(get(str(u"F"), str(u""), str(u"I"), u"P"), reply(0, replyStr(u"1")));
}

TEST_F(MetaData, OutlivesTheServer)
{
    set(str(u"F"), str(u"S"), str(u"I"), u"P", u"1");
    srv::WindowsRegistry again = key.registry();
    std::vector<srv::RawValue> values;
    ASSERT_EQ(again.values(L"NORIX\\MetaData\\F\\S\\I", values), ERROR_SUCCESS);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].name, L"P");
    EXPECT_EQ(values[0].type, static_cast<DWORD>(REG_SZ));
}

TEST_F(MetaData, WhatMayNotBeStored_is87)
{
    EXPECT_EQ(set(str(u"a\\b"), null(), str(u"I"), u"P", u"1"), reply(87));
    EXPECT_EQ(set(str(u"F"), str(u"a\\b"), str(u"I"), u"P", u"1"), reply(87));
    EXPECT_EQ(set(str(u"F"), null(), str(u"a\\b"), u"P", u"1"), reply(87));
    EXPECT_EQ(set(str(u"F"), null(), str(u""), u"P", u"1"), reply(87));
    EXPECT_EQ(set(str(u"F"), null(), str(u"I"), u"", u"1"), reply(87));
    EXPECT_EQ(set(str(u"F"), null(), str(u"I"), u"P", std::u16string(260, u'x')), reply(87));
    EXPECT_EQ(ask(u16(203) + str(u"F") + null() + str(u"I") + str(u"P") + null()), reply(87));
    EXPECT_EQ(get(str(u"F"), null(), str(u"I"), u"P"), reply(8012));
}

TEST_F(MetaData, LongerThanTheCapacity_is234)
{
    set(str(u"F"), null(), str(u"I"), u"P", u"123");
    EXPECT_EQ(get(str(u"F"), null(), str(u"I"), u"P", 4), reply(0, replyStr(u"123")));
    EXPECT_EQ(get(str(u"F"), null(), str(u"I"), u"P", 3), reply(234));
}

TEST_F(MetaData, LldpSettings_areTheItemOfThatNameInTheFolderData)
{
    EXPECT_EQ(lldpAt(0), reply(259));
    EXPECT_EQ(set(str(u"data"), null(), str(u"LLDP"), u"Port2", u"off"), reply(0));
    EXPECT_EQ(set(null(), null(), str(u"LLDP"), u"Port1", u"on"), reply(0));
    EXPECT_EQ(lldpAt(0), reply(0, replyStr(u"Port1") + replyStr(u"on")));
    EXPECT_EQ(lldpAt(1), reply(0, replyStr(u"Port2") + replyStr(u"off")));
    EXPECT_EQ(lldpAt(2), reply(259));
}

TEST_F(MetaData, LldpDelValue_removesIt)
{
    set(str(u"data"), null(), str(u"LLDP"), u"Port1", u"on");
    EXPECT_EQ(ask(u16(204) + null() + str(u"LLDP") + str(u"PORT1")), reply(0));
    EXPECT_EQ(ask(u16(204) + null() + str(u"LLDP") + str(u"Port1")), reply(8012));
    EXPECT_EQ(ask(u16(204) + null() + str(u"LLDP") + str(u"")), reply(87));
    EXPECT_EQ(lldpAt(0), reply(259));
}

}  // namespace
