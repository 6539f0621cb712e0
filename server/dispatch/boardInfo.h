// Single facts about a board and about one of its instances, by number; docs/server.md lists the numbers.
//
// The board is named by its device id, name or alias; the instance by its map and its hardware instance id, where
// NULL or empty stands for any, so that the first is meant.
#pragma once

#include "dispatch/Operation.h"

namespace srv::boardInfo {

// As text.
Result text(const Call& call, std::uint32_t what, Required board, Text map, Text hardwareInstanceId, Text language,
            Capacity capacity);

// As bytes: texts in the ANSI code page with their terminator, numbers as 32 bits.
Result bytes(const Call& call, std::uint32_t what, Required board, Text map, Text hardwareInstanceId,
             Capacity capacity);

}  // namespace srv::boardInfo
