#include "trcState.h"

#include "Kxotrc.h"
#include "trcObjects.h"
#include "trcText.h"

constinit std::uint32_t trcLevelMask = 0xFFFFFFFF;  // every level, until the configuration has been read
constinit std::uint32_t trcLastGeneration = 0;

namespace trc {
namespace {

constexpr std::int32_t defaultBytesPerFile = 0x200000;
constexpr std::uint32_t defaultSmSize = 2000000;
constexpr char defaultFileBase[] = "C:\\TMP\\KXFILE";

}  // namespace

constinit int trcFormat = formatLong;
constinit int trcOutput = outputFile;
constinit int trcConsult = 0;
constinit std::uint64_t trcConsultRead = 0;
constinit double trcCounterFrequency = 1;
constinit std::int32_t trcBytesPerFile = defaultBytesPerFile;
constinit std::uint32_t trcSmSize = defaultSmSize;
constinit char trcFileBase[fileBaseSize] = "C:\\TMP\\KXFILE";
constinit FilterList trcTraceIds, trcModules, trcFunctions, trcTexts;
constinit std::uint32_t trcCurrentFile = 1;
constinit bool trcEngineUsable = true;
constinit bool trcReportOnce = true;
constinit char trcErrorLine[maxLine + 1] = {};
constinit bool trcStopped = false;

void resetState() noexcept
{
    trcLevelMask = 0xFFFFFFFF;
    trcLastGeneration = 0;
    trcFormat = formatLong;
    trcOutput = outputFile;
    trcConsult = 0;
    trcConsultRead = 0;
    trcBytesPerFile = defaultBytesPerFile;
    trcSmSize = defaultSmSize;
    copyCut(trcFileBase, defaultFileBase);
    for (FilterList* list : {&trcTraceIds, &trcModules, &trcFunctions, &trcTexts})
        *list = FilterList();
    trcCurrentFile = 1;
    trcEngineUsable = true;
    trcReportOnce = true;
    trcErrorLine[0] = 0;
    trcStopped = false;
}

}  // namespace trc
