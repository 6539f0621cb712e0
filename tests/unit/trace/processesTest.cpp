// Several processes that write at once: each line is there once, and whole.
#include <cstring>
#include <map>
#include <memory>
#include <regex>

#include "traceFixture.h"
#include "trcObjects.h"

namespace {

class Processes : public Trace
{
 protected:
    static constexpr int processes = 4;
    static constexpr int lines = 1000;

    void writeFromAll()
    {
        std::vector<std::unique_ptr<Helper>> helpers;
        for (int id = 0; id < processes; ++id) {
            helpers.push_back(
                std::make_unique<Helper>("write " + key() + " " + std::to_string(id) + " " + std::to_string(lines)));
        }
        for (const auto& helper : helpers)
            EXPECT_EQ(helper->wait(), 0u);
    }

    // Every line of the text is one that a helper wrote, and each of them is there once.
    static void expectAllOnce(const std::string& text, const std::string& lineEnd)
    {
        static const std::string digits =
            "0123456789012345678901234567890123456789012345678901234567890123456789"
            "01234567890123456789";
        std::map<std::string, int> seen;
        std::size_t begin = 0;
        while (begin < text.size()) {
            const std::size_t end = text.find(lineEnd, begin);
            ASSERT_NE(end, std::string::npos) << "the last line has no end";
            ++seen[text.substr(begin, end - begin)];
            begin = end + lineEnd.size();
        }
        for (int id = 0; id < processes; ++id) {
            for (int i = 0; i < lines; ++i) {
                char head[32];
                std::snprintf(head, sizeof head, "writer [%d:%04d:", id, i);
                const std::string line = head + digits.substr(0, static_cast<std::size_t>(i % 90)) + "] ";
                EXPECT_EQ(seen[line], 1) << line;
            }
        }
        EXPECT_EQ(seen.size(), static_cast<std::size_t>(processes * lines)) << "lines that nobody wrote";
    }
};

TEST_F(Processes, FourToOneFile_noLineTornOrLost)
{
    configureFile();
    writeFromAll();
    expectAllOnce(contentOf(tracePath(1)), "\n");
    EXPECT_FALSE(exists(tracePath(2)));
}

TEST_F(Processes, FourToOneRing_noLineTornOrLost)
{
    configure("SM");
    start();  // keeps the ring while the helpers come and go
    writeFromAll();
    const HANDLE section = OpenFileMappingA(FILE_MAP_READ, FALSE, "Global\\KXSDD_Trace");
    ASSERT_NE(section, nullptr);
    const auto view = static_cast<const char*>(MapViewOfFile(section, FILE_MAP_READ, 0, 0, 0));
    ASSERT_NE(view, nullptr);
    std::uint32_t header[6];
    std::memcpy(header, view, sizeof header);
    EXPECT_EQ(header[2], 0u) << "the ring wrapped, so lines are gone";
    EXPECT_EQ(header[4], 1u) << "users";
    expectAllOnce(std::string(view + 64, header[0]), "\r\n");
    UnmapViewOfFile(view);
    CloseHandle(section);
}

}  // namespace
