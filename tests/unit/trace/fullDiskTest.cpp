// Output FILE on a disk without room: a line is there whole or not at all, and nobody notices but the trace's reader.
#include <algorithm>
#include <cerrno>

#include "handle_count.h"
#include "traceFixture.h"
#include "trcState.h"

namespace {

// What the disk still takes, and how often it was asked.
DWORD room;
int writes;
bool shortWriteIsAnError;
std::string writtenBehindIt;  // by another process that did not wait for the mutex

BOOL writeWithinRoom(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED*)
{
    ++writes;
    errno = ENOSPC;
    const DWORD taken = std::min(count, room);
    room -= taken;
    *written = 0;
    const BOOL done = taken != 0 && WriteFile(file, bytes, taken, written, nullptr);
    if (!writtenBehindIt.empty()) {
        DWORD others = 0;
        WriteFile(file, writtenBehindIt.data(), static_cast<DWORD>(writtenBehindIt.size()), &others, nullptr);
    }
    if (taken == count) return done;
    SetLastError(ERROR_DISK_FULL);
    return taken != 0 && !shortWriteIsAnError;
}

class FullDisk : public Trace
{
 protected:
    FullDisk()
    {
        configureFile();
        room = 0;
        writes = 0;
        shortWriteIsAnError = false;
        writtenBehindIt.clear();
        trc::trcPlatform.writeFile = writeWithinRoom;
    }

    std::string first() const { return contentOf(tracePath(1)); }
    std::string second() const { return contentOf(tracePath(2)); }

    static constexpr DWORD plenty = 10'000;
};

TEST_F(FullDisk, NoRoom_lineIsDroppedAndLaterOnesAreWritten)
{
    room = 7;
    start();
    line("one");
    line("lost");
    room = plenty;
    line("two");
    EXPECT_EQ(first(), "F one \nF two \n");
}

TEST_F(FullDisk, RoomForAPartOfALine_thePartGoesAgain)
{
    room = 7 + 4;
    start();
    line("one");
    line("lost");
    EXPECT_EQ(first(), "F one \n");
    room = plenty;
    line("two");
    EXPECT_EQ(first(), "F one \nF two \n");
}

TEST_F(FullDisk, RoomForAPartAndAnError_thePartGoesAgain)
{
    shortWriteIsAnError = true;
    room = 4;
    start();
    line("lost");
    EXPECT_EQ(first(), "");
}

TEST_F(FullDisk, LineOfAnotherBehindThePart_isKept)
{
    room = 4;
    writtenBehindIt = "other\n";
    start();
    line("lost");
    EXPECT_EQ(first(), "F loother\n");
}

TEST_F(FullDisk, EachLine_isTriedOnce)
{
    start();
    line("lost");
    EXPECT_EQ(writes, 1);
    room = 3;
    line("lost");
    EXPECT_EQ(writes, 2);
}

TEST_F(FullDisk, CallersErrors_areKept)
{
    room = 4;
    start();
    errno = EDOM;
    SetLastError(ERROR_ALREADY_EXISTS);
    line("lost");
    EXPECT_EQ(errno, EDOM);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
}

TEST_F(FullDisk, DroppedLine_leavesTheOtherFileAlone)
{
    fill(tracePath(1), 8);
    fill(tracePath(2), 50);
    set("Byte/File", "10");
    room = 4;
    start();
    trc::trcCurrentFile = 1;
    line("this would take it above the limit");
    EXPECT_EQ(first(), "........");
    EXPECT_EQ(second().size(), 50u);
    EXPECT_EQ(trc::trcCurrentFile, 1u);
}

TEST_F(FullDisk, DroppedLines_leaveNoHandleOpen)
{
    start();
    line("lost");
    const std::size_t before = handleCount();
    for (int i = 0; i < 100; ++i) {
        room = 3;
        line("lost");
    }
    EXPECT_EQ(handleCount(), before);
}

}  // namespace
