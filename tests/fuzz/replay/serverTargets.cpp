#include "replay.h"

std::vector<NamedTarget> targetsHere()
{
    return {{"requests", fuzzRequests}, {"serverTexts", fuzzServerTexts}};
}
