// Operations that answer with a whole list.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct ListsTest : TestServer
{
};

TEST_F(ListsTest, NoDevices_isTheEmptyList)
{
    EXPECT_EQ(ask(u16(208) + u32(4080)), reply(0, u32(0)));
}

TEST_F(ListsTest, DevicesAndNames_areListedInOrder)
{
    createDevice(u"b");
    createDevice(u"A");
    ask(u16(68) + str(u"PLC"));
    EXPECT_EQ(ask(u16(208) + u32(4080)), reply(0, list(item(u"A") + item(u"b"))));
    EXPECT_EQ(ask(u16(209) + u32(4080)), reply(0, list(item(u"PLC"))));
}

TEST_F(ListsTest, DevicesOfANetType_areListedForThePanel)
{
    createDevice(u"b");
    createDevice(u"A");
    ask(u16(43) + str(u"c") + str(u"ISO"));
    const Bytes all = reply(0, list(item(u"A") + item(u"b") + item(u"c")));
    EXPECT_EQ(ask(u16(208) + str(u"mpi") + u32(4080)), reply(0, list(item(u"A") + item(u"b"))));
    EXPECT_EQ(ask(u16(208) + str(u"none") + u32(4080)), reply(0, u32(0)));
    EXPECT_EQ(ask(u16(208) + str(u"") + u32(4080)), all);
    EXPECT_EQ(ask(u16(208) + null() + u32(4080)), all);
    EXPECT_EQ(ask(u16(208) + str(u"mpi") + u32(3)), reply(234));
}

TEST_F(ListsTest, ListThatDoesNotFit_is234AndNeverCut)
{
    createDevice(u"A");
    createDevice(u"b");
    EXPECT_EQ(ask(u16(208) + u32(4)), reply(0, list(item(u"A") + item(u"b"))));
    EXPECT_EQ(ask(u16(208) + u32(3)), reply(234));
}

TEST_F(ListsTest, ValueList_alternatesNamesAndValues)
{
    ask(u16(43) + str(u"Dev") + str(u"ISO"));
    set(u"Dev", u"Unit", u"2");
    const auto values = [&](const Bytes& subkey) {
        return ask(u16(215) + str(u"Dev") + subkey + null() + u32(0) + u32(4080));
    };
    const Bytes expected = reply(0, list(item(u"CP_TYPE") + item(u"ISO") + item(u"Unit") + item(u"2")));
    EXPECT_EQ(values(null()), expected);
    EXPECT_EQ(values(str(u"")), expected);
    EXPECT_EQ(values(str(u"Ndi")), reply(0, u32(0)));
    EXPECT_EQ(values(str(u"Other")), reply(8012));
}

TEST_F(ListsTest, ValueListThatDoesNotFit_is234)
{
    ask(u16(43) + str(u"Dev") + str(u"ISO"));
    for (int i = 0; i < 17; ++i)
        set(u"Dev", u"value" + std::u16string(1, static_cast<char16_t>(u'a' + i)), std::u16string(240, u'x'));
    EXPECT_EQ(ask(u16(215) + str(u"Dev") + null() + null() + u32(0) + u32(4080)), reply(234));
}

TEST_F(ListsTest, ValueListOfAName_needsNoMoreThanAReply)
{
    ask(u16(68) + str(u"PLC"));
    ask(u16(65) + str(u"PLC") + str(u"LogDevice") + str(u"Dev"));
    EXPECT_EQ(ask(u16(219) + str(u"PLC") + null() + null() + u32(0) + u32(8160)),
              reply(0, list(item(u"LogDevice") + item(u"Dev"))));
    EXPECT_EQ(ask(u16(219) + str(u"PLC") + str(u"sub") + null() + u32(0) + u32(8160)), reply(8012));
    for (int i = 0; i < 16; ++i)
        ask(u16(65) + str(u"PLC") + str(u"value" + std::u16string(1, static_cast<char16_t>(u'a' + i))) +
            str(std::u16string(250, u'x')));
    EXPECT_EQ(ask(u16(219) + str(u"PLC") + null() + null() + u32(0) + u32(8160)), reply(234));
}

}  // namespace
