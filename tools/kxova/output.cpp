#include "output.h"

#include <windows.h>

#include <algorithm>

#include "text.h"

bool jsonOutput = false;

namespace {

// A console shows any character when it gets UTF-16; files and pipes get UTF-8.
void write(DWORD device, const std::string& utf8)
{
    const HANDLE handle = GetStdHandle(device);
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(handle, &mode)) {
        std::wstring wide(utf8.size(), 0);
        const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(),
                                              static_cast<int>(wide.size()));
        WriteConsoleW(handle, wide.data(), static_cast<DWORD>(units), &written, nullptr);
        return;
    }
    const char* rest = utf8.data();
    for (auto left = static_cast<DWORD>(utf8.size()); left > 0; left -= written, rest += written) {
        if (!WriteFile(handle, rest, left, &written, nullptr) || written == 0) return;
    }
}

}  // namespace

void print(const std::string& utf8)
{
    write(STD_OUTPUT_HANDLE, utf8);
}

void printError(const std::string& utf8)
{
    write(STD_ERROR_HANDLE, utf8);
}

std::string Table::text() const
{
    std::vector<std::size_t> widths;
    for (const auto& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columns(row[i]));
    }
    std::string text;
    for (const auto& row : rows_) {
        std::string line;
        std::size_t column = 0;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line.append(column - columns(line), ' ').append(row[i]);
            column += widths[i] + 2;
        }
        text.append(line.substr(0, line.find_last_not_of(' ') + 1)).push_back('\n');
    }
    return text;
}

std::string counted(std::size_t number, const std::string& thing)
{
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

void show(const Json& json, const std::string& text)
{
    print(jsonOutput ? json.dump(2) + "\n" : text);
}
