#include "StringManager.h"

#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

// Texts grow in steps of this many characters, so that short appends seldom move them.
constexpr int grain = 8;

// Bytes of a block for this many characters and a terminator, rounded up; 0 when no block can be that large.
std::size_t blockSize(int allocLength, int charSize) noexcept
{
    if (allocLength < 0 || charSize <= 0 || allocLength > INT_MAX - grain - 1) return 0;
    const auto characters = static_cast<std::size_t>((allocLength + 1 + grain - 1) / grain * grain);
    const auto limit = static_cast<std::size_t>(INT_MAX) - sizeof(CStringData);
    if (characters > limit / static_cast<std::size_t>(charSize)) return 0;
    return sizeof(CStringData) + characters * static_cast<std::size_t>(charSize);
}

int capacityOf(std::size_t size, int charSize) noexcept
{
    return static_cast<int>((size - sizeof(CStringData)) / static_cast<std::size_t>(charSize)) - 1;
}

class ModuleStringMgr final : public IAtlStringMgr
{
 public:
    constexpr ModuleStringMgr() : nil_{{this, 0, 0, nilRefs}, {}} {}

    CStringData* Allocate(int allocLength, int charSize) noexcept override
    {
        const auto size = blockSize(allocLength, charSize);
        auto* data = size ? static_cast<CStringData*>(std::malloc(size)) : nullptr;
        if (!data) return nullptr;
        *data = {this, 0, capacityOf(size, charSize), 1};
        std::memset(data->data(), 0, static_cast<std::size_t>(charSize));
        return data;
    }

    void Free(CStringData* data) noexcept override
    {
        if (data != &nil_.head) std::free(data);
    }

    CStringData* Reallocate(CStringData* data, int allocLength, int charSize) noexcept override
    {
        const auto size = blockSize(allocLength, charSize);
        auto* moved = size ? static_cast<CStringData*>(std::realloc(data, size)) : nullptr;
        if (moved) moved->nAllocLength = capacityOf(size, charSize);
        return moved;
    }

    CStringData* GetNilString() noexcept override
    {
        nil_.head.AddRef();
        return &nil_.head;
    }

    IAtlStringMgr* Clone() noexcept override { return this; }

 private:
    // More than one, so that whoever holds the empty string sees it as shared and never writes into it.
    static constexpr long nilRefs = 2;

    struct Nil
    {
        CStringData head;
        char terminator[sizeof(wchar_t)];
    };
    Nil nil_;
};

constinit ModuleStringMgr moduleManager;

}  // namespace

void CStringData::AddRef() noexcept
{
    __atomic_add_fetch(&nRefs, 1, __ATOMIC_RELAXED);
}

void CStringData::Release() noexcept
{
    if (__atomic_sub_fetch(&nRefs, 1, __ATOMIC_ACQ_REL) <= 0) pStringMgr->Free(this);
}

void CStringData::Lock() noexcept
{
    --nRefs;
    if (nRefs == 0) nRefs = -1;
}

void CStringData::Unlock() noexcept
{
    if (nRefs >= 0) return;
    ++nRefs;
    if (nRefs == 0) nRefs = 1;
}

IAtlStringMgr* AfxGetStringManager() noexcept
{
    return &moduleManager;
}
