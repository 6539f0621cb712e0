// This program's way to kxovaapi.dll: loaded by the program itself, which therefore starts without it and can tell a
// person what is wrong.
#pragma once

#include <stdexcept>
#include <string>

// The library is missing, or unfit. what() is a sentence.
class LibraryFailure : public std::runtime_error
{
    using runtime_error::runtime_error;
};

// Loads the library; at most once. Where that fails each call of one of its functions throws a LibraryFailure. Where
// only some functions are missing, a call of these.
void bindLibrary();

// What went wrong there, or nothing.
const std::string& bindingFault() noexcept;
