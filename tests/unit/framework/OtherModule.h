// A string manager as another module would bring it.
#pragma once

#include <gtest/gtest.h>

#include "StringManager.h"

// Another module's manager: counts its blocks, and can be out of memory or unwilling to share.
class OtherModule final : public IAtlStringMgr
{
 public:
    OtherModule() : nil_{{this, 0, 0, 2}, {}} {}
    OtherModule(const OtherModule&) = delete;
    OtherModule& operator=(const OtherModule&) = delete;
    ~OtherModule() { HeapDestroy(heap_); }

    CStringData* Allocate(int length, int size) noexcept override
    {
        if (exhausted) return nullptr;
        auto* data = static_cast<CStringData*>(HeapAlloc(heap_, HEAP_ZERO_MEMORY, blockSize(length, size)));
        *data = {this, 0, length, 1};
        ++blocks;
        return data;
    }
    void Free(CStringData* data) noexcept override
    {
        EXPECT_EQ(data->pStringMgr, this);
        EXPECT_TRUE(HeapFree(heap_, 0, data));
        --blocks;
    }
    CStringData* Reallocate(CStringData* data, int length, int size) noexcept override
    {
        EXPECT_EQ(data->pStringMgr, this);
        if (exhausted) return nullptr;
        data = static_cast<CStringData*>(HeapReAlloc(heap_, 0, data, blockSize(length, size)));
        data->nAllocLength = length;
        ++reallocations;
        return data;
    }
    CStringData* GetNilString() noexcept override
    {
        nil_.head.AddRef();
        return &nil_.head;
    }
    IAtlStringMgr* Clone() noexcept override { return cloneTo ? cloneTo : this; }

    int blocks = 0;
    int reallocations = 0;
    bool exhausted = false;
    IAtlStringMgr* cloneTo = nullptr;

 private:
    static std::size_t blockSize(int length, int size)
    {
        return sizeof(CStringData) + static_cast<std::size_t>(length + 1) * static_cast<std::size_t>(size);
    }

    HANDLE heap_ = HeapCreate(0, 0, 0);
    struct
    {
        CStringData head;
        char terminator[4];
    } nil_;
};
