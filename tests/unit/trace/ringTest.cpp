#include "trcRing.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

// A ring of 16 bytes between guard bytes.
class Ring : public testing::Test
{
 protected:
    static constexpr std::uint32_t capacity = 16;
    static constexpr char guard = '\x5A';

    Ring()
    {
        std::memset(&memory_, guard, sizeof memory_);
        trc::initialiseRing(memory_.header, capacity);
        std::memset(memory_.data, '.', capacity);
    }

    ~Ring() override
    {
        for (const char byte : memory_.behind)
            EXPECT_EQ(byte, guard) << "written behind the ring";
    }

    bool write(const char* text) { return trc::writeRing(memory_.header, memory_.data, capacity, text); }
    std::string data() const { return {memory_.data, capacity}; }
    trc::RingHeader& header() { return memory_.header; }

 private:
    struct
    {
        trc::RingHeader header;
        char data[capacity];
        char behind[64];
    } memory_;
};

TEST_F(Ring, New_headerAsTheLayoutSays)
{
    trc::RingHeader fresh;
    std::memset(&fresh, 0x5A, sizeof fresh);
    trc::initialiseRing(fresh, 2000000);
    std::uint32_t words[16];
    std::memcpy(words, &fresh, sizeof words);
    EXPECT_EQ(words[0], 0u) << "write position";
    EXPECT_EQ(words[1], 2000000u) << "capacity";
    EXPECT_EQ(words[2], 0u) << "wrap count";
    EXPECT_EQ(words[3], 1u) << "enabled";
    EXPECT_EQ(words[4], 1u) << "users";
    EXPECT_EQ(words[5], 1u) << "layout";
    for (int i = 6; i < 16; ++i)
        EXPECT_EQ(words[i], 0u) << "reserved " << i;
}

TEST_F(Ring, Write_advancesThePosition)
{
    EXPECT_TRUE(write("abc"));
    EXPECT_TRUE(write("de"));
    EXPECT_EQ(data(), "abcde...........");
    EXPECT_EQ(header().writePosition, 5u);
    EXPECT_EQ(header().wrapCount, 0u);
}

TEST_F(Ring, WriteEndsExactlyAtTheEnd_positionIsTheCapacity)
{
    write("0123456789");
    write("abcdef");
    EXPECT_EQ(data(), "0123456789abcdef");
    EXPECT_EQ(header().writePosition, capacity);
    EXPECT_EQ(header().wrapCount, 0u);
}

TEST_F(Ring, WriteAfterTheExactEnd_goesOnAtTheBeginning)
{
    write("0123456789abcdef");
    EXPECT_TRUE(write("XY"));
    EXPECT_EQ(data(), "XY23456789abcdef");
    EXPECT_EQ(header().writePosition, 2u);
    EXPECT_EQ(header().wrapCount, 1u);
}

TEST_F(Ring, WriteAcrossTheEnd_isSplit)
{
    write("0123456789abc");
    EXPECT_TRUE(write("VWXYZ"));
    EXPECT_EQ(data(), "YZ23456789abcVWX");
    EXPECT_EQ(header().writePosition, 2u);
    EXPECT_EQ(header().wrapCount, 1u);
}

TEST_F(Ring, WrapCountAtItsLimit_stays)
{
    header().wrapCount = 0xFFFFFFFE;
    header().writePosition = capacity;
    write("a");
    EXPECT_EQ(header().wrapCount, 0xFFFFFFFF);
    header().writePosition = capacity;
    write("b");
    EXPECT_EQ(header().wrapCount, 0xFFFFFFFF);
    EXPECT_EQ(header().writePosition, 1u);
}

TEST_F(Ring, Disabled_nothingIsWritten)
{
    header().enabled = 0;
    EXPECT_FALSE(write("abc"));
    EXPECT_EQ(data(), "................");
    EXPECT_EQ(header().writePosition, 0u);
}

TEST_F(Ring, EnabledAgainWithAnyValue_isWritten)
{
    header().enabled = 0x80000000;
    EXPECT_TRUE(write("abc"));
}

TEST_F(Ring, TextAsLongAsTheRing_fills)
{
    write("abc");
    EXPECT_TRUE(write("0123456789ABCDEF"));
    EXPECT_EQ(data(), "DEF0123456789ABC");
    EXPECT_EQ(header().writePosition, 3u);
}

TEST_F(Ring, TextLongerThanTheRing_isDropped)
{
    EXPECT_FALSE(write("0123456789ABCDEFG"));
    EXPECT_EQ(data(), "................");
    EXPECT_EQ(header().writePosition, 0u);
}

TEST_F(Ring, PositionBeyondTheEnd_startsAtTheBeginning)
{
    header().writePosition = 0xFFFFFFF0;
    EXPECT_TRUE(write("abc"));
    EXPECT_EQ(data().substr(0, 4), "abc.");
    EXPECT_EQ(header().writePosition, 3u);
}

TEST_F(Ring, CapacityInTheHeaderChanged_theMappedOneCounts)
{
    header().capacity = 0x7FFFFFFF;
    write("0123456789abcd");
    EXPECT_TRUE(write("WXYZ"));
    EXPECT_EQ(data(), "YZ23456789abcdWX");
}

TEST_F(Ring, CapacityZero_nothingIsWritten)
{
    char none[4] = {};
    EXPECT_FALSE(trc::writeRing(header(), none, 0, "a"));
}

}  // namespace
