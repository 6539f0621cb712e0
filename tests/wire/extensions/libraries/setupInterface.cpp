// The setup interface: tells what it was asked, and answers with a state of its own.

#include <cstring>

#include "report.h"

namespace {

long answer(unsigned long* status, unsigned long* problem)
{
    if (status) *status = 0x0180200A;
    if (problem) *problem = 22;
    return 0x77;
}

std::string text(const char* hardwareId)
{
    return hardwareId ? hardwareId : "NULL";
}

// The board's record: size and request first, then two texts that the interface may fill.
std::string described(unsigned char* argument)
{
    unsigned long words[11];
    std::memcpy(words, argument, sizeof words);
    if (words[0] != sizeof words) return " " + std::to_string(words[0]);
    for (const int at : {2, 4}) {
        auto* const buffer = reinterpret_cast<char*>(words[at]);
        std::memset(buffer, 'x', words[at + 1] - 1);
    }
    return " record " + std::to_string(words[0]) + " " + std::to_string(words[1]) + " texts " +
           std::to_string(words[3]) + " " + std::to_string(words[5]) + " rest " +
           std::to_string(words[6] | words[7] | words[8] | words[9] | words[10]);
}

}  // namespace

extern "C" {

__declspec(dllexport) long SoinGetDeviceStateEx2(const char* hardwareId, unsigned char* argument,
                                                 unsigned long* status, unsigned long* problem)
{
    report("Ex2 " + text(hardwareId) + (argument ? described(argument) : " NULL"));
    return answer(status, problem);
}

__declspec(dllexport) long SoinGetDeviceState(const char* hardwareId, unsigned long* status, unsigned long* problem)
{
    report("State " + text(hardwareId));
    return answer(status, problem);
}

}  // extern "C"
