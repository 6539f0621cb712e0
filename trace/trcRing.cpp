#include <algorithm>
#include <cstring>

#include "trcOutputs.h"

namespace trc {
namespace {

constexpr std::uint32_t headerSize = 64;
constexpr std::uint32_t sectionExtra = 68;
constexpr std::uint32_t knownLayout = 1;

struct RingHeader
{
    std::uint32_t writePosition;
    std::uint32_t capacity;
    std::uint32_t wrapCount;
    std::uint32_t enabled;
    std::uint32_t users;
    std::uint32_t layout;
};

volatile RingHeader& header(std::uint8_t* view) noexcept
{
    return *reinterpret_cast<volatile RingHeader*>(view);
}

std::uint8_t* map(HANDLE section, std::size_t bytes) noexcept
{
    return static_cast<std::uint8_t*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, bytes));
}

// The capacity that the maker of an existing ring gave it; 0 when it cannot be read.
std::uint32_t existingCapacity(HANDLE section) noexcept
{
    std::uint8_t* const view = map(section, sectionExtra);
    if (!view) return 0;
    const std::uint32_t capacity = header(view).capacity;
    UnmapViewOfFile(view);
    return capacity;
}

}  // namespace

void RingOutput::attach(SECURITY_ATTRIBUTES* attributes) noexcept
{
    if (view_) return;
    const std::uint64_t bytes = std::uint64_t{size} + sectionExtra;
    section_ = CreateFileMappingA(INVALID_HANDLE_VALUE, attributes, PAGE_READWRITE,
                                  static_cast<DWORD>(bytes >> 32), static_cast<DWORD>(bytes), name);
    if (!section_) return;
    const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
    capacity_ = existed ? existingCapacity(section_) : size;
    const std::uint64_t wanted = std::uint64_t{capacity_} + sectionExtra;
    if (capacity_ != 0 && wanted <= SIZE_MAX) view_ = map(section_, static_cast<std::size_t>(wanted));

    if (view_ && !existed) {
        std::memset(view_, 0, headerSize);
        volatile RingHeader& ring = header(view_);
        ring.capacity = capacity_;
        ring.enabled = 1;
        ring.users = 1;
        ring.layout = knownLayout;
    } else if (view_ && header(view_).layout == knownLayout) {
        header(view_).users = header(view_).users + 1;
    } else {
        // Another layout is another program's business.
        if (view_) UnmapViewOfFile(view_);
        view_ = nullptr;
        CloseHandle(section_);
        section_ = nullptr;
    }
}

void RingOutput::write(const char* line, std::size_t length) noexcept
{
    if (!view_) return;
    volatile RingHeader& ring = header(view_);
    if (ring.enabled == 0) return;

    // The header lies in memory that others write; it is never trusted beyond the mapped data.
    const auto count = static_cast<std::uint32_t>(length);
    std::uint32_t position = ring.writePosition;
    if (position > capacity_ || count > capacity_) return;

    std::uint8_t* const data = view_ + headerSize;
    const std::uint32_t first = std::min(count, capacity_ - position);
    std::memcpy(data + position, line, first);
    std::memcpy(data, line + first, count - first);

    position += count;
    if (position > capacity_) {
        position -= capacity_;
        if (ring.wrapCount != 0xFFFFFFFF) ring.wrapCount = ring.wrapCount + 1;
    }
    ring.writePosition = position;
}

void RingOutput::detach() noexcept
{
    if (view_) {
        header(view_).users = header(view_).users - 1;
        UnmapViewOfFile(view_);
        view_ = nullptr;
    }
    if (section_) CloseHandle(section_);
    section_ = nullptr;
}

}  // namespace trc
