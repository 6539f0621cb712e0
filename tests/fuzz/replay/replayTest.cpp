#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "replay.h"

namespace {

class Corpus : public testing::TestWithParam<NamedTarget>
{
};

// A broken promise ends the program; the last file that was named is the one.
TEST_P(Corpus, IsTakenWithoutHarm)
{
    std::size_t files = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(std::filesystem::path(KXOVA_FUZZ_CORPUS) / GetParam().name)) {
        SCOPED_TRACE(file.path().string());
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        std::fprintf(stderr, "%s\n", file.path().string().c_str());
        GetParam().fuzz(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++files;
    }
    EXPECT_GT(files, 0u);
}

INSTANTIATE_TEST_SUITE_P(Targets, Corpus, testing::ValuesIn(targetsHere()),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
