// Reads a catalogue file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Catalogue.h"

namespace catalogue {

struct LoadError
{
    std::filesystem::path file;
    std::size_t line = 0;    // from 1; 0: the file as a whole
    std::size_t column = 0;  // from 1, in characters; 0 with line 0
    std::wstring where;      // JSON pointer of the place ("/boards/*TVRA010/maps"); empty: the whole document
    std::wstring message;    // one sentence

    // "catalogue.json:12:5: The board ..."
    std::wstring text() const;
};

// Either a catalogue or errors, never both and never neither.
struct LoadResult
{
    std::shared_ptr<const Catalogue> catalogue;
    std::vector<LoadError> errors;  // in the order of their lines, at most maximumErrors
    std::size_t omitted = 0;        // errors beyond those

    explicit operator bool() const { return catalogue != nullptr; }
};

constexpr std::size_t maximumErrors = 20;

// Reads and checks a file. Throws only std::bad_alloc.
LoadResult load(const std::filesystem::path& file);

// The same for a text in memory; the name appears in errors.
LoadResult parse(std::string_view utf8, const std::filesystem::path& name);

}  // namespace catalogue
