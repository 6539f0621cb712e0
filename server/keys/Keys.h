// Registry keys by their path, as far as clients may touch them.
#pragma once

#include "base/Results.h"
#include "keys/KeyPath.h"
#include "store/Registry.h"
#include "store/Store.h"

namespace srv {

// Safe to use from any thread. Logical devices and logical names are read and changed through the store, so that what
// is in memory stays right and nobody sees half of a change; everything else is in the registry itself.
//
// Results are Windows error numbers as for registry functions: 2 no such key or value, 5 not allowed, 87 for a name
// or value that may not be stored, 259 past the last.
class Keys
{
 public:
    // `product` is the product's key, which holds the store's key "NORIX"; `machine` is HKEY_LOCAL_MACHINE.
    Keys(Store& store, Registry& product, Registry& machine) : store_(store), product_(product), machine_(machine) {}

    // With the keys above it; an existing key is success.
    Result createKey(std::wstring_view path);

    // With everything below it.
    Result deleteKey(std::wstring_view path);

    Result setValue(std::wstring_view path, std::wstring_view name, std::wstring_view text);
    Result deleteValue(std::wstring_view path, std::wstring_view name);

    Result subkeyAt(std::wstring_view path, std::size_t index, std::wstring& name) const;
    Result value(std::wstring_view path, std::wstring_view name, std::wstring& text) const;
    Result valueAt(std::wstring_view path, std::size_t index, Value& value) const;

 private:
    Registry& registryOf(const KeyPath& key) const
    {
        return key.place == KeyPath::Place::Product ? product_ : machine_;
    }
    Result readValues(std::wstring_view path, std::vector<Value>& values) const;
    Result removeAll(Family family);

    Store& store_;
    Registry& product_;
    Registry& machine_;
};

// Any value as text: numbers in decimal, lists separated by commas, other bytes in hexadecimal digits.
std::wstring shownText(const RawValue& value);

}  // namespace srv
