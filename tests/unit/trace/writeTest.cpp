// What every trace call keeps and survives, whatever the output.
#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <regex>
#include <thread>

#include "traceFixture.h"
#include "trcObjects.h"
#include "trcState.h"

namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

class Write : public Trace
{
 protected:
    std::string oneLine(const char* format)
    {
        configureFile();
        set("Format", format);
        start();
        TrcLock();
        TrcWrite("LogDeviceDel: ", TRC_RESULT, "CFP", 0x21AD, 7, "c:\\src/kxOvascp.cpp", 42, "<< return 0x21ad");
        TrcUnlock();
        return contentOf(tracePath(1));
    }
};

TEST_F(Write, Short_theWholeLine)
{
    EXPECT_EQ(oneLine("SHORT"), "S KXOVATDX FE CFP 000021ad LogDeviceDel:  << return 0x21ad\n");
}

TEST_F(Write, Long_theWholeLine)
{
    const std::string written = oneLine("LONG");
    char ids[64];
    std::snprintf(ids, sizeof ids, "P%09luT%09lu", GetCurrentProcessId(), GetCurrentThreadId());
    const std::regex shape(
        "L KXOVATDX (P\\d{9}T\\d{9}) FE CFP 000021ad (\\d\\d):(\\d\\d):(\\d\\d),\\d{3} "
        "kxOvascp\\.cpp,00042 LogDeviceDel:  << return 0x21ad\n");
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(written, parts, shape)) << written;
    EXPECT_EQ(parts[1], ids);
}

TEST_F(Write, Long_showsTheLocalTime)
{
    SYSTEMTIME before;
    SYSTEMTIME after;
    GetLocalTime(&before);
    const std::string written = oneLine("LONG");
    GetLocalTime(&after);
    const std::string shown = written.substr(written.find("000021ad ") + 9, 12);
    const auto text = [](const SYSTEMTIME& time) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%02d:%02d:%02d,%03d", time.wHour, time.wMinute, time.wSecond,
                      time.wMilliseconds);
        return std::string(digits);
    };
    if (text(after) < text(before)) GTEST_SKIP() << "midnight";
    EXPECT_LE(text(before), shown);
    EXPECT_GE(text(after), shown);
}

TEST_F(Write, Time_theWholeLine)
{
    const std::regex shape("T KXOVATDX FE CFP 000021ad \\d{5}\\.\\d{6} LogDeviceDel:  << return 0x21ad\n");
    const std::string written = oneLine("TIME");
    EXPECT_TRUE(std::regex_match(written, shape)) << written;
}

TEST_F(Write, Time_isTheCounterInSeconds)
{
    LARGE_INTEGER frequency;
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&before);
    const std::string written = oneLine("TIME");
    QueryPerformanceCounter(&after);
    const auto seconds = [&](const LARGE_INTEGER& counter) {
        return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
    };
    double shown = std::stod(written.substr(written.find("000021ad ") + 9, 12));
    shown += 100000.0 * static_cast<double>(static_cast<long long>(seconds(before) / 100000.0));
    EXPECT_GE(shown, seconds(before) - 0.000001);
    EXPECT_LE(shown, seconds(after) + 0.000001);
}

TEST_F(Write, Text_theWholeLine)
{
    EXPECT_EQ(oneLine("TEXT"), "LogDeviceDel:  << return 0x21ad \n");
}

TEST_F(Write, NullEverywhere_countsAsEmpty)
{
    configureFile();
    set("Format", "SHORT");
    set("FctName", "*");
    start();
    TrcLock();
    TrcWrite(nullptr, TRC_DETAIL, nullptr, 0, 0, nullptr, 0, nullptr);
    TrcUnlock();
    TrcError(nullptr);
    EXPECT_EQ(contentOf(tracePath(1)), "S KXOVATDX FM" + std::string(15, ' ') + "\n");
}

// TrcFormat

TEST_F(Write, Format_returnsTheStaticBuffer)
{
    const char* const text = TrcFormat("%s=%d", "a", 7);
    EXPECT_STREQ(text, "a=7");
    EXPECT_EQ(TrcFormat("other"), text);
}

TEST_F(Write, FormatTooLong_isCutTo1023)
{
    const std::string longText(5000, 'x');
    EXPECT_EQ(TrcFormat("%s", longText.c_str()), std::string(1023, 'x'));
}

TEST_F(Write, FormatOfNull_isHarmless)
{
    const char* volatile none = nullptr;
    EXPECT_STREQ(TrcFormat("lpszLogDevice=%s ", none), "lpszLogDevice=(null) ");
}

// errno and the last error

ULONGLONG clockThatLeavesErrors()
{
    static ULONGLONG now = 0;
    errno = 5;
    SetLastError(5);
    return now += 1000;
}

class Keeps : public Trace, public testing::WithParamInterface<const char*>
{
 protected:
    void expectKept(const char* what)
    {
        EXPECT_EQ(errno, 77) << what;
        EXPECT_EQ(GetLastError(), 4711u) << what;
        spoil();
    }
    static void spoil()
    {
        errno = 77;
        SetLastError(4711);
    }
};

TEST_P(Keeps, ErrnoAndLastError_whateverTheOutput)
{
    configureFile();
    set("Path", folder() + "\\missing");
    set("Consult", "1");
    set("Output", GetParam());
    trc::trcPlatform.milliseconds = clockThatLeavesErrors;
    spoil();
    start();
    expectKept("start");
    KXTRACE("F", TRC_DETAIL, "line %d", 1);
    expectKept("line and reading again");
    TrcLock();
    expectKept("lock");
    TrcFormat("%s", "text");
    expectKept("format");
    TrcWrite("F", TRC_DETAIL, "CFP", 0, 0, "f", 1, "text");
    expectKept("write");
    TrcUnlock();
    expectKept("unlock");
    TrcUnlock();
    expectKept("unlock of what is not held");
    TrcError("error");
    expectKept("error");
    TrcStop();
    expectKept("stop");
    KXTRACE("F", TRC_DETAIL, "line %d", 3);
    expectKept("line after the stop");
}

INSTANTIATE_TEST_SUITE_P(All, Keeps,
                         testing::Values("VXD", "COM1", "COM2", "PIPE", "FILE", "SM", "DBG", "KXTRACEENGINE"));

// Threads that work at once, with the mutex and without

class Threads : public Trace
{
 protected:
    static constexpr int threads = 4;
    static constexpr int lines = 300;

    void writeFromAll()
    {
        std::vector<std::thread> writers;
        for (int id = 0; id < threads; ++id) {
            writers.emplace_back([id] {
                for (int i = 0; i < lines; ++i)
                    KXTRACE("F", TRC_DETAIL, "<%d:%03d>", id, i);
            });
        }
        for (std::thread& writer : writers)
            writer.join();
    }
};

TEST_F(Threads, ManyAtOnce_eachLineOnceAndWhole)
{
    configureFile();
    start();
    writeFromAll();
    const std::string written = contentOf(tracePath(1));
    EXPECT_EQ(written.size(), std::string("F <0:000> \n").size() * threads * lines);
    for (int id = 0; id < threads; ++id) {
        for (int i = 0; i < lines; ++i) {
            char line[32];
            std::snprintf(line, sizeof line, "F <%d:%03d> \n", id, i);
            EXPECT_NE(written.find(line), std::string::npos) << line;
        }
    }
}

// Nobody gets the mutex in time: lines may mix, memory may not be hurt.
TEST_F(Threads, ManyAtOnceWithoutTheMutex_nothingIsHurt)
{
    configure("SM");
    set("sm_size", "3000");
    set("Consult", "1");
    set("FctName", "a b c d e f*");
    useRealClock();
    start();
    SharedEvent ready("ready");
    SharedEvent release("release");
    Helper holder("hold " + ready.name() + " " + release.name());
    ASSERT_TRUE(ready.wait());
    trc::trcPlatform.lockWait = 0;
    std::atomic<bool> done = false;
    std::thread reader([&] {
        while (!done) {
            raiseGeneration();
            TrcFormat("%s", std::string(2000, 'y').c_str());
            std::this_thread::yield();
        }
    });
    writeFromAll();
    done = true;
    reader.join();
    release.set();
    EXPECT_EQ(holder.wait(), 0u);
    EXPECT_EQ(TrcFormat("%s", "still")[5], 0);
}

}  // namespace
