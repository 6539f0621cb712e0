// Who may do what with the things that library and server share with other processes.
#pragma once

#include <string>
#include <vector>

struct Access
{
    std::string object;  // its name
    std::string kind;    // "pipe", "event", "mutex", "memory", "key"
    std::string rights;  // in words; why they are not known where they are not
    std::string sddl;    // as the system writes them; empty where they are not known
};

std::vector<Access> examineAccess();
