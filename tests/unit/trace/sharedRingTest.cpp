// Output SM: the ring as another process sees it.
#include <cstring>

#include "traceFixture.h"
#include "trcObjects.h"
#include "trcState.h"

namespace {

constexpr char ringName[] = "Global\\KXSDD_Trace";

// A look at the ring from outside; also one that was there before the trace started.
class Reader
{
 public:
    explicit Reader(HANDLE section) : section_(section)
    {
        if (section_) words_ = static_cast<volatile std::uint32_t*>(MapViewOfFile(section_, FILE_MAP_WRITE, 0, 0, 0));
    }
    ~Reader()
    {
        if (words_) UnmapViewOfFile(const_cast<std::uint32_t*>(words_));
        if (section_) CloseHandle(section_);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    static HANDLE open() { return OpenFileMappingA(FILE_MAP_WRITE, FALSE, ringName); }
    static HANDLE create(DWORD bytes)
    {
        return CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, bytes, ringName);
    }

    bool valid() const { return words_ != nullptr; }
    volatile std::uint32_t& word(int offset) { return words_[offset / 4]; }
    std::string data(std::size_t count) const
    {
        return {reinterpret_cast<const char*>(const_cast<const std::uint32_t*>(words_)) + 64, count};
    }

 private:
    HANDLE section_;
    volatile std::uint32_t* words_ = nullptr;
};

class SharedRing : public Trace
{
 protected:
    SharedRing() { configure("SM"); }
};

TEST_F(SharedRing, New_headerAndSize)
{
    set("sm_size", "5000");
    start();
    Reader reader(Reader::open());
    ASSERT_TRUE(reader.valid());
    EXPECT_EQ(reader.word(0), 0u);
    EXPECT_EQ(reader.word(4), 5000u);
    EXPECT_EQ(reader.word(8), 0u);
    EXPECT_EQ(reader.word(12), 1u);
    EXPECT_EQ(reader.word(16), 1u);
    EXPECT_EQ(reader.word(20), 1u);
    for (int offset = 24; offset < 64; offset += 4)
        EXPECT_EQ(reader.word(offset), 0u) << offset;
}

TEST_F(SharedRing, SizeNotGiven_theDefault)
{
    start();
    Reader reader(Reader::open());
    ASSERT_TRUE(reader.valid());
    EXPECT_EQ(reader.word(4), 2000000u);
}

TEST_F(SharedRing, Line_withCarriageReturnAndLineFeed)
{
    start();
    line("one");
    line("two");
    Reader reader(Reader::open());
    EXPECT_EQ(reader.data(17), std::string("F one \r\nF two \r\n\0", 17));
    EXPECT_EQ(reader.word(0), 16u);
}

TEST_F(SharedRing, LineAcrossTheEnd_wraps)
{
    set("sm_size", "12");
    start();
    line("one");
    line("two");
    Reader reader(Reader::open());
    EXPECT_EQ(reader.data(12), "o \r\ne \r\nF tw");
    EXPECT_EQ(reader.word(0), 4u);
    EXPECT_EQ(reader.word(8), 1u);
}

TEST_F(SharedRing, LineEndsExactlyAtTheEnd_noWrapYet)
{
    set("sm_size", "16");
    start();
    line("one");
    line("two");
    Reader reader(Reader::open());
    EXPECT_EQ(reader.word(0), 16u);
    EXPECT_EQ(reader.word(8), 0u);
    line("six");
    EXPECT_EQ(reader.word(0), 8u);
    EXPECT_EQ(reader.word(8), 1u);
    EXPECT_EQ(reader.data(16), "F six \r\nF two \r\n");
}

TEST_F(SharedRing, WrapCountAtItsLimit_stays)
{
    set("sm_size", "12");
    start();
    Reader reader(Reader::open());
    reader.word(8) = 0xFFFFFFFF;
    line("one");
    line("two");
    EXPECT_EQ(reader.word(8), 0xFFFFFFFF);
    EXPECT_EQ(reader.word(0), 4u);
}

TEST_F(SharedRing, Disabled_nothingIsWrittenUntilEnabledAgain)
{
    start();
    Reader reader(Reader::open());
    reader.word(12) = 0;
    line("one");
    EXPECT_EQ(reader.word(0), 0u);
    reader.word(12) = 1;
    line("two");
    EXPECT_EQ(reader.data(8), "F two \r\n");
}

TEST_F(SharedRing, SmallerThanALine_lineIsDropped)
{
    set("sm_size", "1");
    start();
    line("one");
    Reader reader(Reader::open());
    EXPECT_EQ(reader.word(0), 0u);
    EXPECT_EQ(reader.data(1), std::string(1, '\0'));
}

TEST_F(SharedRing, Existing_itsCapacityCountsAndAUserIsAdded)
{
    Reader existing(Reader::create(16 + 68));
    existing.word(4) = 16;
    existing.word(0) = 3;
    existing.word(8) = 7;
    existing.word(12) = 1;
    existing.word(16) = 2;
    existing.word(20) = 1;
    set("sm_size", "5000");
    start();
    EXPECT_EQ(existing.word(4), 16u);
    EXPECT_EQ(existing.word(16), 3u);
    line("one");
    line("two");
    EXPECT_EQ(existing.word(0), 3u);
    EXPECT_EQ(existing.word(8), 8u);
    EXPECT_EQ(existing.data(16), " \r\nF one \r\nF two");
}

TEST_F(SharedRing, ExistingAndStop_theUserIsTakenAway)
{
    Reader existing(Reader::create(100 + 68));
    existing.word(4) = 100;
    existing.word(12) = 1;
    existing.word(16) = 2;
    existing.word(20) = 1;
    start();
    TrcStop();
    EXPECT_EQ(existing.word(16), 2u);
}

TEST_F(SharedRing, ExistingOfAnotherLayout_isLeftAlone)
{
    Reader existing(Reader::create(100 + 68));
    existing.word(4) = 100;
    existing.word(12) = 1;
    existing.word(16) = 2;
    existing.word(20) = 2;
    start();
    line("one");
    TrcStop();
    EXPECT_EQ(existing.word(0), 0u);
    EXPECT_EQ(existing.word(16), 2u);
    EXPECT_EQ(existing.data(1), std::string(1, '\0'));
}

TEST_F(SharedRing, ExistingWithCapacityBeyondItsSection_isLeftAlone)
{
    Reader existing(Reader::create(100 + 68));
    existing.word(12) = 1;
    existing.word(20) = 1;
    for (const std::uint32_t capacity : {0x100000u, 0x7FFFFFFFu, 0xFFFFFFBBu, 0xFFFFFFFFu}) {
        existing.word(4) = capacity;
        start();
        line("one");
        TrcStop();
        EXPECT_EQ(existing.word(16), 0u) << capacity;
        EXPECT_EQ(existing.word(0), 0u) << capacity;
    }
}

TEST_F(SharedRing, ExistingWithCapacityZero_takesNoLine)
{
    Reader existing(Reader::create(68));
    existing.word(12) = 1;
    existing.word(20) = 1;
    start();
    line("one");
    EXPECT_EQ(existing.word(16), 1u);
    EXPECT_EQ(existing.word(0), 0u);
}

TEST_F(SharedRing, ReadAgain_isNotAttachedTwice)
{
    start();
    Reader reader(Reader::open());
    raiseGeneration();
    line("one");
    EXPECT_EQ(reader.word(16), 1u);
    EXPECT_EQ(reader.word(0), 8u);
}

TEST_F(SharedRing, OutputChanged_staysAttachedUntilStop)
{
    start();
    Reader reader(Reader::open());
    configureFile();
    raiseGeneration();
    line("to the file");
    EXPECT_EQ(reader.word(16), 1u);
    EXPECT_EQ(reader.word(0), 0u);
    TrcStop();
    EXPECT_EQ(reader.word(16), 0u);
}

TEST_F(SharedRing, ErrorLine_isWritten)
{
    start();
    TrcError("something");
    Reader reader(Reader::open());
    EXPECT_EQ(reader.data(13), "E something\r\n");
}

TEST_F(SharedRing, StoppedByItsOnlyUser_isGone)
{
    start();
    TrcStop();
    EXPECT_EQ(Reader::open(), nullptr);
}

TEST_F(SharedRing, MoreThanTheAddressSpace_startsWithoutARing)
{
    set("sm_size", "4294967295");
    start();
    line("nowhere");
    Reader reader(Reader::open());
    EXPECT_FALSE(reader.valid());
}

}  // namespace
