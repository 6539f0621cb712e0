// Operations on logical devices, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct DevicesTest : TestServer
{
};

TEST_F(DevicesTest, CreateFromDef_copiesValuesAndNdiValues)
{
    EXPECT_EQ(ask(u16(43) + str(u"Dev") + str(u"nx1611.mpi")), reply(0));
    EXPECT_EQ(value(u"Dev", u"DeviceID"), reply(0, replyStr(u"*TVRA010")));
    EXPECT_EQ(ask(u16(114) + str(u"Dev") + str(u"propsheet") + u32(260) + u32(1)),
              reply(0, replyStr(u"nxprop.dll,ShowSheet")));
}

TEST_F(DevicesTest, CreateFromDef_failuresAreTold)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(43) + str(u"DEV") + str(u"NX1611.MPI")), reply(183));
    EXPECT_EQ(ask(u16(43) + str(u"Other") + str(u"no such definition")), reply(8012));
    EXPECT_EQ(ask(u16(43) + str(u"a\\b") + str(u"NX1611.MPI")), reply(87));
    EXPECT_EQ(ask(u16(43) + str(u"DCFG_TEMP_LOG_DEVICE____7") + str(u"NX1611.MPI")), reply(87));
}

TEST_F(DevicesTest, Exists_is0OrNotFoundWhateverTheFlags)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(42) + str(u"dev") + u32(0)), reply(0));
    EXPECT_EQ(ask(u16(42) + str(u"Dev") + u32(0xFFFFFFFF)), reply(0));
    EXPECT_EQ(ask(u16(42) + str(u"Dev2") + u32(0)), reply(8012));
    EXPECT_EQ(ask(u16(42) + str(u"SOFTWARE\\TAVRONE\\NORIX\\LogDevices\\Dev") + u32(0)), reply(8012));
}

TEST_F(DevicesTest, SetValue_isReadBack)
{
    createDevice(u"Dev");
    EXPECT_EQ(set(u"Dev", u"BusParam", u"3"), reply(0));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"3")));
    EXPECT_EQ(set(u"Dev", u"empty", u""), reply(0));
    EXPECT_EQ(value(u"Dev", u"empty"), reply(0, replyStr(u"")));
    EXPECT_EQ(set(u"none", u"a", u"1"), reply(8012));
}

TEST_F(DevicesTest, GetValue_unknownDeviceOrValue_is8012)
{
    createDevice(u"Dev");
    EXPECT_EQ(value(u"none", u"busparam"), reply(8012));
    EXPECT_EQ(value(u"Dev", u"none"), reply(8012));
}

TEST_F(DevicesTest, GetValue_longerThanTheCapacity_is234)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(33) + str(u"Dev") + str(u"DeviceID") + u32(9)), reply(0, replyStr(u"*TVRA010")));
    EXPECT_EQ(ask(u16(33) + str(u"Dev") + str(u"DeviceID") + u32(8)), reply(234));
    EXPECT_EQ(ask(u16(33) + str(u"Dev") + str(u"DeviceID") + u32(0)), reply(234));
}

TEST_F(DevicesTest, LongestValue_isStoredAndRead_andOneLongerIs87)
{
    createDevice(u"Dev");
    const std::u16string longest(259, u'x');
    EXPECT_EQ(set(u"Dev", u"a", longest), reply(0));
    EXPECT_EQ(value(u"Dev", u"a"), reply(0, replyStr(longest)));
    EXPECT_EQ(set(u"Dev", u"a", longest + u"x"), reply(87));
}

TEST_F(DevicesTest, DelValue_removesIt)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(35) + str(u"Dev") + str(u"BUSPARAM")), reply(0));
    EXPECT_EQ(ask(u16(35) + str(u"Dev") + str(u"busparam")), reply(8012));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(8012));
}

TEST_F(DevicesTest, GetEnum_walksAllDevicesOfANetType)
{
    createDevice(u"b");
    createDevice(u"A");
    ASSERT_EQ(ask(u16(43) + str(u"c") + str(u"ISO")), reply(0));
    const auto at = [&](const Bytes& netType, std::uint32_t index) {
        return ask(u16(36) + netType + u32(index) + u32(260));
    };
    for (const Bytes& all : {null(), str(u"")}) {
        EXPECT_EQ(at(all, 0), reply(0, replyStr(u"A")));
        EXPECT_EQ(at(all, 1), reply(0, replyStr(u"b")));
        EXPECT_EQ(at(all, 2), reply(0, replyStr(u"c")));
        EXPECT_EQ(at(all, 3), reply(259));
        EXPECT_EQ(at(all, 0xFFFFFFFF), reply(259));
    }
    EXPECT_EQ(at(str(u"mpi"), 1), reply(0, replyStr(u"b")));
    EXPECT_EQ(at(str(u"mpi"), 2), reply(259));
    EXPECT_EQ(at(str(u"ISO"), 0), reply(0, replyStr(u"c")));
    EXPECT_EQ(at(str(u"unknown"), 0), reply(259));
}

TEST_F(DevicesTest, GetEnumValue_walksAllValues)
{
    createDevice(u"Dev");
    const auto at = [&](std::uint32_t index) {
        return ask(u16(37) + str(u"Dev") + u32(index) + u32(260) + u32(260));
    };
    EXPECT_EQ(at(0), reply(0, replyStr(u"baudrate") + replyStr(u"1500000")));
    EXPECT_EQ(at(1), reply(0, replyStr(u"busparam") + replyStr(u"1")));
    EXPECT_EQ(at(3), reply(0, replyStr(u"DeviceID") + replyStr(u"*TVRA010")));
    EXPECT_EQ(at(4), reply(259));
}

TEST_F(DevicesTest, GetEnumValue_eachTextHasItsOwnCapacity)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(37) + str(u"Dev") + u32(0) + u32(8) + u32(260)), reply(234));
    EXPECT_EQ(ask(u16(37) + str(u"Dev") + u32(0) + u32(260) + u32(7)), reply(234));
    EXPECT_EQ(ask(u16(37) + str(u"Dev") + u32(0) + u32(9) + u32(8)),
              reply(0, replyStr(u"baudrate") + replyStr(u"1500000")));
}

TEST_F(DevicesTest, TheOtherRequestWithCode37_isToldApartByItsFields)
{
    createDevice(u"Boards");
    EXPECT_EQ(ask(u16(37) + str(u"Boards") + u32(0) + u32(260) + u32(260)),
              reply(0, replyStr(u"baudrate") + replyStr(u"1500000")));
    EXPECT_EQ(ask(u16(37) + str(u"Boards") + str(u"*TVRA010") + str(u"") + null()), reply(0));
    EXPECT_EQ(ask(u16(37) + str(u"Boards") + str(u"none") + str(u"y") + str(u"z")), reply(8012));
    EXPECT_EQ(ask(u16(37) + str(u"Boards") + str(u"") + null() + str(u"")), reply(87));
    EXPECT_EQ(ask(u16(37) + str(u"Boards") + str(u"xyz") + str(u"xyz")), reply(87));
    EXPECT_EQ(ask(u16(37) + str(u"Boards") + u32(0) + u32(260)), reply(87));
}

TEST_F(DevicesTest, NdiValues_areApartFromValues)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(115) + str(u"Dev") + str(u"busparam") + str(u"ndi") + u32(1)), reply(0));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(ask(u16(114) + str(u"Dev") + str(u"busparam") + u32(260) + u32(1)), reply(0, replyStr(u"ndi")));
    EXPECT_EQ(ask(u16(118) + str(u"Dev") + u32(0) + u32(260) + u32(260) + u32(1)),
              reply(0, replyStr(u"busparam") + replyStr(u"ndi")));
    EXPECT_EQ(ask(u16(118) + str(u"Dev") + u32(2) + u32(260) + u32(260) + u32(1)), reply(259));
    EXPECT_EQ(ask(u16(116) + str(u"Dev") + str(u"busparam") + u32(1)), reply(0));
    EXPECT_EQ(ask(u16(116) + str(u"Dev") + str(u"busparam") + u32(1)), reply(8012));
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"1")));
}

TEST_F(DevicesTest, RawValue_readsValuesAndNdiValues)
{
    createDevice(u"Dev");
    const auto raw = [&](const Bytes& subkey, std::u16string_view parameter) {
        return ask(u16(217) + str(u"Dev") + subkey + u32(0) + str(parameter) + u32(260));
    };
    EXPECT_EQ(raw(null(), u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(raw(str(u""), u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(raw(str(u"NDI"), u"PropSheet"), reply(0, replyStr(u"nxprop.dll,ShowSheet")));
    EXPECT_EQ(raw(str(u"Other"), u"busparam"), reply(8012));
}

TEST_F(DevicesTest, Copy_isIndependentOfItsSource)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(49) + str(u"Dev") + str(u"Copy")), reply(0));
    set(u"Copy", u"busparam", u"2");
    EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"1")));
    EXPECT_EQ(ask(u16(114) + str(u"Copy") + str(u"PropSheet") + u32(260) + u32(1)),
              reply(0, replyStr(u"nxprop.dll,ShowSheet")));
    EXPECT_EQ(ask(u16(49) + str(u"Dev") + str(u"copy")), reply(183));
    EXPECT_EQ(ask(u16(49) + str(u"none") + str(u"Copy2")), reply(8012));
    EXPECT_EQ(ask(u16(49) + str(u"Dev") + null()), reply(87));
}

TEST_F(DevicesTest, Del_removesTheDevice)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(50) + str(u"Dev") + u32(0)), reply(0));
    EXPECT_EQ(ask(u16(42) + str(u"Dev") + u32(0)), reply(8012));
    EXPECT_EQ(ask(u16(50) + str(u"Dev") + u32(0)), reply(8012));
}

TEST_F(DevicesTest, SetBusparams_appliesTheProfileAtTheDevicesBaudRate)
{
    createDevice(u"Dev");
    for (const char16_t* const profile : {u"DP", u"0"}) {
        set(u"Dev", u"busparam", u"1");
        set(u"Dev", u"tqui", u"-");
        EXPECT_EQ(ask(u16(51) + str(u"Dev") + str(profile)), reply(0));
        EXPECT_EQ(value(u"Dev", u"busparam"), reply(0, replyStr(u"0")));
        EXPECT_EQ(value(u"Dev", u"tslot"), reply(0, replyStr(u"300")));
        EXPECT_EQ(value(u"Dev", u"tqui"), reply(0, replyStr(u"0")));
    }
}

TEST_F(DevicesTest, SetBusparams_failuresAreTold)
{
    createDevice(u"Dev");
    EXPECT_EQ(ask(u16(51) + str(u"Dev") + str(u"user")), reply(8062));
    EXPECT_EQ(ask(u16(51) + str(u"none") + str(u"dp")), reply(8012));
    set(u"Dev", u"CP_TYPE", u"unknown protocol");
    EXPECT_EQ(ask(u16(51) + str(u"Dev") + str(u"dp")), reply(8012));
}

}  // namespace
