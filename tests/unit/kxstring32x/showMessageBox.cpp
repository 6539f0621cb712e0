// Shows one message box for somebody to look at, and prints what it led to. Used by scripts/look-messagebox.sh:
//     showmessagebox LETTER HELPID TEXT TITLE
#include <cstdio>
#include <cstdlib>

#include "kxstring32x.h"
#include "recordedTrace.h"

namespace {

class LookApp : public CWinApp
{
 public:
    void WinHelp(DWORD_PTR data, UINT command) override
    {
        std::printf("  help: context %lu, command %u\n", static_cast<unsigned long>(data), command);
    }
} app;

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fputs("usage: showmessagebox LETTER HELPID TEXT TITLE\n", stderr);
        return 2;
    }
    const RecordedTrace trace;
    const int button = nMessageBox(nullptr, argv[3], argv[4], MB_YESNOCANCEL | MB_ICONQUESTION,
                                   std::strtoul(argv[2], nullptr, 0), argv[1][0]);
    for (const auto& line : trace.lines())
        std::printf("  trace %3u: %s\n", line.level, line.text.c_str());
    std::printf("  button %d\n", button);
    return 0;
}
