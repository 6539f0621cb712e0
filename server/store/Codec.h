// Between the configuration in memory and the registry's form of it.
//
//   <root>\LogDevices\<name>        one key a logical device, REG_SZ values
//   <root>\LogDevices\<name>\Ndi    its Ndi values
//   <root>\LogNames\<name>          one key a logical name, REG_SZ values
//
// Values that others have put there are read too: REG_EXPAND_SZ as it stands, REG_DWORD as a decimal number. Values
// of other types, the unnamed value and further subkeys are no part of the configuration and are left as they are.
#pragma once

#include <string>
#include <string_view>

#include "store/Model.h"
#include "store/Registry.h"

namespace srv {

enum class Family { Device, Name };

inline constexpr std::wstring_view ndiKey = L"Ndi";

// "LogDevices" or "LogNames".
const std::wstring& familyKey(Family family) noexcept;

// The path of an object's key, and of its Ndi values' key.
std::wstring objectPath(Family family, std::wstring_view name);
std::wstring ndiPath(std::wstring_view device);

// Whether a value of this type and name is a part of the configuration.
bool isConfiguration(const RawValue& value) noexcept;

// The text of such a value.
std::wstring textOf(const RawValue& value);

// Stores one value as REG_SZ.
LSTATUS writeText(Registry& registry, const std::wstring& path, const std::wstring& name, std::wstring_view text);

// Reads what an object's key holds; ERROR_FILE_NOT_FOUND if it has none.
LSTATUS readContent(Registry& registry, Family family, std::wstring_view name, Content& content);

// Makes the registry hold exactly this for the object, in several steps. May be done again after it was interrupted.
LSTATUS writeContent(Registry& registry, Family family, std::wstring_view name, const Content& content);

// Whether the rights of the object's keys allow that.
LSTATUS mayWriteContent(Registry& registry, Family family, std::wstring_view name, const Content& content);

// Removes the object's key with all below, in several steps. May be done again.
LSTATUS removeObject(Registry& registry, Family family, std::wstring_view name);

// Whether the rights of the object's keys allow that.
LSTATUS mayRemoveObject(Registry& registry, Family family, std::wstring_view name);

}  // namespace srv
