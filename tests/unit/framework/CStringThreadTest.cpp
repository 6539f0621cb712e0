// Copies of one string used by several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "CString.h"

namespace {

constexpr int rounds = 20000;

// Runs the body on two threads that start together, so that their first writes meet.
template <typename Body>
void onTwoThreads(Body body)
{
    std::atomic<int> waiting{2};
    const auto run = [&](char letter) {
        --waiting;
        while (waiting > 0)
            std::this_thread::yield();
        body(letter);
    };
    std::thread first(run, 'A');
    std::thread second(run, 'B');
    first.join();
    second.join();
}

long references(const CString& text)
{
    return (reinterpret_cast<const CStringData*>(text.GetString()) - 1)->nRefs;
}

TEST(CStringThreads, CopiedAndDestroyedByTwoThreads_countIsExact)
{
    const CString shared("shared text");
    onTwoThreads([&](char) {
        for (int i = 0; i < rounds; ++i) {
            const CString copy(shared);
            const CString again(copy);
        }
    });
    EXPECT_EQ(references(shared), 1);
    EXPECT_STREQ(shared, "shared text");
}

TEST(CStringThreads, CopyWrittenByEachThread_eachSeesItsOwnText)
{
    const CString shared("shared text");
    std::atomic<int> wrong{0};
    onTwoThreads([&](char letter) {
        const CString expected = letter + CString("hared text");
        for (int i = 0; i < rounds; ++i) {
            CString copy(shared);
            copy.SetAt(0, letter);
            if (copy != expected) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_STREQ(shared, "shared text");
    EXPECT_EQ(references(shared), 1);
}

// Both threads hold one of exactly two references and write at once: each may find the block shared or its own.
TEST(CStringThreads, LastTwoOwnersWriteAtOnce_neitherSeesTheOthersText)
{
    std::atomic<int> wrong{0};
    for (int i = 0; i < 300; ++i) {
        CString first("0123456789");
        CString second(first);
        onTwoThreads([&](char letter) {
            CString& mine = letter == 'A' ? first : second;
            for (int at = 0; at < mine.GetLength(); ++at)
                mine.SetAt(at, letter);
        });
        if (first != CString('A', 10) || second != CString('B', 10)) ++wrong;
    }
    EXPECT_EQ(wrong, 0);
}

TEST(CStringThreads, EmptyStringsOfTwoThreads_leaveSharedBlockCountExact)
{
    const CString witness;
    const long before = references(witness);
    onTwoThreads([](char) {
        for (int i = 0; i < rounds; ++i) {
            CString text;
            text = "x";
            text.Empty();
        }
    });
    EXPECT_EQ(references(witness), before);
    EXPECT_STREQ(witness, "");
}

}  // namespace
