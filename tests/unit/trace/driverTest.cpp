// Output VXD: the driver is replaced, since no machine of ours has one; and the outputs that write nothing.
#include <cerrno>

#include "traceFixture.h"
#include "trcState.h"

namespace {

struct Opened
{
    std::string name;
    DWORD access, share, disposition, flags;
    bool plain;  // no attributes and no template
};

struct Sent
{
    HANDLE driver;
    DWORD code;
    std::string bytes;
    bool noOutput;
};

std::vector<Opened> opened;
std::vector<Sent> sent;
DWORD openError;
HANDLE driver;

HANDLE openScripted(const char* name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* attributes, DWORD disposition,
                    DWORD flags, HANDLE templateFile)
{
    opened.push_back({name, access, share, disposition, flags, !attributes && !templateFile});
    if (openError != 0) {
        SetLastError(openError);
        return INVALID_HANDLE_VALUE;
    }
    driver = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    return driver;
}

BOOL sendScripted(HANDLE device, DWORD code, void* in, DWORD inSize, void* out, DWORD outSize, DWORD* returned,
                  OVERLAPPED* overlapped)
{
    const bool noOutput = !out && outSize == 0 && returned && !overlapped;
    sent.push_back({device, code, {static_cast<const char*>(in), inSize}, noOutput});
    errno = 5;
    SetLastError(5);
    return FALSE;
}

class Driver : public Trace
{
 protected:
    Driver()
    {
        opened.clear();
        sent.clear();
        openError = 0;
        trc::trcPlatform.createFile = openScripted;
        trc::trcPlatform.deviceIoControl = sendScripted;
        configure("VXD");
    }
};

TEST_F(Driver, Start_opensTheDriver)
{
    start();
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0].name, "\\\\.\\KXONLINX.VXD");
    EXPECT_EQ(opened[0].access, 0u);
    EXPECT_EQ(opened[0].share, 0u);
    EXPECT_EQ(opened[0].disposition, DWORD{OPEN_EXISTING});
    EXPECT_EQ(opened[0].flags, DWORD{FILE_FLAG_DELETE_ON_CLOSE});
    EXPECT_TRUE(opened[0].plain);
    EXPECT_STREQ(trc::trcErrorLine, "");
}

TEST_F(Driver, Line_isSentWithItsTerminator)
{
    start();
    line("one");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].driver, driver);
    EXPECT_EQ(sent[0].code, 2u);
    EXPECT_EQ(sent[0].bytes, std::string("F one \0", 7));
    EXPECT_TRUE(sent[0].noOutput);
}

TEST_F(Driver, ErrorLine_isSent)
{
    start();
    TrcError("something");
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].bytes, std::string("E something\0", 12));
}

TEST_F(Driver, FailsToTakeALine_errnoAndLastErrorAreKept)
{
    start();
    errno = 77;
    SetLastError(4711);
    line("one");
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(GetLastError(), 4711u);
    TrcError("something");
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(GetLastError(), 4711u);
    EXPECT_EQ(sent.size(), 2u);
}

TEST_F(Driver, ReadAgain_isNotOpenedTwice)
{
    start();
    raiseGeneration();
    line("one");
    EXPECT_EQ(opened.size(), 1u);
    EXPECT_EQ(sent.size(), 1u);
}

TEST_F(Driver, Stop_closesIt)
{
    start();
    TrcStop();
    DWORD flags;
    EXPECT_FALSE(GetHandleInformation(driver, &flags));
}

TEST_F(Driver, AbsentWithoutDeviceControl_itsMessage)
{
    openError = ERROR_NOT_SUPPORTED;
    start();
    EXPECT_STREQ(trc::trcErrorLine, "E Unable to open VxD, device does not support DeviceIOCTL");
}

TEST_F(Driver, AbsentForAnotherReason_itsMessage)
{
    openError = ERROR_FILE_NOT_FOUND;
    start();
    EXPECT_STREQ(trc::trcErrorLine, "E Unable to open VxD, got error code !");
}

TEST_F(Driver, Absent_linesGoNowhere)
{
    openError = ERROR_FILE_NOT_FOUND;
    start();
    line("one");
    EXPECT_TRUE(sent.empty());
}

TEST_F(Driver, AbsentAndThereAtTheNextRead_isOpened)
{
    openError = ERROR_FILE_NOT_FOUND;
    start();
    openError = 0;
    raiseGeneration();
    line("one");
    EXPECT_EQ(opened.size(), 2u);
    EXPECT_EQ(sent.size(), 1u);
}

// Outputs that write nothing

class SilentOutput : public Trace, public testing::WithParamInterface<const char*>
{
};

TEST_P(SilentOutput, Lines_goNowhere)
{
    configureFile();
    set("Output", GetParam());
    const DebuggerCapture debugger;
    start();
    line("one");
    TrcError("something");
    EXPECT_TRUE(debugger.texts().empty());
    EXPECT_FALSE(exists(tracePath(1)));
    EXPECT_TRUE(events().empty());
}

INSTANTIATE_TEST_SUITE_P(All, SilentOutput, testing::Values("COM1", "COM2", "PIPE"));

class PipeOutput : public Trace
{
};

TEST_F(PipeOutput, Read_theMessageThroughTrcError)
{
    configure("PIPE");
    start();
    EXPECT_STREQ(trc::trcErrorLine, "E Fehler im TALUN-Tracesystem, bitte wenden Sie sich an den Hersteller !");
}

TEST_F(PipeOutput, LinesAfterTheRead_noFurtherMessage)
{
    configure("PIPE");
    start();
    trc::trcErrorLine[0] = 0;
    line("one");
    line("two");
    EXPECT_STREQ(trc::trcErrorLine, "");
}

TEST_F(PipeOutput, SerialPorts_noMessage)
{
    for (const char* output : {"COM1", "COM2"}) {
        configure(output);
        start();
        EXPECT_STREQ(trc::trcErrorLine, "") << output;
    }
}

}  // namespace
