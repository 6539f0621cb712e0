#include "doctor/access.h"

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <functional>

#include "platform/support/win_handle.h"
#include "results.h"
#include "text.h"

namespace {

enum class Kind { Pipe, Event, Mutex, Memory, Key };

struct Shared
{
    const char* name;
    Kind kind;
    const char* use;
};

constexpr Shared shared[] = {
    {R"(\\.\pipe\KXOVASCP.memory)", Kind::Pipe, "the server's; only while it runs"},
    {R"(\\.\pipe\KXOVASCP)", Kind::Pipe, "the server's; only while it runs"},
    {R"(\\.\pipe\KxOvaSRVPIPE64)", Kind::Pipe, "the server's; only while it runs"},
    {"_KxOvaSRVStartSRVEvent", Kind::Event, "the server's; only while it runs"},
    {"Global\\kxovasrvx", Kind::Mutex, "the server's; only while it runs"},
    {"Global\\DCFG_FLUSH_LOGDEV", Kind::Event, "the server's; only while it runs"},
    {"Global\\DCFG_FLUSH_RESP_OK", Kind::Event, "the server's; only while it runs"},
    {"Global\\DCFG_FLUSH_RESP_ERR", Kind::Event, "the server's; only while it runs"},
    {"Global\\KXRTS_OVAAPI_64_WOW_MUTEX", Kind::Mutex, "the library's; only while it asks the registry pipe"},
    {"Global\\KXTRACE_MUTEX", Kind::Mutex, "the library's; only while it is loaded"},
    {"Global\\KXTRACE_SECTION", Kind::Memory, "the library's; only while it is loaded"},
    {"Global\\KXSDD_Trace", Kind::Memory, "the library's; only while it traces to memory"},
    {R"(SOFTWARE\TAVRONE\NORIX)", Kind::Key, "the server's store"},
};

constexpr const char* word(Kind kind)
{
    constexpr const char* words[] = {"pipe", "event", "mutex", "memory", "key"};
    return words[static_cast<int>(kind)];
}

struct Right
{
    DWORD bits;  // all of them
    const char* word;
};

// What the kinds of objects know beside the rights of all.
std::vector<Right> rightsOf(Kind kind)
{
    switch (kind) {
        case Kind::Pipe:
            return {
                {FILE_READ_DATA, "read"}, {FILE_WRITE_DATA, "write"}, {FILE_CREATE_PIPE_INSTANCE, "make instances"}};
        case Kind::Event:
            return {{EVENT_MODIFY_STATE, "set"}, {SYNCHRONIZE, "wait"}};
        case Kind::Mutex:
            return {{SYNCHRONIZE, "take"}};
        case Kind::Memory:
            return {{FILE_MAP_READ, "read"}, {FILE_MAP_WRITE, "write"}};
        case Kind::Key:
            return {{KEY_QUERY_VALUE, "read"}, {KEY_SET_VALUE, "write"}};
    }
    return {};
}

GENERIC_MAPPING mappingOf(Kind kind)
{
    switch (kind) {
        case Kind::Pipe:
            return {FILE_GENERIC_READ, FILE_GENERIC_WRITE, FILE_GENERIC_EXECUTE, FILE_ALL_ACCESS};
        case Kind::Event:
            return {READ_CONTROL, EVENT_MODIFY_STATE | READ_CONTROL, SYNCHRONIZE | READ_CONTROL, EVENT_ALL_ACCESS};
        case Kind::Mutex:
            return {READ_CONTROL, MUTEX_MODIFY_STATE | READ_CONTROL, SYNCHRONIZE | READ_CONTROL, MUTEX_ALL_ACCESS};
        case Kind::Memory:
            return {FILE_MAP_READ | READ_CONTROL, FILE_MAP_WRITE | READ_CONTROL, READ_CONTROL, SECTION_ALL_ACCESS};
        case Kind::Key:
            return {KEY_READ, KEY_WRITE, KEY_EXECUTE, KEY_ALL_ACCESS};
    }
    return {};
}

std::string inWords(Kind kind, DWORD mask)
{
    GENERIC_MAPPING mapping = mappingOf(kind);
    MapGenericMask(&mask, &mapping);
    // Some kinds have bits in their mask of all rights that nothing asks for.
    if ((mask & mapping.GenericAll) == mapping.GenericAll) return "everything";
    std::string words;
    const auto add = [&](const char* text) { words += (words.empty() ? "" : ", ") + std::string(text); };
    for (const Right& right : rightsOf(kind))
        if ((mask & right.bits) == right.bits) add(right.word);
    if (mask & (WRITE_DAC | WRITE_OWNER)) add("change the rights");
    if (mask & DELETE) add("delete");
    return words.empty() ? "look at it" : words;
}

// Whom an identifier means.
std::string whom(PSID sid)
{
    struct Known
    {
        WELL_KNOWN_SID_TYPE type;
        const char* name;
    };
    constexpr Known known[] = {{WinWorldSid, "everybody"},
                               {WinLocalSystemSid, "the system"},
                               {WinBuiltinAdministratorsSid, "administrators"},
                               {WinAuthenticatedUserSid, "users who have logged on"},
                               {WinBuiltinUsersSid, "users"},
                               {WinCreatorOwnerSid, "who makes it"},
                               {WinRestrictedCodeSid, "restricted programs"},
                               {WinNetworkSid, "the network"}};
    for (const Known& group : known)
        if (IsWellKnownSid(sid, group.type)) return group.name;

    platform::KernelObject token;
    alignas(TOKEN_USER) BYTE user[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put()) &&
        GetTokenInformation(token.get(), TokenUser, user, sizeof user, &size) &&
        EqualSid(sid, reinterpret_cast<TOKEN_USER*>(user)->User.Sid))
        return "you";
    char* text = nullptr;
    if (!ConvertSidToStringSidA(sid, &text)) return "somebody";
    const std::string name = text;
    LocalFree(text);
    return name;
}

std::string inWords(Kind kind, ACL* list)
{
    if (!list) return "everybody: everything";
    std::string words;
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* entry = nullptr;
        if (!GetAce(list, i, &entry)) continue;
        const auto& ace = *static_cast<ACCESS_ALLOWED_ACE*>(entry);  // the other kinds of entries begin like it
        const bool allowed = ace.Header.AceType == ACCESS_ALLOWED_ACE_TYPE;
        if (!allowed && ace.Header.AceType != ACCESS_DENIED_ACE_TYPE) continue;
        if (ace.Header.AceFlags & INHERIT_ONLY_ACE) continue;
        auto* const sid = const_cast<DWORD*>(&ace.SidStart);
        words += (words.empty() ? "" : "; ") + whom(sid) + ": " + (allowed ? inWords(kind, ace.Mask) : "nothing");
    }
    return words.empty() ? "nobody" : words;
}

HANDLE opened(const Shared& object)
{
    switch (object.kind) {
        case Kind::Pipe: {
            const HANDLE pipe =
                CreateFileA(object.name, READ_CONTROL, 0, nullptr, OPEN_EXISTING, SECURITY_SQOS_PRESENT, nullptr);
            return pipe == INVALID_HANDLE_VALUE ? nullptr : pipe;
        }
        case Kind::Event:
            return OpenEventA(READ_CONTROL, FALSE, object.name);
        case Kind::Mutex:
            return OpenMutexA(READ_CONTROL, FALSE, object.name);
        case Kind::Memory:
            return OpenFileMappingA(READ_CONTROL, FALSE, object.name);
        case Kind::Key:
            return nullptr;
    }
    return nullptr;
}

std::string sddlOf(PSECURITY_DESCRIPTOR descriptor)
{
    char* text = nullptr;
    if (!ConvertSecurityDescriptorToStringSecurityDescriptorA(descriptor, SDDL_REVISION_1, DACL_SECURITY_INFORMATION,
                                                              &text, nullptr))
        return {};
    std::string result = text;
    LocalFree(text);
    return result;
}

Access examine(const Shared& object)
{
    Access access{object.name, word(object.kind), {}, {}};
    DWORD error = ERROR_SUCCESS;
    ACL* list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (object.kind == Kind::Key) {
        platform::RegistryKey key;
        error = static_cast<DWORD>(
            RegOpenKeyExA(HKEY_LOCAL_MACHINE, object.name, 0, READ_CONTROL | KEY_WOW64_32KEY, key.put()));
        if (error == ERROR_SUCCESS)
            error = GetSecurityInfo(key.get(), SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                                    nullptr, &descriptor);
    } else {
        const platform::KernelObject handle(opened(object));
        error = handle ? GetSecurityInfo(handle.get(), SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                         &list, nullptr, &descriptor)
                       : GetLastError();
    }
    if (error == ERROR_FILE_NOT_FOUND) {
        access.rights = std::string("is not there (") + object.use + ")";
    } else if (error != ERROR_SUCCESS) {
        access.rights = "cannot be looked at: " + windowsText(static_cast<long>(error));
    } else {
        access.rights = inWords(object.kind, list);
        access.sddl = sddlOf(descriptor);
        LocalFree(descriptor);
    }
    return access;
}

}  // namespace

std::vector<Access> examineAccess()
{
    std::vector<Access> all;
    for (const Shared& object : shared)
        all.push_back(examine(object));
    return all;
}
