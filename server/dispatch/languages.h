// Values as a person reads them, in a language.
//
// A language is named by its two-letter code or its letter; NULL, empty or unknown stands for English. The text is,
// in this order: that of the catalogue, if the value still is the one that the catalogue gave; that of the value in
// the list of the parameter's possible values; the value itself.
#pragma once

#include "dispatch/Operation.h"

namespace srv::languages {

Result deviceValue(const Call& call, Required device, Required parameter, Text language, Ignored);
Result nameValue(const Call& call, Required name, Required parameter, Text language, Capacity capacity, Ignored);

}  // namespace srv::languages
