// Damaged files: never a crash, always either a catalogue or errors with a place.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include "catalogueText.h"

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

class Mutator
{
 public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    std::string mutate(std::string text)
    {
        for (std::size_t count = 1 + below(3); count > 0 && !text.empty(); --count) {
            const std::size_t at = below(text.size());
            const std::size_t length = 1 + below(std::min<std::size_t>(text.size() - at, 24));
            switch (below(6)) {
                case 0:
                    text[at] = static_cast<char>(below(256));
                    break;
                case 1:
                    text.erase(at, length);
                    break;
                case 2:
                    text.insert(at, text.substr(below(text.size()), length));
                    break;
                case 3:
                    text.insert(at, 1, "{}[],:\"\\0-.enul\n\t"[below(17)]);
                    break;
                case 4:
                    std::swap(text[at], text[below(text.size())]);
                    break;
                default:
                    text.replace(at, length, tokens_[below(std::size(tokens_))]);
            }
        }
        return text;
    }

 private:
    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_); }

    static constexpr const char* tokens_[] = {
        "null",        "true",         "-1",  "1e400", "99999999999999999999", "\"\"", "{}", "[]", "\"like\": \"A\",",
        "\"\\ud800\"", "\xEF\xBB\xBF", "\xC3"};

    std::mt19937 random_;
};

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
    const std::string text = fullText();
    Mutator mutator(20240917);
    for (int round = 0; round < 4000 && !testing::Test::HasFatalFailure(); ++round) {
        const std::string changed = mutator.mutate(text);
        expectSound(parseText(changed), changed);
    }
}

TEST(DamagedCatalogue, ShippedOneChangedAtRandom_isSoundlyReadOrRefused)
{
    const std::string text = shippedText();
    Mutator mutator(7);
    for (int round = 0; round < 100 && !testing::Test::HasFatalFailure(); ++round) {
        const std::string changed = mutator.mutate(text);
        expectSound(parseText(changed), changed);
    }
}
