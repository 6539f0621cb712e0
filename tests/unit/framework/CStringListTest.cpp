#include "CStringList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Exceptions.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> forwards(const CStringList& list)
{
    std::vector<std::string> items;
    for (POSITION at = list.GetHeadPosition(); at;)
        items.emplace_back(list.GetNext(at));
    return items;
}

std::vector<std::string> backwards(const CStringList& list)
{
    std::vector<std::string> items;
    for (POSITION at = list.GetTailPosition(); at;)
        items.emplace_back(list.GetPrev(at));
    return items;
}

void fill(CStringList& list, std::initializer_list<const char*> items)
{
    for (const auto* item : items)
        list.AddTail(item);
}

TEST(CStringList, New_isEmpty)
{
    const CStringList list;
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
}

TEST(CStringList, Added_standInOrderBothWays)
{
    CStringList list;
    list.AddTail("b");
    list.AddTail(CString("c"));
    list.AddHead("a");
    EXPECT_THAT(forwards(list), ElementsAre("a", "b", "c"));
    EXPECT_THAT(backwards(list), ElementsAre("c", "b", "a"));
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.GetSize(), 3);
    EXPECT_STREQ(list.GetHead(), "a");
    EXPECT_STREQ(list.GetTail(), "c");
}

TEST(CStringList, AddedString_isSharedNotCopied)
{
    CStringList list;
    const CString text("abc");
    list.AddTail(text);
    EXPECT_EQ(list.GetHead().GetString(), text.GetString());
}

TEST(CStringList, Position_namesItsItemWhileOthersComeAndGo)
{
    CStringList list;
    fill(list, {"a", "b", "c"});
    const POSITION b = list.FindIndex(1);
    list.RemoveHead();
    list.AddHead("x");
    list.RemoveTail();
    EXPECT_STREQ(list.GetAt(b), "b");
    list.SetAt(b, "B");
    EXPECT_THAT(forwards(list), ElementsAre("x", "B"));
}

TEST(CStringList, Inserted_standBesideThePosition)
{
    CStringList list;
    fill(list, {"b", "e"});
    const POSITION b = list.GetHeadPosition();
    const POSITION c = list.InsertAfter(b, "c");
    list.InsertBefore(b, "a");
    list.InsertAfter(c, CString("d"));
    list.InsertAfter(list.GetTailPosition(), "f");
    EXPECT_STREQ(list.GetAt(c), "c");
    EXPECT_THAT(forwards(list), ElementsAre("a", "b", "c", "d", "e", "f"));
    EXPECT_THAT(backwards(list), ElementsAre("f", "e", "d", "c", "b", "a"));
}

TEST(CStringList, InsertedAtNoPosition_standAtTheEnds)
{
    CStringList list;
    list.InsertAfter(nullptr, "b");
    list.InsertBefore(nullptr, "a");
    list.InsertAfter(nullptr, "c");
    EXPECT_THAT(forwards(list), ElementsAre("a", "b", "c"));
}

TEST(CStringList, RemovedAtEachPlace_closesTheGap)
{
    CStringList list;
    fill(list, {"a", "b", "c", "d"});
    list.RemoveAt(list.FindIndex(1));
    EXPECT_THAT(backwards(list), ElementsAre("d", "c", "a"));
    EXPECT_STREQ(list.RemoveHead(), "a");
    EXPECT_STREQ(list.RemoveTail(), "d");
    EXPECT_THAT(forwards(list), ElementsAre("c"));
    list.RemoveAt(list.GetHeadPosition());
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetTailPosition(), nullptr);
}

TEST(CStringList, RemoveAll_releasesItems)
{
    const CString text("abc");
    CStringList list;
    list.AddTail(text);
    list.RemoveAll();
    EXPECT_THAT(forwards(list), IsEmpty());
    EXPECT_EQ((reinterpret_cast<const CStringData*>(text.GetString()) - 1)->nRefs, 1);
    list.AddTail("again");
    EXPECT_EQ(list.GetCount(), 1);
}

TEST(CStringList, AddedList_keepsItsOrderAtEitherEnd)
{
    CStringList list;
    fill(list, {"c"});
    CStringList front;
    fill(front, {"a", "b"});
    CStringList back;
    fill(back, {"d", "e"});
    list.AddHead(&front);
    list.AddTail(&back);
    EXPECT_THAT(forwards(list), ElementsAre("a", "b", "c", "d", "e"));
    EXPECT_EQ(front.GetCount(), 2);
}

TEST(CStringList, AddedToItself_doublesOnce)
{
    CStringList list;
    fill(list, {"a", "b"});
    list.AddTail(&list);
    EXPECT_THAT(forwards(list), ElementsAre("a", "b", "a", "b"));
    list.AddHead(&list);
    EXPECT_THAT(forwards(list), ElementsAre("a", "b", "a", "b", "a", "b", "a", "b"));
}

TEST(CStringList, Find_isExactAndGoesOnBehindAPosition)
{
    CStringList list;
    fill(list, {"a", "B", "a"});
    const POSITION first = list.Find("a");
    EXPECT_EQ(first, list.GetHeadPosition());
    EXPECT_EQ(list.Find("a", first), list.GetTailPosition());
    EXPECT_EQ(list.Find("a", list.GetTailPosition()), nullptr);
    EXPECT_EQ(list.Find("b"), nullptr);
}

TEST(CStringList, FindIndex_outside_isNull)
{
    CStringList list;
    fill(list, {"a", "b"});
    EXPECT_STREQ(list.GetAt(list.FindIndex(1)), "b");
    EXPECT_EQ(list.FindIndex(2), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST(CStringList, Empty_hasNothingToGiveOrRemove)
{
    CStringList list;
    EXPECT_THROW(list.GetHead(), CInvalidArgException);
    EXPECT_THROW(list.GetTail(), CInvalidArgException);
    EXPECT_THROW(list.RemoveHead(), CInvalidArgException);
    EXPECT_THROW(list.RemoveTail(), CInvalidArgException);
    EXPECT_THROW(list.RemoveAt(nullptr), CInvalidArgException);
    POSITION none = nullptr;
    EXPECT_THROW(list.GetNext(none), CInvalidArgException);
}

}  // namespace
