// A program that is run as a user runs it, and what it prints.
#pragma once

#include <windows.h>

#include <string>

#include "support/win_handle.h"

class Process
{
 public:
    // `program`: its file, relative to the folder of this one.
    Process(const std::wstring& program, const std::wstring& arguments);
    ~Process() { kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // Reads its output up to a text that it has not printed before; false if it ends, or 30 s pass, without it.
    bool prints(const std::string& text);

    // Its exit status, once it has ended; -1 if it does not within 30 s.
    int exitStatus();

    // All that was read, standard error included.
    const std::string& output() const { return output_; }

    bool interrupt() const;  // what Ctrl-Break does
    void suspend() const;    // until it is killed
    void kill();

 private:
    bool readMore();

    platform::KernelObject process_;
    platform::KernelObject reading_;
    DWORD id_ = 0;
    std::string output_;
    std::size_t seen_ = 0;
};
