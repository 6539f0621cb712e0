#include "LogDevSS/valueTranslation.h"

#include <cstring>

namespace valueTranslation {
namespace {

struct Row
{
    const char* parameter;
    const char* from;
    const char* to;
};

constexpr Row storedToShown[] = {
    {"soft_entry", "0", "no"},          {"soft_entry", "1", "yes"},
    {"soft_entry", "2", "get_config"},  {"soft_entry", "3", "get_config_go"},
    {"soft_entry", "4", "search_baud"}, {"DP_MODE", "false", "NO"},
    {"DP_MODE", "true", "YES"},         {"busparam", "0", "DP"},
    {"busparam", "1", "STD"},           {"busparam", "2", "UNI"},
    {"busparam", "3", "USER"},          {"subnet_typ", "1", "DP"},
    {"subnet_typ", "0", "MPI"},
};

// Not the reverse of the other table: soft_entry takes two words for each of its first two values.
constexpr Row shownToStored[] = {
    {"soft_entry", "true", "1"},
    {"soft_entry", "false", "0"},
    {"soft_entry", "yes", "1"},
    {"soft_entry", "no", "0"},
    {"soft_entry", "search_baud", "4"},
    {"soft_entry", "get_config", "2"},
    {"soft_entry", "get_config_go", "3"},
    {"DP_MODE", "YES", "true"},
    {"DP_MODE", "NO", "false"},
    {"busparam", "DP", "0"},
    {"busparam", "STD", "1"},
    {"busparam", "UNI", "2"},
    {"busparam", "USER", "3"},
    {"subnet_typ", "DP", "1"},
    {"subnet_typ", "MPI", "0"},
};

template <typename Table>
const char* translate(const Table& table, const char* parameter, const char* text) noexcept
{
    if (!parameter || !text) return text;
    for (const Row& row : table) {
        if (_stricmp(row.parameter, parameter) == 0 && _stricmp(row.from, text) == 0) return row.to;
    }
    return text;
}

}  // namespace

const char* shown(const char* parameter, const char* stored) noexcept
{
    return translate(storedToShown, parameter, stored);
}

const char* stored(const char* parameter, const char* shown) noexcept
{
    return translate(shownToStored, parameter, shown);
}

}  // namespace valueTranslation
