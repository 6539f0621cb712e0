// The targets of one program, each with the folder that its corpus is in.
#pragma once

#include <vector>

#include "targets.h"

struct NamedTarget
{
    const char* name;
    Target* fuzz;
};

std::vector<NamedTarget> targetsHere();
