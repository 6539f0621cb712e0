// What the catalogue says of boards, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct BoardsTest : TestServer
{
    Bytes attribute(std::u16string_view name, std::u16string_view parameter, std::uint32_t capacity = 260)
    {
        return ask(u16(161) + str(name) + str(parameter) + u32(capacity) + u32(1));
    }
    Bytes attributeIn(std::u16string_view name, std::u16string_view parameter, const Bytes& language)
    {
        return ask(u16(162) + str(name) + str(parameter) + language + u32(1));
    }
    Bytes resource(std::u16string_view folder, std::u16string_view name, std::u16string_view id,
                   const Bytes& language, std::uint32_t capacity = 260)
    {
        return ask(u16(134) + str(folder) + str(name) + str(id) + language + u32(capacity) + u32(1));
    }
};

TEST_F(BoardsTest, Attribute_isFoundByDeviceIdNameAndAlias)
{
    for (const char16_t* const name : {u"*tvra010", u"NX 200", u"nx200"})
        EXPECT_EQ(attribute(name, u"hardwareid"), reply(0, replyStr(u"ACPI\\TVRA010")));
}

TEST_F(BoardsTest, Attribute_failuresAreTold)
{
    EXPECT_EQ(attribute(u"*TVRA010", u"none"), reply(8012));
    EXPECT_EQ(attribute(u"*TVRA999", u"Alias"), reply(8012));
    EXPECT_EQ(attribute(u"*TVRA010", u"Alias", 5), reply(234));
    EXPECT_EQ(attribute(u"*TVRA010", u"Alias", 0), reply(234));
    EXPECT_EQ(attribute(u"*TVRA010", u""), reply(87));
}

TEST_F(BoardsTest, AttributeOfALogicalDevice_isItsOwnValueElseItsBoards)
{
    createDevice(u"Dev");
    EXPECT_EQ(attribute(u"Dev", u"baudrate"), reply(0, replyStr(u"1500000")));
    EXPECT_EQ(attribute(u"Dev", u"Alias"), reply(0, replyStr(u"NX200")));
    EXPECT_EQ(attribute(u"Dev", u"none"), reply(8012));
    set(u"Dev", u"DeviceID", u"*TVRA999");
    EXPECT_EQ(attribute(u"Dev", u"Alias"), reply(8012));
}

TEST_F(BoardsTest, AttributeLang_isTheTextElseTheValue)
{
    EXPECT_EQ(attributeIn(u"*TVRA010", u"DescText", str(u"DE")), reply(0, replyStr(u"Eingebaut")));
    EXPECT_EQ(attributeIn(u"*TVRA010", u"desctext", str(u"A")), reply(0, replyStr(u"Eingebaut")));
    EXPECT_EQ(attributeIn(u"*TVRA010", u"DescText", null()), reply(0, replyStr(u"Built-in")));
    EXPECT_EQ(attributeIn(u"*TVRA010", u"Alias", str(u"DE")), reply(0, replyStr(u"NX200")));
    EXPECT_EQ(attributeIn(u"*TVRA010", u"none", str(u"DE")), reply(8012));
    EXPECT_EQ(attributeIn(u"none", u"DescText", str(u"DE")), reply(8012));
}

TEST_F(BoardsTest, ResourceString_isFoundByTypeNameIdAndLanguage)
{
    EXPECT_EQ(resource(u"Protocols", u"MPI", u"BusparamResource\\1", str(u"DE")), reply(0, replyStr(u"Normal")));
    EXPECT_EQ(resource(u"protocols", u"mpi", u"busparamresource\\STD", str(u"B")), reply(0, replyStr(u"Standard")));
    EXPECT_EQ(resource(u"Boards", u"*TVRA010", u"DescText", str(u"DE")), reply(0, replyStr(u"Eingebaut")));
    EXPECT_EQ(resource(u"Boards", u"*TVRA010", u"Resources\\IRQ", str(u"DE")), reply(0, replyStr(u"5,10, 11")));
    EXPECT_EQ(resource(u"DefaultLogdevices", u"NX1611.MPI", u"baudrate", str(u"DE")), reply(0, replyStr(u"1500000")));
}

TEST_F(BoardsTest, ResourceString_failuresAreTold)
{
    EXPECT_EQ(resource(u"Protocols", u"MPI", u"BusparamResource\\0", str(u"DE")), reply(8012));
    EXPECT_EQ(resource(u"Protocols", u"none", u"BusparamResource\\1", str(u"DE")), reply(8012));
    EXPECT_EQ(resource(u"Nothing", u"MPI", u"BusparamResource\\1", str(u"DE")), reply(87));
    EXPECT_EQ(resource(u"", u"", u"", str(u"DE")), reply(87));
    EXPECT_EQ(resource(u"Protocols", u"MPI", u"BusparamResource\\1", str(u"DE"), 6), reply(234));
}

TEST_F(BoardsTest, NotSupported_isAListThatIsNeverCut)
{
    const auto list164 = [&](std::u16string_view name, std::uint32_t capacity) {
        return ask(u16(164) + str(name) + u32(capacity));
    };
    EXPECT_EQ(list164(u"NX 200", 2048), reply(0, list(item(u"Isochronous") + item(u"DP"))));
    EXPECT_EQ(list164(u"*TVRA010", 15), reply(0, list(item(u"Isochronous") + item(u"DP"))));
    EXPECT_EQ(list164(u"*TVRA010", 14), reply(234));
    EXPECT_EQ(list164(u"none", 2048), reply(8012));
    catalogue.boards[L"*TVRA010"].notSupported.clear();
    EXPECT_EQ(list164(u"*TVRA010", 2048), reply(0, u32(0)));
}

TEST_F(BoardsTest, EnumConfiguration_walksTheUsesOfABoard)
{
    const auto at = [&](std::uint32_t index, const Bytes& protocol, const Bytes& l4, const Bytes& unit) {
        return ask(u16(196) + u32(index) + str(u"NX 200") + protocol + l4 + unit + u32(260) + u32(260) + u32(260) +
                   u32(260));
    };
    const Bytes mpi = reply(0, replyStr(u"NX1611.MPI") + replyStr(u"MPI") + replyStr(u"") + replyStr(u"1"));
    const Bytes iso = reply(0, replyStr(u"NX1611.ISO") + replyStr(u"ISO") + replyStr(u"TCP") + replyStr(u"2"));
    EXPECT_EQ(at(0, null(), null(), null()), mpi);
    EXPECT_EQ(at(1, str(u""), str(u""), str(u"")), iso);
    EXPECT_EQ(at(2, null(), null(), null()), reply(259));
    EXPECT_EQ(at(0, str(u"iso"), null(), null()), iso);
    EXPECT_EQ(at(0, null(), str(u"tcp"), null()), iso);
    EXPECT_EQ(at(0, null(), null(), str(u"1")), mpi);
    EXPECT_EQ(at(0, str(u"MPI"), str(u"TCP"), null()), reply(259));
    EXPECT_EQ(
        ask(u16(196) + u32(0) + str(u"none") + null() + null() + null() + u32(260) + u32(260) + u32(260) + u32(260)),
        reply(8012));
    EXPECT_EQ(
        ask(u16(196) + u32(0) + str(u"NX 200") + null() + null() + null() + u32(260) + u32(260) + u32(260) + u32(1)),
        reply(234));
}

}  // namespace
