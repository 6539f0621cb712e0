// Output FILE: which file is written, and when the other one takes over.
#include "traceFixture.h"
#include "trcState.h"

namespace {

class File : public Trace
{
 protected:
    File() { configureFile(); }

    void startWithLimit(const char* bytes)
    {
        set("Byte/File", bytes);
        start();
    }

    std::string first() const { return contentOf(tracePath(1)); }
    std::string second() const { return contentOf(tracePath(2)); }

    static void setTime(const std::string& path, std::uint64_t ticks)
    {
        const HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
        SetFileTime(file, nullptr, nullptr, &time);
        CloseHandle(file);
    }

    static constexpr std::uint64_t someTime = 133'000'000'000'000'000;
    static constexpr std::uint64_t second_ = 10'000'000;
};

// Lines

TEST_F(File, Line_isAppendedWithALineFeed)
{
    fill(tracePath(1), 3);
    start();
    line("one");
    line("two");
    EXPECT_EQ(first(), "...F one \nF two \n");
    EXPECT_FALSE(exists(tracePath(2)));
}

TEST_F(File, BetweenLines_noFileIsOpen)
{
    start();
    line("one");
    EXPECT_TRUE(DeleteFileA(tracePath(1).c_str()));
    EXPECT_FALSE(exists(tracePath(1)));
    line("two");
    EXPECT_EQ(first(), "F two \n");
}

TEST_F(File, FolderMissing_lineIsDroppedAndLaterOnesAreWritten)
{
    set("Path", folder() + "\\later");
    start();
    line("lost");
    CreateDirectoryA((folder() + "\\later").c_str(), nullptr);
    line("kept");
    const std::string path = folder() + "\\later\\Ova1.TRC";
    EXPECT_EQ(contentOf(path), "F kept \n");
    DeleteFileA(path.c_str());
    RemoveDirectoryA((folder() + "\\later").c_str());
}

TEST_F(File, ReaderHasItOpen_lineIsWritten)
{
    start();
    line("one");
    const HANDLE reader = CreateFileA(tracePath(1).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    line("two");
    CloseHandle(reader);
    EXPECT_EQ(first(), "F one \nF two \n");
}

TEST_F(File, LockedByAnother_lineIsDropped)
{
    start();
    line("one");
    const HANDLE owner =
        CreateFileA(tracePath(1).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(owner, INVALID_HANDLE_VALUE);
    line("lost");
    CloseHandle(owner);
    line("two");
    EXPECT_EQ(first(), "F one \nF two \n");
}

TEST_F(File, ErrorLine_isNotWrittenBetweenLines)
{
    start();
    TrcError("something");
    EXPECT_FALSE(exists(tracePath(1)));
    EXPECT_STREQ(trc::trcErrorLine, "E something");
}

// The file to start with

TEST_F(File, StartWithNoFile_theFirst)
{
    start();
    EXPECT_EQ(trc::trcCurrentFile, 1u);
}

TEST_F(File, StartWithFirstOnly_theFirst)
{
    fill(tracePath(1), 1);
    start();
    EXPECT_EQ(trc::trcCurrentFile, 1u);
}

TEST_F(File, StartWithSecondOnly_theSecond)
{
    fill(tracePath(2), 1);
    start();
    EXPECT_EQ(trc::trcCurrentFile, 2u);
    line("one");
    EXPECT_EQ(second(), ".F one \n");
    EXPECT_FALSE(exists(tracePath(1)));
}

TEST_F(File, StartWithBothSecondLater_theSecond)
{
    fill(tracePath(1), 1);
    fill(tracePath(2), 1);
    setTime(tracePath(1), someTime);
    setTime(tracePath(2), someTime + second_);
    start();
    EXPECT_EQ(trc::trcCurrentFile, 2u);
}

TEST_F(File, StartWithBothFirstLater_theFirst)
{
    fill(tracePath(1), 1);
    fill(tracePath(2), 1);
    setTime(tracePath(1), someTime + second_);
    setTime(tracePath(2), someTime);
    start();
    EXPECT_EQ(trc::trcCurrentFile, 1u);
}

TEST_F(File, StartWithBothOfTheSameTime_theFirst)
{
    fill(tracePath(1), 1);
    fill(tracePath(2), 1);
    setTime(tracePath(1), someTime);
    setTime(tracePath(2), someTime);
    start();
    EXPECT_EQ(trc::trcCurrentFile, 1u);
}

TEST_F(File, ReadAgain_theFileIsChosenAgain)
{
    start();
    EXPECT_EQ(trc::trcCurrentFile, 1u);
    fill(tracePath(2), 1);
    raiseGeneration();
    line("one");
    EXPECT_EQ(second(), ".F one \n");
}

// Rotation; a line "F one " has 7 bytes with its line feed

TEST_F(File, SizeExactlyAtTheLimit_theSameFileGoesOn)
{
    startWithLimit("7");
    line("one");
    EXPECT_EQ(trc::trcCurrentFile, 1u);
    EXPECT_FALSE(exists(tracePath(2)));
    line("two");
    EXPECT_EQ(first(), "F one \nF two \n");
}

TEST_F(File, LineTakesItAboveTheLimit_theOtherFileIsNext)
{
    startWithLimit("6");
    line("one");
    EXPECT_EQ(trc::trcCurrentFile, 2u);
    EXPECT_EQ(first(), "F one \n");
    EXPECT_TRUE(exists(tracePath(2))) << "opened to ask for its size";
    EXPECT_EQ(second(), "");
    line("two");
    EXPECT_EQ(second(), "F two \n");
}

TEST_F(File, OtherFileBelowTheLimit_isAppendedTo)
{
    startWithLimit("10");
    fill(tracePath(2), 4);
    line("one");
    line("two");
    EXPECT_EQ(first(), "F one \nF two \n");
    line("six");
    EXPECT_EQ(second(), "....F six \n");
}

TEST_F(File, OtherFileAboveTheLimit_startsAfresh)
{
    startWithLimit("6");
    fill(tracePath(2), 50);
    line("one");
    EXPECT_FALSE(exists(tracePath(2)));
    EXPECT_EQ(trc::trcCurrentFile, 2u);
    line("two");
    EXPECT_EQ(second(), "F two \n");
    EXPECT_EQ(first(), "") << "above the limit in its turn, so deleted";
    line("six");
    EXPECT_EQ(first(), "F six \n");
}

TEST_F(File, CurrentAboveTheLimitAtOpening_theOtherIsWritten)
{
    fill(tracePath(1), 50);
    startWithLimit("20");
    line("one");
    EXPECT_EQ(second(), "F one \n");
    EXPECT_EQ(first().size(), 50u);
    EXPECT_EQ(trc::trcCurrentFile, 2u);
}

TEST_F(File, BothAboveTheLimit_theCurrentOneStartsAfresh)
{
    fill(tracePath(1), 50);
    fill(tracePath(2), 50);
    setTime(tracePath(1), someTime);
    setTime(tracePath(2), someTime + second_);
    startWithLimit("20");
    line("one");
    EXPECT_EQ(second(), "F one \n");
    EXPECT_EQ(first().size(), 50u);
    EXPECT_EQ(trc::trcCurrentFile, 2u);
}

TEST_F(File, BothAboveTheLimitAndHeldByAReader_theCurrentOneIsEmptied)
{
    fill(tracePath(1), 50);
    fill(tracePath(2), 50);
    setTime(tracePath(1), someTime + second_);
    setTime(tracePath(2), someTime);
    startWithLimit("20");
    const HANDLE reader = CreateFileA(tracePath(1).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    line("one");
    CloseHandle(reader);
    EXPECT_EQ(first(), "F one \n");
}

TEST_F(File, OtherFileCannotBeOpened_lineIsDropped)
{
    fill(tracePath(1), 50);
    startWithLimit("20");
    CreateDirectoryA(tracePath(2).c_str(), nullptr);
    line("lost");
    EXPECT_EQ(first().size(), 50u);
    RemoveDirectoryA(tracePath(2).c_str());
    line("kept");
    EXPECT_EQ(second(), "F kept \n");
}

TEST_F(File, ManyLines_neverMoreThanTheLimitAndOneLineEach)
{
    startWithLimit("100");
    for (int i = 0; i < 200; ++i)
        line("one");
    EXPECT_LE(first().size(), 107u);
    EXPECT_LE(second().size(), 107u);
    EXPECT_GT(first().size() + second().size(), 100u);
}

}  // namespace
