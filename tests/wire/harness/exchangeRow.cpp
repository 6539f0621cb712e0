#include "exchangeRow.h"

#include <algorithm>
#include <ostream>

using testing::ElementsAre;
using testing::IsEmpty;

// Message

namespace {

std::wstring widen(const std::string& ansi)
{
    std::wstring wide(ansi.size() + 1, 0);
    const int units = MultiByteToWideChar(CP_ACP, 0, ansi.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(units - 1));
    return wide;
}

void append(Bytes& bytes, std::uint32_t value, int width)
{
    for (int i = 0; i < width; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void append(Bytes& bytes, const std::wstring& text)
{
    for (const wchar_t unit : text)
        append(bytes, unit, 2);
}

}  // namespace

Message& Message::u8(std::uint8_t value)
{
    append(bytes_, value, 1);
    return *this;
}

Message& Message::u16(std::uint16_t value)
{
    append(bytes_, value, 2);
    return *this;
}

Message& Message::u32(std::uint32_t value)
{
    append(bytes_, value, 4);
    return *this;
}

Message& Message::str(const std::string& ansi)
{
    const std::wstring wide = widen(ansi);
    u32(static_cast<std::uint32_t>(2 * wide.size()));
    append(bytes_, wide);
    return *this;
}

Message& Message::nullStr()
{
    return u32(0xFFFF);
}

Message& Message::text(const std::string& ansi)
{
    return str(ansi).u32(0x0BADF00D);
}

Message& Message::list(const std::vector<std::string>& texts)
{
    Bytes all;
    for (const std::string& text : texts)
        append(all, widen(text) + L'\0');
    u32(static_cast<std::uint32_t>(all.size())).raw(all);
    return all.empty() ? *this : u32(0x0BADF00D);
}

Message& Message::raw(const Bytes& bytes)
{
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
}

Message resultReply(std::uint32_t result)
{
    return Message(4).u32(result);
}

// OutText

void OutText::reset(unsigned long newCapacity)
{
    bytes.assign(newCapacity + 2 * guard, untouched);
    capacity = length = newCapacity;
}

bool OutText::bufferUntouched() const
{
    return length == capacity && std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == untouched; });
}

bool OutText::guardsIntact() const
{
    const auto isGuard = [](char c) { return c == untouched; };
    return std::all_of(bytes.begin(), bytes.begin() + guard, isGuard) &&
           std::all_of(bytes.end() - guard, bytes.end(), isGuard);
}

// Rows

std::ostream& operator<<(std::ostream& out, const ExchangeRow& row)
{
    return out << row.name;
}

std::string rowName(const testing::TestParamInfo<ExchangeRow>& info)
{
    return info.param.name;
}

std::ostream& operator<<(std::ostream& out, const RefusedRow& row)
{
    return out << row.name;
}

std::string refusedName(const testing::TestParamInfo<RefusedRow>& info)
{
    return info.param.name;
}

namespace {

FakeChannel& freshChannel()
{
    FakeChannel& channel = *fakeChannel();
    channel.reset();
    return channel;
}

bool isText(const OutField& field)
{
    return field.kind == OutField::userText || field.kind == OutField::plainText ||
           field.kind == OutField::strictText;
}

std::string deliveredText(const OutField& field)
{
    return field.delivered.empty() ? field.value : field.delivered;
}

std::string hex(long value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned int>(value));
    return text;
}

std::vector<std::string> textsAt(const std::vector<TraceLine>& lines, const std::string& level)
{
    std::vector<std::string> texts;
    for (const TraceLine& line : lines) {
        if (line.level == level) texts.push_back(line.text);
    }
    return texts;
}

}  // namespace

ExchangeTest::ExchangeTest() : channel(freshChannel()) {}

Bytes ExchangeTest::goodReply() const
{
    Message reply = resultReply(0);
    for (const OutField& field : row().outputs) {
        if (isText(field)) reply.text(field.value);
        if (field.kind == OutField::number) reply.u32(field.numeric);
        if (field.kind == OutField::byte) reply.u8(static_cast<std::uint8_t>(field.numeric));
    }
    return reply.bytes();
}

long ExchangeTest::callWithReply(const Bytes& payload)
{
    channel.answer(payload);
    return row().call(out);
}

void ExchangeTest::expectUntouched() const
{
    for (std::size_t i = 0; i < out.texts.size(); ++i)
        EXPECT_TRUE(out.texts[i].bufferUntouched()) << "text " << i;
    for (const unsigned long number : out.numbers)
        EXPECT_EQ(number, 0u);
}

RefusedTest::RefusedTest() : channel(freshChannel()) {}

TEST_P(ExchangeTest, Request_isByteForByte)
{
    callWithReply(goodReply());
    EXPECT_THAT(channel.requests(), ElementsAre(row().request));
}

TEST_P(ExchangeTest, GoodReply_deliversEveryOutput)
{
    EXPECT_EQ(callWithReply(goodReply()), 0);
    std::size_t text = 0;
    std::size_t number = 0;
    for (const OutField& field : row().outputs) {
        if (!isText(field)) {
            EXPECT_EQ(out.numbers[number++], field.numeric);
            continue;
        }
        const OutText& got = out.texts[text++];
        if (field.silent) continue;
        EXPECT_EQ(got.text(), deliveredText(field));
        EXPECT_EQ(got.bytes[OutText::guard + got.length], 0) << "terminator";
    }
}

TEST_P(ExchangeTest, OtherKind_yieldsTheRowsResult)
{
    Bytes reply = goodReply();
    reply[0] = 5;
    EXPECT_EQ(callWithReply(reply), row().otherKind);
    expectUntouched();
}

TEST_P(ExchangeTest, FailingResult_isPassedOnAndNothingElseIsRead)
{
    Bytes reply = goodReply();
    reply[2] = 0x4C;  // 8012
    reply[3] = 0x1F;
    EXPECT_EQ(callWithReply(reply), row().failingResult);
    expectUntouched();
}

TEST_P(ExchangeTest, EmptyReply_is30)
{
    EXPECT_EQ(callWithReply({}), 30);
    expectUntouched();
}

TEST_P(ExchangeTest, FailedExchange_is30)
{
    channel.fail(1234);
    EXPECT_EQ(row().call(out), 30);
    expectUntouched();
}

TEST_P(ExchangeTest, ReplyCutInItsKind_is111)
{
    EXPECT_EQ(callWithReply({4}), 111);
    expectUntouched();
}

TEST_P(ExchangeTest, ReplyCutInItsResult_yieldsTheRowsResult)
{
    for (std::size_t length = 2; length < 6; ++length) {
        const Bytes reply = goodReply();
        EXPECT_EQ(callWithReply(Bytes(reply.begin(), reply.begin() + static_cast<int>(length))), row().shortResult)
            << length << " bytes";
    }
    expectUntouched();
}

// A trailer that is missing at the very end is no error; every byte before it counts.
TEST_P(ExchangeTest, ReplyCutInItsOutputs_is111)
{
    const Bytes reply = goodReply();
    const std::size_t trailer = !row().outputs.empty() && isText(row().outputs.back()) ? 4 : 0;
    for (std::size_t length = 6; length + trailer < reply.size(); ++length) {
        for (OutText& text : out.texts)
            text.reset(300);
        EXPECT_EQ(callWithReply(Bytes(reply.begin(), reply.begin() + static_cast<int>(length))), 111)
            << length << " of " << reply.size() << " bytes";
        for (const OutText& text : out.texts)
            EXPECT_TRUE(text.guardsIntact());
    }
}

TEST_P(ExchangeTest, Buffers_roomyExactAndTooShort)
{
    const auto& fields = row().outputs;
    std::size_t text = 0;
    for (const OutField& field : fields) {
        if (!isText(field)) continue;
        const std::size_t index = text++;
        if (field.silent) continue;
        const auto length = static_cast<unsigned long>(deliveredText(field).size());

        for (OutText& buffer : out.texts)
            buffer.reset(300);
        out.texts[index].reset(length + 1);
        EXPECT_EQ(callWithReply(goodReply()), 0) << "room for text and terminator";
        EXPECT_EQ(out.texts[index].text(), deliveredText(field));
        EXPECT_TRUE(out.texts[index].guardsIntact());

        for (OutText& buffer : out.texts)
            buffer.reset(300);
        out.texts[index].reset(length);
        EXPECT_EQ(callWithReply(goodReply()), field.kind == OutField::userText ? 0 : 234) << "no terminator";
        EXPECT_TRUE(out.texts[index].guardsIntact());

        for (OutText& buffer : out.texts)
            buffer.reset(300);
        out.texts[index].reset(length - 1);
        EXPECT_EQ(callWithReply(goodReply()), 234) << "one byte short";
        EXPECT_TRUE(out.texts[index].guardsIntact());
    }
}

TEST_P(ExchangeTest, Trace_entryAndResult)
{
    const TraceCapture capture("0x88");
    callWithReply(goodReply());
    const auto lines = capture.of(row().traceName);
    EXPECT_EQ(textsAt(lines, "FA"), row().entry);
    const auto results = textsAt(lines, "FE");
    if (row().result.empty()) {
        EXPECT_THAT(results, IsEmpty());
    } else {
        ASSERT_FALSE(results.empty());
        EXPECT_EQ(results.back(), row().result);
    }
}

TEST_P(ExchangeTest, Trace_otherKind)
{
    const TraceCapture capture("0xC8");
    Message reply(5);
    reply.u32(0);
    callWithReply(reply.bytes());
    if (row().shortForm) {
        EXPECT_THAT(capture.of("send:"),
                    testing::Contains(TraceLine{"FM", "send:", "<< result ERROR_READ_FAULT (0x5)"}));
        return;
    }
    const std::string text = !row().otherKindText.empty() ? row().otherKindText
                             : row().otherKind == 30      ? "<< result ERROR_READ_FAULT (0x5)"
                                                          : "<< return - Error DCFG_INVALID_RESPONSE (0x5)";
    EXPECT_THAT(textsAt(capture.of(row().traceName), "FE"), ElementsAre(text));
}

TEST_P(ExchangeTest, Trace_shortReply)
{
    if (row().shortForm || row().shortResult != 111) return;
    const TraceCapture capture("0x88");
    callWithReply({4, 0});
    EXPECT_THAT(textsAt(capture.of(row().traceName), "FE"), ElementsAre("<< result= 0x6f "));
}

TEST_P(ExchangeTest, Trace_failingResult)
{
    const TraceCapture capture("0x88");
    callWithReply(resultReply(8012).bytes());
    const std::string usual = "<< return " + hex(row().failingResult);
    const auto results = textsAt(capture.of(row().traceName), "FE");
    ASSERT_FALSE(results.empty());
    EXPECT_EQ(results.back(), row().failureText.empty() ? usual : row().failureText);
}

TEST_P(RefusedTest, Call_isRefusedWithoutARequest)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(GetParam().call(out), GetParam().result);
    EXPECT_THAT(channel.requests(), IsEmpty());
    EXPECT_EQ(capture.lines(), GetParam().lines);
}
