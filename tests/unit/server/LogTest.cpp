#include "log/Log.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <thread>

namespace {

namespace fs = std::filesystem;

struct Collected : srv::LogSink
{
    explicit Collected(std::vector<std::string>& all) : lines(all) {}
    void write(srv::Level, std::string_view line) noexcept override { lines.emplace_back(line); }
    std::vector<std::string>& lines;
};

struct LogTest : testing::Test
{
    std::vector<std::string> lines;
    srv::Log log{srv::Level::Info};

    void SetUp() override { log.add(std::make_unique<Collected>(lines)); }
};

TEST_F(LogTest, Line_hasTimeLevelThreadAndText)
{
    log.warning("a %d", 7);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], testing::MatchesRegex("....-..-.. ..:..:......\\s?warning .\\d+. a 7\n"));
    EXPECT_THAT(lines[0], testing::HasSubstr("[" + std::to_string(GetCurrentThreadId()) + "] a 7\n"));
}

TEST_F(LogTest, LinesBelowTheLevel_areNotWritten)
{
    log.debug("no");
    log.info("yes");
    log.setLevel(srv::Level::Error);
    log.warning("no");
    EXPECT_EQ(lines.size(), 1u);
}

TEST_F(LogTest, LongLine_isCutBetweenCharactersAndStillEnds)
{
    std::string umlauts;
    for (int i = 0; i < 2000; ++i)
        umlauts += "\xC3\xA4";
    for (const char* const shift : {"", "x"}) {
        log.info("%s%s", shift, umlauts.c_str());
        const std::string& line = lines.back();
        EXPECT_LE(line.size(), 1001u);
        EXPECT_EQ(line.substr(line.size() - 3), "\xC3\xA4\n");
    }
}

TEST(LogLevels, AreKnownByName)
{
    EXPECT_EQ(srv::levelFromName("Debug"), srv::Level::Debug);
    EXPECT_EQ(srv::levelFromName("error"), srv::Level::Error);
    EXPECT_EQ(srv::levelFromName("loud"), std::nullopt);
}

struct LogFile : testing::Test
{
    fs::path folder = fs::temp_directory_path() / ("kxovalog" + std::to_string(GetCurrentProcessId()));
    fs::path file = folder / "deep" / "server.log";

    void TearDown() override { fs::remove_all(folder); }

    static std::string content(const fs::path& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }
};

TEST_F(LogFile, Lines_areAppendedInAFolderThatIsMade)
{
    srv::FileSink(file).write(srv::Level::Info, "one\n");
    srv::FileSink(file).write(srv::Level::Info, "two\n");
    EXPECT_EQ(content(file), "one\ntwo\n");
}

TEST_F(LogFile, FullFile_isKeptBesideTheNewOneAndNoMoreThanThree)
{
    srv::FileSink sink(file, 8);
    for (const char* const line : {"11111\n", "22222\n", "33333\n", "44444\n", "55555\n"})
        sink.write(srv::Level::Info, line);
    EXPECT_EQ(content(file), "55555\n");
    EXPECT_EQ(content(file.wstring() + L".1"), "44444\n");
    EXPECT_EQ(content(file.wstring() + L".3"), "22222\n");
    EXPECT_FALSE(fs::exists(file.wstring() + L".4"));
}

TEST_F(LogFile, LinesOfSeveralThreads_areNotTorn)
{
    srv::Log log(srv::Level::Info);
    log.add(std::make_unique<srv::FileSink>(file));
    std::vector<std::thread> threads;
    for (char c = 'a'; c < 'e'; ++c)
        threads.emplace_back([&log, text = std::string(200, c)] {
            for (int i = 0; i < 50; ++i)
                log.info("%s", text.c_str());
        });
    for (std::thread& thread : threads)
        thread.join();
    std::istringstream lines(content(file));
    int whole = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::string text = line.substr(line.size() - std::min<std::size_t>(line.size(), 200));
        if (text == std::string(200, text[0])) ++whole;
    }
    EXPECT_EQ(whole, 200);
}

}  // namespace
