#include "Security.h"

#include <sddl.h>

#include <string>
#include <system_error>

namespace srv {

Security::Security(const wchar_t* sddl)
{
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(sddl, SDDL_REVISION_1, descriptor_.put(), nullptr)) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "security descriptor");
    }
    attributes_.nLength = sizeof attributes_;
    attributes_.lpSecurityDescriptor = descriptor_.get();
    attributes_.bInheritHandle = FALSE;
}

Security Security::withOwnUser(const wchar_t* sddl)
{
    const auto failed = [](const char* what) {
        return std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
    };
    Handle token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put())) throw failed("the process's token");
    alignas(TOKEN_USER) BYTE user[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    if (!GetTokenInformation(token.get(), TokenUser, user, sizeof user, &size)) throw failed("the process's user");
    LocalMemory text;
    if (!ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user)->User.Sid,
                                reinterpret_cast<wchar_t**>(text.put())))
        throw failed("the user's identifier");
    const std::wstring own = static_cast<const wchar_t*>(text.get());
    return Security((sddl + (L"(A;;GA;;;" + own + L")")).c_str());
}

}  // namespace srv
