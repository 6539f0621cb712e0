// Programs with real command lines, beside settings in the real registry.

#include <gmock/gmock.h>
#include <windows.h>

#include <string>

#include "registryText.h"

namespace {

constexpr char vantikoLanguages[] = R"(SOFTWARE\TAVRONE\VANTIKO_NET\General\Languages)";
constexpr char vantikoExtensions[] = R"(SOFTWARE\TAVRONE\VANTIKO_NET\General\LangExtensions)";

std::string ownFolder()
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string text(path);
    return text.substr(0, text.rfind('\\'));
}

// The probe and its libraries in a folder whose name holds blanks.
class ProgramFolder
{
 public:
    ProgramFolder() : path_(ownFolder() + R"(\language probe of )" + std::to_string(GetCurrentProcessId()))
    {
        CreateDirectoryA(path_.c_str(), nullptr);
        for (const char* const file : files)
            EXPECT_TRUE(CopyFileA((ownFolder() + "\\" + file).c_str(), (path_ + "\\" + file).c_str(), FALSE)) << file;
    }
    ~ProgramFolder()
    {
        for (const char* const file : files)
            DeleteFileA((path_ + "\\" + file).c_str());
        RemoveDirectoryA(path_.c_str());
    }
    std::string program() const { return path_ + R"(\language_probe.exe)"; }

 private:
    static constexpr const char* files[] = {"language_probe.exe", "kxovaapi.dll", "KXONLINX.dll", "kxepromapi.dll"};
    std::string path_;
};

// What a program writes when it is started with this command line.
std::string run(const std::string& program, std::string commandLine)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    CreatePipe(&reader, &writer, &inherited, 0);
    SetHandleInformation(reader, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writer;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                               &startup, &process))
        << GetLastError();
    CloseHandle(writer);
    std::string output;
    char buffer[256];
    for (DWORD count = 0; ReadFile(reader, buffer, sizeof buffer, &count, nullptr) && count;)
        output.append(buffer, count);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    CloseHandle(reader);
    return output;
}

class RealProcess : public testing::Test
{
 protected:
    static void SetUpTestSuite() { folder = new ProgramFolder; }
    static void TearDownTestSuite() { delete folder; }

    static std::string quoted(const std::string& arguments)
    {
        return run(folder->program(), '"' + folder->program() + "\" " + arguments);
    }

    static inline ProgramFolder* folder = nullptr;
};

TEST_F(RealProcess, QuotedPathWithBlanks_letterIsFound)
{
    EXPECT_EQ(quoted("App=Talun LangExt=C"), "/C");
}

TEST_F(RealProcess, BarePathWithBlanks_letterIsFound)
{
    EXPECT_EQ(run(folder->program(), folder->program() + " LangExt=D"), "/D");
}

TEST_F(RealProcess, NameWithoutPath_letterIsFound)
{
    EXPECT_EQ(run(folder->program(), "language_probe LangExt=E"), "/E");
}

TEST_F(RealProcess, QuotedValues_areRead)
{
    EXPECT_EQ(quoted("Title=\"A program\" LangExt=\"J\" -q"), "/J");
}

TEST_F(RealProcess, WinLang_isTheNextWord)
{
    EXPECT_EQ(quoted("WinLang chs"), "chs/K");
}

TEST_F(RealProcess, ApplicationsSettings_areReadFromTheRegistry)
{
    const RegistryText current(vantikoLanguages, "Current", "SPANISH");
    const RegistryText letter(vantikoExtensions, "SPANISH", "D");
    EXPECT_EQ(quoted("App=Vantiko LangExt=C"), "SPANISH/D");
}

TEST_F(RealProcess, QuotedApplication_isTheSame)
{
    const RegistryText current(vantikoLanguages, "Current", "SPANISH");
    const RegistryText letter(vantikoExtensions, "SPANISH", "D");
    EXPECT_EQ(quoted("App=\"Vantiko\""), "SPANISH/D");
}

TEST_F(RealProcess, NoArguments_someLanguageIsFound)
{
    EXPECT_THAT(quoted(""), testing::MatchesRegex("\\w+/\\w"));
}

}  // namespace
