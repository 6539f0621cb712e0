// One row of a family's table as a test case: the call, the request it must send, what the reply holds, and how the
// call answers everything that can be wrong with a reply.
//
// A family lists its rows once and instantiates ExchangeTest with them; each of its tests then runs for each row.
#pragma once

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "fakeChannel.h"
#include "traceCapture.h"

// Messages, field by field. Reply texts get a trailer that no reader may care about.
class Message
{
 public:
    Message() = default;
    explicit Message(std::uint16_t opcodeOrKind) { u16(opcodeOrKind); }

    Message& u8(std::uint8_t value);
    Message& u16(std::uint16_t value);
    Message& u32(std::uint32_t value);
    Message& str(const std::string& ansi);                 // a request's text
    Message& nullStr();                                    // a request's NULL text
    Message& text(const std::string& ansi);                // a reply's text
    Message& list(const std::vector<std::string>& texts);  // a reply's list
    Message& raw(const Bytes& bytes);

    const Bytes& bytes() const { return bytes_; }

 private:
    Bytes bytes_;
};

// The ordinary reply: kind 4 and a result; fields may follow.
Message resultReply(std::uint32_t result);

// A caller's buffer between guard bytes, with the length that goes with it.
struct OutText
{
    static constexpr std::size_t guard = 16;
    static constexpr char untouched = 'U';

    explicit OutText(unsigned long room = 300) { reset(room); }
    void reset(unsigned long newCapacity);
    operator char*() { return bytes.data() + guard; }
    operator unsigned long*() { return &length; }
    char at(std::size_t i) const { return bytes[guard + i]; }
    std::string text() const { return std::string(bytes.data() + guard, length); }
    bool bufferUntouched() const;
    bool guardsIntact() const;

    std::vector<char> bytes;
    unsigned long capacity = 0;
    unsigned long length = 0;
};

// Each text has a capacity of its own, so that a request shows which one it carries: 300, 301, …
struct Outputs
{
    Outputs()
    {
        for (unsigned long i = 0; i < texts.size(); ++i)
            texts[i].reset(300 + i);
    }

    std::array<OutText, 6> texts;
    std::array<unsigned long, 3> numbers{};
};

// A field of the reply behind the result.
struct OutField
{
    enum Kind {
        userText,    // at most 259 characters; a buffer without room for the terminator is accepted
        plainText,   // the terminator must fit
        strictText,  // a userText that is refused without room for the terminator
        number,
        byte,
        block,  // a number of bytes, then the bytes: into a text, its length first
    };
    Kind kind;
    std::string value;           // of a text
    std::uint32_t numeric = 0;   // of a number or byte
    std::string delivered = {};  // when the caller gets another text than the reply holds
    bool silent = false;         // the caller's copy is not compared
};

// An exchange that comes before the one that a row is about.
struct Exchanged
{
    Bytes request;
    Bytes reply;
};

struct ExchangeRow
{
    std::string name;       // of the exported function, perhaps with a variant behind "_"
    std::string traceName;  // as traced, without the blank at its end
    std::function<long(Outputs&)> call;
    Bytes request;
    long otherKind;  // result for a reply of another kind
    std::vector<OutField> outputs = {};
    std::vector<std::string> entry = {};        // entry lines
    std::string result = "<< return 0x0";       // result line of success; empty: none is expected
    std::string otherKindText = {};             // when the usual text is not used
    std::string failureText = {};               // result line of server result 8012; empty: the usual one
    long shortResult = 111;                     // result when the reply ends behind its kind
    bool shortForm = false;                     // exchanged by the channel client's send, which traces by itself
    bool sendAndReceive = false;                // exchanged by SendAndReceive, likewise
    bool entryElsewhere = false;                // the entry is told by a test of its own
    long failingResult = 8012;                  // result for server result 8012
    std::vector<Exchanged> before = {};         // what the call exchanges first, and what is answered to it
    std::vector<Bytes> after = {};              // what a success makes it send next
    std::vector<std::string> details = {};      // detail lines of success
    std::vector<std::string> resultLines = {};  // all result lines of success, where there are several
    std::vector<std::string> shortLines = {"<< result= 0x6f "};  // result lines when the reply ends behind its kind
};

// For GoogleTest's names and messages.
std::ostream& operator<<(std::ostream& out, const ExchangeRow& row);
std::string rowName(const testing::TestParamInfo<ExchangeRow>& info);

class ExchangeTest : public testing::TestWithParam<ExchangeRow>
{
 protected:
    ExchangeTest();

    const ExchangeRow& row() const { return GetParam(); }
    Bytes goodReply() const;
    Bytes replyWith(const OutField& changed, const std::string& text) const;  // a good one but for that text
    void prepare();                                                           // answers what comes first
    long callWithReply(const Bytes& payload);
    void expectUntouched() const;

    FakeChannel& channel;
    Outputs out;
};

// A request whose reply is another row's business: NULL texts and lengths, other flags.
struct RequestRow
{
    std::string name;
    std::function<long(Outputs&)> call;
    Bytes request;
};

std::ostream& operator<<(std::ostream& out, const RequestRow& row);
std::string requestName(const testing::TestParamInfo<RequestRow>& info);

class RequestTest : public testing::TestWithParam<RequestRow>
{
 protected:
    RequestTest();
    FakeChannel& channel;
    Outputs out;
};

// A call that must be refused before any request is made.
struct RefusedRow
{
    std::string name;
    std::function<long(Outputs&)> call;
    long result = 87;
    std::vector<TraceLine> lines = {};  // all lines that the call may trace
};

std::ostream& operator<<(std::ostream& out, const RefusedRow& row);
std::string refusedName(const testing::TestParamInfo<RefusedRow>& info);

class RefusedTest : public testing::TestWithParam<RefusedRow>
{
 protected:
    RefusedTest();
    FakeChannel& channel;
    Outputs out;
};
