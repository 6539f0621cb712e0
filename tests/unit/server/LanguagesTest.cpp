// Values as a person reads them, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct Languages : TestServer
{
    Languages()
    {
        using catalogue::Language;
        auto& device = catalogue.defaultLogicalDevices[L"NX1611.MPI"];
        device.values[L"DescText"] = L"Multipoint";
        device.texts.byId[L"DescText"] = {{Language::En, L"Multipoint"}, {Language::De, L"Mehrpunkt"}};
        catalogue.parameters[L"busparam"].items = {{L"0", {}},
                                                   {L"1", {{Language::En, L"Standard"}, {Language::De, L"Normal"}}}};
        catalogue.logicalNames[L"NXVISU"] = {
            {{L"DescText", L"Operator"}},
            {{{L"DescText", {{Language::En, L"Operator"}, {Language::De, L"Bediener"}}}}}};
    }
    Bytes deviceText(std::u16string_view parameter, const Bytes& language)
    {
        return ask(u16(122) + str(u"Dev") + str(parameter) + language + u32(1));
    }
    Bytes nameText(std::u16string_view parameter, const Bytes& language, std::uint32_t capacity = 260)
    {
        return ask(u16(90) + str(u"NXVISU") + str(parameter) + language + u32(capacity) + u32(1));
    }
};

TEST_F(Languages, CataloguesValue_isToldInTheLanguage)
{
    createDevice(u"Dev");
    EXPECT_EQ(deviceText(u"desctext", str(u"DE")), reply(0, replyStr(u"Mehrpunkt")));
    EXPECT_EQ(deviceText(u"DescText", str(u"A")), reply(0, replyStr(u"Mehrpunkt")));
    EXPECT_EQ(deviceText(u"DescText", str(u"EN")), reply(0, replyStr(u"Multipoint")));
}

TEST_F(Languages, UnknownLanguage_isEnglish)
{
    createDevice(u"Dev");
    for (const Bytes& language : {null(), str(u""), str(u"XX"), str(u"FR")})
        EXPECT_EQ(deviceText(u"DescText", language), reply(0, replyStr(u"Multipoint")));
}

TEST_F(Languages, ValueThatAUserWrote_isToldAsItIs)
{
    createDevice(u"Dev");
    set(u"Dev", u"DescText", u"mine");
    EXPECT_EQ(deviceText(u"DescText", str(u"DE")), reply(0, replyStr(u"mine")));
}

TEST_F(Languages, PossibleValue_isToldByItsText)
{
    createDevice(u"Dev");
    EXPECT_EQ(deviceText(u"busparam", str(u"DE")), reply(0, replyStr(u"Normal")));
    set(u"Dev", u"busparam", u"0");
    EXPECT_EQ(deviceText(u"busparam", str(u"DE")), reply(0, replyStr(u"0")));
}

TEST_F(Languages, UnknownDeviceNameOrValue_is8012)
{
    EXPECT_EQ(deviceText(u"busparam", str(u"DE")), reply(8012));
    createDevice(u"Dev");
    EXPECT_EQ(deviceText(u"none", str(u"DE")), reply(8012));
    EXPECT_EQ(nameText(u"DescText", str(u"DE")), reply(8012));
}

TEST_F(Languages, NamesValue_isToldInTheLanguageWithinTheCapacity)
{
    ask(u16(68) + str(u"NXVISU"));
    ask(u16(65) + str(u"NXVISU") + str(u"DescText") + str(u"Operator"));
    EXPECT_EQ(nameText(u"DescText", str(u"DE")), reply(0, replyStr(u"Bediener")));
    EXPECT_EQ(nameText(u"DescText", str(u"DE"), 8), reply(234));
    EXPECT_EQ(nameText(u"none", str(u"DE")), reply(8012));
}

}  // namespace
