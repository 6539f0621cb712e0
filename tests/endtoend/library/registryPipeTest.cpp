// Registry requests over the server pipe, through the library: several clients, and a server that comes and goes.
#include <thread>
#include <vector>

#include "kxovaapi.h"
#include "serverProgram.h"

namespace {

constexpr char testKey[] = "SOFTWARE\\TAVRONE\\NORIX\\KxovaTest";

std::string valueOf(const char* key, const char* name)
{
    return text([&](char* buffer, unsigned long* length) { return KxRegGetValue(key, name, buffer, length); });
}

struct RegistryPipe : testing::Test
{
    static void SetUpTestSuite() { wipeStore(); }
    void TearDown() override
    {
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, testKey);
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, testKey);
        wipeStore();
    }
};

TEST_F(RegistryPipe, KeyAndValues_areMadeReadListedAndDeleted)
{
    const ServerProgram server;
    EXPECT_EQ(KxRegCreateKey(testKey), 0);
    EXPECT_EQ(KxRegSetValue(testKey,
                            "Gr\xFC\xDF"
                            "e",
                            "\xE4"),
              0);
    EXPECT_EQ(valueOf(testKey,
                      "Gr\xFC\xDF"
                      "e"),
              "\xE4");
    EXPECT_EQ(pair([](char* n, unsigned long* nl, char* v, unsigned long* vl) {
                  return KxRegEnumValue(testKey, 0, n, nl, v, vl);
              }),
              "Gr\xFC\xDF"
              "e=\xE4");
    EXPECT_EQ(KxRegDelValue(testKey,
                            "Gr\xFC\xDF"
                            "e"),
              0);
    EXPECT_EQ(valueOf(testKey,
                      "Gr\xFC\xDF"
                      "e"),
              "#2");
    EXPECT_EQ(KxRegDelKey(testKey), 0);
    EXPECT_EQ(KxRegDelKey(testKey), 2);
}

TEST_F(RegistryPipe, LogicalDeviceMadeByItsKey_isThereForTheChannel)
{
    const ServerProgram server;
    EXPECT_EQ(KxRegCreateKey("SOFTWARE\\TAVRONE\\NORIX\\LogDevices\\Made"), 0);
    EXPECT_EQ(LogDeviceExists("Made", 0), 0);
    EXPECT_EQ(KxRegSetValue("SOFTWARE\\TAVRONE\\NORIX\\LogDevices\\Made", "CP_TYPE", "MPI"), 0);
    EXPECT_EQ(text([](char* b, unsigned long* l) { return LogDeviceGetValue("Made", "CP_TYPE", b, l); }), "MPI");
    EXPECT_EQ(KxRegDelKey("SOFTWARE\\TAVRONE\\NORIX\\LogDevices\\Made"), 0);
    EXPECT_EQ(LogDeviceExists("Made", 0), 8012);
}

TEST_F(RegistryPipe, ForeignKeys_areRefusedAndStay)
{
    const ServerProgram server;
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\KxovaForeign", &key), ERROR_SUCCESS);
    RegCloseKey(key);
    for (const char* const path : {
             "SOFTWARE\\KxovaForeign",
             "software\\kxovaforeign\\",
             "SOFTWARE\\TAVRONE\\..\\KxovaForeign",
             "SOFTWARE\\\\KxovaForeign",
             "SOFTWARE\\WOW6432Node\\KxovaForeign",
             "\\SOFTWARE\\KxovaForeign",
             "SOFTWARE\\TAVRONE\\NORIX",
             "SOFTWARE\\TAVRONE\\",
             "SYSTEM\\CurrentControlSet\\Services",
             "Hardware\\DeviceMap",
         }) {
        EXPECT_EQ(KxRegDelKey(path), 5) << path;
    }
    for (const char* const path :
         {"SOFTWARE\\KxovaForeign", "SOFTWARE\\TAVRONE\\WOW6432Node", "Hardware\\DeviceMap"}) {
        EXPECT_EQ(KxRegCreateKey(path), 5) << path;
        EXPECT_EQ(KxRegSetValue(path, "a", "1"), 5) << path;
        EXPECT_EQ(KxRegDelValue(path, "a"), 5) << path;
    }
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\KxovaForeign"), ERROR_SUCCESS);
}

TEST_F(RegistryPipe, SerialPorts_areReadable)
{
    const ServerProgram server;
    const std::string first = pair([](char* n, unsigned long* nl, char* v, unsigned long* vl) {
        return KxRegEnumValue("Hardware\\DeviceMap\\SerialComm", 0, n, nl, v, vl);
    });
    EXPECT_NE(first, "#5");
}

TEST_F(RegistryPipe, WithoutAServer_theCallFailsAtOnce)
{
    KxRegCreateKey(testKey);  // may still hold the pipe of an earlier test's server
    EXPECT_EQ(KxRegCreateKey(testKey), ERROR_INVALID_HANDLE);
}

TEST_F(RegistryPipe, ServerThatIsStarting_isWaitedFor)
{
    // What a client sees of a server that has begun to start.
    const HANDLE starting = CreateEventA(nullptr, TRUE, FALSE, "_KxOvaSRVStartSRVEvent");
    long result = -1;
    std::thread client([&] { result = KxRegCreateKey(testKey); });
    const ServerProgram server;
    client.join();
    CloseHandle(starting);
    EXPECT_EQ(result, 0);
}

TEST_F(RegistryPipe, ServerRestartedBetweenTwoCalls_isFoundAgain)
{
    {
        const ServerProgram server;
        ASSERT_EQ(KxRegCreateKey(testKey), 0);
        ASSERT_EQ(KxRegSetValue(testKey, "a", "1"), 0);
    }
    const ServerProgram server;
    EXPECT_EQ(valueOf(testKey, "a"), "1");
}

// Run by the test below, in processes of their own.
TEST(RegistryPipeClient, DISABLED_writesAndReadsItsValue)
{
    const std::string name = std::to_string(GetCurrentProcessId());
    for (int i = 0; i < 50; ++i) {
        const std::string wanted = std::to_string(i);
        ASSERT_EQ(KxRegSetValue(testKey, name.c_str(), wanted.c_str()), 0);
        ASSERT_EQ(valueOf(testKey, name.c_str()), wanted);
    }
}

TEST_F(RegistryPipe, SeveralClientProcesses_getEachItsOwnAnswers)
{
    const ServerProgram server;
    ASSERT_EQ(KxRegCreateKey(testKey), 0);
    const std::wstring client =
        std::wstring(GetCommandLineW()) + L" --gtest_filter=RegistryPipeClient.* --gtest_also_run_disabled_tests";
    Process clients[] = {Process(client), Process(client), Process(client), Process(client)};
    for (Process& process : clients)
        EXPECT_EQ(process.exitStatus(), 0);
    EXPECT_NE(pair([](char* n, unsigned long* nl, char* v, unsigned long* vl) {
                  return KxRegEnumValue(testKey, 3, n, nl, v, vl);
              }),
              "#259");
}

}  // namespace
