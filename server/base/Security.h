// Access rights of the kernel objects that clients open.
#pragma once

#include "Owner.h"

namespace srv {

// Security attributes from a descriptor in SDDL; the object must live as long as they are used.
class Security
{
 public:
    // Throws std::system_error for a descriptor that the system does not understand.
    explicit Security(const wchar_t* sddl);

    // The descriptor and, added to it, everything for the user whom this process runs as: the owner of an object has
    // no rights to it by that alone.
    static Security withOwnUser(const wchar_t* sddl);

    SECURITY_ATTRIBUTES* attributes() noexcept { return &attributes_; }

 private:
    LocalMemory descriptor_;
    SECURITY_ATTRIBUTES attributes_{};
};

namespace sddl {

// The channel's pipes: everybody on this machine may read and write, and nobody but the server may make an instance; a
// client would otherwise be able to answer other clients. Nobody from the network.
inline constexpr wchar_t channelClients[] = L"D:(D;;GA;;;NU)(A;;GA;;;SY)(A;;GA;;;BA)(A;;0x12019B;;;WD)";

// The same for clients that open with generic rights, which for a pipe include making further instances; the first
// instance is therefore checked to be this server's.
inline constexpr wchar_t genericClients[] = L"D:(D;;GA;;;NU)(A;;GA;;;SY)(A;;GA;;;BA)(A;;GRGW;;;WD)";

// Clients create-or-open these objects with full access and must not be refused.
inline constexpr wchar_t openToAll[] = L"D:(A;;GA;;;WD)";

// To be seen by everybody, changed only by administrators and the system.
inline constexpr wchar_t visible[] = L"D:(A;;GA;;;SY)(A;;GA;;;BA)(A;;0x120000;;;WD)";

}  // namespace sddl

}  // namespace srv
