// The commands that do not serve.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "main/options.h"
#include "Program.h"

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
         {"run", "install", "uninstall", "start", "stop", "status", "check-catalogue", "Exit statuses"})
        EXPECT_THAT(result.output, HasSubstr(word));
}

TEST(Commands, WrongUse_isStatus2)
{
    for (const wchar_t* const arguments : {L"", L"dance", L"run --loud", L"run --log-level loud", L"check-catalogue"})
        EXPECT_EQ(run(arguments).status, 2);
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
