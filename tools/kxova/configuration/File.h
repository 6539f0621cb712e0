// A configuration as a JSON file.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/Configuration.h"

// What is wrong with a file: one sentence a mistake, each with the file and the line.
class BadFile : public std::runtime_error
{
 public:
    BadFile(const std::string& what, std::vector<std::string> problems)
        : std::runtime_error(what), problems_(std::move(problems))
    {}
    const std::vector<std::string>& problems() const noexcept { return problems_; }

 private:
    std::vector<std::string> problems_;
};

std::string fileText(const Configuration& configuration);

// Everything is checked that can be known without the server; throws a BadFile that names up to 20 mistakes.
Configuration readFileText(std::string_view text, const std::string& fileName);
