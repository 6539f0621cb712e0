// Entries that are like others.
#include "catalogueText.h"

using testing::ElementsAre;

namespace {

const std::string base = R"("A": {"board": "*TVRA001", "protocol": "MPI",
    "values": {"x": 1, "y": {"DE": "d", "EN": "e"}, "list": 1}, "ndi": {"hidden": false}})";

CatalogueText withDevices(const std::string& devices)
{
    CatalogueText text;
    text.devices = "{" + devices + "}";
    return text;
}

}  // namespace

TEST(CatalogueLike, TakesOverWhatIsNotWritten)
{
    const auto catalogue = parseGood(withDevices(base + R"(, "B": {"like": "a"})"));
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"B")->values, catalogue->defaultLogicalDevice(L"A")->values);
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"B")->ndiValues, catalogue->defaultLogicalDevice(L"A")->ndiValues);
}

TEST(CatalogueLike, OwnValuesReplaceByNameWhateverTheCase)
{
    const auto catalogue = parseGood(withDevices(base + R"(, "B": {"like": "A", "values": {"X": 2, "z": 3}})"));
    ASSERT_NE(catalogue, nullptr);
    const catalogue::Values expected{
        {L"CP_TYPE", L"MPI"}, {L"DeviceID", L"*TVRA001"}, {L"list", L"1"}, {L"X", L"2"}, {L"y", L"e"}, {L"z", L"3"}};
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"B")->values, expected);
}

TEST(CatalogueLike, OneLanguageCanBeReplaced)
{
    const auto catalogue = parseGood(withDevices(base + R"(, "B": {"like": "A", "values": {"y": {"DE": "neu"}}})"));
    ASSERT_NE(catalogue, nullptr);
    const catalogue::Texts& texts = catalogue->defaultLogicalDevice(L"B")->texts;
    EXPECT_EQ(*texts.find(L"y", catalogue::Language::De), L"neu");
    EXPECT_EQ(*texts.find(L"y", catalogue::Language::En), L"e");
}

TEST(CatalogueLike, NullTakesAway)
{
    const auto catalogue =
        parseGood(withDevices(base + R"(, "B": {"like": "A", "values": {"x": null}, "ndi": null})"));
    ASSERT_NE(catalogue, nullptr);
    EXPECT_FALSE(catalogue->defaultLogicalDevice(L"B")->values.contains(L"x"));
    EXPECT_THAT(catalogue->defaultLogicalDevice(L"B")->ndiValues, ElementsAre());
    EXPECT_TRUE(catalogue->defaultLogicalDevice(L"A")->values.contains(L"x"));
}

TEST(CatalogueLike, ReachesOverSeveralStepsAndForward)
{
    const auto catalogue =
        parseGood(withDevices(R"("C": {"like": "B"}, "B": {"like": "A", "values": {"x": 5}}, )" + base));
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->defaultLogicalDevice(L"C")->values.at(L"x"), L"5");
}

TEST(CatalogueLike, UnknownEntry_isSuggested)
{
    expectError(withDevices(R"("NX1.MPI": {"board": "*TVRA001", "protocol": "MPI"},
        "NX2.MPI": {"board": "*TVRA001", "protocol": "MPI", "like": @@"NX3.MPI"})"),
                L"There is no entry \"NX3.MPI\" that this one could be like; did you mean \"NX1.MPI\"?");
}

TEST(CatalogueLike, NoName_isRefused)
{
    expectError(withDevices(base + R"(, "B": {"board": "*TVRA001", "protocol": "MPI", "like": @@5})"),
                L"\"like\" must be the name of another entry.");
}

TEST(CatalogueLike, Itself_isRefused)
{
    expectError(withDevices(R"("A": {"board": "*TVRA001", "protocol": "MPI", "like": @@"A"})"),
                L"\"like\" leads back to the entry itself, or over more than 8 steps.");
}

TEST(CatalogueLike, Circle_isRefused)
{
    const catalogue::LoadResult result =
        parseText(withDevices(R"("A": {"board": "*TVRA001", "protocol": "MPI", "like": "B"},
        "B": {"board": "*TVRA001", "protocol": "MPI", "like": "A"})")
                      .text());
    ASSERT_FALSE(result.errors.empty());
    EXPECT_EQ(result.errors[0].message, L"\"like\" leads back to the entry itself, or over more than 8 steps.");
}

TEST(CatalogueLike, NullWithNothingToTakeAway_isRefused)
{
    expectError(withDevices(base + R"(, "B": {"like": "A", "values": {@@"X2": null}})"),
                L"There is no \"X2\" that null could take away.");
}

TEST(CatalogueLike, NullWithoutLike_isNoValue)
{
    expectError(withDevices(R"("A": {"board": "*TVRA001", "protocol": "MPI", "values": {"x": @@null}})"),
                L"The value \"x\" must be a text, a whole number, true or false, not null.");
}

TEST(CatalogueLike, ErrorTakenOver_isReportedOnceWhereItStands)
{
    expectError(withDevices(R"("B": {"like": "A"}, "C": {"like": "B"},
        "A": {"board": "*TVRA001", "protocol": "MPI", "values": {"baudrate": @@1}})"),
                L"The value \"1\" of \"baudrate\" is not allowed: it is not in the parameter's enumeration.");
}

TEST(CatalogueLike, ValueThatIsWrongOnlyHere_isReportedHere)
{
    CatalogueText text = withDevices(R"("A": {"board": "*TVRA001", "protocol": "MPI", "values": {"baudrate": 19200}},
        "B": @@{"like": "A", "parameters": {"baudrate": {"type": "enum", "items": [9600]}}})");
    expectError(text,
                L"The value \"19200\" of \"baudrate\" is not allowed: it is not in the parameter's enumeration.");
}
