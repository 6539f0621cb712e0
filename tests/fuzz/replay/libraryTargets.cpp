#include "replay.h"

std::vector<NamedTarget> targetsHere()
{
    return {{"buffers", fuzzBuffers},
            {"commandLine", fuzzCommandLine},
            {"filters", fuzzFilters},
            {"lists", fuzzLists},
            {"numbers", fuzzNumbers}};
}
