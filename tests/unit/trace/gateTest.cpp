// What passes the gate, and what a call that does not pass costs.
#include "traceFixture.h"

namespace {

class Gate : public Trace
{
 protected:
    void startWithLevel(const char* level)
    {
        configureFile();
        set("Level", level);
        start();
    }

    std::string written() const { return contentOf(tracePath(1)); }

    int evaluated = 0;
    const char* argument()
    {
        ++evaluated;
        return "value";
    }
};

TEST_F(Gate, BeforeTheFirstRead_everyLevelPasses)
{
    for (unsigned bit = 0; bit < 32; ++bit)
        EXPECT_TRUE(TrcEnabled(1u << bit)) << bit;
    EXPECT_TRUE(TrcEnabled(0));
}

TEST_F(Gate, FirstCallWithoutStart_readsTheConfigurationAndWrites)
{
    configureFile();
    set("Level", "0x40");
    KXTRACE("F", TRC_DETAIL, "wanted");
    EXPECT_EQ(written(), "F wanted \n");
}

TEST_F(Gate, FirstCallWithoutStart_isDroppedWhenItsLevelIsNotWanted)
{
    configureFile();
    set("Level", "0x40");
    KXTRACE("F", TRC_ENTRY, "not wanted");
    EXPECT_FALSE(exists(tracePath(1)));
    EXPECT_FALSE(TrcEnabled(TRC_ENTRY));
    EXPECT_TRUE(TrcEnabled(TRC_DETAIL));
}

TEST_F(Gate, LevelBitClear_argumentsAreNotEvaluated)
{
    startWithLevel("0x40");
    KXTRACE("F", TRC_ENTRY, "%s", argument());
    EXPECT_EQ(evaluated, 0);
    EXPECT_FALSE(exists(tracePath(1)));
}

TEST_F(Gate, LevelBitSet_argumentsAreEvaluatedOnce)
{
    startWithLevel("0x40");
    KXTRACE("F", TRC_DETAIL, "%s", argument());
    EXPECT_EQ(evaluated, 1);
    EXPECT_EQ(written(), "F value \n");
}

TEST_F(Gate, Level0x88_entryAndResultPass)
{
    startWithLevel("0x88");
    KXTRACE("F", TRC_ENTRY, "entry");
    KXTRACE("F", TRC_DETAIL, "detail");
    KXTRACE("F", TRC_RESOURCE, "resource");
    KXTRACE("F", TRC_PE, "pe");
    KXTRACE("F", TRC_RESULT, "result");
    EXPECT_EQ(written(), "F entry \nF result \n");
}

TEST_F(Gate, NoKey_nothingPasses)
{
    start();
    EXPECT_FALSE(TrcEnabled(0xFFFFFFFF));
}

TEST_F(Gate, LevelMissing_nothingPasses)
{
    configureFile();
    remove("Level");
    start();
    EXPECT_FALSE(TrcEnabled(0xFFFFFFFF));
}

TEST_F(Gate, GenerationChanged_passesOnceAndTakesTheNewLevel)
{
    startWithLevel("0");
    EXPECT_FALSE(TrcEnabled(TRC_ENTRY));
    set("Level", "0x40");
    raiseGeneration();
    EXPECT_TRUE(TrcEnabled(TRC_ENTRY));
    KXTRACE("F", TRC_ENTRY, "opens the gate, is not wanted");
    EXPECT_FALSE(TrcEnabled(TRC_ENTRY));
    KXTRACE("F", TRC_DETAIL, "wanted");
    EXPECT_EQ(written(), "F wanted \n");
}

TEST_F(Gate, GenerationUnchanged_theRegistryIsNotReadAgain)
{
    startWithLevel("0x40");
    set("Level", "0");
    KXTRACE("F", TRC_DETAIL, "still wanted");
    EXPECT_EQ(written(), "F still wanted \n");
}

TEST_F(Gate, WriteWithoutGate_doesNotAskForTheLevel)
{
    startWithLevel("0x40");
    TrcWriteLocked("F", TRC_ENTRY, "written directly");
    EXPECT_EQ(written(), "F written directly \n");
}

TEST_F(Gate, ModuleGiven_isShownAndTheMacroIsOneStatement)
{
    startWithLevel("0xFF");
    set("Format", "SHORT");
    raiseGeneration();
    if (evaluated == 0)
        KXTRACE_MODULE("OVAAPI64", "F", TRC_DETAIL, "%d", 7);
    else
        KXTRACE("F", TRC_DETAIL, "other");
    EXPECT_EQ(written(), "S KXOVATDX FM OVA          F 7\n");
}

TEST_F(Gate, Macro_namesThisFileAndItsLine)
{
    startWithLevel("0xFF");
    set("Format", "LONG");
    raiseGeneration();
    KXTRACE("F", TRC_DETAIL, "here");
    char place[32];
    std::snprintf(place, sizeof place, " gateTest.cpp,%05d F here\n", __LINE__ - 2);
    EXPECT_NE(written().find(place), std::string::npos) << written();
}

}  // namespace
