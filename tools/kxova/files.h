// Whole files, by their UTF-8 names.
#pragma once

#include <string>

// Throws a Failure when the file cannot be read.
std::string readFile(const std::string& name);

// The file has the whole text or is what it was before.
void writeFile(const std::string& name, const std::string& text);
