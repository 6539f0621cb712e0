// Start and stop, over and over.
#include <thread>

#include "traceFixture.h"
#include "trcObjects.h"
#include "trcState.h"

namespace {

class Lifetime : public Trace
{
};

TEST_F(Lifetime, Stopped_theGateIsShut)
{
    configureFile();
    start();
    TrcStop();
    EXPECT_FALSE(TrcEnabled(0xFFFFFFFF));
    EXPECT_FALSE(TrcEnabled(0));
}

TEST_F(Lifetime, Stopped_everyCallIsHarmlessAndOpensNothing)
{
    configureFile();
    start();
    TrcStop();
    const std::size_t handles = openHandles();
    KXTRACE("F", TRC_DETAIL, "macro");
    TrcLine("F", TRC_DETAIL, "CFP", "f", 1, "line");
    EXPECT_EQ(TrcLock(), 0u);
    EXPECT_STREQ(TrcFormat("%d", 1), "1");
    TrcWrite("F", TRC_DETAIL, "CFP", 0, 0, "f", 1, "write");
    TrcError("error");
    TrcUnlock();
    EXPECT_EQ(openHandles(), handles);
    EXPECT_EQ(trc::traceMutex(), nullptr);
    EXPECT_FALSE(exists(tracePath(1)));
    TrcStop();
    EXPECT_EQ(openHandles(), handles);
}

TEST_F(Lifetime, StopWithoutStart_isHarmless)
{
    TrcStop();
    EXPECT_FALSE(TrcEnabled(0xFFFFFFFF));
}

TEST_F(Lifetime, StartedAgain_writesAgain)
{
    configureFile();
    start();
    TrcStop();
    start();
    line("one");
    EXPECT_EQ(contentOf(tracePath(1)), "F one \n");
}

TEST_F(Lifetime, StoppedByTheOnlyProcess_noObjectIsLeft)
{
    configureFile();
    start();
    line("one");
    TrcStop();
    EXPECT_EQ(OpenMutexA(SYNCHRONIZE, FALSE, trc::mutexName), nullptr);
    EXPECT_EQ(OpenFileMappingA(FILE_MAP_WRITE, FALSE, trc::generationName), nullptr);
}

TEST_F(Lifetime, StopWhileAnotherThreadHoldsTheLock_waitsForItsLine)
{
    configure("SM");
    start();
    const HANDLE section = OpenFileMappingA(FILE_MAP_READ, FALSE, "Global\\KXSDD_Trace");
    const auto ring = static_cast<const std::uint32_t*>(MapViewOfFile(section, FILE_MAP_READ, 0, 0, 0));
    ASSERT_NE(ring, nullptr);
    SharedEvent ready("ready");
    SharedEvent release("release");
    std::thread writer([&] {
        TrcLock();
        ready.set();
        EXPECT_TRUE(release.wait());
        TrcWrite("F", TRC_DETAIL, "CFP", 0, 0, "f", 1, "one");
        TrcUnlock();
    });
    ASSERT_TRUE(ready.wait());
    release.set();
    TrcStop();
    writer.join();
    EXPECT_EQ(ring[0], std::string("F one \r\n").size()) << "write position";
    EXPECT_EQ(ring[4], 0u) << "users";
    UnmapViewOfFile(ring);
    CloseHandle(section);
}

class Cycles : public Trace, public testing::WithParamInterface<const char*>
{
};

TEST_P(Cycles, AThousandStartsAndStops_noHandleIsLeft)
{
    configureFile();
    set("Output", GetParam());
    const auto cycle = [&] {
        start();
        line("one");
        TrcStop();
    };
    for (int i = 0; i < 3; ++i)
        cycle();
    const std::size_t handles = openHandles();
    ASSERT_GT(handles, 0u);
    for (int i = 0; i < 1000; ++i)
        cycle();
    EXPECT_LE(openHandles(), handles);
}

INSTANTIATE_TEST_SUITE_P(Outputs, Cycles, testing::Values("FILE", "SM", "VXD", "PIPE"));

}  // namespace
