// The values below TrcParams as the registry holds them, the filters, and when they are read again.
#include "refusedKey.h"
#include "traceFixture.h"
#include "trcState.h"

namespace {

class Configuration : public Trace
{
};

TEST_F(Configuration, NoKey_defaults)
{
    start();
    EXPECT_EQ(trcLevelMask, 0u);
    EXPECT_EQ(trc::trcFormat, 2);
    EXPECT_EQ(trc::trcOutput, 4);
    EXPECT_EQ(trc::trcConsult, 0);
    EXPECT_EQ(trc::trcBytesPerFile, 2097152);
    EXPECT_EQ(trc::trcSmSize, 2000000u);
    EXPECT_STREQ(trc::trcFileBase, "C:\\TMP\\KXFILE");
    EXPECT_STREQ(trc::trcTraceId, "KXOVATDX");
}

TEST_F(Configuration, KeyThatRefuses_countsAsMissingUntilItRefusesNoMore)
{
    configureFile();
    RefusedKey refused(HKEY_LOCAL_MACHINE, L"Software\\TAVRONE\\NORIX\\TrcParams");
    start();
    EXPECT_EQ(trcLevelMask, 0u);
    line("lost");
    refused.giveBack();
    raiseGeneration();
    line("kept");
    EXPECT_EQ(contentOf(tracePath(1)), "F kept \n");
}

TEST_F(Configuration, EmptyValue_countsAsMissing)
{
    configureFile();
    set("Path", "");
    set("FileName", "Other");
    set("Format", "");
    start();
    EXPECT_STREQ(trc::trcFileBase, "C:\\Tmp\\Other");
    EXPECT_EQ(trc::trcFormat, 2);
}

TEST_F(Configuration, ValueOfAnotherType_countsAsMissing)
{
    const DWORD number = 0x34333231;  // would read as text "1234"
    for (const char* name : {"Level", "Consult", "Format", "Output", "FctName"}) {
        setRaw(name, REG_DWORD, &number, sizeof number);
    }
    start();
    EXPECT_EQ(trcLevelMask, 0u);
    EXPECT_EQ(trc::trcConsult, 0);
    EXPECT_EQ(trc::trcFunctions.size(), 0u);
}

TEST_F(Configuration, ExpandableOrMultipleText_countsAsMissing)
{
    setRaw("Level", REG_EXPAND_SZ, "0x40", 5);
    start();
    EXPECT_EQ(trcLevelMask, 0u);
    setRaw("Level", REG_MULTI_SZ, "0x40\0", 6);
    raiseGeneration();
    line("reads again");
    EXPECT_EQ(trcLevelMask, 0u);
}

TEST_F(Configuration, TextWithoutTerminator_isRead)
{
    setRaw("Level", REG_SZ, "0x40", 4);
    start();
    EXPECT_EQ(trcLevelMask, 0x40u);
}

TEST_F(Configuration, LongestText_isRead)
{
    set("Output", "FILE");
    set("FileName", "n." + std::string(257, 'x'));
    start();
    EXPECT_STREQ(trc::trcFileBase, "C:\\Tmp\\n");
}

TEST_F(Configuration, TextTooLong_countsAsMissing)
{
    set("Output", "FILE");
    set("FileName", "n." + std::string(258, 'x'));
    start();
    EXPECT_STREQ(trc::trcFileBase, "C:\\TMP\\KXFILE");
}

TEST_F(Configuration, SizesZeroOrBelow_keepTheDefaults)
{
    configureFile();
    for (const char* text : {"0", "-1"}) {
        set("Byte/File", text);
        start();
        EXPECT_EQ(trc::trcBytesPerFile, 2097152) << text;
    }
}

TEST_F(Configuration, RingSizeZeroOrBelow_keepsTheDefault)
{
    configure("SM");
    for (const char* text : {"0", "-1"}) {
        set("sm_size", text);
        start();
        EXPECT_EQ(trc::trcSmSize, 2000000u) << text;
    }
}

TEST_F(Configuration, ReadAgain_missingValuesGetTheirDefaults)
{
    configureFile();
    set("Consult", "5");
    set("FctName", "only");
    start();
    for (const char* name : {"Level", "Format", "Output", "Consult", "FctName"})
        remove(name);
    raiseGeneration();
    line("reads again");
    EXPECT_EQ(trcLevelMask, 0u);
    EXPECT_EQ(trc::trcFormat, 2);
    EXPECT_EQ(trc::trcOutput, 4);
    EXPECT_EQ(trc::trcConsult, 0);
    EXPECT_EQ(trc::trcFunctions.size(), 0u);
}

TEST_F(Configuration, ReadAgain_fileBaseAndSizesInForceStay)
{
    configureFile();
    set("Byte/File", "1000");
    start();
    const std::string base = trc::trcFileBase;
    for (const char* name : {"Path", "FileName", "Byte/File"})
        remove(name);
    raiseGeneration();
    line("reads again");
    EXPECT_EQ(trc::trcFileBase, base);
    EXPECT_EQ(trc::trcBytesPerFile, 1000);
}

TEST_F(Configuration, Generation_isNotedAtTheRead)
{
    start();
    raiseGeneration();
    line("reads again");
    EXPECT_EQ(trcLastGeneration, *trcGeneration);
}

// Consult

class ConsultTime : public Trace
{
 protected:
    ConsultTime()
    {
        configureFile();
        set("Consult", "10");
        start();
        set("Level", "0x8");  // takes away what the lines below have
    }

    void detail() { KXTRACE("F", TRC_DETAIL, "line"); }
    std::string written() const { return contentOf(tracePath(1)); }
};

TEST_F(ConsultTime, NotYetPassed_nothingIsReadAgain)
{
    letPass(9999);
    detail();
    EXPECT_EQ(written(), "F line \n");
    EXPECT_EQ(trcLevelMask, 0xFFFFFFFF);
}

TEST_F(ConsultTime, Passed_readsAgainAndDropsWhatIsNotWanted)
{
    letPass(10000);
    detail();
    EXPECT_FALSE(exists(tracePath(1)));
    EXPECT_EQ(trcLevelMask, 8u);
}

TEST_F(ConsultTime, PassedAndGenerationNotZero_readsAgain)
{
    raiseGeneration();
    set("Level", "0xFF");
    detail();
    EXPECT_EQ(trcLevelMask, 0xFFu);
    set("Level", "0x8");
    letPass(10000);
    detail();
    EXPECT_EQ(trcLevelMask, 8u);
    EXPECT_EQ(trcLastGeneration, *trcGeneration);
}

TEST_F(ConsultTime, Passed_countsFromTheLastRead)
{
    set("Level", "0xFF");
    letPass(10000);
    detail();
    set("Level", "0x8");
    letPass(9999);
    detail();
    EXPECT_EQ(trcLevelMask, 0xFFu);
    letPass(1);
    detail();
    EXPECT_EQ(trcLevelMask, 8u);
}

TEST_F(ConsultTime, TurnedOff_nothingIsReadAgain)
{
    set("Level", "0xFF");
    remove("Consult");
    letPass(10000);
    detail();
    set("Level", "0x8");
    letPass(1000000);
    detail();
    EXPECT_EQ(trcLevelMask, 0xFFu);
}

// Filters

class Filters : public Trace
{
 protected:
    std::string linesWith(const char* filter, const char* value)
    {
        configureFile();
        set(filter, value);
        start();
        TrcWriteLocked("LogDeviceDel: ", TRC_DETAIL, "abcdef", "CFP");
        TrcWriteLocked("abc", TRC_DETAIL, "other", "OVAAPI64");
        return contentOf(tracePath(1));
    }

    static constexpr char first[] = "LogDeviceDel:  abcdef \n";
    static constexpr char second[] = "abc other \n";
    static constexpr char both[] = "LogDeviceDel:  abcdef \nabc other \n";
};

TEST_F(Filters, None_bothPass)
{
    EXPECT_EQ(linesWith("String", ""), both);
}

TEST_F(Filters, String_needsToMatchABeginningOnly)
{
    EXPECT_EQ(linesWith("String", "ABC"), first);
}

TEST_F(Filters, String_doesNotMatchInTheMiddle)
{
    EXPECT_EQ(linesWith("String", "bcd"), "");
}

TEST_F(Filters, FctName_hasToMatchWhole)
{
    EXPECT_EQ(linesWith("FctName", "abc"), second);
}

TEST_F(Filters, FctNameBeginning_isNotEnough)
{
    EXPECT_EQ(linesWith("FctName", "LogDevice ab"), "");
}

TEST_F(Filters, FctNameWithWildcard_matches)
{
    EXPECT_EQ(linesWith("FctName", "logdevice*"), first);
}

TEST_F(Filters, Module_isTheWholeNameAndNotItsColumn)
{
    EXPECT_EQ(linesWith("Module", "ovaapi64"), second);
}

TEST_F(Filters, ModuleAsItsColumnShowsIt_doesNotMatch)
{
    EXPECT_EQ(linesWith("Module", "OVA"), "");
}

TEST_F(Filters, TraceIdOfThisLibrary_bothPass)
{
    EXPECT_EQ(linesWith("TraceId", "other kxovatdx"), both);
}

TEST_F(Filters, TraceIdOfAnother_nothingPasses)
{
    EXPECT_EQ(linesWith("TraceId", "KXOVA"), "");
}

TEST_F(Filters, SeveralLists_allHaveToPass)
{
    set("Module", "CFP");
    EXPECT_EQ(linesWith("FctName", "*"), first);
}

TEST_F(Filters, LineThatDoesNotPass_opensNoFile)
{
    linesWith("String", "nothing");
    EXPECT_FALSE(exists(tracePath(1)));
}

}  // namespace
