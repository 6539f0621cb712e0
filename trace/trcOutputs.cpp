#include "trcOutputs.h"

#include "trcState.h"

namespace trc {

void handToOutput(OutputLine& line, LineFile* file) noexcept
{
    char* const end = line.text + line.length;
    switch (trcOutput) {
        case outputVxd:
            end[0] = 0;
            writeToDriver(line.text, line.length + 1);
            break;
        case outputFile:
            end[0] = '\n';
            if (file) file->write(line.text, line.length + 1);
            break;
        case outputSm:
            end[0] = '\r';
            end[1] = '\n';
            writeToRing(line.text, line.length + 2);
            break;
        case outputDbg:
            end[0] = '\n';
            end[1] = 0;
            OutputDebugStringA(line.text);
            break;
        case outputEngine:
            end[0] = 0;
            writeToEngine(line.text, line.length);
            break;
        default:
            break;  // COM1, COM2 and PIPE can be configured, and write nothing
    }
}

}  // namespace trc
