// The machine-wide kernel objects: how they are made, who may use them, what happens without them.
#include "trcObjects.h"

#include <aclapi.h>
#include <gmock/gmock.h>
#include <winternl.h>

#include <thread>

#include "traceFixture.h"
#include "trcState.h"

namespace {

using testing::ElementsAre;

ACCESS_MASK grantedAccess(HANDLE handle)
{
    PUBLIC_OBJECT_BASIC_INFORMATION information = {};
    NtQueryObject(handle, ObjectBasicInformation, &information, sizeof information, nullptr);
    return information.GrantedAccess;
}

class Objects : public Trace
{
 protected:
    Objects() { configureFile(); }
    std::string written() const { return contentOf(tracePath(1)); }
};

TEST_F(Objects, Mutex_isOpenedToBeWaitedForOnly)
{
    start();
    ASSERT_NE(trc::traceMutex(), nullptr);
    EXPECT_EQ(grantedAccess(trc::traceMutex()), ACCESS_MASK{SYNCHRONIZE});
}

TEST_F(Objects, MutexWithTheseRights_canBeTakenAndReleased)
{
    start();
    EXPECT_EQ(TrcLock(), 0u);
    const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, trc::mutexName);
    DWORD whileHeld = 99;
    std::thread([&] { whileHeld = WaitForSingleObject(mutex, 0); }).join();
    TrcUnlock();
    DWORD afterwards = 99;
    std::thread([&] {
        afterwards = WaitForSingleObject(mutex, 0);
        ReleaseMutex(mutex);
    }).join();
    CloseHandle(mutex);
    EXPECT_EQ(whileHeld, DWORD{WAIT_TIMEOUT});
    EXPECT_EQ(afterwards, DWORD{WAIT_OBJECT_0});
}

TEST_F(Objects, Lock_makesTheMutexWhenThereIsNone)
{
    EXPECT_EQ(trc::traceMutex(), nullptr);
    EXPECT_EQ(TrcLock(), 0u);
    EXPECT_NE(trc::traceMutex(), nullptr);
    TrcUnlock();
}

TEST_F(Objects, Attributes_areThoseOfTheStart)
{
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    TrcStart(&inheritable);
    DWORD flags = 0;
    EXPECT_TRUE(GetHandleInformation(trc::traceMutex(), &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, DWORD{HANDLE_FLAG_INHERIT});
}

TEST_F(Objects, Generation_isTheWordInTheSection)
{
    start();
    const std::uint32_t before = *trcGeneration;
    raiseGeneration();
    EXPECT_EQ(*trcGeneration, before + 1);
}

TEST_F(Objects, GenerationMadeByAnother_isUsed)
{
    const HANDLE section =
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4, trc::generationName);
    const auto word = static_cast<volatile std::uint32_t*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 4));
    ASSERT_NE(word, nullptr);
    *word = 4711;
    start();
    EXPECT_EQ(*trcGeneration, 4711u);
    EXPECT_EQ(trcLastGeneration, 4711u);
    UnmapViewOfFile(const_cast<std::uint32_t*>(word));
    CloseHandle(section);
}

TEST_F(Objects, GenerationSection_grantsMappingForWritingToAuthenticatedUsers)
{
    start();
    const HANDLE section = OpenFileMappingA(READ_CONTROL, FALSE, trc::generationName);
    ASSERT_NE(section, nullptr);
    ACL* acl = nullptr;
    void* descriptor = nullptr;
    ASSERT_EQ(GetSecurityInfo(section, SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &acl, nullptr,
                              &descriptor),
              DWORD{ERROR_SUCCESS});
    ASSERT_NE(acl, nullptr);
    ASSERT_EQ(acl->AceCount, 1);
    void* entry = nullptr;
    ASSERT_TRUE(GetAce(acl, 0, &entry));
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    EXPECT_EQ(allowed->Header.AceType, ACCESS_ALLOWED_ACE_TYPE);
    EXPECT_EQ(allowed->Header.AceFlags, 0);
    EXPECT_EQ(allowed->Mask, 2u);
    EXPECT_TRUE(IsWellKnownSid(&allowed->SidStart, WinAuthenticatedUserSid));
    LocalFree(descriptor);
    CloseHandle(section);
}

// Another object under the mutex's name: it cannot be made.
TEST_F(Objects, MutexCannotBeMade_toldToTheDebuggerAndLinesAreWritten)
{
    const HANDLE other = CreateEventA(nullptr, TRUE, FALSE, trc::mutexName);
    ASSERT_NE(other, nullptr);
    const DebuggerCapture debugger;
    start();
    line("one");
    CloseHandle(other);
    EXPECT_THAT(debugger.texts(), ElementsAre("ERROR: Can't create KXTRC_MUTEX, GetLastError()=6 \n"));
    EXPECT_EQ(written(), "F one \n");
}

TEST_F(Objects, SectionCannotBeMade_toldToTheDebuggerAndLinesAreWritten)
{
    const HANDLE other = CreateEventA(nullptr, TRUE, FALSE, trc::generationName);
    ASSERT_NE(other, nullptr);
    const DebuggerCapture debugger;
    start();
    line("one");
    CloseHandle(other);
    EXPECT_THAT(debugger.texts(), ElementsAre("ERROR: Can't create KXTRC_SECTION, GetLastError()=6 \n"));
    EXPECT_EQ(written(), "F one \n");
    EXPECT_EQ(*trcGeneration, 1u);
}

TEST_F(Objects, SectionCannotBeMade_theConfigurationIsReadOnce)
{
    const HANDLE other = CreateEventA(nullptr, TRUE, FALSE, trc::generationName);
    const DebuggerCapture debugger;
    start();
    for (int i = 0; i < 5; ++i)
        line("line");
    CloseHandle(other);
    EXPECT_EQ(debugger.texts().size(), 1u);
}

// The wait

TEST_F(Objects, WaitOfAnyLength_isTenSecondsByDefault)
{
    EXPECT_EQ(trc::trcPlatform.lockWait, 10000u);
}

TEST_F(Objects, MutexHeldByAnotherProcess_isWaitedForAndThenIgnored)
{
    start();
    SharedEvent ready("ready");
    SharedEvent release("release");
    Helper holder("hold " + ready.name() + " " + release.name());
    ASSERT_TRUE(ready.wait());
    trc::trcPlatform.lockWait = 50;
    KXTRACE("F", TRC_DETAIL, "one");
    release.set();
    EXPECT_EQ(holder.wait(), 0u);
    EXPECT_EQ(written(), "F one \n");
    KXTRACE("F", TRC_DETAIL, "two");
    EXPECT_EQ(written(), "F one \nF two \n");
}

TEST_F(Objects, MutexHeldAtTheStart_theConfigurationIsReadAllTheSame)
{
    SharedEvent ready("ready");
    SharedEvent release("release");
    Helper holder("hold " + ready.name() + " " + release.name());
    ASSERT_TRUE(ready.wait());
    trc::trcPlatform.lockWait = 50;
    start();
    release.set();
    EXPECT_EQ(trcLevelMask, 0xFFFFFFFF);
    EXPECT_EQ(holder.wait(), 0u);
}

TEST_F(Objects, MutexAbandoned_linesAreWrittenAndItCanBeTakenAgain)
{
    start();
    EXPECT_EQ(Helper("abandon").wait(), 0u);
    line("one");
    line("two");
    EXPECT_EQ(written(), "F one \nF two \n");
}

TEST_F(Objects, GenerationChangedByAnotherProcess_isHonoured)
{
    set("Level", "0");
    start();
    EXPECT_FALSE(TrcEnabled(TRC_DETAIL));
    set("Level", "0x40");
    EXPECT_EQ(Helper("raise").wait(), 0u);
    KXTRACE("F", TRC_DETAIL, "one");
    EXPECT_EQ(written(), "F one \n");
}

}  // namespace
