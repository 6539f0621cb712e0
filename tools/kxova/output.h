// What the command line prints: aligned columns for people, JSON for machines; always UTF-8.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

// Set by --json before a command runs.
extern bool jsonOutput;

void print(const std::string& utf8);       // standard output
void printError(const std::string& utf8);  // standard error

// Rows of cells below a headline; columns are as wide as their widest cell.
class Table
{
 public:
    explicit Table(std::vector<std::string> headline) : rows_{std::move(headline)} {}
    void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
    std::string text() const;

 private:
    std::vector<std::vector<std::string>> rows_;
};

// "1 value", "2 values"
std::string counted(std::size_t number, const std::string& thing);

// Prints the one or the other, as --json says.
void show(const Json& json, const std::string& text);
