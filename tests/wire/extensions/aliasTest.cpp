// Aliases of boards and of net types.

#include "requests.h"
#include "scriptedPipe.h"

using testing::ElementsAre;

namespace {

class BoardAlias : public RequestsTest
{
 protected:
    // A server with four boards; the second has no DeviceID, the third no alias.
    void answerBoards()
    {
        channel.answerAll([](const Bytes& request) {
            const std::pair<Bytes, const char*> known[] = {
                {templateRequest(0), "CP 1"},
                {templateRequest(1), "CP 2"},
                {templateRequest(2), "CP 3"},
                {templateRequest(3), "CP 4"},
                {attributeRequest("CP 1", "DeviceID"), "*ID1"},
                {attributeRequest("CP 3", "DeviceID"), "*ID3"},
                {attributeRequest("CP 4", "DeviceID"), "*ID4"},
                {attributeRequest("*ID1", "Alias"), "First"},
                {attributeRequest("*ID4", "Alias"), "Fourth"},
            };
            for (const auto& [asked, text] : known) {
                if (request == asked) return textReply(text);
            }
            return failure(request == templateRequest(4) ? 259 : 8012);
        });
    }
};

TEST_F(BoardAlias, Alias_isResolvedInAnyCase)
{
    answerBoards();
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID("FOURTH"), "*ID4");
}

TEST_F(BoardAlias, Enumeration_endsWithTheMatch)
{
    answerBoards();
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID("first"), "*ID1");
    EXPECT_THAT(channel.requests(), ElementsAre(templateRequest(0), attributeRequest("CP 1", "DeviceID"),
                                                attributeRequest("*ID1", "Alias")));
}

TEST_F(BoardAlias, UnknownName_isReturnedAsItIs)
{
    answerBoards();
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID("Third"), "Third");
}

// A board without an alias must not pass for one whose alias is empty.
TEST_F(BoardAlias, EmptyName_isReturnedAsItIs)
{
    answerBoards();
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID(""), "");
}

TEST_F(BoardAlias, NoServer_returnsTheName)
{
    channel.answer({});
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID("First"), "First");
}

const std::string netTypes = R"(software\wow6432node\TAVRONE\NORIX\DefDevices\CP_TYPE)";

class NetTypeAlias : public testing::Test
{
 protected:
    NetTypeAlias()
    {
        pipe.answer(textReply("MPI"));
        pipe.answer(failure(2));
        pipe.answer(textReply("DP"));
        pipe.answer(textReply("Profi"));
        pipe.answer(failure(259));
    }
    ScriptedPipe pipe;
};

TEST_F(NetTypeAlias, Alias_isResolvedInAnyCase)
{
    EXPECT_STREQ(DCFG_AliasRecalcNetType("PROFI"), "DP");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(21).str(netTypes).u32(0).bytes(),
                                             Message(22).str(netTypes + R"(\MPI)").str("Alias").bytes(),
                                             Message(21).str(netTypes).u32(1).bytes(),
                                             Message(22).str(netTypes + R"(\DP)").str("Alias").bytes()));
}

TEST_F(NetTypeAlias, UnknownName_isReturnedAsItIs)
{
    EXPECT_STREQ(DCFG_AliasRecalcNetType("Other"), "Other");
    EXPECT_EQ(pipe.requests().size(), 5u);
}

}  // namespace
