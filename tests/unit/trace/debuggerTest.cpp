// Output DBG.
#include <gmock/gmock.h>

#include "traceFixture.h"

namespace {

using testing::ElementsAre;

class Debugger : public Trace
{
 protected:
    Debugger() { configure("DBG"); }
};

TEST_F(Debugger, Line_withALineFeed)
{
    start();
    const DebuggerCapture debugger;
    line("one");
    line("two");
    EXPECT_THAT(debugger.texts(), ElementsAre("F one \n", "F two \n"));
}

TEST_F(Debugger, ErrorLine_isShown)
{
    start();
    const DebuggerCapture debugger;
    TrcError("something");
    EXPECT_THAT(debugger.texts(), ElementsAre("E something\n"));
}

TEST_F(Debugger, ErrorLineTooLong_isCutToALine)
{
    start();
    const DebuggerCapture debugger;
    TrcError(std::string(1000, 'x').c_str());
    EXPECT_THAT(debugger.texts(), ElementsAre("E " + std::string(386, 'x') + "\n"));
}

TEST_F(Debugger, LongestLine_isWhole)
{
    start();
    const DebuggerCapture debugger;
    TrcWriteLocked(std::string(40, 'f').c_str(), TRC_DETAIL, std::string(300, 'x').c_str());
    EXPECT_THAT(debugger.texts(), ElementsAre(std::string(34, 'f') + " " + std::string(256, 'x') + " \n"));
}

TEST_F(Debugger, Read_saysNothing)
{
    const DebuggerCapture debugger;
    start();
    EXPECT_THAT(debugger.texts(), ElementsAre());
}

}  // namespace
