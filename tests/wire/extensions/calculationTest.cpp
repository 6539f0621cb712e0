// The parameter that follows from the highest station address.

#include "requests.h"

using testing::ElementsAre;

namespace {

constexpr char function[] = "DCFG_SpezielleBerechnungen:";

class Calculation : public RequestsTest
{
};

TEST_F(Calculation, Mpi_storesTheHighestAddressPlus8)
{
    channel.answer(textReply("MPI"));
    channel.answer(textReply("31"));
    DCFG_SpezielleBerechnungen("Line 1");
    EXPECT_THAT(channel.requests(), ElementsAre(rawRequest("Line 1", "CP_TYPE"), rawRequest("Line 1", "highest_adr"),
                                                setRequest("Line 1", "ttr", "39")));
}

TEST_F(Calculation, PlainName_doesTheSame)
{
    channel.answer(textReply("MPI"));
    channel.answer(textReply("126"));
    DCFG_SpezielleBerechnungenEx("Line 1");
    EXPECT_EQ(channel.requests().back(), setRequest("Line 1", "ttr", "134"));
}

TEST_F(Calculation, OtherProtocols_storeNothing)
{
    for (const char* const type : {"mpi", "DP", "MPI ", ""}) {
        channel.reset();
        channel.answer(textReply(type));
        DCFG_SpezielleBerechnungen("Line 1");
        EXPECT_THAT(channel.requests(), ElementsAre(rawRequest("Line 1", "CP_TYPE"))) << type;
    }
}

TEST_F(Calculation, UnreadableValues_storeNothing)
{
    channel.answer(failure(8012));
    DCFG_SpezielleBerechnungen("Line 1");
    EXPECT_EQ(channel.requests().size(), 1u);
    channel.answer(textReply("MPI"));
    channel.answer(failure(8012));
    DCFG_SpezielleBerechnungen("Line 1");
    EXPECT_EQ(channel.requests().size(), 3u);
}

TEST_F(Calculation, AddressWithoutDigits_countsAs0)
{
    channel.answer(textReply("MPI"));
    channel.answer(textReply("none"));
    DCFG_SpezielleBerechnungen("Line 1");
    EXPECT_EQ(channel.requests().back(), setRequest("Line 1", "ttr", "8"));
}

TEST_F(Calculation, Trace)
{
    const TraceCapture capture;
    channel.answer(textReply("MPI"));
    channel.answer(textReply("31"));
    DCFG_SpezielleBerechnungen("Line 1");
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FA", function, ">> LogDev=Line 1"}, TraceLine{"FM", function, "TTR   39"}));
}

}  // namespace
