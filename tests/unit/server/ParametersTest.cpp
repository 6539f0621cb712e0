// What the catalogue knows of parameters, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct Parameters : TestServer
{
    using Description = catalogue::ParameterDescription;

    Parameters()
    {
        using catalogue::Language;
        Description address;
        address.type = Description::Type::Word;
        address.attributes = {{L"type", L"word"}, {L"min", L"1"}, {L"max", L"126"}};
        catalogue.parameters[L"highest_adr"] = address;

        Description rate;
        rate.type = Description::Type::Enum;
        rate.attributes = {{L"type", L"enum"}};
        rate.items = {{L"187500", {{Language::En, L"187.5 kbps"}, {Language::De, L"187,5 kBit/s"}}},
                      {L"1500000", {}}};
        catalogue.parameters[L"baudrate"] = rate;
        Description narrow = rate;
        narrow.items.pop_back();
        catalogue.boards[L"*TVRA010"].parameters[L"baudrate"] = narrow;
    }
    Bytes attribute(std::u16string_view parameter, std::u16string_view name, std::uint32_t capacity = 260)
    {
        return ask(u16(44) + str(u"Dev") + str(parameter) + str(name) + u32(capacity));
    }
    Bytes enumList(std::uint16_t code, std::u16string_view parameter, std::uint32_t capacity = 2048)
    {
        return ask(u16(code) + str(u"Dev") + str(parameter) + u32(capacity));
    }
    Bytes plausibility() { return ask(u16(292)); }

    // Without values that the small catalogue's own definition has and this one does not allow.
    void createPlausibleDevice()
    {
        createDevice(u"Dev");
        set(u"Dev", u"baudrate", u"187500");
    }
};

TEST_F(Parameters, Attribute_isItsTextInAnyCase)
{
    createDevice(u"Dev");
    EXPECT_EQ(attribute(u"highest_adr", u"max"), reply(0, replyStr(u"126")));
    EXPECT_EQ(attribute(u"HIGHEST_ADR", u"Type"), reply(0, replyStr(u"word")));
}

TEST_F(Parameters, AttributeThatIsNotThere_is8012)
{
    createDevice(u"Dev");
    EXPECT_EQ(attribute(u"highest_adr", u"step"), reply(8012));
    EXPECT_EQ(attribute(u"Unit", u"type"), reply(8012));
}

TEST_F(Parameters, AttributeOfAMissingDevice_is8012)
{
    EXPECT_EQ(attribute(u"highest_adr", u"type"), reply(8012));
}

TEST_F(Parameters, AttributeLongerThanTheCapacity_is234)
{
    createDevice(u"Dev");
    EXPECT_EQ(attribute(u"highest_adr", u"max", 4), reply(0, replyStr(u"126")));
    EXPECT_EQ(attribute(u"highest_adr", u"max", 3), reply(234));
}

TEST_F(Parameters, SpecialList_isThatOfTheBoard)
{
    createDevice(u"Dev");
    EXPECT_EQ(enumList(119, u"baudrate"), reply(0, list(item(u"187500/187.5 kbps"))));
}

TEST_F(Parameters, AverageList_leavesTheBoardOut)
{
    createDevice(u"Dev");
    EXPECT_EQ(enumList(120, u"baudrate"), reply(0, list(item(u"187500/187.5 kbps") + item(u"1500000"))));
}

TEST_F(Parameters, ListOfNoEnumeration_is8012)
{
    createDevice(u"Dev");
    for (const std::uint16_t code : {119, 120}) {
        EXPECT_EQ(enumList(code, u"highest_adr"), reply(8012));
        EXPECT_EQ(enumList(code, u"Unit"), reply(8012));
    }
}

TEST_F(Parameters, ListThatDoesNotFit_is234)
{
    createDevice(u"Dev");
    EXPECT_EQ(enumList(119, u"baudrate", 17), reply(234));
}

TEST_F(Parameters, RuntimeVersions_areFiveTexts)
{
    catalogue.runtimeVersions = {L"a", L"b", L"", L"d", L"e"};
    EXPECT_EQ(ask(u16(214)),
              reply(0, replyStr(u"a") + replyStr(u"b") + replyStr(u"") + replyStr(u"d") + replyStr(u"e")));
}

TEST_F(Parameters, Plausibility_ofAnEmptyStoreIs0)
{
    EXPECT_EQ(plausibility(), reply(0));
}

TEST_F(Parameters, Plausibility_ofDevicesAsTheyShouldBeIs0)
{
    createPlausibleDevice();
    ask(u16(68) + str(u"PLC"));
    ask(u16(65) + str(u"PLC") + str(u"LogDevice") + str(u"Dev"));
    EXPECT_EQ(plausibility(), reply(0));
}

TEST_F(Parameters, Plausibility_ofAValueThatIsNotAllowedIs87)
{
    createPlausibleDevice();
    set(u"Dev", u"highest_adr", u"127");
    EXPECT_EQ(plausibility(), reply(87));
}

TEST_F(Parameters, Plausibility_ofAnUnknownBoardIs8012)
{
    createPlausibleDevice();
    set(u"Dev", u"DeviceID", u"*TVRA999");
    EXPECT_EQ(plausibility(), reply(8012));
}

TEST_F(Parameters, Plausibility_ofAnUnknownProtocolIs8012)
{
    createPlausibleDevice();
    set(u"Dev", u"CP_TYPE", u"PPP");
    EXPECT_EQ(plausibility(), reply(8012));
}

TEST_F(Parameters, Plausibility_ofANameWithoutItsDeviceIs8012)
{
    ask(u16(68) + str(u"PLC"));
    ask(u16(65) + str(u"PLC") + str(u"LogDevice") + str(u"gone"));
    EXPECT_EQ(plausibility(), reply(8012));
}

}  // namespace
