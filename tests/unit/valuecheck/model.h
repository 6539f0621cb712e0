// The value check once more, written down from its rules in whole numbers and standard strings: what the library is
// compared with.
#pragma once

#include <cstdint>
#include <string>

#include "description.h"

Verdict modelOfTheCheck(const Description& description, const std::string& value);
std::int64_t modelOfANumber(const std::string& text, const std::string& type, const std::string& base);
