// Which processors a library is for.
#pragma once

#include <istream>

enum class Machine { None, X86, X64, Other };

// None: the stream holds no Windows program or library.
Machine machineOf(std::istream& stream);
