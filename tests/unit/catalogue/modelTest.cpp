// What callers ask a catalogue.
#include "catalogueText.h"

using catalogue::Language;
using catalogue::Node;
using testing::ElementsAre;

namespace {

std::vector<std::wstring> namesOf(const auto& map)
{
    std::vector<std::wstring> names;
    for (const auto& entry : map)
        names.push_back(entry.first);
    return names;
}

CatalogueText withProfiles()
{
    CatalogueText text;
    text.protocols = protocol(R"(, "params": {"gap": 5},
        "busProfiles": {"user": {"values": {"retry": 1}}, "dp": {"values": {"retry": 2, "tslot": 1},
            "baudRates": {"12000000": {"tslot": 9}, "9600": {"tslot": 3}, "187500": {}}}})");
    return text;
}

}  // namespace

TEST(LessNoCase, LatinLettersDifferingInCase_areEqual)
{
    EXPECT_TRUE(catalogue::equalNoCase(L"*tvra\u00FC", L"*TVRA\u00DC"));
    EXPECT_FALSE(catalogue::LessNoCase{}(L"a", L"A"));
    EXPECT_FALSE(catalogue::LessNoCase{}(L"A", L"a"));
    EXPECT_TRUE(catalogue::LessNoCase{}(L"a", L"B"));
    EXPECT_TRUE(catalogue::LessNoCase{}(L"", L"a"));
}

TEST(Language, Codes_areTwoLettersOrTheExtension)
{
    EXPECT_EQ(catalogue::languageFromCode(L"de"), Language::De);
    EXPECT_EQ(catalogue::languageFromCode(L"B"), Language::En);
    EXPECT_EQ(catalogue::languageFromCode(L"k"), Language::Zh);
    EXPECT_EQ(catalogue::languageFromCode(L"PL"), std::nullopt);
    EXPECT_EQ(catalogue::languageFromCode(L""), std::nullopt);
    for (const Language language : catalogue::allLanguages)
        EXPECT_EQ(catalogue::languageFromCode(catalogue::languageCode(language)), language);
}

TEST(Texts, MissingLanguage_fallsBackToEnglish)
{
    CatalogueText text;
    text.boards = board(R"(, "texts": ["rates"])");
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    const catalogue::Texts& texts = catalogue->board(L"*TVRA001")->texts;
    EXPECT_EQ(*texts.find(L"baudrateresource\\9600", Language::De), L"9,6");
    EXPECT_EQ(*texts.find(L"BaudrateResource\\9600", Language::Fr), L"9.6");
    EXPECT_EQ(texts.find(L"BaudrateResource\\19200", Language::De), nullptr);
}

TEST(CatalogueModel, ValueByLanguage_isStoredInEnglishAndKnownInAll)
{
    CatalogueText text;
    text.protocols = R"({"MPI": {"values": {"Alias": "Multi", "DescText": {"DE": "deutsch", "EN": "english"}}}})";
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->protocol(L"mpi")->tree.values.at(L"DescText"), L"english");
    EXPECT_EQ(*catalogue->protocol(L"mpi")->texts.find(L"DescText", Language::De), L"deutsch");
}

TEST(CatalogueModel, Names_areFoundInAnyCase)
{
    const auto catalogue = parseGood({});
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->board(L"*tvra001")->deviceId, L"*TVRA001");
    EXPECT_EQ(catalogue->boardByName(L"nx 1")->deviceId, L"*TVRA001");
    EXPECT_EQ(catalogue->boardByName(L"nx 2"), nullptr);
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"nx1.mpi")->name, L"NX1.MPI");
    EXPECT_EQ(catalogue->protocol(L"DP"), nullptr);
}

TEST(CatalogueModel, Entries_carryTheValuesThatFollowFromThem)
{
    const auto catalogue = parseGood({});
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->board(L"*TVRA001")->tree.values.at(L"DeviceID"), L"*TVRA001");
    EXPECT_EQ(catalogue->protocol(L"MPI")->tree.values.at(L"CP_TYPE"), L"MPI");
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"NX1.MPI")->values.at(L"DeviceID"), L"*TVRA001");
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"NX1.MPI")->values.at(L"CP_TYPE"), L"MPI");
}

TEST(CatalogueModel, Configurations_followFromDefaultDevicesInTheirOrder)
{
    CatalogueText text;
    text.devices = R"({"Z": {"board": "*tvra001", "protocol": "mpi", "values": {"Unit": 2, "L4_PROTOCOL": "TCP"}},
        "A": {"board": "*TVRA001", "protocol": "MPI"}})";
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    const std::vector<catalogue::Configuration>& found = catalogue->board(L"*TVRA001")->configurations;
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].logicalDevice, L"Z");
    EXPECT_EQ(found[0].protocol, L"MPI");
    EXPECT_EQ(found[0].l4Protocol, L"TCP");
    EXPECT_EQ(found[0].unit, L"2");
    EXPECT_EQ(found[1].logicalDevice, L"A");
    EXPECT_EQ(found[1].unit, L"");
}

TEST(CatalogueModel, InstalledBoard_takesNamesFromItsBoard)
{
    CatalogueText text;
    text.boards.replace(text.boards.find("\"BusType\""), 0, "\"HardwareId\": \"PCI\\\\X\", ");
    text.more =
        R"(, "installedBoards": [{"board": "*tvra001", "map": "one", "netType": "mpi", "hardwareInstanceId": "1"}])";
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    const catalogue::InstalledBoard& installed = catalogue->installedBoards.at(0);
    EXPECT_EQ(installed.deviceId, L"*TVRA001");
    EXPECT_EQ(installed.boardName, L"NX 1");
    EXPECT_EQ(installed.netType, L"MPI");
    EXPECT_EQ(installed.hardwareId, L"PCI\\X");
    EXPECT_EQ(installed.state, 0u);
}

TEST(Node, Path_leadsToSubkeysInAnyCase)
{
    Node root;
    root.keys[L"Params"].keys[L"busparam"].values[L"a"] = L"1";
    EXPECT_EQ(root.at(L"params\\BUSPARAM")->values.at(L"A"), L"1");
    EXPECT_EQ(root.at(L"\\Params\\\\busparam\\")->values.at(L"a"), L"1");
    EXPECT_EQ(root.at(L""), &root);
    EXPECT_EQ(root.at(L"Params\\none\\deeper"), nullptr);
}

TEST(ProtocolTree, Params_holdProfilesAndRates)
{
    const auto catalogue = parseGood(withProfiles());
    ASSERT_NE(catalogue, nullptr);
    const Node& tree = catalogue->protocol(L"MPI")->tree;
    EXPECT_EQ(tree.at(L"Params")->values, (catalogue::Values{{L"gap", L"5"}}));
    EXPECT_THAT(namesOf(tree.at(L"Params\\busparam")->keys), ElementsAre(L"0", L"3"));
    EXPECT_EQ(tree.at(L"Params\\busparam\\0\\12000000")->values.at(L"tslot"), L"9");
    EXPECT_EQ(tree.at(L"Params\\busparam\\3")->values.at(L"retry"), L"1");
}

TEST(ProtocolTree, RatesWithoutProfiles_areBelowBaudrate)
{
    CatalogueText text;
    text.protocols = protocol(R"(, "baudRates": {"9600": {"tslot": 3}})");
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->protocol(L"MPI")->tree.at(L"Params\\baudrate\\9600")->values.at(L"tslot"), L"3");
    EXPECT_EQ(catalogue->protocol(L"MPI")->profileValues(L"0", L"9600").at(L"tslot"), L"3");
}

TEST(BusProfiles, AreInTheOrderOfTheirKeysAndRates)
{
    const auto catalogue = parseGood(withProfiles());
    ASSERT_NE(catalogue, nullptr);
    const std::vector<catalogue::BusProfile>& profiles = catalogue->protocol(L"MPI")->busProfiles;
    ASSERT_EQ(profiles.size(), 2u);
    EXPECT_EQ(profiles[0].name, L"dp");
    EXPECT_EQ(profiles[1].key, L"3");
    std::vector<std::wstring> rates;
    for (const catalogue::BaudRate& rate : profiles[0].baudRates)
        rates.push_back(rate.rate);
    EXPECT_THAT(rates, ElementsAre(L"9600", L"187500", L"12000000"));
}

TEST(BusProfiles, ProfileValues_areThoseOfTheProfileThenOfTheRate)
{
    const auto catalogue = parseGood(withProfiles());
    ASSERT_NE(catalogue, nullptr);
    const catalogue::Protocol& mpi = *catalogue->protocol(L"MPI");
    EXPECT_EQ(mpi.profileValues(L"0", L"9600"), (catalogue::Values{{L"retry", L"2"}, {L"tslot", L"3"}}));
    EXPECT_EQ(mpi.profileValues(L"DP", L"187500"), (catalogue::Values{{L"retry", L"2"}, {L"tslot", L"1"}}));
    EXPECT_EQ(mpi.profileValues(L"0", L"1"), (catalogue::Values{{L"retry", L"2"}, {L"tslot", L"1"}}));
    EXPECT_EQ(mpi.profileValues(L"2", L"9600"), catalogue::Values{});
}

TEST(CatalogueDescribe, MostSpecialDescription_wins)
{
    CatalogueText text;
    text.parameters = R"({"a": {"type": "int"}, "b": {"type": "int"}, "c": {"type": "int"}, "d": {"type": "int"}})";
    text.protocols =
        protocol(R"(, "parameters": {"b": {"type": "word"}, "c": {"type": "word"}, "d": {"type": "word"}})");
    text.boards = board(R"(, "parameters": {"c": {"type": "long"}, "d": {"type": "long"}})");
    text.devices = R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI", "parameters": {"d": {"type": "bool"}}}})";
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    const auto type = [&](std::wstring_view parameter) {
        return catalogue->describe(L"*tvra001", L"mpi", parameter)->type;
    };
    using Type = catalogue::ParameterDescription::Type;
    EXPECT_EQ(type(L"a"), Type::Int);
    EXPECT_EQ(type(L"b"), Type::Word);
    EXPECT_EQ(type(L"c"), Type::Long);
    EXPECT_EQ(type(L"D"), Type::Bool);
    EXPECT_EQ(catalogue->describeForProtocol(L"MPI", L"d")->type, Type::Word);
    EXPECT_EQ(catalogue->describe(L"*TVRA001", L"MPI", L"e"), nullptr);
    EXPECT_EQ(catalogue->describe(L"*TVRA999", L"none", L"a")->type, Type::Int);
}

TEST(ParameterAttributes, AreKeptAsTheyAreWritten)
{
    CatalogueText text;
    text.parameters =
        R"({"io": {"type": "word", "base": 16, "min": "200", "max": "3F8", "step": "8", "default": "240",
        "unit": "byte"}})";
    const auto catalogue = parseGood(text);
    ASSERT_NE(catalogue, nullptr);
    const catalogue::Values expected{{L"type", L"word"}, {L"base", L"16"},     {L"min", L"200"},  {L"max", L"3F8"},
                                     {L"step", L"8"},    {L"default", L"240"}, {L"unit", L"byte"}};
    EXPECT_EQ(catalogue->parameters.at(L"IO").attributes, expected);
}
