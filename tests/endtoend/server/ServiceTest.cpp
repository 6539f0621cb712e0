// The service: installed, started, stopped and removed as an administrator does it.
#include <gmock/gmock.h>

#include "PipeClient.h"
#include "Program.h"
#include "wire/frame.h"

using namespace bytes;
using testing::HasSubstr;

namespace {

struct Service : testing::Test
{
    void SetUp() override { run(L"uninstall"); }
    void TearDown() override { run(L"uninstall"); }
};

TEST_F(Service, NotInstalled_isStatus5AndSaysHowToInstall)
{
    for (const wchar_t* const command : {L"start", L"stop", L"uninstall"}) {
        const Finished result = run(command);
        EXPECT_EQ(result.status, 5);
        EXPECT_THAT(result.output, HasSubstr("kxovasrvx install"));
    }
}

TEST_F(Service, InstalledAndStarted_servesUntilItIsStopped)
{
    ASSERT_EQ(run(L"install").status, 0);
    EXPECT_EQ(run(L"status").status, 4);
    ASSERT_EQ(run(L"start").status, 0);
    const Finished status = run(L"status");
    EXPECT_EQ(status.status, 0);
    EXPECT_THAT(status.output, HasSubstr("running"));
    {
        PipeClient client(std::wstring(L"\\\\.\\pipe\\") + wire::channelName);
        EXPECT_EQ(client.ask(frame(u16(42) + str(u"none") + u32(0))), frame(reply(8012), 42));
    }
    EXPECT_EQ(run(L"start").status, 3);
    EXPECT_EQ(run(L"run").status, 3);
    EXPECT_EQ(run(L"stop").status, 0);
    EXPECT_EQ(run(L"status").status, 4);
    EXPECT_EQ(run(L"stop").status, 4);
    EXPECT_EQ(run(L"uninstall").status, 0);
    EXPECT_EQ(run(L"start").status, 5);
}

TEST_F(Service, InstalledTwice_isStatus1AndSaysWhatToDo)
{
    ASSERT_EQ(run(L"install").status, 0);
    const Finished again = run(L"install");
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.output, HasSubstr("uninstall"));
}

TEST_F(Service, UnusableCatalogue_isNotInstalled)
{
    EXPECT_EQ(run(L"install --catalogue Z:\\no\\such.json").status, 1);
    EXPECT_EQ(run(L"start").status, 5);
}

TEST_F(Service, CommandOfTheControlManager_typedByAPersonExplainsItself)
{
    const Finished result = run(L"service");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("kxovasrvx run"));
}

}  // namespace
