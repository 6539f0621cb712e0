#include "peMachine.h"

#include <cstdint>

namespace {

bool readAt(std::istream& stream, std::uint32_t offset, unsigned count, std::uint32_t& value)
{
    unsigned char bytes[4] = {};
    stream.seekg(offset);
    if (!stream.read(reinterpret_cast<char*>(bytes), count)) return false;
    value = 0;
    for (unsigned i = count; i-- > 0;)
        value = value << 8 | bytes[i];
    return true;
}

}  // namespace

Machine machineOf(std::istream& stream)
{
    constexpr std::uint32_t dosSignature = 0x5A4D;  // "MZ"
    constexpr std::uint32_t peSignature = 0x4550;   // "PE", two zeros
    constexpr std::uint32_t peOffsetAt = 0x3C;
    std::uint32_t signature = 0;
    std::uint32_t header = 0;
    std::uint32_t machine = 0;
    if (!readAt(stream, 0, 2, signature) || signature != dosSignature) return Machine::None;
    if (!readAt(stream, peOffsetAt, 4, header)) return Machine::None;
    if (!readAt(stream, header, 4, signature) || signature != peSignature) return Machine::None;
    if (!readAt(stream, header + 4, 2, machine)) return Machine::None;
    return machine == 0x014C ? Machine::X86 : machine == 0x8664 ? Machine::X64 : Machine::Other;
}
