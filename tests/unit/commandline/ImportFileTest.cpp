#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "configuration/File.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

// Plain literals are in the ANSI code page.
std::string utf8(const char8_t* text)
{
    return reinterpret_cast<const char*>(text);
}

std::vector<std::string> problemsOf(const std::string& text)
{
    try {
        readFileText(text, "f.json");
    } catch (const BadFile& bad) {
        return bad.problems();
    }
    return {};
}

const Configuration everything = {
    {Family::Device,
     "Line 1",
     {{"busparam", "3"}, {"DescText", utf8(u8"Prüfstand \"1\", Größe\tL")}, {"sub\\value", ""}},
     {{"hidden", "false"}}},
    {Family::Device, "Line 2", {}, {}},
    {Family::Name, "NXONLINE", {{"LogDevice", "Line 1"}}, {}},
};

TEST(ImportFile, readsWhatTheExportWrites)
{
    const Configuration read = readFileText(fileText(everything), "f.json");
    ASSERT_EQ(read.size(), everything.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
        EXPECT_EQ(read[i].family, everything[i].family);
        EXPECT_EQ(read[i].name, everything[i].name);
        EXPECT_EQ(read[i].values, everything[i].values);
        EXPECT_EQ(read[i].ndi, everything[i].ndi);
    }
}

TEST(ImportFile, putsDevicesBeforeTheNamesThatStandForThem)
{
    const Configuration read =
        readFileText(R"({"format": 1, "names": [{"name": "N"}], "devices": [{"name": "D"}]})", "f.json");
    ASSERT_THAT(read, SizeIs(2));
    EXPECT_EQ(read[0].family, Family::Device);
}

struct Mistake
{
    const char* name;
    std::string text;
    std::string problem;
};

class ImportFileMistake : public testing::TestWithParam<Mistake>
{
};

TEST_P(ImportFileMistake, isNamedWithItsLine)
{
    EXPECT_THAT(problemsOf(GetParam().text), ElementsAre(GetParam().problem));
}

std::string device(const std::string& members)
{
    return "{\"format\": 1, \"devices\": [\n{" + members + "}]}";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ImportFileMistake,
    testing::Values(
        Mistake{"syntax", "{\n\"format\": 1,,\n}",
                "f.json:2:13: syntax error while parsing object key - unexpected ','; expected string literal"},
        Mistake{"noObject", "[]", "f.json:1: a configuration is an object in curly brackets"},
        Mistake{"noFormat", "{}", "f.json:1: \"format\" is missing; this program writes and reads \"format\": 1"},
        Mistake{"otherFormat", "{\"format\": 2}",
                "f.json:1: format: must be 1; another format is not known to this program"},
        Mistake{"formatAsText", "{\"format\": \"1\"}",
                "f.json:1: format: must be 1; another format is not known to this program"},
        Mistake{"unknownMember", "{\"format\": 1,\n\"boards\": []}",
                "f.json:2: boards: there is no such member; there are \"format\", \"devices\" and \"names\""},
        Mistake{"memberTwice", "{\"format\": 1, \"names\": [],\n\"names\": []}", "f.json:2: names: is given twice"},
        Mistake{"noList", "{\"format\": 1, \"devices\": {}}", "f.json:1: devices: must be a list in square brackets"},
        Mistake{"noEntry", "{\"format\": 1, \"names\": [\n7]}",
                "f.json:2: names[0]: must be an object with \"name\" and \"values\""},
        Mistake{"noName", device(""), "f.json:2: devices[0]: \"name\" is missing"},
        Mistake{"nameNoText", device("\"name\": 1"), "f.json:2: devices[0].name: a name is a text in double quotes"},
        Mistake{"emptyName", device("\"name\": \"\""), "f.json:2: devices[0].name: a name cannot be empty"},
        Mistake{"nameWithBackslash", device("\"name\": \"a\\\\b\""),
                "f.json:2: devices[0].name: a name cannot have a \"\\\""},
        Mistake{"nameWithLineEnd", device("\"name\": \"a\\nb\""),
                "f.json:2: devices[0].name: a name cannot have control characters"},
        Mistake{"longName", device("\"name\": \"" + std::string(256, 'x') + "\""),
                "f.json:2: devices[0].name: a name has at most 255 characters"},
        Mistake{"foreignName", device(utf8(u8"\"name\": \"Ω\"")),
                "f.json:2: devices[0].name: the name has characters that the system's ANSI code page lacks"},
        Mistake{"unknownMemberOfDevice", device("\"name\": \"a\",\n\"value\": {}"),
                "f.json:3: devices[0].value: there is no such member; there are \"name\", \"values\" and \"ndi\""},
        Mistake{"ndiOfName", "{\"format\": 1, \"names\": [{\"name\": \"a\",\n\"ndi\": {}}]}",
                "f.json:2: names[0].ndi: there is no such member; there are \"name\" and \"values\""},
        Mistake{"valuesNoObject", device("\"name\": \"a\",\n\"values\": []"),
                "f.json:3: devices[0].values: must be an object of values"},
        Mistake{"valueNoText", device("\"name\": \"a\", \"values\": {\n\"tslot\": 415}"),
                "f.json:3: devices[0].values.tslot: a value is a text in double quotes"},
        Mistake{"valueTwice", device("\"name\": \"a\", \"ndi\": {\"x\": \"1\",\n\"X\": \"2\"}"),
                "f.json:3: devices[0].ndi.X: this value is given twice; upper and lower case are the same"},
        Mistake{"longValue", device("\"name\": \"a\", \"values\": {\"x\": \"" + std::string(260, 'x') + "\"}"),
                "f.json:2: devices[0].values.x: a value has at most 259 characters"},
        Mistake{"foreignValue", device(utf8(u8"\"name\": \"a\", \"values\": {\"x\": \"Ω\"}")),
                "f.json:2: devices[0].values.x: the value has characters that the system's ANSI code page lacks"},
        Mistake{"zeroInValue", device("\"name\": \"a\", \"values\": {\"x\": \"1\\u00002\"}"),
                "f.json:2: devices[0].values.x: a value cannot have a zero character"},
        Mistake{"emptyValueName", device("\"name\": \"a\", \"values\": {\"\": \"1\"}"),
                "f.json:2: devices[0].values.: a name cannot be empty"},
        Mistake{"deviceTwice", device(utf8(u8"\"name\": \"Größe\"},\n{\"name\": \"GRÖSSE\"},\n{\"name\": \"GRÖßE\"")),
                utf8(u8"f.json:4: devices[2]: logical device \"GRÖßE\" is given twice; upper and lower case are the "
                     u8"same")}),
    [](const auto& row) { return row.param.name; });

TEST(ImportFile, allowsANameForADeviceAndALogicalName)
{
    EXPECT_THAT(problemsOf(R"({"format": 1, "devices": [{"name": "a"}], "names": [{"name": "A"}]})"), SizeIs(0));
}

TEST(ImportFile, acceptsTheLongestTexts)
{
    EXPECT_THAT(problemsOf(device("\"name\": \"" + std::string(255, 'x') + "\", \"values\": {\"" +
                                  std::string(255, 'y') + "\": \"" + std::string(259, 'z') + "\"}")),
                SizeIs(0));
}

TEST(ImportFile, namesAllMistakesUpToTwenty)
{
    std::string values;
    for (int i = 0; i < 30; ++i)
        values += (i == 0 ? "\n\"v" : ",\n\"v") + std::to_string(i) + "\": 1";
    const std::vector<std::string> problems = problemsOf(device("\"name\": \"a\", \"values\": {" + values + "}"));
    ASSERT_THAT(problems, SizeIs(21));
    EXPECT_THAT(problems[19], HasSubstr("f.json:22: "));
    EXPECT_EQ(problems[20], "there are more mistakes");
}

}  // namespace
