// "kxova watch" as a user runs it. How Ctrl-C ends it is for watch-ctrl-c.sh: here there is no console.
#include "Clients.h"

namespace {

using Watch = Clients;

TEST_F(Watch, Changes_areOneLineEach)
{
    Process watch(L"kxova.exe", L"watch");
    ASSERT_TRUE(watch.prints("watching for changes")) << watch.output();
    otherSets(L"eins");
    EXPECT_TRUE(watch.prints("device \"e2e device\": note is now \"eins\""));
    otherSets(L"zwei");
    EXPECT_TRUE(watch.prints("device \"e2e device\": note is now \"zwei\", was \"eins\"\n"));
    ASSERT_EQ(other(L"create \"e2e more\""), "result 0");
    EXPECT_TRUE(watch.prints("device \"e2e more\" created\n"));
    LogDeviceSetValue("e2e more", "enable_delete", "true");
    ASSERT_EQ(other(L"delete \"e2e more\""), "result 0");
    EXPECT_TRUE(watch.prints("device \"e2e more\" deleted\n"));
}

TEST_F(Watch, Json_isOneObjectALine)
{
    otherSets(L"before");
    Process watch(L"kxova.exe", L"watch --json");
    ASSERT_TRUE(watch.prints("watching for changes")) << watch.output();
    otherSets(L"after");
    EXPECT_TRUE(
        watch.prints("{\"change\":\"set\",\"kind\":\"device\",\"name\":\"e2e device\",\"parameter\":\"note\","
                     "\"value\":\"after\",\"before\":\"before\"}\n"))
        << watch.output();
}

TEST_F(Watch, Hardware_isPrinted)
{
    Process watch(L"kxova.exe", L"watch");
    ASSERT_TRUE(watch.prints("watching for changes")) << watch.output();
    ASSERT_EQ(plug(L"add *TVRA004 --id e2e-board"), 0);
    EXPECT_TRUE(watch.prints("hardware \"e2e-board\" arrived\n")) << watch.output();
    ASSERT_EQ(plug(L"remove e2e-board"), 0);
    EXPECT_TRUE(watch.prints("hardware \"e2e-board\" was removed\n")) << watch.output();
}

TEST_F(Watch, RestartOfTheServer_isSurvived)
{
    Process watch(L"kxova.exe", L"watch");
    ASSERT_TRUE(watch.prints("watching for changes")) << watch.output();
    server->stop();
    server->start();
    otherSets(L"again");
    EXPECT_TRUE(watch.prints("note is now \"again\"")) << watch.output();
}

TEST_F(Watch, WithoutAServer_saysSo)
{
    server->stop();
    Process watch(L"kxova.exe", L"watch");
    EXPECT_EQ(watch.exitStatus(), 3) << watch.output();
    EXPECT_NE(watch.output().find("the configuration server is not running"), std::string::npos) << watch.output();
    server->start();
}

}  // namespace
