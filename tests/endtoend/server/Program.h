// The server's program, run as a user runs it.
#pragma once

#include <string>

#include "base/Owner.h"

class Program
{
 public:
    // Starts kxovasrvx with these arguments.
    explicit Program(const std::wstring& arguments);
    ~Program() { kill(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Reads its output up to a text; false if it ends, or 30 s pass, without it.
    bool prints(const std::string& text);

    // Its exit status, once it has ended; -1 if it does not within 30 s.
    int exitStatus();

    // All that it has printed, standard error included; complete once it has ended.
    const std::string& output() const { return output_; }

    void kill();

 private:
    bool readMore();

    srv::Handle process_;
    srv::Handle reading_;
    std::string output_;
};

// Runs it to its end.
struct Finished
{
    int status;
    std::string output;
};
Finished run(const std::wstring& arguments);
