// The second set of names for values of logical devices and logical names: what each forwards to.

#include "callsTest.h"
#include "kxframework.h"

namespace {

class Wrappers : public CallsTest
{
 protected:
    // The one request that a call makes, answered with a failure.
    template <typename Call>
    Bytes requestOf(Call call)
    {
        channel.reset();
        channel.answer(failure(8012));
        EXPECT_EQ(call(), 8012);
        EXPECT_EQ(channel.requests().size(), 1u);
        return channel.requests().empty() ? Bytes() : channel.requests().front();
    }
    // What a string form delivers for an answer, over what the string held before.
    template <typename Call>
    std::string delivered(const Bytes& reply, long result, Call call)
    {
        channel.reset();
        channel.answer(reply);
        CString text("before");
        EXPECT_EQ(call(text), result);
        return std::string(text, static_cast<std::size_t>(text.GetLength()));
    }
};

TEST_F(Wrappers, LogNameSetValue_setsTheNamesValue)
{
    EXPECT_EQ(requestOf([] { return DCFG_LogNameSetValue("n", "p", "v"); }),
              Message(65).str("n").str("p").str("v").bytes());
}

TEST_F(Wrappers, LogDeviceSetValue_translatesLikeTheFunctionItForwardsTo)
{
    EXPECT_EQ(requestOf([] { return DCFG_LogDeviceSetValue("d", "busparam", "USER"); }),
              Message(34).str("d").str("busparam").str("3").bytes());
}

TEST_F(Wrappers, LogDeviceSetNdi_setsTheNdiValueUnderBothNames)
{
    const Bytes request = Message(115).str("d").str("p").str("v").u32(1).bytes();
    EXPECT_EQ(requestOf([] { return DCFG_LogDeviceSetNdi("d", "p", "v"); }), request);
    EXPECT_EQ(requestOf([] { return DCFG_LogDeviceSetNdiEx("d", "p", "v"); }), request);
}

TEST_F(Wrappers, LogDeviceDelNdi_deletesTheNdiValueUnderBothNames)
{
    const Bytes request = Message(116).str("d").str("p").u32(1).bytes();
    EXPECT_EQ(requestOf([] { return DCFG_LogDeviceDelNdi("d", "p"); }), request);
    EXPECT_EQ(requestOf([] { return DCFG_LogDeviceDelNdiEx("d", "p"); }), request);
}

TEST_F(Wrappers, LogDeviceGetNdi_bufferFormReadsIntoTheCallersBuffer)
{
    channel.answer(textReply("true"));
    EXPECT_EQ(DCFG_LogDeviceGetNdi("d", "hidden", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "true");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{Message(114).str("d").str("hidden").u32(260).u32(1).bytes()});
}

TEST_F(Wrappers, LogDeviceGetNdi_bufferFormWithoutADeviceIsRefused)
{
    EXPECT_EQ(DCFG_LogDeviceGetNdi(nullptr, "p", out.texts[0], out.texts[0]), 87);
    EXPECT_TRUE(channel.requests().empty());
}

TEST_F(Wrappers, LogDeviceGetNdi_stringFormAssignsOnSuccessAlone)
{
    const auto call = [](CString& text) { return DCFG_LogDeviceGetNdi("d", "p", &text); };
    EXPECT_EQ(delivered(textReply("true"), 0, call), "true");
    EXPECT_EQ(delivered(failure(8012), 8012, call), "before");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{Message(114).str("d").str("p").u32(260).u32(1).bytes()});
}

TEST_F(Wrappers, LogDeviceGetNdi_stringFormWithoutADeviceSendsNull)
{
    CString text;
    EXPECT_EQ(requestOf([&] { return DCFG_LogDeviceGetNdi(nullptr, "p", &text); }),
              Message(114).nullStr().str("p").u32(260).u32(1).bytes());
}

TEST_F(Wrappers, LogDeviceGetValue_stringFormIsTheStoredText)
{
    const auto call = [](CString& text) { return DCFG_LogDeviceGetValue("d", "busparam", &text); };
    EXPECT_EQ(delivered(textReply("3"), 0, call), "3");
    EXPECT_EQ(delivered(failure(8012), 8012, call), "before");
    EXPECT_EQ(delivered(otherKind(), 8621, call), "before");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{rawRead("d", "busparam")});
}

TEST_F(Wrappers, LogNameGetValue_stringFormIsTheNamesValue)
{
    const auto call = [](CString& text) { return DCFG_LogNameGetValue("n", "p", text); };
    EXPECT_EQ(delivered(textReply("Line 1"), 0, call), "Line 1");
    EXPECT_EQ(delivered(textReply(""), 0, call), "");
    EXPECT_EQ(delivered(failure(8012), 8012, call), "before");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{Message(66).str("n").str("p").u32(260).bytes()});
}

TEST_F(Wrappers, StringForms_withoutAStringAreRefused)
{
    EXPECT_EQ(DCFG_LogDeviceGetValue("d", "p", static_cast<CString*>(nullptr)), 87);
    EXPECT_EQ(DCFG_LogDeviceGetNdi("d", "p", static_cast<CString*>(nullptr)), 87);
    EXPECT_TRUE(channel.requests().empty());
}

}  // namespace
