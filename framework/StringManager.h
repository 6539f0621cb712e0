// Storage of strings: the block that every CString points into, and the manager that makes and frees such blocks.
//
// Both are a binary contract between modules. A block is
//
//     offset  0  pStringMgr    the manager that made the block, and the only one to free it
//             4  nDataLength   characters in use, without the terminator
//             8  nAllocLength  characters that fit, without the terminator
//            12  nRefs         strings that share the block; negative: locked, one owner, shared by nobody
//            16  the characters and their terminator
//
// and the manager is called through its table of virtual functions, in the order declared here.
#pragma once

#include <windows.h>

struct CStringData;

struct IAtlStringMgr
{
    // A block for allocLength characters of charSize bytes, with one reference and no text; NULL: no memory.
    virtual CStringData* Allocate(int allocLength, int charSize) noexcept = 0;
    virtual void Free(CStringData* data) noexcept = 0;
    // Makes an unshared block larger or smaller and keeps its text; NULL: no memory, and the block is unchanged.
    virtual CStringData* Reallocate(CStringData* data, int allocLength, int charSize) noexcept = 0;
    // The empty string's block, one more reference counted.
    virtual CStringData* GetNilString() noexcept = 0;
    // The manager for copies of a string: the same one where blocks may be shared, another where they may not.
    virtual IAtlStringMgr* Clone() noexcept = 0;

 protected:
    ~IAtlStringMgr() = default;  // never destroyed through the interface; a virtual destructor would move the table
};

struct CStringData
{
    IAtlStringMgr* pStringMgr;
    int nDataLength;
    int nAllocLength;
    long nRefs;

    char* data() noexcept { return reinterpret_cast<char*>(this + 1); }

    void AddRef() noexcept;
    void Release() noexcept;  // the last reference frees the block

    bool IsLocked() const noexcept { return refs() < 0; }
    bool IsShared() const noexcept { return refs() > 1; }
    // Locks nest. Only an unshared block can be locked, by the thread that owns the string.
    void Lock() noexcept;
    void Unlock() noexcept;

 private:
    long refs() const noexcept { return __atomic_load_n(&nRefs, __ATOMIC_ACQUIRE); }
};

static_assert(sizeof(void*) != 4 || sizeof(CStringData) == 16);

// This module's manager. Usable from the first static constructor to the last static destructor.
IAtlStringMgr* AfxGetStringManager() noexcept;
