// Operations on templates, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct TemplatesTest : TestServer
{
    Bytes at(std::uint16_t opcode, const Bytes& type, std::uint32_t index)
    {
        return ask(u16(opcode) + type + u32(index) + u32(260));
    }
    Bytes exists(std::u16string_view type, std::u16string_view name)
    {
        return ask(u16(133) + str(type) + str(name) + u32(0));
    }
    static Bytes protocolPath(std::u16string_view part2, std::u16string_view part3 = u"",
                              std::u16string_view part4 = u"", std::u16string_view part5 = u"")
    {
        return str(u"mpi") + str(part2) + str(part3) + str(part4) + str(part5);
    }
};

TEST_F(TemplatesTest, GetEnum_walksEachTypeInAnyCase)
{
    for (const std::uint16_t opcode : {128, 129}) {
        EXPECT_EQ(at(opcode, str(u"Boards"), 0), reply(0, replyStr(u"*TVRA010")));
        EXPECT_EQ(at(opcode, str(u"boards"), 1), reply(259));
        EXPECT_EQ(at(opcode, str(u"PROTOCOLS"), 0), reply(0, replyStr(u"ISO")));
        EXPECT_EQ(at(opcode, str(u"Protocols"), 1), reply(0, replyStr(u"MPI")));
        EXPECT_EQ(at(opcode, str(u"Protocols"), 2), reply(259));
        EXPECT_EQ(at(opcode, str(u"DefaultLogDevices"), 1), reply(0, replyStr(u"NX1611.MPI")));
        EXPECT_EQ(at(opcode, str(u"DefaultLogdevices"), 0xFFFFFFFF), reply(259));
    }
}

TEST_F(TemplatesTest, GetEnum_failuresAreTold)
{
    for (const std::uint16_t opcode : {128, 129}) {
        EXPECT_EQ(at(opcode, str(u"Nothing"), 0), reply(87));
        EXPECT_EQ(at(opcode, str(u""), 0), reply(87));
        EXPECT_EQ(at(opcode, null(), 0), reply(87));
        EXPECT_EQ(ask(u16(opcode) + str(u"Boards") + u32(0) + u32(8)), reply(234));
        EXPECT_EQ(ask(u16(opcode) + str(u"Boards") + u32(0) + u32(9)), reply(0, replyStr(u"*TVRA010")));
    }
}

TEST_F(TemplatesTest, Exists_asksForANameAndOfAProtocolForAPath)
{
    EXPECT_EQ(exists(u"Boards", u"*tvra010"), reply(0));
    EXPECT_EQ(exists(u"Boards", u"*TVRA010\\Resources"), reply(8012));
    EXPECT_EQ(exists(u"DefaultLogdevices", u"NX1611.MPI"), reply(0));
    EXPECT_EQ(exists(u"DefaultLogdevices", u"none"), reply(8012));
    EXPECT_EQ(exists(u"Protocols", u"MPI"), reply(0));
    EXPECT_EQ(exists(u"Protocols", u"mpi\\params\\busparam\\0"), reply(0));
    EXPECT_EQ(exists(u"Protocols", u"MPI\\Params\\busparam\\7"), reply(8012));
    EXPECT_EQ(exists(u"Protocols", u"none"), reply(8012));
    EXPECT_EQ(exists(u"Nothing", u"MPI"), reply(87));
}

TEST_F(TemplatesTest, KeyExists_asksForAKeyOrAValue)
{
    for (const std::uint16_t opcode : {135, 37}) {
        const auto ask4 = [&](std::u16string_view type, std::u16string_view name, const Bytes& path,
                              const Bytes& value) { return ask(u16(opcode) + str(type) + str(name) + path + value); };
        EXPECT_EQ(ask4(u"Protocols", u"MPI", str(u"Params"), str(u"")), reply(0)) << opcode;
        EXPECT_EQ(ask4(u"Protocols", u"MPI", str(u"Params\\busparam\\0\\1500000"), str(u"tqui")), reply(0)) << opcode;
        EXPECT_EQ(ask4(u"Protocols", u"MPI", str(u"Params"), str(u"none")), reply(8012)) << opcode;
        EXPECT_EQ(ask4(u"Protocols", u"MPI", str(u"none"), str(u"highest_adr")), reply(8012)) << opcode;
        EXPECT_EQ(ask4(u"Protocols", u"MPI", str(u"Params\\highest_adr"), null()), reply(0)) << opcode;
        EXPECT_EQ(ask4(u"Protocols", u"MPI", str(u"Params\\none"), null()), reply(8012)) << opcode;
        EXPECT_EQ(ask4(u"Boards", u"*TVRA010", null(), str(u"Alias")), reply(0)) << opcode;
        EXPECT_EQ(ask4(u"Boards", u"*TVRA010", str(u"Resources"), str(u"IRQ")), reply(0)) << opcode;
        EXPECT_EQ(ask4(u"DefaultLogdevices", u"NX1611.MPI", str(u"Ndi"), str(u"PropSheet")), reply(0)) << opcode;
        EXPECT_EQ(ask4(u"Boards", u"none", str(u"Resources"), str(u"IRQ")), reply(8012)) << opcode;
        EXPECT_EQ(ask4(u"Nothing", u"MPI", str(u"Params"), str(u"x")), reply(87)) << opcode;
    }
}

TEST_F(TemplatesTest, BoardValues_areReadAndWalked)
{
    EXPECT_EQ(ask(u16(161) + str(u"*TVRA010") + str(u"alias") + u32(260) + u32(1)), reply(0, replyStr(u"NX200")));
    EXPECT_EQ(ask(u16(160) + str(u"*TVRA010") + u32(0) + u32(260) + u32(260)),
              reply(0, replyStr(u"Alias") + replyStr(u"NX200")));
    EXPECT_EQ(ask(u16(160) + str(u"*TVRA010") + u32(5) + u32(260) + u32(260)), reply(259));
    EXPECT_EQ(ask(u16(160) + str(u"none") + u32(0) + u32(260) + u32(260)), reply(8012));
    EXPECT_EQ(ask(u16(160) + str(u"*TVRA010") + u32(0) + u32(5) + u32(260)), reply(234));
    EXPECT_EQ(ask(u16(160) + str(u"*TVRA010") + u32(0) + u32(6) + u32(5)), reply(234));
}

TEST_F(TemplatesTest, DefaultDeviceValues_areReadAndWalked)
{
    EXPECT_EQ(ask(u16(145) + str(u"nx1611.mpi") + str(u"busparam") + u32(260) + u32(1)), reply(0, replyStr(u"1")));
    EXPECT_EQ(ask(u16(145) + str(u"NX1611.MPI") + str(u"none") + u32(260) + u32(1)), reply(8012));
    EXPECT_EQ(ask(u16(145) + str(u"none") + str(u"busparam") + u32(260) + u32(1)), reply(8012));
    EXPECT_EQ(ask(u16(144) + str(u"NX1611.MPI") + u32(1) + u32(260) + u32(260)),
              reply(0, replyStr(u"busparam") + replyStr(u"1")));
    EXPECT_EQ(ask(u16(144) + str(u"NX1611.MPI") + u32(4) + u32(260) + u32(260)), reply(259));
    EXPECT_EQ(ask(u16(144) + str(u"none") + u32(0) + u32(260) + u32(260)), reply(8012));
}

TEST_F(TemplatesTest, ProtocolValues_areAddressedByFiveParts)
{
    const auto value = [&](const Bytes& path, std::u16string_view parameter) {
        return ask(u16(177) + path + str(parameter) + u32(260) + u32(1));
    };
    EXPECT_EQ(value(protocolPath(u""), u"Alias"), reply(0, replyStr(u"Multipoint")));
    EXPECT_EQ(value(str(u"MPI") + null() + null() + null() + null(), u"Alias"), reply(0, replyStr(u"Multipoint")));
    EXPECT_EQ(value(protocolPath(u"PARAMS", u"busparam", u"0", u"1500000"), u"tqui"), reply(0, replyStr(u"0")));
    EXPECT_EQ(value(protocolPath(u"Params", u"busparam", u"5"), u"tslot"), reply(8012));
    EXPECT_EQ(value(protocolPath(u""), u"none"), reply(8012));
    const auto at = [&](const Bytes& path, std::uint32_t index) {
        return ask(u16(176) + path + u32(index) + u32(260) + u32(260));
    };
    EXPECT_EQ(at(protocolPath(u"Params", u"busparam", u"1"), 0), reply(0, replyStr(u"tslot") + replyStr(u"415")));
    EXPECT_EQ(at(protocolPath(u"Params", u"busparam", u"1"), 1), reply(259));
    EXPECT_EQ(at(protocolPath(u"Params", u"busparam"), 0), reply(259));
    EXPECT_EQ(at(protocolPath(u"none"), 0), reply(8012));
}

TEST_F(TemplatesTest, RawValues_areAddressedByAPath)
{
    const auto raw = [&](std::uint16_t opcode, std::u16string_view name, const Bytes& path,
                         std::u16string_view value) {
        return ask(u16(opcode) + str(name) + path + str(value) + u32(260));
    };
    EXPECT_EQ(raw(97, u"MPI", str(u"Params\\busparam\\0"), u"tslot"), reply(0, replyStr(u"300")));
    EXPECT_EQ(raw(97, u"MPI", str(u"\\Params\\"), u"highest_adr"), reply(0, replyStr(u"31")));
    EXPECT_EQ(raw(97, u"MPI", null(), u"CP_TYPE"), reply(0, replyStr(u"MPI")));
    EXPECT_EQ(raw(97, u"MPI", str(u"Params"), u"none"), reply(8012));
    EXPECT_EQ(raw(97, u"none", null(), u"CP_TYPE"), reply(8012));
    EXPECT_EQ(raw(98, u"NX1611.MPI", str(u""), u"baudrate"), reply(0, replyStr(u"1500000")));
    EXPECT_EQ(raw(98, u"NX1611.MPI", str(u"ndi"), u"PropSheet"), reply(0, replyStr(u"nxprop.dll,ShowSheet")));
    EXPECT_EQ(raw(98, u"NX1611.MPI", str(u"none"), u"PropSheet"), reply(8012));
    EXPECT_EQ(raw(96, u"*TVRA010", str(u"Resources"), u"IRQ"), reply(0, replyStr(u"5,10, 11")));
    EXPECT_EQ(raw(96, u"NX 200", null(), u"Alias"), reply(0, replyStr(u"NX200")));
    EXPECT_EQ(raw(96, u"*TVRA010", str(u"none"), u"IRQ"), reply(8012));
}

TEST_F(TemplatesTest, PossibleValues_comeFromTheDescriptionElseFromTheValuesItems)
{
    catalogue.parameters[L"busparam"].items = {{L"0", {}}, {L"1", {}}};
    const auto at = [&](std::u16string_view type, std::u16string_view name, std::u16string_view parameter,
                        std::uint32_t index) {
        return ask(u16(99) + str(type) + str(name) + str(parameter) + u32(index) + u32(260));
    };
    EXPECT_EQ(at(u"Protocols", u"MPI", u"busparam", 1), reply(0, replyStr(u"1")));
    EXPECT_EQ(at(u"Protocols", u"MPI", u"busparam", 2), reply(259));
    EXPECT_EQ(at(u"DefaultLogdevices", u"NX1611.MPI", u"busparam", 0), reply(0, replyStr(u"0")));
    EXPECT_EQ(at(u"Boards", u"*TVRA010", u"Resources\\IRQ", 0), reply(0, replyStr(u"5")));
    EXPECT_EQ(at(u"Boards", u"*TVRA010", u"Resources\\IRQ", 2), reply(0, replyStr(u"11")));
    EXPECT_EQ(at(u"Boards", u"*TVRA010", u"Resources\\IRQ", 3), reply(259));
    EXPECT_EQ(at(u"Boards", u"*TVRA010", u"none", 0), reply(8012));
    EXPECT_EQ(at(u"Boards", u"none", u"busparam", 0), reply(8012));
    EXPECT_EQ(at(u"Nothing", u"MPI", u"busparam", 0), reply(87));
}

}  // namespace
