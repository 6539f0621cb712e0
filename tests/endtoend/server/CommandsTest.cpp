// The commands that do not serve.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "main/options.h"
#include "Program.h"
#include "refusedKey.h"

using testing::HasSubstr;

namespace {

struct CatalogueFile
{
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("kxova" + std::to_string(GetCurrentProcessId()) + ".json");

    explicit CatalogueFile(const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    ~CatalogueFile() { std::filesystem::remove(path); }
    std::wstring argument() const { return L'"' + path.wstring() + L'"'; }
};

TEST(Commands, Version_isTheProductsVersion)
{
    const Finished result = run(L"--version");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, testing::MatchesRegex("kxovasrvx \\d+\\.\\d+\\.\\d+\r?\n"));
}

TEST(Commands, Help_namesCommandsAndExitStatuses)
{
    const Finished result = run(L"--help");
    EXPECT_EQ(result.status, 0);
    for (const char* const word :
         {"run", "install", "uninstall", "start", "stop", "status", "check-catalogue", "hardware", "Exit statuses"})
        EXPECT_THAT(result.output, HasSubstr(word));
}

TEST(Commands, WrongUse_isStatus2)
{
    for (const wchar_t* const arguments :
         {L"", L"dance", L"run --loud", L"run --log-level loud", L"check-catalogue", L"hardware", L"hardware add",
          L"hardware add *TVRA020 --state x", L"hardware remove"})
        EXPECT_EQ(run(arguments).status, 2);
}

TEST(Commands, Hardware_isPluggedInListedAndPulledOut)
{
    const Finished added = run(L"hardware add *TVRA020 --state 14");
    ASSERT_EQ(added.status, 0) << added.output;
    const std::string id = added.output.substr(0, added.output.find_first_of("\r\n"));
    EXPECT_THAT(id, testing::StartsWith("PCI\\VEN_7A50&DEV_3210"));
    EXPECT_THAT(run(L"hardware list").output, HasSubstr(id + "\t*TVRA020\tNX 3210 PCIe\tproblem 14"));
    const std::wstring argument = L'"' + std::wstring(id.begin(), id.end()) + L'"';
    EXPECT_EQ(run(L"hardware remove " + argument).status, 0);
    EXPECT_THAT(run(L"hardware list").output, testing::Not(HasSubstr(id)));
    EXPECT_EQ(run(L"hardware remove " + argument).status, 1);
}

TEST(Commands, HardwareThatTheRegistryRefuses_isStatus6)
{
    ASSERT_EQ(run(L"hardware add *TVRA020 --id refused").status, 0);
    {
        const RefusedKey refused(HKEY_LOCAL_MACHINE, L"SOFTWARE\\TAVRONE\\NORIX\\Hardware");
        for (const wchar_t* const command :
             {L"hardware list", L"hardware remove refused", L"hardware add *TVRA020 --id refused"}) {
            const Finished result = run(command);
            EXPECT_EQ(result.status, 6);
            EXPECT_THAT(result.output, HasSubstr("administrator"));
        }
    }
    EXPECT_EQ(run(L"hardware remove refused").status, 0);
}

TEST(Commands, HardwareThatCannotBe_isStatus1AndSaysWhy)
{
    for (const auto& [arguments, why] : {std::pair{L"*TVRA999", "no board"},
                                         {L"*TVRA060", "install it by hand"},
                                         {L"*TVRA020 --map none", "no map"},
                                         {L"*TVRA020 --net-type ASI", "protocol"},
                                         {L"*TVRA020 --adapter none", "no adapter"}}) {
        const Finished result = run(std::wstring(L"hardware add ") + arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.output, HasSubstr(why));
    }
}

TEST(Commands, CheckCatalogue_ofTheShippedOneIsStatus0)
{
    const Finished result = run(L"check-catalogue \"" + srv::defaultCatalogue().wstring() + L'"');
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_THAT(result.output, HasSubstr("boards"));
}

TEST(Commands, CheckCatalogue_saysFileLineAndWhat)
{
    const CatalogueFile broken("{\n  \"format\": 1,\n  \"boards\": [,]\n}\n");
    const Finished result = run(L"check-catalogue " + broken.argument());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr(broken.path.filename().string() + ":3:"));
}

}  // namespace
