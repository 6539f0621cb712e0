#include "traceFixture.h"

#include <winternl.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "trcObjects.h"
#include "trcState.h"

namespace {

std::vector<std::string> debuggerTexts;
std::vector<LoggedEvent> loggedEvents;
std::string openSource;
ULONGLONG fakeMilliseconds;

LONG CALLBACK takeDebuggerText(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    constexpr DWORD debugPrint = 0x40010006;
    if (record.ExceptionCode != debugPrint) return EXCEPTION_CONTINUE_SEARCH;
    debuggerTexts.emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                               record.ExceptionInformation[0] - 1);
    return EXCEPTION_CONTINUE_EXECUTION;
}

HANDLE registerSource(const char* server, const char* source)
{
    EXPECT_EQ(server, nullptr);
    openSource = source;
    return &openSource;
}

BOOL takeEvent(HANDLE log, WORD type, WORD category, DWORD event, void* user, WORD strings, DWORD dataSize,
               const char** texts, void* data)
{
    EXPECT_EQ(log, &openSource);
    const bool plain = user == nullptr && dataSize == 0 && data == nullptr;
    loggedEvents.push_back({openSource, type, category, event, {texts, texts + strings}, plain});
    return TRUE;
}

BOOL deregisterSource(HANDLE log)
{
    EXPECT_EQ(log, &openSource);
    openSource.clear();
    return TRUE;
}

ULONGLONG fakeClock()
{
    return fakeMilliseconds;
}

}  // namespace

DebuggerCapture::DebuggerCapture()
{
    debuggerTexts.clear();
    handler_ = AddVectoredExceptionHandler(1, takeDebuggerText);
}

DebuggerCapture::~DebuggerCapture()
{
    RemoveVectoredExceptionHandler(handler_);
}

const std::vector<std::string>& DebuggerCapture::texts() const
{
    return debuggerTexts;
}

Helper::Helper(const std::string& arguments)
{
    char module[MAX_PATH];
    GetModuleFileNameA(nullptr, module, MAX_PATH);
    std::string command = module;
    command = '"' + command.substr(0, command.find_last_of('\\') + 1) + "trace_helper.exe\" " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_)) {
        ADD_FAILURE() << "the helper does not start: " << GetLastError();
    }
}

Helper::~Helper()
{
    if (!process_.hProcess) return;
    if (WaitForSingleObject(process_.hProcess, 60000) != WAIT_OBJECT_0) TerminateProcess(process_.hProcess, 99);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

DWORD Helper::wait()
{
    DWORD code = 99;
    if (WaitForSingleObject(process_.hProcess, 60000) == WAIT_OBJECT_0) GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

SharedEvent::SharedEvent(const char* purpose)
    : name_("kxova-trace-test-" + std::to_string(GetCurrentProcessId()) + "-" + purpose),
      event_(CreateEventA(nullptr, TRUE, FALSE, name_.c_str()))
{}

SharedEvent::~SharedEvent()
{
    CloseHandle(event_);
}

void SharedEvent::set()
{
    SetEvent(event_);
}

bool SharedEvent::wait()
{
    return WaitForSingleObject(event_, 60000) == WAIT_OBJECT_0;
}

Trace::Trace()
    : key_("Software\\kxova-trace-test-" + std::to_string(GetCurrentProcessId())), realPlatform_(trc::trcPlatform)
{
    RegCreateKeyExA(HKEY_CURRENT_USER, key_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &machine_, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_);

    char base[MAX_PATH];
    GetTempPathA(MAX_PATH, base);
    folder_ = base + ("kxova-trace-test-" + std::to_string(GetCurrentProcessId()));
    CreateDirectoryA(folder_.c_str(), nullptr);

    loggedEvents.clear();
    fakeMilliseconds = 1000;
    trc::trcPlatform.registerEventSource = registerSource;
    trc::trcPlatform.reportEvent = takeEvent;
    trc::trcPlatform.deregisterEventSource = deregisterSource;
    trc::trcPlatform.milliseconds = fakeClock;
    trc::resetState();  // as in a library that was just loaded
}

Trace::~Trace()
{
    TrcStop();
    trc::trcPlatform = realPlatform_;
    if (parameters_) RegCloseKey(parameters_);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(machine_);
    RegDeleteTreeA(HKEY_CURRENT_USER, key_.c_str());

    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((folder_ + "\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string path = folder_ + "\\" + found.cFileName;
            SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileA(path.c_str());
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    RemoveDirectoryA(folder_.c_str());
}

void Trace::openParameters()
{
    if (parameters_) return;
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, "Software\\TAVRONE\\NORIX\\TrcParams", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &parameters_, nullptr);
}

void Trace::set(const char* name, const std::string& text)
{
    setRaw(name, REG_SZ, text.c_str(), static_cast<DWORD>(text.size() + 1));
}

void Trace::setRaw(const char* name, DWORD type, const void* bytes, DWORD size)
{
    openParameters();
    ASSERT_EQ(RegSetValueExA(parameters_, name, 0, type, static_cast<const BYTE*>(bytes), size), ERROR_SUCCESS);
}

void Trace::remove(const char* name)
{
    openParameters();
    RegDeleteValueA(parameters_, name);
}

void Trace::configure(const char* output)
{
    set("Level", "0xFFFFFFFF");
    set("Format", "TEXT");
    set("Output", output);
}

void Trace::configureFile()
{
    configure("FILE");
    set("Path", folder_);
    set("FileName", "Ova");
}

void Trace::TrcWriteLocked(const char* function, std::uint32_t level, const char* text, const char* module)
{
    TrcLock();
    TrcWrite(function, level, module, 0, 0, __FILE__, __LINE__, text);
    TrcUnlock();
}

void Trace::raiseGeneration()
{
    const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, trc::generationName);
    ASSERT_NE(section, nullptr);
    const auto word = static_cast<volatile std::uint32_t*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 4));
    ASSERT_NE(word, nullptr);
    *word = *word + 1;
    UnmapViewOfFile(const_cast<std::uint32_t*>(word));
    CloseHandle(section);
}

std::string Trace::tracePath(int number) const
{
    return folder_ + "\\Ova" + std::to_string(number) + ".TRC";
}

std::string Trace::contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Trace::fill(const std::string& path, std::size_t size)
{
    std::ofstream(path, std::ios::binary) << std::string(size, '.');
}

bool Trace::exists(const std::string& path)
{
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

const std::vector<LoggedEvent>& Trace::events() const
{
    return loggedEvents;
}

void Trace::letPass(std::uint32_t milliseconds)
{
    fakeMilliseconds += milliseconds;
}

void Trace::useRealEventLog()
{
    trc::trcPlatform.registerEventSource = realPlatform_.registerEventSource;
    trc::trcPlatform.reportEvent = realPlatform_.reportEvent;
    trc::trcPlatform.deregisterEventSource = realPlatform_.deregisterEventSource;
}

std::size_t Trace::openHandles()
{
    struct Entry
    {
        USHORT process;
        USHORT creator;
        UCHAR type;
        UCHAR flags;
        USHORT value;
        void* object;
        ULONG access;
    };
    constexpr auto systemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    std::vector<char> buffer(1 << 16);
    while (NtQuerySystemInformation(systemHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
                                    nullptr) != 0) {
        if (buffer.size() > (1u << 26)) return 0;
        buffer.resize(buffer.size() * 2);
    }
    const ULONG count = *reinterpret_cast<const ULONG*>(buffer.data());
    const auto entries = reinterpret_cast<const Entry*>(buffer.data() + sizeof(ULONG));
    std::size_t own = 0;
    for (ULONG i = 0; i < count; ++i)
        own += entries[i].process == (GetCurrentProcessId() & 0xFFFF);
    return own;
}

std::string Trace::programFolder()
{
    char module[MAX_PATH];
    GetModuleFileNameA(nullptr, module, MAX_PATH);
    const std::string path = module;
    return path.substr(0, path.find_last_of('\\'));
}
