#include "load.h"

namespace catalogue {

std::wstring LoadError::text() const
{
    std::wstring result = file.wstring();
    if (line > 0) result += L":" + std::to_wstring(line) + L":" + std::to_wstring(column);
    return result + L": " + message;
}

LoadResult load(const std::filesystem::path& file)
{
    return parse({}, file);
}

LoadResult parse(std::string_view, const std::filesystem::path& name)
{
    LoadResult result;
    result.errors.push_back({name, 0, 0, {}, L"The reader of catalogues is not built yet."});
    return result;
}

}  // namespace catalogue
