// The program that the library believes to run in: path and command line, in place of the test's own.
#pragma once

#include <windows.h>

#include <cstring>
#include <string>

#include "importHook.h"

class Program
{
 public:
    Program(const char* path, const char* commandLine)
    {
        path_ = path;
        commandLine_ = commandLine;
    }

 private:
    static DWORD WINAPI moduleFileName(HMODULE, char* buffer, DWORD size)
    {
        std::strncpy(buffer, path_.c_str(), size);
        return static_cast<DWORD>(path_.size());
    }
    static char* WINAPI commandLineOf() { return commandLine_.data(); }

    static inline std::string path_;
    static inline std::string commandLine_;
    ImportHook pathHook_{"GetModuleFileNameA", moduleFileName};
    ImportHook commandLineHook_{"GetCommandLineA", commandLineOf};
};
