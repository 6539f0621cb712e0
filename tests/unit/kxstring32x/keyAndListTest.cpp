// Joining registry key paths and taking items from separated lists.
#include <gtest/gtest.h>

#include "kxstring32x.h"
#include "OtherModule.h"
#include "recordedTrace.h"

namespace {

TEST(sKeyConcat, TwoParts_areJoinedByOneBackslash)
{
    EXPECT_STREQ(sKeyConcat("SOFTWARE", "TAVRONE"), "SOFTWARE\\TAVRONE");
}

TEST(sKeyConcat, EmptyPart_addsNoBackslash)
{
    EXPECT_STREQ(sKeyConcat("", "Boards"), "Boards");
    EXPECT_STREQ(sKeyConcat("Boards", ""), "Boards");
    EXPECT_STREQ(sKeyConcat("", ""), "");
}

TEST(sKeyConcat, PartThatEndsInBackslash_getsAnother)
{
    EXPECT_STREQ(sKeyConcat("A\\", "B"), "A\\\\B");
    EXPECT_STREQ(sKeyConcat("A", "\\B"), "A\\\\B");
}

TEST(sKeyConcat, ThreeToFiveParts_areJoinedInOrder)
{
    EXPECT_STREQ(sKeyConcat("a", "b", "c"), "a\\b\\c");
    EXPECT_STREQ(sKeyConcat("a", "b", "c", "d"), "a\\b\\c\\d");
    EXPECT_STREQ(sKeyConcat("a", "b", "c", "d", "e"), "a\\b\\c\\d\\e");
}

TEST(sKeyConcat, EmptyPartsAnywhere_leaveNoTrace)
{
    EXPECT_STREQ(sKeyConcat("SOFTWARE", "", "NORIX"), "SOFTWARE\\NORIX");
    EXPECT_STREQ(sKeyConcat("", "", "a", ""), "a");
    EXPECT_STREQ(sKeyConcat("", "a", "", "b", ""), "a\\b");
    EXPECT_STREQ(sKeyConcat("", "", "", "", ""), "");
}

TEST(sKeyConcat, Arguments_areLeftAsTheyWere)
{
    const CString a("a");
    const CString b("b");
    sKeyConcat(a, b, a);
    EXPECT_STREQ(a, "a");
    EXPECT_STREQ(b, "b");
}

TEST(sFirstFromSeperatedListOneOf, ChangedList_losesItemAndSeparator)
{
    CString list("A,B");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "A");
    EXPECT_STREQ(list, "B");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "B");
    EXPECT_STREQ(list, "");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "");
}

TEST(sFirstFromSeperatedListOneOf, AnySeparator_ends)
{
    CString list("pages.dll;AddPages rest");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ", ;"), "pages.dll");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ", ;"), "AddPages");
    EXPECT_STREQ(list, "rest");
}

TEST(sFirstFromSeperatedListOneOf, LeadingSeparator_yieldsEmptyItem)
{
    CString list(",B");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "");
    EXPECT_STREQ(list, "B");
}

TEST(sFirstFromSeperatedListOneOf, AdjacentSeparators_yieldEmptyItems)
{
    CString list("A,,B");
    sFirstFromSeperatedListOneOf(&list, ",");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "");
    EXPECT_STREQ(list, "B");
}

TEST(sFirstFromSeperatedListOneOf, TrailingSeparator_leavesEmptyList)
{
    CString list("A,");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "A");
    EXPECT_STREQ(list, "");
}

TEST(sFirstFromSeperatedListOneOf, NoSeparators_takesTheWholeList)
{
    CString list("A,B");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ""), "A,B");
    EXPECT_STREQ(list, "");
}

TEST(sFirstFromSeperatedListOneOf, ByValue_changesNothing)
{
    const CString list("3/fast");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(list, "/"), "3");
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(list, ","), "3/fast");
    EXPECT_STREQ(list, "3/fast");
}

TEST(sFirstFromSeperatedListOneOf, SharedList_changesOnlyTheOneGiven)
{
    CString list("A,B");
    const CString copy(list);
    sFirstFromSeperatedListOneOf(&list, ",");
    EXPECT_STREQ(copy, "A,B");
}

TEST(sFirstFromSeperatedListOneOf, NullList_yieldsEmptyItem)
{
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(static_cast<CString*>(nullptr), ","), "");
}

TEST(sFirstFromSeperatedListOneOf, NoMemory_yieldsEmptyItemAndKeepsTheList)
{
    OtherModule caller;
    CString list(&caller);
    list = "A,B";
    caller.exhausted = true;
    EXPECT_STREQ(sFirstFromSeperatedListOneOf(&list, ","), "");
    EXPECT_STREQ(list, "A,B");
}

TEST(StringHelpers, OfKeysListsAndResources_doNotTrace)
{
    const RecordedTrace trace;
    CString list("A,B");
    sKeyConcat("a", "b");
    sFirstFromSeperatedListOneOf(&list, ",");
    sLoadResString(1);
    EXPECT_TRUE(trace.lines().empty());
}

TEST(KxRegBuffer, BothNames_doNothing)
{
    CString text("text");
    char characters[] = "characters";
    char* buffer = characters;
    unsigned long length = 7;
    KxRegGetBuffer(text, buffer, length);
    KxRegReleaseBuffer(text, buffer, length);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(buffer, characters);
    EXPECT_EQ(length, 7u);
}

TEST(KxRegBuffer, BothNames_shareOneBody)
{
    EXPECT_EQ(reinterpret_cast<void (*)()>(&KxRegGetBuffer), reinterpret_cast<void (*)()>(&KxRegReleaseBuffer));
}

}  // namespace
