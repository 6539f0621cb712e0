#include "wire/RequestReader.h"

#include <gtest/gtest.h>

#include "Bytes.h"

using namespace bytes;
using srv::RequestReader;
using srv::Text;

TEST(RequestReader, Numbers_areLittleEndianWithoutGaps)
{
    const Bytes payload = {0x21, 0x00, 0x7F, 0x78, 0x56, 0x34, 0x12};
    RequestReader reader(payload);
    std::uint16_t opcode = 0;
    std::uint8_t byte = 0;
    std::uint32_t number = 0;
    EXPECT_TRUE(reader.u16(opcode));
    EXPECT_TRUE(reader.u8(byte));
    EXPECT_TRUE(reader.u32(number));
    EXPECT_EQ(opcode, 0x0021);
    EXPECT_EQ(byte, 0x7F);
    EXPECT_EQ(number, 0x12345678u);
    EXPECT_TRUE(reader.atEnd());
}

TEST(RequestReader, Text_isUtf16AfterItsByteLength)
{
    const Bytes payload = {0x04, 0x00, 0x00, 0x00, 0x41, 0x00, 0x42, 0x00};
    RequestReader reader(payload);
    Text text;
    ASSERT_TRUE(reader.text(text));
    EXPECT_EQ(text, L"AB");
    EXPECT_TRUE(reader.atEnd());
}

TEST(RequestReader, TextAtOddPosition_isRead)
{
    const Bytes payload = {0x01, 0x02, 0x00, 0x00, 0x00, 0xE4, 0x00};
    RequestReader reader(payload);
    std::uint8_t byte = 0;
    Text text;
    ASSERT_TRUE(reader.u8(byte));
    ASSERT_TRUE(reader.text(text));
    EXPECT_EQ(text, L"\u00E4");
}

TEST(RequestReader, Length65535_isTheNullString)
{
    const Bytes payload = {0xFF, 0xFF, 0x00, 0x00};
    RequestReader reader(payload);
    Text text = L"before";
    ASSERT_TRUE(reader.text(text));
    EXPECT_FALSE(text.has_value());
    EXPECT_TRUE(reader.atEnd());
}

TEST(RequestReader, Length0_isTheEmptyTextAndNotNull)
{
    const Bytes payload = {0x00, 0x00, 0x00, 0x00};
    RequestReader reader(payload);
    Text text;
    ASSERT_TRUE(reader.text(text));
    ASSERT_TRUE(text.has_value());
    EXPECT_TRUE(text->empty());
}

TEST(RequestReader, Texts_liveBesideEachOther)
{
    const Bytes payload = str(u"one") + str(u"two");
    RequestReader reader(payload);
    Text first, second;
    ASSERT_TRUE(reader.text(first));
    ASSERT_TRUE(reader.text(second));
    EXPECT_EQ(first, L"one");
    EXPECT_EQ(second, L"two");
}

TEST(RequestReader, LongestRequestOfTexts_fits)
{
    const std::u16string half(2043, u'x');
    const Bytes payload = str(half) + str(half) + u32(0);
    ASSERT_LE(payload.size(), 8192u);
    RequestReader reader(payload);
    Text first, second, third;
    EXPECT_TRUE(reader.text(first) && reader.text(second) && reader.text(third));
    EXPECT_EQ(second->size(), 2043u);
}

struct Malformed
{
    const char* name;
    Bytes payload;
};

class RequestReaderMalformed : public testing::TestWithParam<Malformed>
{
};

TEST_P(RequestReaderMalformed, Text_isRefusedAndOutputLeftAlone)
{
    RequestReader reader(GetParam().payload);
    Text text = L"before";
    EXPECT_FALSE(reader.text(text));
    EXPECT_EQ(text, L"before");
    EXPECT_TRUE(reader.failed());
    EXPECT_FALSE(reader.atEnd());
}

INSTANTIATE_TEST_SUITE_P(Rows, RequestReaderMalformed,
                         testing::Values(Malformed{"nothing", {}}, Malformed{"cutLength", {4, 0, 0}},
                                         Malformed{"longerThanTheRest", {6, 0, 0, 0, 'A', 0, 'B', 0}},
                                         Malformed{"oddLength", {3, 0, 0, 0, 'A', 0, 'B', 0}},
                                         Malformed{"hugeLength", {0xFE, 0xFF, 0xFF, 0xFF, 'A', 0}},
                                         Malformed{"oneMoreThanNull", {0x00, 0x00, 0x01, 0x00}}),
                         [](const auto& row) { return row.param.name; });

TEST(RequestReader, ReadBehindTheEnd_failsAndLaterReadsFailToo)
{
    const Bytes payload = {1, 2, 3};
    RequestReader reader(payload);
    std::uint32_t number = 7;
    std::uint8_t byte = 7;
    EXPECT_FALSE(reader.u32(number));
    EXPECT_FALSE(reader.u8(byte));
    EXPECT_EQ(number, 7u);
    EXPECT_EQ(byte, 7);
}

TEST(RequestReader, PayloadLongerThan8192_isRefusedWhole)
{
    const Bytes payload(8193);
    RequestReader reader(payload);
    std::uint8_t byte = 0;
    EXPECT_FALSE(reader.u8(byte));
}
