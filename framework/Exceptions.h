// What the framework's classes throw. Inside a module only: exported functions catch at their boundary.
#pragma once

#include <new>
#include <stdexcept>

// No memory for a string or a list item.
class CMemoryException : public std::bad_alloc
{
 public:
    const char* what() const noexcept override { return "out of memory"; }
};

// A position, index or length that the object does not have.
class CInvalidArgException : public std::invalid_argument
{
 public:
    CInvalidArgException() : std::invalid_argument("invalid argument") {}
};

[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowInvalidArgException();
