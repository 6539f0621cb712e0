#include "Errors.h"

#include <algorithm>

namespace catalogue {

namespace {

// Hardly anybody mistypes a name so much more; it bounds the work on a hostile file, too.
constexpr std::size_t longestName = 64;

// How many letters must be put in, left out, exchanged or swapped with their neighbour.
std::size_t distance(std::wstring_view left, std::wstring_view right)
{
    std::vector<std::vector<std::size_t>> rows(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    const auto same = [&](std::size_t i, std::size_t j) {
        return equalNoCase(left.substr(i - 1, 1), right.substr(j - 1, 1));
    };
    for (std::size_t i = 0; i <= left.size(); ++i)
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                rows[i][j] = i + j;
                continue;
            }
            rows[i][j] =
                std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, rows[i - 1][j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
        }
    return rows.back().back();
}

}  // namespace

void Errors::add(std::size_t offset, std::wstring message)
{
    found_[{offset, std::move(message)}] = offset;
}

void Errors::add(const JsonValue& entry, std::size_t offset, std::wstring message)
{
    const bool own = offset >= entry.begin && offset < entry.end;
    found_.emplace(Found{own ? offset : entry.begin, std::move(message)}, offset);
}

void Errors::moveTo(LoadResult& result, const JsonValue* document)
{
    for (const auto& [found, origin] : found_) {
        const auto& [offset, message] = found;
        if (origin != offset && found_.contains({origin, message})) continue;
        if (result.errors.size() == maximumErrors) {
            ++result.omitted;
            continue;
        }
        const Position position = source_.positionOf(offset);
        result.errors.push_back({source_.name(), position.line, position.column,
                                 document ? pointerTo(*document, offset) : std::wstring{}, message});
    }
    found_.clear();
}

std::wstring inQuotes(std::wstring_view text)
{
    return L"\"" + std::wstring(text) + L"\"";
}

std::wstring endWithSuggestion(std::wstring_view written, std::span<const std::wstring_view> candidates)
{
    if (written.size() > longestName) return L".";
    std::size_t best = std::max<std::size_t>(1, written.size() / 3) + 1;
    std::wstring_view nearest;
    for (const std::wstring_view candidate : candidates) {
        if (candidate.size() > longestName) continue;
        const std::size_t steps = distance(written, candidate);
        if (steps >= best || steps >= written.size()) continue;
        best = steps;
        nearest = candidate;
    }
    return nearest.empty() ? L"." : L"; did you mean " + inQuotes(nearest) + L"?";
}

}  // namespace catalogue
