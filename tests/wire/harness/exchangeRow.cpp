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
    bytes.assign(newCapacity + 2 * guard + 1, untouched);
    bytes.back() = 0;  // ends what is traced of an untouched buffer
    capacity = length = newCapacity;
}

bool OutText::bufferUntouched() const
{
    return length == capacity && std::all_of(bytes.begin(), bytes.end() - 1, [](char c) { return c == untouched; });
}

bool OutText::guardsIntact() const
{
    const auto isGuard = [](char c) { return c == untouched; };
    return std::all_of(bytes.begin(), bytes.begin() + guard, isGuard) &&
           std::all_of(bytes.end() - 1 - guard, bytes.end() - 1, isGuard);
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

std::ostream& operator<<(std::ostream& out, const RequestRow& row)
{
    return out << row.name;
}

std::string requestName(const testing::TestParamInfo<RequestRow>& info)
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
    return replyWith({}, {});
}

Bytes ExchangeTest::replyWith(const OutField& changed, const std::string& text) const
{
    Message reply = resultReply(0);
    for (const OutField& field : row().outputs) {
        if (isText(field)) reply.text(&field == &changed ? text : field.value);
        if (field.kind == OutField::number) reply.u32(field.numeric);
        if (field.kind == OutField::byte) reply.u8(static_cast<std::uint8_t>(field.numeric));
        if (field.kind == OutField::block) {
            reply.u32(static_cast<std::uint32_t>(field.value.size()))
                .raw(Bytes(field.value.begin(), field.value.end()));
        }
    }
    return reply.bytes();
}

void ExchangeTest::prepare()
{
    for (const Exchanged& exchange : row().before)
        channel.answer(exchange.reply);
}

long ExchangeTest::callWithReply(const Bytes& payload)
{
    prepare();
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

RequestTest::RequestTest() : channel(freshChannel()) {}

RefusedTest::RefusedTest() : channel(freshChannel()) {}

TEST_P(ExchangeTest, Request_isByteForByte)
{
    std::vector<Bytes> expected;
    for (const Exchanged& exchange : row().before)
        expected.push_back(exchange.request);
    expected.push_back(row().request);
    expected.insert(expected.end(), row().after.begin(), row().after.end());
    callWithReply(goodReply());
    EXPECT_EQ(channel.requests(), expected);
}

TEST_P(ExchangeTest, GoodReply_deliversEveryOutput)
{
    EXPECT_EQ(callWithReply(goodReply()), 0);
    std::size_t text = 0;
    std::size_t number = 0;
    for (const OutField& field : row().outputs) {
        if (field.kind == OutField::block) {
            EXPECT_EQ(out.texts[text++].text(), field.value);
            continue;
        }
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
    prepare();
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

// A trailer that is missing at the very end is no error, and what there is of it passes for a byte behind it; every
// byte before it counts.
TEST_P(ExchangeTest, ReplyCutInItsOutputs_is111)
{
    const Bytes reply = goodReply();
    const std::size_t trailer = !row().outputs.empty() && isText(row().outputs.back()) ? 4 : 0;
    const bool endsInByte = !row().outputs.empty() && row().outputs.back().kind == OutField::byte;
    for (std::size_t length = 6; length + trailer < reply.size(); ++length) {
        if (endsInByte && length + 5 > reply.size() && length + 1 < reply.size()) continue;
        for (OutText& text : out.texts)
            text.reset(300);
        EXPECT_EQ(callWithReply(Bytes(reply.begin(), reply.begin() + static_cast<int>(length))), 111)
            << length << " of " << reply.size() << " bytes";
        for (const OutText& text : out.texts)
            EXPECT_TRUE(text.guardsIntact());
    }
}

TEST_P(ExchangeTest, LongText_fitsPlainReadersAndNotTheUsersReader)
{
    const std::string text(299, 'x');
    std::size_t index = 0;
    for (const OutField& field : row().outputs) {
        if (!isText(field)) continue;
        OutText& got = out.texts[index++];
        if (field.silent || field.kind == OutField::strictText) continue;
        for (OutText& buffer : out.texts)
            buffer.reset(300);
        if (field.kind == OutField::plainText) {
            EXPECT_EQ(callWithReply(replyWith(field, text)), 0);
            EXPECT_EQ(got.text(), text);
        } else {
            EXPECT_EQ(callWithReply(replyWith(field, text)), 234);
            EXPECT_EQ(got.at(0), 0) << "an emptied buffer";
            EXPECT_EQ(got.length, 300u);
        }
        EXPECT_TRUE(got.guardsIntact());
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
    const TraceCapture capture("0xC8");
    callWithReply(goodReply());
    const auto lines = capture.of(row().traceName);
    if (!row().entryElsewhere) {
        EXPECT_EQ(textsAt(lines, "FA"), row().entry);
    }
    const auto results = textsAt(lines, "FE");
    if (row().result.empty()) {
        EXPECT_THAT(results, IsEmpty());
    } else {
        ASSERT_FALSE(results.empty());
        EXPECT_EQ(results.back(), row().result);
    }
    if (!row().resultLines.empty()) {
        EXPECT_EQ(results, row().resultLines);
    }
    if (!row().details.empty()) {
        EXPECT_EQ(textsAt(lines, "FM"), row().details);
    }
}

TEST_P(ExchangeTest, Trace_otherKind)
{
    const TraceCapture capture("0xCE");
    Message reply(5);
    reply.u32(0);
    callWithReply(reply.bytes());
    if (row().shortForm) {
        EXPECT_THAT(capture.of("send:"),
                    testing::Contains(TraceLine{"FM", "send:", "<< result ERROR_READ_FAULT (0x5)"}));
        return;
    }
    if (row().sendAndReceive) {
        EXPECT_THAT(capture.of("SendAndReceive:"),
                    testing::Contains(TraceLine{"PX", "SendAndReceive:", "<< result ERROR_READ_FAULT (0x5)"}));
        return;
    }
    const std::string text = !row().otherKindText.empty() ? row().otherKindText
                             : row().otherKind == 30      ? "<< result ERROR_READ_FAULT (0x5)"
                                                          : "<< return - Error DCFG_INVALID_RESPONSE (0x5)";
    EXPECT_THAT(textsAt(capture.of(row().traceName), "FE"), ElementsAre(text));
}

TEST_P(ExchangeTest, Trace_shortReply)
{
    if (row().shortForm || row().sendAndReceive || row().shortResult != 111) return;
    const TraceCapture capture("0x88");
    callWithReply({4, 0});
    EXPECT_EQ(textsAt(capture.of(row().traceName), "FE"), row().shortLines);
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

// Not every program has rows of each kind.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ExchangeTest);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RefusedTest);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RequestTest);

TEST_P(RequestTest, Request_isByteForByte)
{
    GetParam().call(out);
    EXPECT_THAT(channel.requests(), ElementsAre(GetParam().request));
}

TEST_P(RefusedTest, Call_isRefusedWithoutARequest)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(GetParam().call(out), GetParam().result);
    EXPECT_THAT(channel.requests(), IsEmpty());
    EXPECT_EQ(capture.lines(), GetParam().lines);
}
