// Temporary devices: working copies that belong to one client.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

const char16_t* const Temp = u"DCFG_TEMP_LOG_DEVICE____1";

struct TemporaryDevicesTest : TestServer
{
    void SetUp() override
    {
        TestServer::SetUp();
        createDevice(u"Dev");
    }
    Bytes createTemp() { return ask(u16(45) + str(u"Dev") + u32(260)); }
};

TEST_F(TemporaryDevicesTest, Create_tellsTheNameOfTheCopy)
{
    EXPECT_EQ(createTemp(), reply(0, replyStr(Temp)));
    EXPECT_EQ(createTemp(), reply(0, replyStr(u"DCFG_TEMP_LOG_DEVICE____2")));
    EXPECT_EQ(value(Temp, u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(ask(u16(42) + str(Temp) + u32(0)), reply(0));
    EXPECT_EQ(ask(u16(45) + str(u"none") + u32(260)), reply(8012));
}

TEST_F(TemporaryDevicesTest, NameThatDoesNotFit_is234AndMakesNothing)
{
    EXPECT_EQ(ask(u16(45) + str(u"Dev") + u32(0)), reply(234));
    EXPECT_EQ(ask(u16(45) + str(u"Dev") + u32(25)), reply(234));
    EXPECT_EQ(ask(u16(42) + str(Temp) + u32(0)), reply(8012));
}

TEST_F(TemporaryDevicesTest, ChangesOfTheCopy_doNotTouchTheDevice)
{
    createTemp();
    EXPECT_EQ(set(Temp, u"busparam", u"3"), reply(0));
    EXPECT_EQ(ask(u16(115) + str(Temp) + str(u"hidden") + str(u"true") + u32(1)), reply(0));
    EXPECT_EQ(ask(u16(35) + str(Temp) + str(u"baudrate")), reply(0));
    EXPECT_EQ(value(Temp, u"busparam"), reply(0, replyStr(u"3")));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(value(u"Dev", u"baudrate"), reply(0, replyStr(u"1500000")));
}

TEST_F(TemporaryDevicesTest, UpdateWithTemp_replacesTheDeviceAndKeepsTheCopy)
{
    createTemp();
    set(Temp, u"busparam", u"3");
    ask(u16(35) + str(Temp) + str(u"baudrate"));
    EXPECT_EQ(ask(u16(40) + str(Temp) + str(u"dev")), reply(0));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"3")));
    EXPECT_EQ(value(u"Dev", u"baudrate"), reply(8012));
    EXPECT_EQ(value(Temp, u"busparam"), reply(0, replyStr(u"3")));
}

TEST_F(TemporaryDevicesTest, UpdateWithTemp_ofADeviceThatIsGone_is8012)
{
    createTemp();
    EXPECT_EQ(ask(u16(40) + str(u"Dev") + str(u"Dev")), reply(8012));
    ask(u16(50) + str(u"Dev") + u32(0));
    EXPECT_EQ(ask(u16(40) + str(Temp) + str(u"Dev")), reply(8012));
}

TEST_F(TemporaryDevicesTest, DelTemp_removesOnlyCopies)
{
    createTemp();
    EXPECT_EQ(ask(u16(47) + str(Temp)), reply(0));
    EXPECT_EQ(ask(u16(47) + str(Temp)), reply(8012));
    EXPECT_EQ(ask(u16(47) + str(u"Dev")), reply(8012));
    EXPECT_EQ(value(Temp, u"busparam"), reply(8012));
}

TEST_F(TemporaryDevicesTest, OtherClients_doNotSeeThem)
{
    createTemp();
    srv::Session other(2, srv::Via::Channel, 1);
    EXPECT_EQ(ask(other, u16(42) + str(Temp) + u32(0)), reply(8012));
    EXPECT_EQ(ask(other, u16(40) + str(Temp) + str(u"Dev")), reply(8012));
    EXPECT_EQ(ask(other, u16(47) + str(Temp)), reply(8012));
}

TEST_F(TemporaryDevicesTest, Enumerations_doNotListThem)
{
    createTemp();
    EXPECT_EQ(ask(u16(36) + null() + u32(1) + u32(260)), reply(259));
    EXPECT_EQ(ask(u16(208) + u32(4080)), reply(0, list(item(u"Dev"))));
}

TEST_F(TemporaryDevicesTest, Copies_areKeptInMemoryOnly)
{
    createTemp();
    std::vector<srv::Subkey> found;
    registry.subkeys(L"LogDevices", found);
    EXPECT_EQ(found.size(), 1u);
}

TEST_F(TemporaryDevicesTest, MoreThanOneClientMayHave_is1816)
{
    for (int i = 0; i < 256; ++i)
        createTemp();
    EXPECT_EQ(createTemp(), reply(1816));
    srv::Session other(2, srv::Via::Channel, 1);
    EXPECT_EQ(ask(other, u16(45) + str(u"Dev") + u32(260)), reply(0, replyStr(Temp)));
}

TEST_F(TemporaryDevicesTest, ReplicationDevice_isAnOrdinaryDevice)
{
    EXPECT_EQ(ask(u16(43) + str(u"DCFG_TEMP_LOG_DEVICE____REPLICATION") + str(u"NX1611.MPI")), reply(0));
}

}  // namespace
