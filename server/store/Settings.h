// Values beside the configuration: single texts below keys of their own, read from the registry at each request.
//
//   <root>\MetaData\<folder>\<item>                metadata of an item, REG_SZ values by parameter
//   <root>\MetaData\<folder>\<subfolder>\<item>    the same in a subfolder
//   <root>\Special                                 special values that were set, REG_SZ
#pragma once

#include <string>
#include <string_view>

#include "base/Results.h"
#include "store/Model.h"
#include "store/Registry.h"

namespace srv {

// Safe to use from any thread. Setting or deleting is one step of the registry's and needs no journal: it has
// happened or not. Results: 0, 87 for what may not be stored, 8012 for what is not there, or the registry's error.
class Settings
{
 public:
    explicit Settings(Registry& registry) : registry_(registry) {}

    // The values of a key; none if there is no such key.
    Result read(const std::wstring& path, ValueTable& values) const;

    Result set(const std::wstring& path, std::wstring_view name, std::wstring_view text);
    Result erase(const std::wstring& path, std::wstring_view name);

    // Whether the registry lets this server write.
    Result canWrite();

 private:
    Registry& registry_;
};

}  // namespace srv
