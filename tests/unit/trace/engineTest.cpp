// Output KXTRACEENGINE: no library, one that lacks entry points, and one that does what the test tells it.
#include <gmock/gmock.h>

#include <cstdio>
#include <cstring>

#include "scriptedEngine.h"
#include "traceFixture.h"
#include "trcState.h"

namespace {

using testing::ElementsAre;

std::string commonFolder;

bool scriptedFolder(char (&folder)[MAX_PATH])
{
    std::snprintf(folder, sizeof folder, "%s", commonFolder.c_str());
    return !commonFolder.empty();
}

constexpr char librarySubPath[] = "\\Tavrone\\Automation\\TraceEngine\\bin\\KxTraceEngineX.dll";

class Engine : public Trace
{
 protected:
    Engine()
    {
        trc::trcPlatform.commonProgramFiles = scriptedFolder;
        configure("KXTRACEENGINE");
    }

    ~Engine() override
    {
        TrcStop();
        if (own_) FreeLibrary(own_);
    }

    // Which of the prepared common program-files folders is found; the library in it, if any, can be told what to do.
    void use(const char* folder)
    {
        commonFolder = programFolder() + "\\" + folder;
        own_ = LoadLibraryA((commonFolder + librarySubPath).c_str());
        if (!own_) return;
        script = reinterpret_cast<EngineScriptOf>(reinterpret_cast<void*>(GetProcAddress(own_, "Script")))();
        *script = {};
        script->openHandle = theHandle;
    }

    void* theHandle = &own_;
    EngineScript* script = nullptr;

 private:
    HMODULE own_ = nullptr;
};

// Absent

TEST_F(Engine, Absent_anErrorEventWithThePath)
{
    use("absent");
    start();
    ASSERT_EQ(events().size(), 1u);
    EXPECT_EQ(events()[0].source, "Kxotrc");
    EXPECT_EQ(events()[0].type, EVENTLOG_ERROR_TYPE);
    EXPECT_EQ(events()[0].category, 1);
    EXPECT_EQ(events()[0].event, 0xC0001400u);
    EXPECT_TRUE(events()[0].plain);
    EXPECT_THAT(events()[0].texts, ElementsAre(commonFolder + librarySubPath));
    EXPECT_FALSE(trc::trcEngineUsable);
}

TEST_F(Engine, Absent_linesGoNowhere)
{
    use("absent");
    start();
    line("one");
    EXPECT_EQ(events().size(), 1u);
}

TEST_F(Engine, AbsentInAVeryLongFolder_eventTextIsCutTo255)
{
    commonFolder = "C:\\" + std::string(250, 'x');
    start();
    ASSERT_EQ(events().size(), 1u);
    EXPECT_THAT(events()[0].texts, ElementsAre((commonFolder + librarySubPath).substr(0, 255)));
}

TEST_F(Engine, FolderCannotBeHad_isAbsent)
{
    commonFolder.clear();
    start();
    ASSERT_EQ(events().size(), 1u);
    EXPECT_EQ(events()[0].event, 0xC0001400u);
}

TEST_F(Engine, InTheFolderOfTheRealMachine_isAbsentBelowCommonFiles)
{
    trc::trcPlatform.commonProgramFiles = realCommonProgramFiles();
    start();
    ASSERT_EQ(events().size(), 1u);
    EXPECT_THAT(events()[0].texts, ElementsAre(testing::EndsWith(std::string("\\Common Files") + librarySubPath)));
}

TEST_F(Engine, AbsentAndInstalledLater_isUsedFromTheNextReadOn)
{
    use("absent");
    start();
    use("complete");
    raiseGeneration();
    line("one");
    EXPECT_EQ(script->writes, 1);
}

// Entry points missing

TEST_F(Engine, EntryPointsMissing_anErrorEventForEach)
{
    use("incomplete");
    ASSERT_NE(script, nullptr);
    start();
    ASSERT_EQ(events().size(), 2u);
    for (const LoggedEvent& event : events()) {
        EXPECT_EQ(event.source, "Kxotrc");
        EXPECT_EQ(event.type, EVENTLOG_ERROR_TYPE);
        EXPECT_EQ(event.category, 1);
        EXPECT_EQ(event.event, 0xC0001401u);
    }
    EXPECT_THAT(events()[0].texts, ElementsAre("TraceCommand"));
    EXPECT_THAT(events()[1].texts, ElementsAre("TraceClose"));
}

TEST_F(Engine, EntryPointsMissing_nothingOfItIsCalled)
{
    use("incomplete");
    start();
    line("one");
    TrcStop();
    EXPECT_EQ(script->opens, 0);
    EXPECT_EQ(script->writes, 0);
}

// Present

TEST_F(Engine, Start_opensNothingYet)
{
    use("complete");
    start();
    EXPECT_EQ(script->opens, 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(Engine, FirstLine_opensWithTheSettings)
{
    use("complete");
    start();
    line("one");
    EXPECT_EQ(script->opens, 1);
    EXPECT_STREQ(script->metaInfo, "Kxsdd_TraceMetaInfo.xml");
    EXPECT_STREQ(script->settings, "Kxsdd_TraceSettings.xml");
    EXPECT_EQ(script->folder, commonFolder + "\\Tavrone\\kxrts\\meta\\trace\\Settings\\");
    EXPECT_EQ(script->openNumber, 0);
    EXPECT_STREQ(script->version, "1.0.0.0");
    EXPECT_EQ(script->handleAtOpen, nullptr);
}

TEST_F(Engine, Line_isARecordWithItsLength)
{
    use("complete");
    start();
    line("one");
    EXPECT_EQ(script->writes, 1);
    EXPECT_EQ(script->writeHandle, theHandle);
    EXPECT_EQ(script->writeTime, 0.0);
    EXPECT_EQ(script->writeNumber, 1);
    ASSERT_EQ(script->recordLength, 10);
    EXPECT_EQ(std::memcmp(script->record,
                          "\x00\x47"  // mark
                          "\x06\x00"  // length
                          "F one ",   // line
                          10),
              0);
}

TEST_F(Engine, LineLongerThan255_lengthInTwoBytes)
{
    use("complete");
    start();
    TrcWriteLocked("F", TRC_DETAIL, std::string(256, 'x').c_str());
    ASSERT_EQ(script->recordLength, 4 + 259);
    EXPECT_EQ(script->record[2], 259 & 0xFF);
    EXPECT_EQ(script->record[3], 259 >> 8);
    EXPECT_EQ(script->record[4 + 258], ' ');
}

TEST_F(Engine, FurtherLines_useTheOpenHandle)
{
    use("complete");
    start();
    line("one");
    line("two");
    EXPECT_EQ(script->opens, 1);
    EXPECT_EQ(script->writes, 2);
}

TEST_F(Engine, ReadAgain_libraryAndHandleStay)
{
    use("complete");
    start();
    line("one");
    raiseGeneration();
    line("two");
    EXPECT_EQ(script->opens, 1);
    EXPECT_EQ(script->closes, 0);
    EXPECT_EQ(script->writes, 2);
}

TEST_F(Engine, ErrorLine_isWritten)
{
    use("complete");
    start();
    TrcError("x");
    EXPECT_EQ(script->recordLength, 7);
    EXPECT_EQ(std::memcmp(script->record + 4, "E x", 3), 0);
}

TEST_F(Engine, Stop_closesTheHandle)
{
    use("complete");
    start();
    line("one");
    TrcStop();
    EXPECT_EQ(script->closes, 1);
    EXPECT_EQ(script->closeHandle, theHandle);
}

TEST_F(Engine, StopWithoutALine_closesNothing)
{
    use("complete");
    start();
    TrcStop();
    EXPECT_EQ(script->closes, 0);
}

TEST_F(Engine, Stop_unloadsTheLibrary)
{
    commonFolder = programFolder() + "\\complete";
    start();
    line("one");
    EXPECT_NE(GetModuleHandleA("KxTraceEngineX.dll"), nullptr);
    TrcStop();
    EXPECT_EQ(GetModuleHandleA("KxTraceEngineX.dll"), nullptr);
}

TEST_F(Engine, ManyStartsAndStops_noHandleIsLeft)
{
    use("complete");
    const auto cycle = [&] {
        start();
        line("one");
        TrcStop();
    };
    for (int i = 0; i < 3; ++i)
        cycle();
    const std::size_t handles = openHandles();
    for (int i = 0; i < 100; ++i)
        cycle();
    EXPECT_LE(openHandles(), handles);
    EXPECT_EQ(script->opens, 103);
    EXPECT_EQ(script->closes, 103);
}

// Calls that fail

TEST_F(Engine, OpenFails_oneWarningWithTheLine)
{
    use("complete");
    script->openResult = 5;
    start();
    line("one");
    line("two");
    EXPECT_EQ(script->opens, 2) << "tried again with each line";
    EXPECT_EQ(script->writes, 0);
    ASSERT_EQ(events().size(), 1u);
    EXPECT_EQ(events()[0].source, "Kxotrc");
    EXPECT_EQ(events()[0].type, EVENTLOG_WARNING_TYPE);
    EXPECT_EQ(events()[0].category, 1);
    EXPECT_EQ(events()[0].event, 0x80001402u);
    EXPECT_THAT(events()[0].texts, ElementsAre("TraceOpenA", "F one "));
}

TEST_F(Engine, OpenFailsButLeavesAHandle_theHandleIsNotUsed)
{
    use("complete");
    script->openResult = 5;
    start();
    line("one");
    TrcStop();
    EXPECT_EQ(script->writes, 0);
    EXPECT_EQ(script->closes, 0);
}

TEST_F(Engine, OpenFailsThenWorks_theNextLineIsWritten)
{
    use("complete");
    script->openResult = 5;
    start();
    line("one");
    script->openResult = 0;
    line("two");
    EXPECT_EQ(script->writes, 1);
}

TEST_F(Engine, OpenWorksWithoutAHandle_nothingIsWritten)
{
    use("complete");
    script->openHandle = nullptr;
    start();
    line("one");
    EXPECT_EQ(script->writes, 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(Engine, WriteFails_oneWarningWithTheLine)
{
    use("complete");
    script->writeResult = 5;
    start();
    line("one");
    line("two");
    EXPECT_EQ(script->writes, 2);
    ASSERT_EQ(events().size(), 1u);
    EXPECT_EQ(events()[0].event, 0x80001402u);
    EXPECT_THAT(events()[0].texts, ElementsAre("TraceWrite", "F one "));
}

TEST_F(Engine, OpenFailureReported_aLaterWriteFailureIsNot)
{
    use("complete");
    script->openResult = 5;
    script->writeResult = 5;
    start();
    line("one");
    script->openResult = 0;
    line("two");
    EXPECT_EQ(script->writes, 1);
    EXPECT_EQ(events().size(), 1u);
}

TEST_F(Engine, LongLineInAnEvent_isCutTo255)
{
    use("complete");
    script->writeResult = 5;
    start();
    const std::string text(256, 'x');
    TrcWriteLocked("F", TRC_DETAIL, text.c_str());
    ASSERT_EQ(events().size(), 1u);
    EXPECT_THAT(events()[0].texts, ElementsAre("TraceWrite", ("F " + text).substr(0, 255)));
}

// The event log of the machine itself

TEST_F(Engine, RealEventLog_takesAnEntryWithoutHarm)
{
    useRealEventLog();
    use("absent");
    start();
    EXPECT_FALSE(trc::trcEngineUsable);
}

}  // namespace
