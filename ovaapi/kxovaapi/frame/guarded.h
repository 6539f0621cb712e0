// Exported functions that allocate: no exception may leave them.
#pragma once

#include <windows.h>

#include <new>

// Runs the body of an exported function; memory that runs out is a result like any other.
template <typename Body>
long guarded(Body&& body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    } catch (...) {
        return ERROR_INTERNAL_ERROR;
    }
}
