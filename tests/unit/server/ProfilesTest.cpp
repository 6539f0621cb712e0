// Bus profiles, in bytes. What LogDeviceSetBusparams does is among the devices' tests.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct ProfilesTest : TestServer
{
    static constexpr std::u16string_view definition = u"SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE\\MPI\\Params";

    ProfilesTest() { catalogue.protocols[L"ISO"].baudRates = {{L"9600", {}}, {L"19200", {}}}; }

    Bytes profileAt(std::u16string_view protocol, std::uint32_t index, std::uint32_t capacity = 260)
    {
        return ask(u16(178) + str(protocol) + u32(index) + u32(capacity));
    }
    Bytes rateAt(std::u16string_view protocol, std::u16string_view profile, std::uint32_t index)
    {
        return ask(u16(179) + str(protocol) + str(profile) + u32(index) + u32(260));
    }
    Bytes exists(std::u16string_view profile, std::u16string_view path, const Bytes& value)
    {
        return ask(u16(87) + str(profile) + str(path) + value);
    }
    Bytes apply(std::u16string_view device, std::u16string_view parameter, std::u16string_view path = definition)
    {
        return ask(u16(121) + str(device) + str(path) + str(parameter));
    }
};

TEST_F(ProfilesTest, Busprofiles_areToldByTheirKeys)
{
    EXPECT_EQ(profileAt(u"mpi", 0), reply(0, replyStr(u"0")));
    EXPECT_EQ(profileAt(u"MPI", 1), reply(0, replyStr(u"1")));
    EXPECT_EQ(profileAt(u"MPI", 2), reply(259));
    EXPECT_EQ(profileAt(u"ISO", 0), reply(259));
    EXPECT_EQ(profileAt(u"none", 0), reply(8012));
    EXPECT_EQ(profileAt(u"", 0), reply(87));
    EXPECT_EQ(profileAt(u"MPI", 0, 1), reply(234));
}

TEST_F(ProfilesTest, Baudrates_areThoseOfTheProfileByKeyOrName)
{
    EXPECT_EQ(rateAt(u"MPI", u"0", 0), reply(0, replyStr(u"1500000")));
    EXPECT_EQ(rateAt(u"MPI", u"DP", 0), reply(0, replyStr(u"1500000")));
    EXPECT_EQ(rateAt(u"MPI", u"0", 1), reply(259));
    EXPECT_EQ(rateAt(u"MPI", u"std", 0), reply(259));
    EXPECT_EQ(rateAt(u"MPI", u"user", 0), reply(8012));
    EXPECT_EQ(rateAt(u"none", u"0", 0), reply(8012));
}

TEST_F(ProfilesTest, BaudratesOfAProtocolWithoutProfiles_areItsOwn)
{
    EXPECT_EQ(rateAt(u"ISO", u"", 0), reply(0, replyStr(u"9600")));
    EXPECT_EQ(rateAt(u"ISO", u"0", 1), reply(0, replyStr(u"19200")));
    EXPECT_EQ(rateAt(u"ISO", u"", 2), reply(259));
}

TEST_F(ProfilesTest, CollectionExists_asksForKeysValuesAndTexts)
{
    for (const std::u16string_view named : {definition, std::u16string_view(u"mpi\\params")}) {
        EXPECT_EQ(exists(named, u"busparam\\0", null()), reply(0));
        EXPECT_EQ(exists(named, u"busparam\\0", str(u"tslot")), reply(0));
        EXPECT_EQ(exists(named, u"busparam\\0", str(u"1500000")), reply(0));
        EXPECT_EQ(exists(named, u"busparam\\0\\1500000", str(u"tqui")), reply(0));
        EXPECT_EQ(exists(named, u"busparam\\0\\tslot", str(u"300")), reply(0));
        EXPECT_EQ(exists(named, u"busparam\\0\\tslot", str(u"301")), reply(8062));
        EXPECT_EQ(exists(named, u"busparam\\0", str(u"none")), reply(8062));
        EXPECT_EQ(exists(named, u"busparam\\2", null()), reply(8062));
    }
    EXPECT_EQ(exists(u"none\\Params", u"busparam\\0", null()), reply(8012));
    EXPECT_EQ(exists(definition, u"", null()), reply(87));
}

TEST_F(ProfilesTest, SetProfile_setsWhatTheProfilePrescribesAtTheDevicesRate)
{
    createDevice(u"Dev");
    set(u"Dev", u"busparam", u"0");
    EXPECT_EQ(apply(u"Dev", u"busparam"), reply(0));
    EXPECT_EQ(value(u"Dev", u"tslot"), reply(0, replyStr(u"300")));
    EXPECT_EQ(value(u"Dev", u"tqui"), reply(0, replyStr(u"0")));
    set(u"Dev", u"tqui", u"7");
    EXPECT_EQ(apply(u"Dev", u"baudrate"), reply(0));
    EXPECT_EQ(value(u"Dev", u"tqui"), reply(0, replyStr(u"0")));
}

TEST_F(ProfilesTest, SetProfile_valueThatTheDefinitionLacks_is8062AndSetsNothing)
{
    createDevice(u"Dev");
    set(u"Dev", u"busparam", u"3");
    EXPECT_EQ(apply(u"Dev", u"busparam"), reply(8062));
    set(u"Dev", u"busparam", u"0");
    set(u"Dev", u"baudrate", u"9600");
    EXPECT_EQ(apply(u"Dev", u"baudrate"), reply(8062));
    EXPECT_EQ(value(u"Dev", u"tslot"), reply(8012));
}

TEST_F(ProfilesTest, SetProfile_parameterThatNothingIsTiedTo_is0)
{
    createDevice(u"Dev");
    EXPECT_EQ(apply(u"Dev", u"highest_adr"), reply(0));
    EXPECT_EQ(value(u"Dev", u"tslot"), reply(8012));
}

TEST_F(ProfilesTest, SetProfile_otherCollectionsOfTheDefinition_areSetByTheValue)
{
    catalogue.protocols[L"MPI"].tree.keys[L"Params"].keys[L"DP_MODE"].keys[L"true"].values = {{L"retry", L"4"}};
    createDevice(u"Dev");
    EXPECT_EQ(apply(u"Dev", u"DP_MODE"), reply(8062));
    set(u"Dev", u"DP_MODE", u"true");
    EXPECT_EQ(apply(u"Dev", u"DP_MODE"), reply(0));
    EXPECT_EQ(value(u"Dev", u"retry"), reply(0, replyStr(u"4")));
}

TEST_F(ProfilesTest, SetProfile_failuresAreTold)
{
    createDevice(u"Dev");
    EXPECT_EQ(apply(u"none", u"busparam"), reply(8012));
    EXPECT_EQ(apply(u"Dev", u"busparam", u"SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE\\none\\Params"),
              reply(8012));
    EXPECT_EQ(apply(u"Dev", u""), reply(87));
}

}  // namespace
