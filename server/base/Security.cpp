#include "Security.h"

#include <sddl.h>

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

}  // namespace srv
