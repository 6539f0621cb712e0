// Operations on logical names, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct NamesOperations : TestServer
{
    Bytes create(std::u16string_view name) { return ask(u16(68) + str(name)); }
    Bytes setName(std::u16string_view parameter, std::u16string_view text)
    {
        return ask(u16(65) + str(u"PLC") + str(parameter) + str(text));
    }
    Bytes nameValue(std::u16string_view parameter) { return ask(u16(66) + str(u"PLC") + str(parameter) + u32(260)); }
};

TEST_F(NamesOperations, Create_makesAnEmptyName)
{
    EXPECT_EQ(create(u"PLC"), reply(0));
    EXPECT_EQ(ask(u16(75) + str(u"plc") + u32(0)), reply(0));
    EXPECT_EQ(ask(u16(73) + str(u"PLC") + u32(0) + u32(260) + u32(260)), reply(259));
    EXPECT_EQ(create(u"PLC"), reply(183));
    EXPECT_EQ(create(u"a\\b"), reply(87));
}

TEST_F(NamesOperations, Values_areSetReadAndDeleted)
{
    create(u"PLC");
    EXPECT_EQ(setName(u"LogDevice", u"Dev"), reply(0));
    EXPECT_EQ(nameValue(u"logdevice"), reply(0, replyStr(u"Dev")));
    EXPECT_EQ(ask(u16(73) + str(u"PLC") + u32(0) + u32(260) + u32(260)),
              reply(0, replyStr(u"LogDevice") + replyStr(u"Dev")));
    EXPECT_EQ(ask(u16(67) + str(u"PLC") + str(u"LogDevice")), reply(0));
    EXPECT_EQ(nameValue(u"LogDevice"), reply(8012));
    EXPECT_EQ(ask(u16(67) + str(u"PLC") + str(u"LogDevice")), reply(8012));
}

TEST_F(NamesOperations, UnknownName_is8012)
{
    EXPECT_EQ(ask(u16(75) + str(u"PLC") + u32(0)), reply(8012));
    EXPECT_EQ(setName(u"LogDevice", u"Dev"), reply(8012));
    EXPECT_EQ(nameValue(u"LogDevice"), reply(8012));
    EXPECT_EQ(ask(u16(69) + str(u"PLC")), reply(8012));
}

TEST_F(NamesOperations, Del_doesNotAskWhetherItMay)
{
    create(u"PLC");
    setName(u"enable_delete", u"false");
    EXPECT_EQ(ask(u16(69) + str(u"PLC")), reply(0));
    EXPECT_EQ(ask(u16(75) + str(u"PLC") + u32(0)), reply(8012));
}

TEST_F(NamesOperations, GetEnum_walksAllNames)
{
    create(u"b");
    create(u"A");
    EXPECT_EQ(ask(u16(72) + u32(0) + u32(260)), reply(0, replyStr(u"A")));
    EXPECT_EQ(ask(u16(72) + u32(1) + u32(260)), reply(0, replyStr(u"b")));
    EXPECT_EQ(ask(u16(72) + u32(2) + u32(260)), reply(259));
    EXPECT_EQ(ask(u16(72) + u32(0) + u32(1)), reply(234));
}

}  // namespace
