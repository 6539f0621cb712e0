// The machine-wide kernel objects of the trace: the mutex around every line and the generation word.

#include <aclapi.h>

#include <cstdio>

#include "Kxotrc.h"
#include "trcPlatform.h"
#include "trcState.h"

namespace trc {
namespace {

constexpr char mutexName[] = "Global\\KXTRACE_MUTEX";
constexpr char sectionName[] = "Global\\KXTRACE_SECTION";
constexpr std::uint32_t sectionSize = sizeof(std::uint32_t);

// Differs from the initial last generation, so that the first line of a process reads the configuration.
constexpr std::uint32_t privateGeneration = 1;

void tellDebugger(const char* format, DWORD error) noexcept
{
    char text[128];
    std::snprintf(text, sizeof text, format, static_cast<int>(error));
    OutputDebugStringA(text);
}

void openMutex(State& s) noexcept
{
    if (s.mutex) return;
    s.mutex = CreateMutexExA(s.attributes, mutexName, 0, SYNCHRONIZE);
    if (!s.mutex) tellDebugger("ERROR: Can't create KXTRC_MUTEX, GetLastError()=%d \n", GetLastError());
}

// Every logged-on user may raise the generation, nobody may do more.
class SectionSecurity
{
 public:
    SectionSecurity() noexcept
    {
        DWORD size = sizeof sid_;
        if (!CreateWellKnownSid(WinAuthenticatedUserSid, nullptr, sid_, &size)) return;
        EXPLICIT_ACCESSA access = {};
        access.grfAccessPermissions = FILE_MAP_WRITE;
        access.grfAccessMode = SET_ACCESS;
        access.grfInheritance = NO_INHERITANCE;
        access.Trustee.TrusteeForm = TRUSTEE_IS_SID;
        access.Trustee.TrusteeType = TRUSTEE_IS_WELL_KNOWN_GROUP;
        access.Trustee.ptstrName = reinterpret_cast<char*>(sid_);
        if (SetEntriesInAclA(1, &access, nullptr, &acl_) != ERROR_SUCCESS) return;
        if (!InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION)) return;
        if (!SetSecurityDescriptorDacl(&descriptor_, TRUE, acl_, FALSE)) return;
        attributes_ = {sizeof attributes_, &descriptor_, FALSE};
        valid_ = true;
    }
    ~SectionSecurity()
    {
        if (acl_) LocalFree(acl_);
    }
    SectionSecurity(const SectionSecurity&) = delete;
    SectionSecurity& operator=(const SectionSecurity&) = delete;

    SECURITY_ATTRIBUTES* get() noexcept { return valid_ ? &attributes_ : nullptr; }

 private:
    BYTE sid_[SECURITY_MAX_SID_SIZE] = {};
    ACL* acl_ = nullptr;
    SECURITY_DESCRIPTOR descriptor_ = {};
    SECURITY_ATTRIBUTES attributes_ = {};
    bool valid_ = false;
};

void openGeneration(State& s) noexcept
{
    if (s.section) return;
    s.section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, sectionName);
    if (!s.section) {
        SectionSecurity security;
        s.section =
            CreateFileMappingA(INVALID_HANDLE_VALUE, security.get(), PAGE_READWRITE, 0, sectionSize, sectionName);
    }
    const void* const view = s.section ? MapViewOfFile(s.section, FILE_MAP_WRITE, 0, 0, sectionSize) : nullptr;
    if (view) {
        trcGeneration = static_cast<const volatile std::uint32_t*>(view);
        return;
    }
    const DWORD error = GetLastError();
    if (s.section) CloseHandle(s.section);
    s.section = nullptr;
    tellDebugger("ERROR: Can't create KXTRC_SECTION, GetLastError()=%d \n", error);
}

}  // namespace

void openKernelObjects() noexcept
{
    State& s = state();
    openMutex(s);
    openGeneration(s);
}

void closeMutex() noexcept
{
    State& s = state();
    if (s.mutex) CloseHandle(s.mutex);
    s.mutex = nullptr;
}

void closeGeneration() noexcept
{
    State& s = state();
    static constexpr std::uint32_t word = privateGeneration;
    const volatile std::uint32_t* const view = trcGeneration;
    trcGeneration = &word;
    if (s.section) {
        UnmapViewOfFile(const_cast<const std::uint32_t*>(view));
        CloseHandle(s.section);
    }
    s.section = nullptr;
}

}  // namespace trc

std::uint32_t TrcLock() noexcept
{
    trc::State& s = trc::state();
    if (!s.mutex && !s.stopped) trc::openMutex(s);
    // A line that comes without the mutex may mix with another; no line at all would help nobody.
    if (s.mutex) WaitForSingleObject(s.mutex, trc::platform().lockTimeout);
    return ERROR_SUCCESS;
}

void TrcUnlock() noexcept
{
    if (const HANDLE mutex = trc::state().mutex) ReleaseMutex(mutex);
}
