// The application framework without its windows and modules.
#pragma once

#include "CString.h"
#include "CStringList.h"
#include "Exceptions.h"

class ModuleContext
{
 public:
    ModuleContext() noexcept {}
};
