#include "configuration/LocatedJson.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

using Kind = LocatedJson::Kind;

TEST(LocatedJson, knowsTheLineOfEachValue)
{
    const LocatedJson json = parseLocatedJson("{\n  \"a\": [\n    \"x\",\n    true\n  ],\n  \"b\": {}\n}\n");
    ASSERT_EQ(json.members.size(), 2u);
    const LocatedJson& a = json.members[0].second;
    EXPECT_EQ(std::tuple(json.kind, json.line), std::tuple(Kind::Object, 1));
    EXPECT_EQ(std::tuple(a.kind, a.line), std::tuple(Kind::Array, 2));
    EXPECT_EQ(std::tuple(a.items[0].kind, a.items[0].line, a.items[0].text), std::tuple(Kind::Text, 3, "x"));
    EXPECT_EQ(std::tuple(a.items[1].kind, a.items[1].line), std::tuple(Kind::Bool, 4));
    EXPECT_EQ(json.members[1].second.line, 6);
}

TEST(LocatedJson, keepsRepeatedMembers)
{
    const LocatedJson json = parseLocatedJson(R"({"a": "1", "a": "2"})");
    ASSERT_EQ(json.members.size(), 2u);
    EXPECT_EQ(json.members[1].second.text, "2");
}

struct SyntaxCase
{
    const char* name;
    std::string text;
    int line;
    int column;
};

class LocatedJsonSyntax : public testing::TestWithParam<SyntaxCase>
{
};

TEST_P(LocatedJsonSyntax, showsWhereItEnds)
{
    try {
        parseLocatedJson(GetParam().text);
        FAIL() << "was accepted";
    } catch (const JsonSyntaxError& error) {
        EXPECT_EQ(error.line, GetParam().line) << error.what();
        EXPECT_EQ(error.column, GetParam().column) << error.what();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LocatedJsonSyntax,
    testing::Values(SyntaxCase{"nothing", "", 1, 1}, SyntaxCase{"missingComma", "{\n  \"a\": 1\n  \"b\": 2\n}", 3, 5},
                    SyntaxCase{"trailingComma", "[1,]", 1, 4}, SyntaxCase{"notClosed", "{\n\"a\": 1\n", 3, 1},
                    SyntaxCase{"wordWithoutQuotes", "{\"a\": yes}", 1, 7},
                    SyntaxCase{"somethingBehind", "{}\n{}", 2, 1}, SyntaxCase{"notUtf8", "{\"a\": \"\xE4\"}", 1, 9}),
    [](const auto& row) { return row.param.name; });

TEST(LocatedJson, refusesWhatIsNestedTooDeeply)
{
    EXPECT_THROW(parseLocatedJson(std::string(100000, '[')), JsonSyntaxError);
}

}  // namespace
