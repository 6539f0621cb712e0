#include "snapshot.h"

#include "kxovaapi.h"
#include "results.h"
#include "text.h"

namespace {

struct Text
{
    char buffer[260] = {};
    unsigned long length = sizeof buffer;

    std::string utf8() const { return toUtf8({buffer, length}); }
};

// Calls `next` with 0, 1, 2, ... up to the end of an enumeration. False: what it is about is gone.
template <typename Next>
bool enumerate(const char* attempt, Next next)
{
    for (unsigned long i = 0;; ++i) {
        const long result = next(i);
        if (result == DCFG_ERR_NO_MORE_ITEMS) return true;
        if (result == DCFG_ERR_NOT_FOUND) return false;
        require(result, attempt);
    }
}

template <typename NameAt, typename ValueAt>
Objects read(const char* attempt, NameAt nameAt, ValueAt valueAt)
{
    std::vector<std::string> names;
    enumerate(attempt, [&](unsigned long i) {
        Text name;
        const long result = nameAt(i, name.buffer, &name.length);
        if (result == ERROR_SUCCESS) names.emplace_back(name.buffer, name.length);
        return result;
    });
    Objects objects;
    for (const std::string& name : names) {
        Values values;
        const bool there = enumerate(attempt, [&](unsigned long i) {
            Text parameter;
            Text value;
            const long result =
                valueAt(name.c_str(), i, parameter.buffer, &parameter.length, value.buffer, &value.length);
            if (result == ERROR_SUCCESS) values.emplace(parameter.utf8(), value.utf8());
            return result;
        });
        if (there) objects.emplace(toUtf8(name), std::move(values));
    }
    return objects;
}

std::string quoted(const std::string& utf8)
{
    return "\"" + utf8 + "\"";
}

// Goes through two maps side by side; a side that has no such key is nullptr.
template <typename Map, typename Pair>
void together(const Map& before, const Map& now, Pair pair)
{
    auto left = before.begin();
    auto right = now.begin();
    while (left != before.end() || right != now.end()) {
        if (right == now.end() || (left != before.end() && left->first < right->first)) {
            pair(left->first, &left->second, static_cast<const typename Map::mapped_type*>(nullptr));
            ++left;
        } else if (left == before.end() || right->first < left->first) {
            pair(right->first, static_cast<const typename Map::mapped_type*>(nullptr), &right->second);
            ++right;
        } else {
            pair(left->first, &left->second, &right->second);
            ++left;
            ++right;
        }
    }
}

}  // namespace

Objects readDevices()
{
    return read(
        "read the logical devices",
        [](unsigned long i, char* name, unsigned long* length) { return LogDeviceGetEnum(nullptr, i, name, length); },
        LogDeviceGetEnumValue);
}

Objects readNames()
{
    return read("read the logical names", LogNameGetEnum, LogNameGetEnumValue);
}

std::vector<Difference> differences(const std::string& kind, const Objects& before, const Objects& now)
{
    std::vector<Difference> all;
    together(before, now, [&](const std::string& name, const Values* left, const Values* right) {
        const std::string object = kind + " " + quoted(name);
        if (!left) {
            all.push_back({object + " created", {{"change", "created"}, {"kind", kind}, {"name", name}}});
            return;
        }
        if (!right) {
            all.push_back({object + " deleted", {{"change", "deleted"}, {"kind", kind}, {"name", name}}});
            return;
        }
        together(*left, *right, [&](const std::string& parameter, const std::string* was, const std::string* is) {
            if (was && is && *was == *is) return;
            std::string text = object + ": " + parameter + (is ? " is now " + quoted(*is) : " is gone");
            if (was) text += ", was " + quoted(*was);
            all.push_back({text,
                           {{"change", is ? "set" : "removed"},
                            {"kind", kind},
                            {"name", name},
                            {"parameter", parameter},
                            {"value", is ? Json(*is) : Json()},
                            {"before", was ? Json(*was) : Json()}}});
        });
    });
    return all;
}
