// Operations on what the catalogue says of boards. A board is named by its device id, its name or its alias.
#pragma once

#include "dispatch/Operation.h"

namespace srv::boards {

// Where a logical device is named instead of a board: its own value, else what its board has under that name.
Result attribute(const Call& call, Required board, Required parameter, Capacity capacity, Ignored);
Result attributeLang(const Call& call, Required board, Required parameter, Text language, Ignored);

Result valueRaw(const Call& call, Required board, Text path, Required parameter, Capacity capacity);

// A text by its id, of a template of any type ("Boards", "Protocols", "DefaultLogdevices").
Result resourceString(const Call& call, Required folder, Required subfolder, Required id, Text language,
                      Capacity capacity, Ignored);

Result notSupported(const Call& call, Required board, Capacity capacity);

// The ways to use a board, those alone that have the protocol, layer-4 protocol and unit given (empty: any).
Result enumConfiguration(const Call& call, std::uint32_t index, Required board, Text protocol, Text l4Protocol,
                         Text unit, Capacity deviceCapacity, Capacity protocolCapacity, Capacity l4Capacity,
                         Capacity unitCapacity);

}  // namespace srv::boards
