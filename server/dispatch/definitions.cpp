#include "dispatch/definitions.h"

#include <iterator>

#include "store/Codec.h"

namespace srv {

namespace {

template <typename T>
const std::wstring* nameAt(const catalogue::Map<T>& map, std::size_t index) noexcept
{
    return index < map.size() ? &std::next(map.begin(), static_cast<std::ptrdiff_t>(index))->first : nullptr;
}

const catalogue::Values* valuesAt(const catalogue::Node& tree, std::wstring_view path)
{
    const catalogue::Node* const node = tree.at(path);
    return node ? &node->values : nullptr;
}

std::wstring_view withoutBackslashes(std::wstring_view path) noexcept
{
    const std::size_t begin = path.find_first_not_of(L'\\');
    if (begin == std::wstring_view::npos) return {};
    return path.substr(begin, path.find_last_not_of(L'\\') + 1 - begin);
}

}  // namespace

std::optional<TemplateType> templateTypeNamed(std::wstring_view name) noexcept
{
    if (catalogue::equalNoCase(name, L"Boards")) return TemplateType::Boards;
    if (catalogue::equalNoCase(name, L"Protocols")) return TemplateType::Protocols;
    if (catalogue::equalNoCase(name, L"DefaultLogdevices")) return TemplateType::DefaultLogicalDevices;
    return std::nullopt;
}

const std::wstring* templateAt(const catalogue::Catalogue& catalogue, TemplateType type, std::size_t index) noexcept
{
    switch (type) {
        case TemplateType::Boards:
            return nameAt(catalogue.boards, index);
        case TemplateType::Protocols:
            return nameAt(catalogue.protocols, index);
        case TemplateType::DefaultLogicalDevices:
            break;
    }
    return nameAt(catalogue.defaultLogicalDevices, index);
}

const catalogue::Values* templateValues(const catalogue::Catalogue& catalogue, TemplateType type,
                                        std::wstring_view name, std::wstring_view path)
{
    switch (type) {
        case TemplateType::Boards: {
            const catalogue::Board* const board = catalogue.board(name);
            return board ? valuesAt(board->tree, path) : nullptr;
        }
        case TemplateType::Protocols: {
            const catalogue::Protocol* const protocol = catalogue.protocol(name);
            return protocol ? valuesAt(protocol->tree, path) : nullptr;
        }
        case TemplateType::DefaultLogicalDevices:
            break;
    }
    const catalogue::DefaultLogicalDevice* const device = catalogue.defaultLogicalDevice(name);
    if (!device) return nullptr;
    const std::wstring_view key = withoutBackslashes(path);
    if (key.empty()) return &device->values;
    return catalogue::equalNoCase(key, ndiKey) ? &device->ndiValues : nullptr;
}

const catalogue::Board* boardNamed(const catalogue::Catalogue& catalogue, std::wstring_view name)
{
    if (const catalogue::Board* const board = catalogue.board(name)) return board;
    if (const catalogue::Board* const board = catalogue.boardByName(name)) return board;
    for (const auto& [deviceId, board] : catalogue.boards) {
        const std::wstring* const alias = catalogue::find(board.tree.values, L"Alias");
        if (alias && catalogue::equalNoCase(*alias, name)) return &board;
    }
    return nullptr;
}

std::wstring joined(std::wstring_view path, std::wstring_view rest)
{
    std::wstring result(path);
    if (!path.empty() && !rest.empty()) result += L'\\';
    return result.append(rest);
}

PathParts splitFirst(std::wstring_view path) noexcept
{
    path = withoutBackslashes(path);
    const std::size_t end = path.find(L'\\');
    if (end == std::wstring_view::npos) return {path, {}};
    return {path.substr(0, end), withoutBackslashes(path.substr(end))};
}

PathEnd splitLast(std::wstring_view path) noexcept
{
    path = withoutBackslashes(path);
    const std::size_t begin = path.rfind(L'\\');
    if (begin == std::wstring_view::npos) return {{}, path};
    return {withoutBackslashes(path.substr(0, begin)), path.substr(begin + 1)};
}

}  // namespace srv
