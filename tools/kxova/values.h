// Named texts, as the interface's objects hold them.
#pragma once

#include <string>
#include <vector>

struct Value
{
    std::string name;
    std::string text;

    bool operator==(const Value&) const = default;
};

using Values = std::vector<Value>;
