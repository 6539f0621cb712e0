// Output to the ring in shared memory, which readers can look at while it is written.
#include "trcObjects.h"
#include "trcOutputs.h"
#include "trcRing.h"
#include "trcState.h"

namespace trc {
namespace {

constexpr char ringName[] = "Global\\KXSDD_Trace";

struct View
{
    RingHeader header;
    char data[1];
};

constinit HANDLE section = nullptr;
constinit View* view = nullptr;
constinit std::uint32_t mappedCapacity = 0;

View* map(HANDLE ring, std::uint64_t bytes) noexcept
{
    if (bytes > SIZE_MAX) return nullptr;
    return static_cast<View*>(MapViewOfFile(ring, FILE_MAP_WRITE, 0, 0, static_cast<SIZE_T>(bytes)));
}

std::uint64_t sizeFor(std::uint32_t capacity) noexcept
{
    return std::uint64_t{capacity} + ringOverhead;
}

// Maps the whole of a ring that another process made. Windows refuses a capacity that goes beyond the section.
View* mapExisting(HANDLE ring, std::uint32_t& capacity) noexcept
{
    View* const head = map(ring, ringOverhead);
    if (!head) return nullptr;
    capacity = head->header.capacity;
    UnmapViewOfFile(head);
    View* const whole = map(ring, sizeFor(capacity));
    if (!whole || whole->header.layout == ringLayout) return whole;
    UnmapViewOfFile(whole);
    return nullptr;
}

volatile LONG* usersOf(View& ring) noexcept
{
    return reinterpret_cast<volatile LONG*>(&ring.header.users);
}

}  // namespace

void attachRing() noexcept
{
    if (view) return;
    const std::uint64_t bytes = sizeFor(trcSmSize);
    SetLastError(ERROR_SUCCESS);
    const HANDLE ring = CreateFileMappingA(INVALID_HANDLE_VALUE, trcAttributes, PAGE_READWRITE,
                                           static_cast<DWORD>(bytes >> 32), static_cast<DWORD>(bytes), ringName);
    if (!ring) return;
    const bool existed = GetLastError() == ERROR_ALREADY_EXISTS;
    std::uint32_t capacity = trcSmSize;
    View* const mapped = existed ? mapExisting(ring, capacity) : map(ring, bytes);
    if (!mapped) {
        CloseHandle(ring);
        return;
    }
    if (existed) {
        InterlockedIncrement(usersOf(*mapped));
    } else {
        initialiseRing(mapped->header, capacity);
    }
    section = ring;
    mappedCapacity = capacity;
    view = mapped;
}

void detachRing() noexcept
{
    if (!view) return;
    View* const mapped = view;
    view = nullptr;
    if (mapped->header.users != 0) InterlockedDecrement(usersOf(*mapped));
    UnmapViewOfFile(mapped);
    CloseHandle(section);
    section = nullptr;
}

bool ringAttached() noexcept
{
    return view != nullptr;
}

void writeToRing(const char* bytes, std::size_t count) noexcept
{
    if (view) writeRing(view->header, view->data, mappedCapacity, {bytes, count});
}

}  // namespace trc
