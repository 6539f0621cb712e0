// Where a registry path of a 32-bit program lies in the registry of the 64-bit system that the server sees.
#pragma once

#include <string>

// Maps a path below HKEY_LOCAL_MACHINE into the 32-bit view: one that begins with "software\", in any case, is moved
// below the 32-bit node. Paths elsewhere, and those that name the node themselves, stay as they are.
void getWoW64Node(std::string& path);
