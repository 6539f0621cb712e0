// Operations on logical devices. Where a device is named, a temporary device of the same client is meant first.
#pragma once

#include "dispatch/Operation.h"

namespace srv::devices {

// Sets several values of a device in one step: of a temporary one in its memory, of another in the store.
Result setTogether(const Call& call, std::wstring_view device, const catalogue::Values& values);

Result exists(const Call& call, Required device, std::uint32_t flags);
Result getEnum(const Call& call, Text netType, std::uint32_t index, Capacity capacity);
Result createFromDef(const Call& call, Required device, Required definition);
Result copy(const Call& call, Required from, Required to);
Result remove(const Call& call, Required device, Ignored);

Result getValue(const Call& call, Required device, Required parameter, Capacity capacity);
Result setValue(const Call& call, Required device, Required parameter, Given text);
Result deleteValue(const Call& call, Required device, Required parameter);
Result getEnumValue(const Call& call, Required device, std::uint32_t index, Capacity nameCapacity,
                    Capacity textCapacity);
Result getValueRaw(const Call& call, Required device, Text subkey, Ignored, Required parameter, Capacity capacity);

Result getNdi(const Call& call, Required device, Required parameter, Capacity capacity, Ignored);
Result setNdi(const Call& call, Required device, Required parameter, Given text, Ignored);
Result deleteNdi(const Call& call, Required device, Required parameter, Ignored);
Result getEnumNdi(const Call& call, Required device, std::uint32_t index, Capacity nameCapacity,
                  Capacity textCapacity, Ignored);

// All devices; with a second form of the request, which the panel sends, those of a net type (NULL or empty: all).
Outcome list(const Call& call, RequestReader& reader, std::string* shown);
Result valueList(const Call& call, Required device, Text subkey, Text, Ignored, Capacity capacity);

Result createTemp(const Call& call, Required device, Capacity capacity);
Result deleteTemp(const Call& call, Required temporary);
Result updateWithTemp(const Call& call, Required temporary, Required device);

// Two requests have one operation code: the enumeration of a device's values, and the question for a template. They
// are told apart by their fields.
Outcome enumValueOrTemplate(const Call& call, RequestReader& reader, std::string* shown);

}  // namespace srv::devices
