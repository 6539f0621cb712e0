// The server's program on an empty store, and what tests say about the library's answers.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

// A process, killed and closed at the end.
class Process
{
 public:
    Process() = default;
    explicit Process(std::wstring commandLine);
    ~Process() { kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // Reads its output up to a text; false if it ends without it.
    bool prints(const std::string& text);

    // -1 if it does not end within 60 s.
    int exitStatus();

    void kill();

 private:
    HANDLE process_ = nullptr;
    HANDLE reading_ = nullptr;
    std::string output_;
};

// Runs kxovasrvx to its end; returns its exit status.
int runServerProgram(const std::wstring& arguments);

// The store as on a new machine.
void wipeStore();

// Serves when the constructor returns.
class ServerProgram
{
 public:
    ServerProgram();

 private:
    Process process_;
};

// Tests that need nothing but a server that serves: one for all of them, on a store that nobody has used.
struct WithServer : testing::Test
{
    static void SetUpTestSuite();
    static void TearDownTestSuite();
};

// A text that a function of the library hands out: what(buffer, length) is the call. "#<result>" if it fails.
template <typename What>
std::string text(What what, unsigned long capacity = 260)
{
    std::string buffer(capacity, '\xEE');
    const long result = what(buffer.data(), &capacity);
    return result == 0 ? buffer.substr(0, capacity) : "#" + std::to_string(result);
}

// Two texts, with "=" between them.
template <typename What>
std::string pair(What what)
{
    char first[260];
    char second[260];
    unsigned long firstLength = sizeof first;
    unsigned long secondLength = sizeof second;
    const long result = what(first, &firstLength, second, &secondLength);
    return result == 0 ? std::string(first, firstLength) + "=" + std::string(second, secondLength)
                       : "#" + std::to_string(result);
}

// All that an enumeration yields, separated by blanks, with its last result unless that is 259.
template <typename What>
std::string all(What what)
{
    std::string items;
    for (unsigned long i = 0;; ++i) {
        const std::string item = text([&](char* buffer, unsigned long* length) { return what(i, buffer, length); });
        if (item == "#259") return items;
        items += (items.empty() ? "" : " ") + item;
        if (item.starts_with('#')) return items;
    }
}
