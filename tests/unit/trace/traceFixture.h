// A trace with a configuration, a folder and a machine of its own for each test.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "Kxotrc.h"
#include "trcPlatform.h"

// What OutputDebugStringA was given while this lives.
class DebuggerCapture
{
 public:
    DebuggerCapture();
    ~DebuggerCapture();
    DebuggerCapture(const DebuggerCapture&) = delete;
    DebuggerCapture& operator=(const DebuggerCapture&) = delete;

    const std::vector<std::string>& texts() const;

 private:
    void* handler_;
};

// An entry that the trace wanted in the event log.
struct LoggedEvent
{
    std::string source;
    WORD type;
    WORD category;
    DWORD event;
    std::vector<std::string> texts;
    bool plain;  // no user and no data
};

// The program traceHelper, running.
class Helper
{
 public:
    explicit Helper(const std::string& arguments);
    ~Helper();
    Helper(const Helper&) = delete;
    Helper& operator=(const Helper&) = delete;

    DWORD wait();  // exit code

 private:
    PROCESS_INFORMATION process_ = {};
};

// A named event that the test and a helper share.
class SharedEvent
{
 public:
    explicit SharedEvent(const char* purpose);
    ~SharedEvent();
    SharedEvent(const SharedEvent&) = delete;
    SharedEvent& operator=(const SharedEvent&) = delete;

    const std::string& name() const { return name_; }
    void set();
    [[nodiscard]] bool wait();

 private:
    std::string name_;
    HANDLE event_;
};

class Trace : public testing::Test
{
 protected:
    Trace();
    ~Trace() override;

    // Values below TrcParams; they live in a private key that stands in for HKEY_LOCAL_MACHINE.
    void set(const char* name, const std::string& text);
    void setRaw(const char* name, DWORD type, const void* bytes, DWORD size);
    void remove(const char* name);

    // Level all, format TEXT and this output.
    void configure(const char* output);
    // Output FILE into this test's folder, base name "Ova".
    void configureFile();

    void start() { TrcStart(nullptr); }
    // Format TEXT shows this as "F text ".
    void line(const char* text) { TrcWriteLocked("F", TRC_DETAIL, text); }
    void TrcWriteLocked(const char* function, std::uint32_t level, const char* text, const char* module = "CFP");

    // Changes the machine's generation word as a tool would do it, in this process.
    static void raiseGeneration();

    const std::string& folder() const { return folder_; }
    std::string tracePath(int number) const;
    static std::string contentOf(const std::string& path);
    static void fill(const std::string& path, std::size_t size);
    static bool exists(const std::string& path);

    const std::string& key() const { return key_; }
    const std::vector<LoggedEvent>& events() const;

    // For Consult.
    static void letPass(std::uint32_t milliseconds);

    // Put back what the fixture has replaced.
    decltype(trc::Platform::commonProgramFiles) realCommonProgramFiles() const
    {
        return realPlatform_.commonProgramFiles;
    }
    void useRealEventLog();
    void useRealClock() { trc::trcPlatform.milliseconds = realPlatform_.milliseconds; }

    // Handles of this process.
    static std::size_t openHandles();

    // Beside this program.
    static std::string programFolder();

 private:
    void openParameters();

    std::string key_;
    std::string folder_;
    HKEY machine_ = nullptr;
    HKEY parameters_ = nullptr;
    trc::Platform realPlatform_;
};
