// Which manager makes, resizes and frees a string's characters.
#include "StringManager.h"

#include <gtest/gtest.h>

#include <new>
#include <utility>

#include "CString.h"
#include "OtherModule.h"

namespace {

TEST(StringManager, StringOfAnotherModule_isFreedByItsMaker)
{
    OtherModule other;
    {
        CString text(&other);
        text = "abc";
        EXPECT_EQ(other.blocks, 1);
        const CString copy(text);
        EXPECT_EQ(copy.GetString(), text.GetString());
        const CString moved(std::move(text));
        EXPECT_EQ(other.blocks, 1);
    }
    EXPECT_EQ(other.blocks, 0);
}

TEST(StringManager, StringOfAnotherModule_growsInItsMakersMemory)
{
    OtherModule other;
    CString text(&other);
    text = "abc";
    text += "defghi";
    EXPECT_EQ(other.reallocations, 1);
    EXPECT_EQ(text.GetManager(), &other);
    EXPECT_STREQ(text.Left(2), "ab");
    EXPECT_EQ(text.Left(2).GetManager(), &other);
}

TEST(StringManager, AssignedFromAnotherModule_keepsItsOwnManager)
{
    OtherModule other;
    CString theirs(&other);
    theirs = "abc";
    CString mine("mine");
    mine = theirs;
    EXPECT_STREQ(mine, "abc");
    EXPECT_EQ(mine.GetManager(), AfxGetStringManager());
    EXPECT_NE(mine.GetString(), theirs.GetString());
    mine = std::move(theirs);
    EXPECT_EQ(mine.GetManager(), AfxGetStringManager());
}

TEST(StringManager, ManagerThatDoesNotShare_copiesInTheManagerItNames)
{
    OtherModule local;
    local.cloneTo = AfxGetStringManager();
    {
        CString text(&local);
        text = CString("abc");
        const CString copy(text);
        EXPECT_STREQ(copy, "abc");
        EXPECT_EQ(copy.GetManager(), AfxGetStringManager());
    }
    EXPECT_EQ(local.blocks, 0);
}

TEST(StringManager, NoMemoryToCopyBeforeWrite_throwsAndChangesNothing)
{
    OtherModule other;
    CString text(&other);
    text = "abc";
    CString copy(text);
    other.exhausted = true;
    EXPECT_THROW(copy.SetAt(0, 'X'), std::bad_alloc);
    EXPECT_STREQ(copy, "abc");
    EXPECT_EQ(copy.GetString(), text.GetString());
}

TEST(StringManager, NoMemoryToGrow_throwsAndChangesNothing)
{
    OtherModule other;
    CString text(&other);
    text = "abc";
    other.exhausted = true;
    EXPECT_THROW(text += "defghi", std::bad_alloc);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text.GetLength(), 3);
}

TEST(StringManager, ModuleManager_refusesImpossibleSizes)
{
    auto* manager = AfxGetStringManager();
    EXPECT_EQ(manager->Allocate(-1, 1), nullptr);
    EXPECT_EQ(manager->Allocate(0x7FFFFFFF, 1), nullptr);
    EXPECT_EQ(manager->Allocate(0x60000000, 2), nullptr);
    EXPECT_EQ(manager->Allocate(1, 0), nullptr);
}

TEST(StringManager, ModuleManager_makesAnEmptyUnsharedBlock)
{
    auto* manager = AfxGetStringManager();
    auto* block = manager->Allocate(10, 1);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->pStringMgr, manager);
    EXPECT_EQ(block->nDataLength, 0);
    EXPECT_GE(block->nAllocLength, 10);
    EXPECT_EQ(block->nRefs, 1);
    EXPECT_STREQ(block->data(), "");
    manager->Free(block);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"  // this convention on a function that is no member

// The table of virtual functions as a module compiled elsewhere sees it: no destructor in front, this order.
TEST(StringManager, FunctionTable_hasTheContractsOrder)
{
    using Allocate = CStringData*(__thiscall*)(IAtlStringMgr*, int, int);
    using Free = void(__thiscall*)(IAtlStringMgr*, CStringData*);
    using Reallocate = CStringData*(__thiscall*)(IAtlStringMgr*, CStringData*, int, int);
    using GetNilString = CStringData*(__thiscall*)(IAtlStringMgr*);
    using Clone = IAtlStringMgr*(__thiscall*)(IAtlStringMgr*);
    auto* manager = AfxGetStringManager();
    void** table = *reinterpret_cast<void***>(manager);
    auto* block = reinterpret_cast<Allocate>(table[0])(manager, 3, 1);
    ASSERT_NE(block, nullptr);
    block = reinterpret_cast<Reallocate>(table[2])(manager, block, 300, 1);
    EXPECT_GE(block->nAllocLength, 300);
    reinterpret_cast<Free>(table[1])(manager, block);
    auto* nil = reinterpret_cast<GetNilString>(table[3])(manager);
    EXPECT_EQ(nil->nAllocLength, 0);
    nil->Release();
    EXPECT_EQ(reinterpret_cast<Clone>(table[4])(manager), manager);
}

#pragma GCC diagnostic pop

}  // namespace
