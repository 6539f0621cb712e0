#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "buffers/sendData.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes written(const sendData& request)
{
    return Bytes(request.data(), request.data() + request.cursor());
}

// Puts filler until the cursor stands at `position`.
void fillTo(sendData& request, std::uint32_t position)
{
    const Bytes filler(position - request.cursor(), 0xAA);
    ASSERT_EQ(request.PutBytes(filler.data(), static_cast<std::uint32_t>(filler.size())), 0u);
}

TEST(SendData, New_isEmptyAndZero)
{
    const sendData request;
    EXPECT_EQ(request.cursor(), 0u);
    EXPECT_EQ(Bytes(request.data(), request.data() + 8192), Bytes(8192, 0));
}

TEST(SendData, Reset_zeroesWhatWasWritten)
{
    sendData request;
    fillTo(request, 100);
    request.Reset();
    EXPECT_EQ(request.cursor(), 0u);
    EXPECT_EQ(Bytes(request.data(), request.data() + 8192), Bytes(8192, 0));
}

TEST(SendData, Numbers_areLittleEndianWithoutGaps)
{
    sendData request;
    const std::uint32_t pointed = 0x0A0B0C0D;
    EXPECT_EQ(request.PutU16(0x1234), 0u);
    EXPECT_EQ(request.PutU32(0x89ABCDEF), 0u);
    EXPECT_EQ(request.PutU32Ptr(&pointed), 0u);
    EXPECT_EQ(request.PutU32Ptr(nullptr), 0u);
    EXPECT_EQ(written(request), (Bytes{0x34, 0x12,              //
                                       0xEF, 0xCD, 0xAB, 0x89,  //
                                       0x0D, 0x0C, 0x0B, 0x0A,  //
                                       0x00, 0x00, 0x00, 0x00}));
}

TEST(SendData, U16_lastTwoBytesFitThenOverflow)
{
    sendData request;
    fillTo(request, 8190);
    EXPECT_EQ(request.PutU16(0xBEEF), 0u);
    EXPECT_EQ(request.cursor(), 8192u);
    EXPECT_EQ(request.PutU16(1), 111u);
    EXPECT_EQ(request.cursor(), 8192u);
}

TEST(SendData, U32_oneByteShortWritesNothing)
{
    sendData request;
    fillTo(request, 8189);
    EXPECT_EQ(request.PutU32(0xFFFFFFFF), 111u);
    EXPECT_EQ(request.cursor(), 8189u);
    EXPECT_EQ(Bytes(request.data() + 8189, request.data() + 8192), Bytes(3, 0));
}

TEST(SendData, Bytes_hugeCountIsRefusedNotWrapped)
{
    sendData request;
    fillTo(request, 16);
    const std::uint8_t byte = 1;
    EXPECT_EQ(request.PutBytes(&byte, 0xFFFFFFF8), 111u);
    EXPECT_EQ(request.cursor(), 16u);
}

TEST(SendData, NullString_isTheLengthFFFFAlone)
{
    sendData request;
    EXPECT_EQ(request.PutString(nullptr), 0u);
    EXPECT_EQ(written(request), (Bytes{0xFF, 0xFF, 0x00, 0x00}));
}

TEST(SendData, EmptyString_isTheLengthZeroAlone)
{
    sendData request;
    EXPECT_EQ(request.PutString(""), 0u);
    EXPECT_EQ(written(request), (Bytes{0x00, 0x00, 0x00, 0x00}));
}

TEST(SendData, String_isUtf16WithoutTerminator)
{
    sendData request;
    EXPECT_EQ(request.PutString("AB"), 0u);
    EXPECT_EQ(written(request), (Bytes{0x04, 0x00, 0x00, 0x00, 0x41, 0x00, 0x42, 0x00}));
}

TEST(SendData, String_isConvertedFromTheAnsiCodePage)
{
    sendData request;
    EXPECT_EQ(request.PutString("\xE4\x80"), 0u);  // a umlaut and the euro sign in code page 1252
    EXPECT_EQ(written(request), (Bytes{0x04, 0x00, 0x00, 0x00, 0xE4, 0x00, 0xAC, 0x20}));
}

TEST(SendData, WideString_isCopiedAsItIs)
{
    sendData request;
    EXPECT_EQ(request.PutWideString(L"\x20AC"), 0u);
    EXPECT_EQ(written(request), (Bytes{0x02, 0x00, 0x00, 0x00, 0xAC, 0x20}));
}

struct StringFit
{
    std::uint32_t start;
    std::uint32_t units;
    std::uint32_t result;
};

// A text counts twice: start + 4 + 2 * bytes must not exceed 8192.
class SendDataStringFit : public testing::TestWithParam<StringFit>
{
};

TEST_P(SendDataStringFit, StringNearTheEnd)
{
    const StringFit& row = GetParam();
    sendData request;
    fillTo(request, row.start);
    EXPECT_EQ(request.PutString(std::string(row.units, 'x').c_str()), row.result);
}

INSTANTIATE_TEST_SUITE_P(Rows, SendDataStringFit,
                         testing::Values(StringFit{0, 2047, 0},    // 4 + 4 * 2047 = 8192
                                         StringFit{0, 2048, 111},  // would fit counted once
                                         StringFit{2, 2046, 0},    //
                                         StringFit{2, 2047, 111},  //
                                         StringFit{8184, 1, 0},    // 8184 + 4 + 4 = 8192
                                         StringFit{8185, 1, 111},  // its 6 bytes would fit
                                         StringFit{8188, 0, 0},    // the length field alone
                                         StringFit{8189, 0, 111},  // not even the length field
                                         StringFit{8192, 3, 111}));

TEST(SendData, String_longerThanTheBufferWritesNothingBehindIt)
{
    struct Guarded
    {
        sendData request;
        std::uint8_t guard[64];
    } guarded;
    std::fill(std::begin(guarded.guard), std::end(guarded.guard), std::uint8_t{0x5A});
    EXPECT_EQ(guarded.request.PutString(std::string(100000, 'x').c_str()), 111u);
    for (const std::uint8_t byte : guarded.guard)
        EXPECT_EQ(byte, 0x5A);
}

TEST(SendData, AfterAnOverflow_everyPutIsRefusedUntilReset)
{
    sendData request;
    EXPECT_EQ(request.PutString(std::string(5000, 'x').c_str()), 111u);
    EXPECT_EQ(request.PutU16(1), 111u);
    EXPECT_EQ(request.PutU32(1), 111u);
    EXPECT_EQ(request.PutString("x"), 111u);
    request.Reset();
    EXPECT_EQ(request.PutU16(1), 0u);
}

}  // namespace
