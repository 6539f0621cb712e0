// Damaged files: never a crash, always either a catalogue or errors with a place.
#include <algorithm>
#include <fstream>
#include <iterator>

#include "catalogueText.h"
#include "support/fuzzing.h"

using catalogue::LoadResult;

namespace {

std::string shippedText()
{
    std::ifstream stream(KXOVA_SHIPPED_CATALOGUE, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// Something of everything that a catalogue can hold.
std::string fullText()
{
    CatalogueText text;
    text.protocols =
        protocol(R"(, "texts": ["rates"], "params": {"baudrate": 9600}, "keys": {"k": {"values": {"v": 1}}},
        "busProfiles": {"dp": {"values": {"a": true}, "baudRates": {"9600": {"b": -1}}}},
        "parameters": {"a": {"type": "bool"}, "b": {"type": "int", "min": -2, "max": 2, "step": 1, "default": 0}})");
    text.devices = R"({"A": {"board": "*TVRA001", "protocol": "MPI", "values": {"busparam": 0, "baudrate": 9600,
        "t": {"DE": "\u00e4\"\\", "EN": "\/"}}, "ndi": {"hidden": false}}, "B": {"like": "A", "values": {"t": null}}})";
    text.more = R"(, "adapters": [{"name": "A", "id": "{1}", "flag": 1}], "logicalNames": {"N": {"LogDevice": ""}},
        "installedBoards": [{"board": "*TVRA001", "map": "one", "netType": "MPI", "hardwareInstanceId": "x", "state": 1}])";
    return text.text();
}

void expectSound(const LoadResult& result, const std::string& text)
{
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    ASSERT_NE(result.catalogue != nullptr, !result.errors.empty()) << text;
    ASSERT_LE(result.errors.size(), catalogue::maximumErrors);
    for (const catalogue::LoadError& error : result.errors) {
        ASSERT_GE(error.line, 1u);
        ASSERT_LE(error.line, lines) << text;
        ASSERT_GE(error.column, 1u);
        ASSERT_FALSE(error.message.empty());
        ASSERT_TRUE(error.message.back() == L'.' || error.message.back() == L'?') << text;
    }
}

constexpr const char* tokens[] = {
    "null",        "true",         "-1",  "1e400", "99999999999999999999", "\"\"", "{}", "[]", "\"like\": \"A\",",
    "\"\\ud800\"", "\xEF\xBB\xBF", "\xC3"};

void expectSoundWhenDamaged(const std::string& text, std::uint32_t rounds)
{
    fuzzing::tellCrashes(rounds);
    fuzzing::Random random(fuzzing::seed());
    for (std::uint32_t round = 0; round < rounds && !testing::Test::HasFatalFailure(); ++round) {
        fuzzing::under("the catalogue's reader", round);
        SCOPED_TRACE(fuzzing::whereabouts());
        const std::string changed = fuzzing::damagedText(text, tokens, random);
        expectSound(parseText(changed), changed);
    }
}

}  // namespace

TEST(DamagedCatalogue, SmallOneCutAtEveryByte_isAnError)
{
    const std::string text = fullText();
    ASSERT_TRUE(parseText(text));
    for (std::size_t length = 0; length <= text.rfind('}'); ++length) {
        const std::string cut = text.substr(0, length);
        const LoadResult result = parseText(cut);
        ASSERT_FALSE(result) << "cut after " << length;
        expectSound(result, cut);
    }
}

TEST(DamagedCatalogue, ShippedOneCutAtManyBytes_isAnErrorAtTheEnd)
{
    const std::string text = shippedText();
    for (std::size_t length = 0; length <= text.rfind('}'); length += 331) {
        const std::string cut = text.substr(0, length);
        const LoadResult result = parseText(cut);
        ASSERT_EQ(result.errors.size(), 1u) << "cut after " << length;
        expectSound(result, cut);
        const auto lines = static_cast<std::size_t>(std::count(cut.begin(), cut.end(), '\n')) + 1;
        ASSERT_EQ(result.errors[0].line, lines) << "cut after " << length;
    }
}

TEST(DamagedCatalogue, SmallOneChangedAtRandom_isSoundlyReadOrRefused)
{
    expectSoundWhenDamaged(fullText(), fuzzing::rounds(4000));
}

TEST(DamagedCatalogue, ShippedOneChangedAtRandom_isSoundlyReadOrRefused)
{
    expectSoundWhenDamaged(shippedText(), std::max(1u, fuzzing::rounds(4000) / 40));
}
