// The frame of an exported helper.
#pragma once

#include <exception>

#include "kxframework.h"

// What an exported function does, inside the module's context and with its exceptions kept in: when there is no
// memory the result is an empty string (0 for a number).
template <typename Work>
auto exported(Work work) noexcept -> decltype(work())
{
    const ModuleContext context;
    try {
        return work();
    } catch (const std::exception&) {
        return {};
    }
}
