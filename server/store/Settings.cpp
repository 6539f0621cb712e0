#include "store/Settings.h"

#include "store/Codec.h"
#include "store/Names.h"

namespace srv {

Result Settings::read(const std::wstring& path, ValueTable& values) const
{
    values = {};
    std::vector<RawValue> found;
    const LSTATUS status = registry_.values(path, found);
    if (status == ERROR_FILE_NOT_FOUND) return result::ok;
    for (const RawValue& value : found)
        if (isConfiguration(value)) values.set(value.name, textOf(value));
    return static_cast<Result>(status);
}

Result Settings::set(const std::wstring& path, std::wstring_view name, std::wstring_view text)
{
    if (!isValueName(name) || !isValueText(text)) return result::invalidParameter;
    // A key without values means nothing, so it does no harm when the server ends in between.
    LSTATUS status = registry_.createKey(path);
    if (status == ERROR_SUCCESS) status = writeText(registry_, path, std::wstring(name), text);
    return static_cast<Result>(status);
}

Result Settings::erase(const std::wstring& path, std::wstring_view name)
{
    if (!isValueName(name)) return result::invalidParameter;
    const LSTATUS status = registry_.deleteValue(path, std::wstring(name));
    return status == ERROR_FILE_NOT_FOUND ? result::notFound : static_cast<Result>(status);
}

Result Settings::canWrite()
{
    return static_cast<Result>(registry_.createKey({}));
}

}  // namespace srv
