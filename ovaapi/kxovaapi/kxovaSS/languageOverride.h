// A language extension that takes precedence over what Windows says, for the whole process. Empty; no function of the
// library sets it yet.
#pragma once

#include <string>

extern std::string languageExtOverride;
