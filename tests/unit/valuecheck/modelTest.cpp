// The checker against its model, over generated descriptions and values.

#include <gmock/gmock.h>

#include <iostream>
#include <map>
#include <random>

#include "model.h"

namespace {

constexpr int cases = 120000;

class Generator
{
 public:
    Description description()
    {
        Description made;
        if (chance(2)) return made;
        made.attributes["type"] = type();
        for (const char* const name : {"min", "max", "default"}) {
            if (chance(75)) made.attributes[name] = number();
        }
        if (chance(60)) made.attributes["step"] = step();
        if (chance(40)) made.attributes["base"] = base();
        for (int i = below(5); i > 0; --i)
            made.items.push_back(pick({"", "1", "2", "true", "x", "X1", "min"}) + pick({"", "/", "/text", "/a/b"}));
        return made;
    }

    std::string value()
    {
        if (chance(15)) return anyCase(pick({"min", "max", "default"}));
        if (chance(10)) return anyCase(pick({"true", "false", "x", "x1", "", "text", "1"}));
        return number();
    }

 private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    bool chance(int percent) { return below(100) < percent; }
    std::string pick(std::initializer_list<const char*> from)
    {
        return from.begin()[below(static_cast<int>(from.size()))];
    }

    std::string anyCase(std::string text)
    {
        for (char& c : text) {
            if (c >= 'a' && c <= 'z' && chance(50)) c = static_cast<char>(c - ('a' - 'A'));
        }
        return text;
    }

    // Numbers mostly: the other types have one rule each.
    std::string type()
    {
        return anyCase(chance(85) ? pick({"int", "long", "word", "dword", "byte", "", "colour"})
                                  : pick({"enum", "bool", "string"}));
    }

    std::string step() { return chance(80) ? pick({"0", "1", "2", "3", "5", "10", "-2", "x", ""}) : number(); }

    std::string base()
    {
        return chance(70) ? pick({"2", "8", "10", "16", "16", "35"})
                          : pick({"0", "1", "36", "37", "-8", "", "x", "16x", "99999999999"});
    }

    std::string number()
    {
        if (chance(8))
            return pick({"2147483647", "2147483648", "-2147483648", "4294967295", "4294967296", "99999999999",
                         "-99999999999", "ffffffff", "100000000", "-1", "-0"});
        if (chance(4)) return pick({"", "-", "+", "0x", "0xg", "abc", " ", "--1", "1.5"});
        std::string text = pick({"", "", "", "", "-", "+", " ", " -", "\t"});
        if (chance(8)) text += pick({"0x", "0X", "0"});
        const char* const digits = chance(75) ? "0123456789" : "0123456789abcdefABCDEFxyZ";
        const int kinds = static_cast<int>(std::string(digits).size());
        for (int i = 1 + below(3); i > 0; --i)
            text += digits[below(kinds)];
        if (chance(4)) text += pick({" ", "km", "/9"});
        return text;
    }

    std::mt19937 random_{20261121};
};

std::string shown(const Description& description, const std::string& value)
{
    std::string text;
    for (const auto& [name, attribute] : description.attributes)
        text += name + "=\"" + attribute + "\" ";
    for (const std::string& item : description.items)
        text += "[" + item + "] ";
    return text + "value=\"" + value + '"';
}

TEST(ValueCheckModel, CheckerAndModel_agreeOnGeneratedDescriptionsAndValues)
{
    Generator generator;
    std::map<long, int> counts;
    for (int i = 0; i < cases; ++i) {
        const Description description = generator.description();
        const std::string value = generator.value();
        const Verdict expected = modelOfTheCheck(description, value);
        const Verdict got = check(description, value);
        ASSERT_EQ(got.result, expected.result) << "case " << i << ": " << shown(description, value);
        ASSERT_EQ(got.value, expected.value) << "case " << i << ": " << shown(description, value);
        ++counts[got.result];
    }
    // The generator has to reach every rule, each often enough to mean something.
    for (const long result : {0L, 87L, 8050L, 8052L, 8054L, 8056L, 8058L}) {
        std::cout << "result " << result << ": " << counts[result] << " of " << cases << '\n';
        EXPECT_GT(counts[result], cases / 500) << result;
    }
}

TEST(ValueCheckModel, ParserAndModel_agreeOnGeneratedNumbers)
{
    Generator generator;
    for (int i = 0; i < cases; ++i) {
        const Description description = generator.description();
        const std::string text = generator.value();
        const auto attribute = [&](const char* name) {
            const auto found = description.attributes.find(name);
            return found == description.attributes.end() ? std::string() : found->second;
        };
        const std::string type = attribute("type");
        const std::string base = attribute("base");
        ASSERT_EQ(parseNumber(text.c_str(), type.c_str(), base.c_str()),
                  static_cast<double>(modelOfANumber(text, type, base)))
            << '"' << text << "\" as " << type << " in base \"" << base << '"';
    }
}

}  // namespace
