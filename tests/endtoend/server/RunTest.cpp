// kxovasrvx run
#include <gmock/gmock.h>

#include "PipeClient.h"
#include "Program.h"
#include "refusedKey.h"
#include "wire/frame.h"

using namespace bytes;
using testing::HasSubstr;

namespace {

const std::wstring channel = std::wstring(L"\\\\.\\pipe\\") + wire::channelName;

struct Run : testing::Test
{
    void TearDown() override
    {
        // What the tests leave in the machine's store.
        Program server(L"run --quiet");
        if (server.prints("ready")) PipeClient(channel).ask(frame(u16(50) + str(u"KxovaTest") + u32(0)));
    }
    static Bytes create() { return frame(u16(43) + str(u"KxovaTest") + str(u"NX110.MPI")); }
    static Bytes value() { return frame(u16(33) + str(u"KxovaTest") + str(u"Unit") + u32(260)); }
    static Bytes set(std::u16string_view text)
    {
        return frame(u16(34) + str(u"KxovaTest") + str(u"Unit") + str(text));
    }
};

TEST_F(Run, ReadyLine_isPrintedWhenClientsAreServed)
{
    Program server(L"run");
    ASSERT_TRUE(server.prints("kxovasrvx: ready (process ")) << server.output();
    PipeClient client(channel);
    EXPECT_EQ(client.ask(frame(u16(42) + str(u"none") + u32(0))), frame(reply(8012), 42));
}

TEST_F(Run, SecondServer_endsWithStatus3AndSaysWhy)
{
    Program server(L"run --quiet");
    ASSERT_TRUE(server.prints("ready"));
    const Finished second = run(L"run");
    EXPECT_EQ(second.status, 3);
    EXPECT_THAT(second.output, HasSubstr("running already"));
    EXPECT_THAT(second.output, HasSubstr("Stop it first"));
}

TEST_F(Run, Quiet_printsTheReadyLineOnly)
{
    Program server(L"run --quiet");
    ASSERT_TRUE(server.prints("\n"));
    server.kill();
    server.exitStatus();
    EXPECT_THAT(server.output(), testing::MatchesRegex("kxovasrvx: ready .process .*.\r?\n"));
}

TEST_F(Run, DebugLevel_namesEveryRequestWithItsResult)
{
    Program server(L"run --log-level debug");
    ASSERT_TRUE(server.prints("ready"));
    PipeClient(channel).ask(frame(u16(42) + str(u"none") + u32(0)));
    EXPECT_TRUE(server.prints("LogDeviceExists(\"none\", 0) -> 8012")) << server.output();
}

TEST_F(Run, AcknowledgedWrites_outliveAKilledServer)
{
    for (const char16_t* const text : {u"1", u"2", u"3"}) {
        Program server(L"run --quiet");
        ASSERT_TRUE(server.prints("ready"));
        PipeClient client(channel);
        client.ask(create());
        ASSERT_EQ(client.ask(set(text)), frame(reply(0), 34));
        server.kill();
        Program next(L"run --quiet");
        ASSERT_TRUE(next.prints("ready"));
        EXPECT_EQ(PipeClient(channel).ask(value()), frame(reply(0, replyStr(text)), 33));
    }
}

TEST_F(Run, KilledServer_leavesNoStartEventThatClientsWouldWaitFor)
{
    Program server(L"run --quiet");
    ASSERT_TRUE(server.prints("ready"));
    EXPECT_TRUE(srv::Handle(OpenEventA(SYNCHRONIZE, FALSE, wire::serverStartEventName)));
    server.kill();
    EXPECT_FALSE(srv::Handle(OpenEventA(SYNCHRONIZE, FALSE, wire::serverStartEventName)));
}

TEST_F(Run, StoreThatRefuses_isStatus6AndNamesTheKeyUntilItRefusesNoMore)
{
    {
        Program server(L"run --quiet");
        ASSERT_TRUE(server.prints("ready"));
        PipeClient(channel).ask(create());
    }
    const std::wstring store = L"SOFTWARE\\TAVRONE\\NORIX";
    for (const auto& [below, named] :
         {std::pair{L"", "the key \"Journal\" cannot be read"},
          {L"\\Journal", "the key \"Journal\" cannot be read"},
          {L"\\LogDevices\\KxovaTest", "the key \"LogDevices\\KxovaTest\" cannot be read"}}) {
        const RefusedKey refused(HKEY_LOCAL_MACHINE, store + below);
        const Finished result = run(L"run");
        EXPECT_EQ(result.status, 6);
        EXPECT_THAT(result.output, HasSubstr("HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVRONE\\NORIX cannot be opened: "));
        EXPECT_THAT(result.output, HasSubstr("administrator"));
        EXPECT_THAT(result.output, HasSubstr(named));
    }
    Program server(L"run --quiet");
    EXPECT_TRUE(server.prints("ready"));
}

TEST_F(Run, UnusableCatalogue_isStatus1WithFileAndLine)
{
    const Finished result = run(L"run --catalogue Z:\\no\\such\\catalogue.json");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("catalogue.json: There is no such file."));
    EXPECT_THAT(result.output, HasSubstr("--catalogue"));
}

}  // namespace
