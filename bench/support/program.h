// A program of this build: started, read until it says something, ended.
#pragma once

#include <windows.h>

#include <string>

// The folder of the running program, with a backslash.
inline std::string ownFolder()
{
    char file[MAX_PATH];
    const std::string path(file, GetModuleFileNameA(nullptr, file, MAX_PATH));
    return path.substr(0, path.rfind('\\') + 1);
}

inline const std::string serverProgram = "..\\..\\x64\\bin\\kxovasrvx.exe";

// Ended with its owner.
class Program
{
 public:
    // `program` is relative to the running program's folder.
    Program(const std::string& program, const std::string& arguments)
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        HANDLE writing = nullptr;
        CreatePipe(&reading_, &writing, &inheritable, 0);
        SetHandleInformation(reading_, HANDLE_FLAG_INHERIT, 0);
        std::string command = '"' + ownFolder() + program + "\" " + arguments;
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = startup.hStdError = writing;
        PROCESS_INFORMATION started{};
        if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                           &started)) {
            process_ = started.hProcess;
            CloseHandle(started.hThread);
        }
        CloseHandle(writing);
    }
    ~Program()
    {
        if (process_) {
            TerminateProcess(process_, 0);
            WaitForSingleObject(process_, 30'000);
            CloseHandle(process_);
        }
        CloseHandle(reading_);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Waits until it has written this; false if it ends before.
    bool says(const std::string& text)
    {
        while (output_.find(text) == std::string::npos)
            if (!readMore()) return false;
        return true;
    }

    // Waits for its end.
    int exitStatus()
    {
        while (readMore()) {
        }
        DWORD status = 1;
        WaitForSingleObject(process_, INFINITE);
        GetExitCodeProcess(process_, &status);
        return static_cast<int>(status);
    }
    const std::string& output() const noexcept { return output_; }

 private:
    bool readMore()
    {
        char buffer[4096];
        DWORD length = 0;
        if (!ReadFile(reading_, buffer, sizeof buffer, &length, nullptr) || length == 0) return false;
        output_.append(buffer, length);
        return true;
    }

    HANDLE process_ = nullptr;
    HANDLE reading_ = nullptr;
    std::string output_;
};

inline bool startServer(Program& server)
{
    return server.says("kxovasrvx: ready");
}
