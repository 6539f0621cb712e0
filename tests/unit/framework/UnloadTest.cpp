// Loading and unloading a library of this framework: what runs when, and what is left behind.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "handle_count.h"
#include "probe/probe.h"

namespace {

constexpr char libraryName[] = "kxframeworkprobe.dll";

template <typename Function>
Function entry(HMODULE library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(library, name)));
}

HMODULE load()
{
    const HMODULE library = LoadLibraryA(libraryName);
    EXPECT_NE(library, nullptr) << GetLastError();
    return library;
}

void use(HMODULE library)
{
    EXPECT_GT(entry<ProbeUse>(library, "probeUse")(), 0);
}

// How many slots are free, counted by taking them all.
template <typename Take, typename Release>
std::size_t freeSlots(Take take, Release release)
{
    std::vector<DWORD> taken;
    for (DWORD slot = take(); slot != TLS_OUT_OF_INDEXES; slot = take())
        taken.push_back(slot);
    for (const DWORD slot : taken)
        release(slot);
    return taken.size();
}

std::size_t freeThreadSlots()
{
    return freeSlots([] { return TlsAlloc(); }, [](DWORD slot) { TlsFree(slot); });
}

std::size_t freeFiberSlots()
{
    return freeSlots([] { return FlsAlloc(nullptr); }, [](DWORD slot) { FlsFree(slot); });
}

// A thread that outlives the library and runs what it is given, one piece at a time.
class Worker
{
 public:
    Worker() : thread_([this] { run(); }) {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker()
    {
        perform(nullptr);
        thread_.join();
        CloseHandle(given_);
        CloseHandle(done_);
    }
    void perform(std::function<void()> work)
    {
        work_ = std::move(work);
        SignalObjectAndWait(given_, done_, INFINITE, FALSE);
    }

 private:
    void run()
    {
        for (bool more = true; more;) {
            WaitForSingleObject(given_, INFINITE);
            more = static_cast<bool>(work_);
            if (more) work_();
            SetEvent(done_);
        }
    }

    std::function<void()> work_;
    HANDLE given_ = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    HANDLE done_ = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    std::thread thread_;
};

TEST(Unload, ThousandCyclesWithUse_leaveNoHandle)
{
    const auto cycle = [] {
        const HMODULE library = load();
        use(library);
        FreeLibrary(library);
    };
    cycle();
    const auto before = handleCount();
    for (int i = 0; i < 1000; ++i)
        cycle();
    EXPECT_EQ(handleCount(), before);
}

// A process has about a thousand slots; the run-time aborts it when there is none left.
TEST(Unload, CyclesWithUse_leaveNoThreadOrFiberSlot)
{
    const auto cycle = [] {
        const HMODULE library = load();
        use(library);
        FreeLibrary(library);
    };
    cycle();
    const auto threadSlots = freeThreadSlots();
    const auto fiberSlots = freeFiberSlots();
    for (int i = 0; i < 20; ++i)
        cycle();
    EXPECT_EQ(freeThreadSlots(), threadSlots);
    EXPECT_EQ(freeFiberSlots(), fiberSlots);
}

TEST(Unload, LoadedUsedAndUnloadedByThreadsThatLiveOn_leavesNoHandle)
{
    Worker loader;
    Worker user;
    Worker unloader;
    HMODULE library = nullptr;
    const auto cycle = [&] {
        loader.perform([&] { library = load(); });
        user.perform([&] { use(library); });
        use(library);
        unloader.perform([&] { FreeLibrary(library); });
    };
    for (int i = 0; i < 20; ++i)
        cycle();
    const auto before = handleCount();
    for (int i = 0; i < 200; ++i)
        cycle();
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

TEST(Unload, StaticDestructor_mayStillThrowAndCatch)
{
    ProbeReport report{};
    const HMODULE library = load();
    entry<ProbeSetReport>(library, "probeSetReport")(&report);
    FreeLibrary(library);
    EXPECT_EQ(report.exits, 1);
    EXPECT_FALSE(report.ending);
    EXPECT_TRUE(report.destroyed);
}

TEST(Load, ThreadLocalVariable_isEachThreadsOwn)
{
    const HMODULE library = load();
    const auto value = entry<ProbeThreadValue>(library, "probeThreadValue");
    EXPECT_EQ(value(1), 8);
    int others = 0;
    std::thread([&] { others = value(0); }).join();
    EXPECT_EQ(others, 7);
    EXPECT_EQ(value(0), 8);
    FreeLibrary(library);
}

TEST(Load, Instance_isTheLibrarysOwn)
{
    const HMODULE library = load();
    EXPECT_EQ(entry<ProbeInstance>(library, "probeInstance")(), library);
    FreeLibrary(library);
}

// The library's report where the test has no pointer to hand over: a section that both know by name.
class SharedReport
{
 public:
    SharedReport()
        : section_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(ProbeReport),
                                      probeReportSection)),
          report_(static_cast<ProbeReport*>(MapViewOfFile(section_, FILE_MAP_WRITE, 0, 0, 0)))
    {}
    SharedReport(const SharedReport&) = delete;
    SharedReport& operator=(const SharedReport&) = delete;
    ~SharedReport()
    {
        UnmapViewOfFile(report_);
        CloseHandle(section_);
    }
    const ProbeReport* operator->() const { return report_; }

 private:
    HANDLE section_;
    ProbeReport* report_;
};

class RefusedLoad : public testing::TestWithParam<const char*>
{
 protected:
    void SetUp() override { SetEnvironmentVariableA(probeStartVariable, GetParam()); }
    void TearDown() override { SetEnvironmentVariableA(probeStartVariable, nullptr); }
};

TEST_P(RefusedLoad, Library_isNotThereAndExitInstanceRanOnce)
{
    const SharedReport report;
    EXPECT_EQ(LoadLibraryA(libraryName), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
    EXPECT_EQ(GetModuleHandleA(libraryName), nullptr);
    EXPECT_EQ(report->exits, 1);
}

TEST_P(RefusedLoad, Repeated_leavesNoHandle)
{
    LoadLibraryA(libraryName);
    const auto before = handleCount();
    for (int i = 0; i < 50; ++i)
        LoadLibraryA(libraryName);
    EXPECT_EQ(handleCount(), before);
}

INSTANTIATE_TEST_SUITE_P(InitInstance, RefusedLoad, testing::Values("refuse", "throw"),
                         [](const auto& test) { return std::string(test.param); });

// Another thread holds the library's lock for good when the process ends; ExitInstance is told, so as not to wait.
TEST(ProcessEnd, WithLibraryInUse_runsExitInstanceAndTellsIt)
{
    const SharedReport report;
    EXPECT_EXIT(
        {
            const auto hold = entry<ProbeHold>(load(), "probeHold");
            std::thread([hold] {
                hold();
                Sleep(INFINITE);
            }).detach();
            while (entry<ProbeTryLock>(GetModuleHandleA(libraryName), "probeTryLock")())
                std::this_thread::yield();
            ExitProcess(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(report->exits, 1);
    EXPECT_TRUE(report->ending);
}

// Strings and lists that two modules share, each with a framework of its own.
TEST(TwoModules, StringChangedByTheOther_staysWithItsMaker)
{
    const HMODULE library = load();
    CString text("text");
    CString copy(text);
    entry<ProbeText>(library, "probeText")(&copy);
    FreeLibrary(library);
    EXPECT_STREQ(copy, "text written by the library, too long for what was there before");
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(copy.GetManager(), AfxGetStringManager());
}

TEST(TwoModules, StringMadeByTheOther_isFreedByIt)
{
    const HMODULE library = load();
    CString kept("mine");
    {
        const CString made = entry<ProbeMake>(library, "_Z9probeMakev")();
        EXPECT_STREQ(made, "made by the library");
        EXPECT_NE(made.GetManager(), AfxGetStringManager());
        kept = made;
    }
    FreeLibrary(library);
    EXPECT_STREQ(kept, "made by the library");
}

TEST(TwoModules, ListChangedByBoth_isOneList)
{
    const HMODULE library = load();
    CStringList list;
    list.AddTail("first");
    list.AddTail("second");
    entry<ProbeList>(library, "probeList")(&list);
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_STREQ(list.RemoveHead(), "second");
    EXPECT_STREQ(list.RemoveHead(), "from the library");
    FreeLibrary(library);
}

}  // namespace
