// An exported function that can be called with any arguments.
#pragma once

#include <functional>
#include <tuple>
#include <vector>

#include "Arguments.h"
#include "kxovaapi.h"

struct Function
{
    const char* name;     // in the export table
    const void* address;  // nothing: the row says how to call it without naming it
    std::function<void(Arguments&)> call;
};

// The arguments by their types, in their order.
template <typename Result, typename... Parameters>
Function function(const char* name, Result (*exported)(Parameters...))
{
    return {name, reinterpret_cast<const void*>(exported), [exported](Arguments& arguments) {
                std::tuple<Parameters...> drawn{arguments.draw<Parameters>()...};
                static_cast<void>(std::apply(exported, drawn));
            }};
}

// Another way of drawing them, where the types do not tell everything.
template <typename Exported, typename Call>
Function function(const char* name, Exported* exported, Call call)
{
    return {name, reinterpret_cast<const void*>(exported), call};
}

// A form of an overloaded function.
template <typename Signature>
constexpr Signature* form(Signature* exported)
{
    return exported;
}

using Functions = std::vector<Function>;

Functions deviceAndNameFunctions();
Functions boardAndProtocolFunctions();
Functions registryFunctions();
Functions machineFunctions();
Functions retiredFunctions();

Functions allFunctions();
