// Texts that cross between the buffer forms of the functions and their string forms.
#pragma once

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "kxframework.h"

// Reads a text with a buffer form and assigns it on success alone. The buffer starts out empty.
template <std::size_t capacity = textCapacity, typename Read>
long intoString(CString& text, Read read)
{
    char buffer[capacity] = {};
    unsigned long length = sizeof buffer;
    const long result = read(buffer, &length);
    if (result == ERROR_SUCCESS) text = CString(buffer, static_cast<int>(length));
    return result;
}
