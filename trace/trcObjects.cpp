#include "trcObjects.h"

#include <aclapi.h>

#include <atomic>
#include <cstdint>
#include <cstdio>

#include "Kxotrc.h"
#include "trcErrorKeeper.h"
#include "trcPlatform.h"
#include "trcState.h"

namespace {

// Differs from the first trcLastGeneration, so that the first call of a process reads the configuration.
constexpr std::uint32_t privateGeneration = 1;

constexpr DWORD generationSize = sizeof(std::uint32_t);

constinit std::atomic<HANDLE> mutex = nullptr;
constinit HANDLE section = nullptr;

void tellDebugger(const char* format, DWORD error) noexcept
{
    char text[128];
    std::snprintf(text, sizeof text, format, static_cast<int>(error));
    OutputDebugStringA(text);
}

bool openMutex() noexcept
{
    if (mutex.load()) return true;
    const HANDLE made = CreateMutexExA(trc::trcAttributes, trc::mutexName, 0, SYNCHRONIZE);
    if (!made) return false;
    HANDLE none = nullptr;
    if (!mutex.compare_exchange_strong(none, made)) CloseHandle(made);  // another thread was first
    return true;
}

// Every logged-on user may change the word, and nobody may do anything else with the section.
class GenerationSecurity
{
 public:
    GenerationSecurity() noexcept
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
        const DWORD error = SetEntriesInAclA(1, &access, nullptr, &acl_);
        SetLastError(error);
        valid_ = error == ERROR_SUCCESS && InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION) &&
                 SetSecurityDescriptorDacl(&descriptor_, TRUE, acl_, FALSE);
    }
    ~GenerationSecurity()
    {
        if (acl_) LocalFree(acl_);
    }
    GenerationSecurity(const GenerationSecurity&) = delete;
    GenerationSecurity& operator=(const GenerationSecurity&) = delete;

    explicit operator bool() const noexcept { return valid_; }
    SECURITY_ATTRIBUTES* get() noexcept { return &attributes_; }

 private:
    BYTE sid_[SECURITY_MAX_SID_SIZE] = {};
    ACL* acl_ = nullptr;
    SECURITY_DESCRIPTOR descriptor_ = {};
    SECURITY_ATTRIBUTES attributes_ = {sizeof(SECURITY_ATTRIBUTES), &descriptor_, FALSE};
    bool valid_ = false;
};

HANDLE openOrCreateSection() noexcept
{
    if (const HANDLE found = OpenFileMappingA(FILE_MAP_WRITE, FALSE, trc::generationName)) return found;
    GenerationSecurity security;
    if (!security) return nullptr;
    const HANDLE made = CreateFileMappingA(INVALID_HANDLE_VALUE, security.get(), PAGE_READWRITE, 0, generationSize,
                                           trc::generationName);
    if (made || GetLastError() != ERROR_ACCESS_DENIED) return made;
    // Another process made it in between: creating asks for more access than the section grants.
    return OpenFileMappingA(FILE_MAP_WRITE, FALSE, trc::generationName);
}

bool openGeneration() noexcept
{
    if (section) return true;
    const HANDLE opened = openOrCreateSection();
    if (!opened) return false;
    const void* const view = MapViewOfFile(opened, FILE_MAP_WRITE, 0, 0, generationSize);
    if (!view) {
        const DWORD error = GetLastError();
        CloseHandle(opened);
        SetLastError(error);
        return false;
    }
    section = opened;
    trcGeneration = static_cast<const volatile std::uint32_t*>(view);
    return true;
}

}  // namespace

constinit const volatile std::uint32_t* trcGeneration = &privateGeneration;

namespace trc {

constinit SECURITY_ATTRIBUTES* trcAttributes = nullptr;

HANDLE traceMutex() noexcept
{
    return mutex.load();
}

void openObjects() noexcept
{
    if (!openMutex()) tellDebugger("ERROR: Can't create KXTRC_MUTEX, GetLastError()=%d \n", GetLastError());
    if (!openGeneration()) tellDebugger("ERROR: Can't create KXTRC_SECTION, GetLastError()=%d \n", GetLastError());
}

void closeMutex() noexcept
{
    if (const HANDLE old = mutex.exchange(nullptr)) CloseHandle(old);
}

void closeGeneration() noexcept
{
    // The gate of another thread may be looking at the word: it gets the private one before the view goes.
    const volatile std::uint32_t* const view = trcGeneration;
    trcGeneration = &privateGeneration;
    if (!section) return;
    UnmapViewOfFile(const_cast<const std::uint32_t*>(view));
    CloseHandle(section);
    section = nullptr;
}

}  // namespace trc

std::uint32_t TrcLock() noexcept
{
    const trc::ErrorKeeper keeper;
    // A line that is written without the mutex may mix with another; a caller that hangs would be worse.
    if (!trc::trcStopped && openMutex()) WaitForSingleObject(mutex.load(), trc::trcPlatform.lockWait);
    return ERROR_SUCCESS;
}

void TrcUnlock() noexcept
{
    const trc::ErrorKeeper keeper;
    if (const HANDLE held = mutex.load()) ReleaseMutex(held);
}
