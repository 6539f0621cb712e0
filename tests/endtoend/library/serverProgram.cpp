#include "serverProgram.h"

#include <memory>

namespace {

std::unique_ptr<ServerProgram> shared;

std::wstring programPath()
{
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    std::wstring path = own;
    path.resize(path.rfind(L'\\'));
    return path + L"\\..\\..\\x64\\bin\\kxovasrvx.exe";
}

}  // namespace

Process::Process(std::wstring commandLine)
{
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    HANDLE writing = nullptr;
    CreatePipe(&reading_, &writing, &inheritable, 0);
    SetHandleInformation(reading_, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writing;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                       &started)) {
        process_ = started.hProcess;
        CloseHandle(started.hThread);
    }
    CloseHandle(writing);
}

bool Process::prints(const std::string& text)
{
    char buffer[4096];
    DWORD length = 0;
    while (output_.find(text) == std::string::npos) {
        if (!ReadFile(reading_, buffer, sizeof buffer, &length, nullptr) || length == 0) return false;
        output_.append(buffer, length);
    }
    return true;
}

int Process::exitStatus()
{
    DWORD status = 0;
    if (WaitForSingleObject(process_, 60'000) != WAIT_OBJECT_0) return -1;
    GetExitCodeProcess(process_, &status);
    return static_cast<int>(status);
}

void Process::kill()
{
    if (process_) {
        TerminateProcess(process_, 99);
        WaitForSingleObject(process_, 30'000);
        CloseHandle(process_);
    }
    if (reading_) CloseHandle(reading_);
    process_ = reading_ = nullptr;
}

int runServerProgram(const std::wstring& arguments)
{
    return Process(L'"' + programPath() + L"\" " + arguments).exitStatus();
}

void wipeStore()
{
    for (const wchar_t* const key :
         {L"LogDevices", L"LogNames", L"MetaData", L"Special", L"Hardware", L"Instances"}) {
        const std::wstring path = std::wstring(L"SOFTWARE\\TAVRONE\\NORIX\\") + key;
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str());
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, path.c_str());
    }
}

ServerProgram::ServerProgram() : process_(L'"' + programPath() + L"\" run --quiet")
{
    EXPECT_TRUE(process_.prints("kxovasrvx: ready"));
}

void WithServer::SetUpTestSuite()
{
    wipeStore();
    shared = std::make_unique<ServerProgram>();
}

void WithServer::TearDownTestSuite()
{
    shared.reset();
    wipeStore();
}
