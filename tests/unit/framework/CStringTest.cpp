// Storage of CString: layout, sharing, copying before writing, capacity, locking.
#include "CString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <utility>

#include "Exceptions.h"

namespace {

// The words that precede a string's characters, read through nothing but the pointer.
struct RawHeader
{
    void* manager;
    int length;
    int capacity;
    long references;
};

const RawHeader& headerOf(const CString& text)
{
    const char* characters;
    std::memcpy(&characters, &text, sizeof characters);
    return *reinterpret_cast<const RawHeader*>(characters - 16);
}

TEST(CString, Object_isOnePointerToItsCharacters)
{
    EXPECT_EQ(sizeof(CString), 4u);
    const CString text("abc");
    const char* stored;
    std::memcpy(&stored, &text, sizeof stored);
    EXPECT_STREQ(stored, "abc");
    EXPECT_EQ(stored, text.GetString());
}

TEST(CString, Header_holdsManagerLengthCapacityReferencesInThisOrder)
{
    EXPECT_EQ(sizeof(RawHeader), 16u);
    const CString text("abcde");
    const CString copy(text);
    const auto& header = headerOf(text);
    EXPECT_EQ(header.manager, AfxGetStringManager());
    EXPECT_EQ(header.length, 5);
    EXPECT_GE(header.capacity, 5);
    EXPECT_EQ(header.capacity, text.GetAllocLength());
    EXPECT_EQ(header.references, 2);
}

TEST(CString, Copy_sharesCharacters)
{
    const CString text("abc");
    {
        const CString copy(text);
        EXPECT_EQ(copy.GetString(), text.GetString());
        EXPECT_EQ(headerOf(text).references, 2);
    }
    EXPECT_EQ(headerOf(text).references, 1);
}

TEST(CString, CopyThenWrite_originalUnchanged)
{
    const CString text("abc");
    CString copy(text);
    copy.SetAt(1, 'X');
    EXPECT_STREQ(copy, "aXc");
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(headerOf(text).references, 1);
    EXPECT_EQ(headerOf(copy).references, 1);
}

TEST(CString, CopyThenAppendInRoom_originalUnchanged)
{
    CString text("ab");
    ASSERT_GE(text.GetAllocLength(), 3);
    CString copy(text);
    copy += 'c';
    EXPECT_STREQ(text, "ab");
    EXPECT_STREQ(copy, "abc");
}

TEST(CString, AssignedCopy_sharesCharactersAndReleasesItsOwn)
{
    const CString text("abc");
    CString other("other");
    const CString witness(other);
    other = text;
    EXPECT_EQ(other.GetString(), text.GetString());
    EXPECT_EQ(headerOf(witness).references, 1);
}

TEST(CString, AssignedToItself_keepsTextAndReferences)
{
    CString text("abc");
    const CString& same = text;
    text = same;
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(headerOf(text).references, 1);
}

TEST(CString, Moved_takesCharactersAndLeavesEmpty)
{
    CString text("abc");
    const char* characters = text;
    const CString taken(std::move(text));
    EXPECT_EQ(taken.GetString(), characters);
    EXPECT_TRUE(text.IsEmpty());  // NOLINT(bugprone-use-after-move): the state after is what is tested
    EXPECT_EQ(headerOf(taken).references, 1);
}

TEST(CString, MoveAssigned_takesCharactersWithoutCopying)
{
    CString text("abc");
    const char* characters = text;
    CString target("target");
    target = std::move(text);
    EXPECT_EQ(target.GetString(), characters);
}

TEST(CString, EmptyStrings_shareOneBlockPerModule)
{
    const CString first;
    CString second("abc");
    second.Empty();
    EXPECT_EQ(first.GetString(), second.GetString());
    EXPECT_EQ(headerOf(first).length, 0);
    EXPECT_EQ(headerOf(first).capacity, 0);
}

TEST(CString, EmptyStringDestroyed_sharedBlockStays)
{
    const CString witness;
    const long before = headerOf(witness).references;
    {
        const CString first;
        const CString second(first);
        EXPECT_EQ(headerOf(witness).references, before + 2);
    }
    EXPECT_EQ(headerOf(witness).references, before);
    EXPECT_GE(before, 3) << "the module's own references keep it from ever being writable";
}

TEST(CString, BufferOfEmptyString_isItsOwn)
{
    const CString empty;
    CString text;
    char* buffer = text.GetBuffer();
    EXPECT_NE(buffer, empty.GetString());
    *buffer = '\0';
    text.ReleaseBuffer();
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, ReleaseBufferOfEmptyString_leavesSharedBlockAlone)
{
    CString text;
    text.ReleaseBuffer(0);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_THROW(text.ReleaseBuffer(1), CInvalidArgException);
}

TEST(CString, Constructed_fromEachSource)
{
    EXPECT_STREQ(CString(static_cast<const char*>(nullptr)), "");
    EXPECT_STREQ(CString(nullptr), "");
    EXPECT_STREQ(CString("abcdef", 3), "abc");
    EXPECT_STREQ(CString('x'), "x");
    EXPECT_STREQ(CString('x', 3), "xxx");
    EXPECT_STREQ(CString('x', 0), "");
    EXPECT_STREQ(CString(L"Gr\u00FC\u00DFe"),
                 "Gr\xFC\xDF"
                 "e");
    EXPECT_STREQ(CString(static_cast<const wchar_t*>(nullptr)), "");
    EXPECT_THROW(CString("abc", -1), CInvalidArgException);
    EXPECT_THROW(CString('x', -1), CInvalidArgException);
}

TEST(CString, ConstructedWithLength_keepsEmbeddedZeros)
{
    const CString text("a\0b", 3);
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_EQ(text.GetAt(2), 'b');
}

TEST(CString, Assigned_fromEachSource)
{
    CString text;
    text = "abc";
    EXPECT_STREQ(text, "abc");
    text = 'x';
    EXPECT_STREQ(text, "x");
    text = L"wide";
    EXPECT_STREQ(text, "wide");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, AssignedPartOfItself_takesThatPart)
{
    CString text("abcdef");
    text = text.GetString() + 3;
    EXPECT_STREQ(text, "def");
}

TEST(CString, SharedAssignedPartOfItself_takesThatPart)
{
    CString text("abcdef");
    const CString copy(text);
    text = text.GetString() + 3;
    EXPECT_STREQ(text, "def");
    EXPECT_STREQ(copy, "abcdef");
}

TEST(CString, AppendedToItself_doublesText)
{
    CString text("abcdefgh");
    text += text;
    EXPECT_STREQ(text, "abcdefghabcdefgh");
    text += text.GetString() + 14;
    EXPECT_STREQ(text, "abcdefghabcdefghgh");
}

TEST(CString, Joined_everyCombination)
{
    const CString left("ab");
    const CString right("cd");
    EXPECT_STREQ(left + right, "abcd");
    EXPECT_STREQ(left + "cd", "abcd");
    EXPECT_STREQ("ab" + right, "abcd");
    EXPECT_STREQ(left + 'c', "abc");
    EXPECT_STREQ('b' + right, "bcd");
    EXPECT_STREQ(CString() + CString(), "");
    EXPECT_STREQ(left + static_cast<const char*>(nullptr), "ab");
}

TEST(CString, GetAt_outsideText_throws)
{
    const CString text("abc");
    EXPECT_EQ(text[0], 'a');
    EXPECT_EQ(text.GetAt(3), '\0');
    EXPECT_THROW(static_cast<void>(text.GetAt(4)), CInvalidArgException);
    EXPECT_THROW(static_cast<void>(text.GetAt(-1)), CInvalidArgException);
}

TEST(CString, SetAt_onTerminator_throwsAndLeavesText)
{
    CString text("abc");
    EXPECT_THROW(text.SetAt(3, 'x'), CInvalidArgException);
    EXPECT_STREQ(text, "abc");
}

TEST(CString, GetBuffer_givesRoomAndReleaseBufferTakesWhatWasWritten)
{
    CString text("abc");
    char* buffer = text.GetBuffer(100);
    EXPECT_GE(text.GetAllocLength(), 100);
    EXPECT_STREQ(buffer, "abc");
    std::strcpy(buffer, "written behind the string's back");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 32);
    text.GetBuffer(100);
    text.ReleaseBuffer(7);
    EXPECT_STREQ(text, "written");
}

TEST(CString, ReleaseBuffer_withoutTerminator_endsAtCapacity)
{
    CString text;
    char* buffer = text.GetBuffer(20);
    const int capacity = text.GetAllocLength();
    std::memset(buffer, 'x', static_cast<std::size_t>(capacity));
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), capacity);
    EXPECT_EQ(text.GetAt(capacity), '\0');
}

TEST(CString, GetBuffer_ofSharedString_isItsOwn)
{
    const CString text("abc");
    CString copy(text);
    copy.GetBuffer()[0] = 'X';
    copy.ReleaseBuffer();
    EXPECT_STREQ(text, "abc");
    EXPECT_STREQ(copy, "Xbc");
}

TEST(CString, GetBufferSetLength_setsLengthAtOnce)
{
    CString text;
    std::memcpy(text.GetBufferSetLength(3), "abc", 3);
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_STREQ(text, "abc");
    EXPECT_THROW(text.GetBufferSetLength(-1), CInvalidArgException);
}

TEST(CString, Locked_isCopiedByItsCharacters)
{
    CString text("abc");
    char* buffer = text.LockBuffer();
    EXPECT_LT(headerOf(text).references, 0);
    const CString copy(text);
    EXPECT_NE(copy.GetString(), text.GetString());
    buffer[0] = 'X';
    EXPECT_STREQ(copy, "abc");
    text.UnlockBuffer();
    EXPECT_EQ(headerOf(text).references, 1);
    const CString shared(text);
    EXPECT_EQ(shared.GetString(), text.GetString());
}

TEST(CString, LockedAssigned_keepsItsBuffer)
{
    CString text("abc");
    const char* buffer = text.LockBuffer();
    const CString other("xy");
    text = other;
    EXPECT_EQ(text.GetString(), buffer);
    EXPECT_STREQ(text, "xy");
    text.Empty();
    EXPECT_EQ(text.GetString(), buffer);
    EXPECT_STREQ(text, "");
    text.UnlockBuffer();
}

TEST(CString, LockedTwice_staysLockedUntilUnlockedTwice)
{
    CString text("abc");
    text.LockBuffer();
    text.LockBuffer();
    text.UnlockBuffer();
    EXPECT_LT(headerOf(text).references, 0);
    text.UnlockBuffer();
    EXPECT_EQ(headerOf(text).references, 1);
}

TEST(CString, Truncate_cutsTextAndRefusesToGrow)
{
    CString text("abcdef");
    const CString copy(text);
    text.Truncate(2);
    EXPECT_STREQ(text, "ab");
    EXPECT_STREQ(copy, "abcdef");
    EXPECT_THROW(text.Truncate(3), CInvalidArgException);
}

TEST(CString, FreeExtra_givesBackCapacityAndKeepsText)
{
    CString text("abc");
    text.Preallocate(5000);
    EXPECT_GE(text.GetAllocLength(), 5000);
    text.FreeExtra();
    EXPECT_LT(text.GetAllocLength(), 100);
    EXPECT_STREQ(text, "abc");
}

TEST(CString, Preallocated_appendsWithoutMoving)
{
    CString text;
    text.Preallocate(1000);
    const char* before = text;
    for (int i = 0; i < 1000; ++i)
        text += 'x';
    EXPECT_EQ(text.GetString(), before);
    EXPECT_EQ(text.GetLength(), 1000);
}

TEST(CString, TooLarge_throwsBadAllocAndLeavesText)
{
    CString text("abc");
    EXPECT_THROW(text.Preallocate(INT_MAX), std::bad_alloc);
    EXPECT_THROW(text.Preallocate(INT_MAX - 100), std::bad_alloc);
    EXPECT_STREQ(text, "abc");
    const CString copy(text);
    EXPECT_THROW(text.Preallocate(INT_MAX - 100), std::bad_alloc);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(headerOf(copy).references, 2);
}

// Exists before the other static objects of this file's module may, and is destroyed among the last.
const CString atStart("made by a static constructor");

TEST(CString, StaticObject_isUsable)
{
    EXPECT_STREQ(atStart, "made by a static constructor");
}

}  // namespace
