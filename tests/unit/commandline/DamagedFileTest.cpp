// Damaged configuration files: never a crash, always either a configuration or mistakes that name the file and a line
// in it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "configuration/File.h"
#include "support/fuzzing.h"

namespace {

constexpr const char* tokens[] = {"null",        "true",         "-1",   "1e400",          "99999999999999999999",
                                  "\"\"",        "{}",           "[]",   "\"format\": 2,", "\"\\ud800\"",
                                  "\"\\u0000\"", "\xEF\xBB\xBF", "\xC3", "\"Line 1\""};

std::string soundText()
{
    return fileText({{Family::Device,
                      "Line 1",
                      {{"busparam", "3"},
                       {"DescText",
                        "Pr\xC3\xBC"
                        "fstand \"1\"\tL"},
                       {"sub\\value", ""}},
                      {{"hidden", "false"}}},
                     {Family::Device, "Line 2", {}, {}},
                     {Family::Name, "NXONLINE", {{"LogDevice", "Line 1"}}, {}}});
}

// 0: the mistake names no place in the file.
int lineOf(const std::string& problem)
{
    const std::string place = "f.json:";
    return problem.starts_with(place) ? std::atoi(problem.c_str() + place.size()) : 0;
}

void expectSound(const std::string& text)
{
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    try {
        for (const Entry& entry : readFileText(text, "f.json"))
            ASSERT_FALSE(entry.name.empty()) << text;
    } catch (const BadFile& bad) {
        ASSERT_FALSE(bad.problems().empty()) << text;
        ASSERT_LE(bad.problems().size(), 21u) << text;
        for (const std::string& problem : bad.problems()) {
            if (problem == "there are more mistakes") continue;
            ASSERT_GE(lineOf(problem), 1) << problem;
            ASSERT_LE(lineOf(problem), lines) << problem;
        }
    }
}

TEST(DamagedImportFile, CutAtEveryByte_isRefused)
{
    const std::string text = soundText();
    for (std::size_t length = 0; length <= text.rfind('}'); ++length)
        EXPECT_THROW(readFileText(text.substr(0, length), "f.json"), BadFile) << length;
}

TEST(DamagedImportFile, ChangedAtRandom_isReadOrRefusedWithItsLines)
{
    const std::string text = soundText();
    const std::uint32_t rounds = fuzzing::rounds(4000);
    fuzzing::tellCrashes(rounds);
    fuzzing::Random random(fuzzing::seed());
    for (std::uint32_t round = 0; round < rounds && !HasFatalFailure(); ++round) {
        fuzzing::under("the configuration's reader", round);
        SCOPED_TRACE(fuzzing::whereabouts());
        expectSound(fuzzing::damagedText(text, tokens, random));
    }
}

}  // namespace
