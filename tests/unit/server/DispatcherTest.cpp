#include "dispatch/Dispatcher.h"

#include <gmock/gmock.h>

#include <set>

#include "TestServer.h"

using namespace bytes;

namespace {

constexpr std::uint16_t hardwareChangeGet = 258;

struct DispatcherTest : TestServer
{
    // One reply alone has a number in front of its kind, and its fields whatever the result is.
    Bytes answer(srv::Session& from, const srv::Operation& operation, const Bytes& request)
    {
        Bytes bytes = ask(from, request);
        if (request.size() < 2 || operation.opcode != hardwareChangeGet || bytes.size() < 10) return bytes;
        bytes.erase(bytes.begin(), bytes.begin() + 4);
        if (Bytes(bytes.begin() + 2, bytes.begin() + 6) != u32(0)) bytes.resize(6);
        return bytes;
    }
};

TEST_F(DispatcherTest, UnknownOperation_is8018)
{
    EXPECT_EQ(ask(u16(0)), reply(8018));
    EXPECT_EQ(ask(u16(41) + str(u"x")), reply(8018));
    EXPECT_EQ(ask(u16(511)), reply(8018));
    EXPECT_EQ(ask(u16(512)), reply(8018));
    EXPECT_EQ(ask(u16(65535)), reply(8018));
}

TEST_F(DispatcherTest, RequestWithoutOperationCode_is87)
{
    EXPECT_EQ(ask({}), reply(87));
    EXPECT_EQ(ask(u8(42)), reply(87));
}

TEST_F(DispatcherTest, ChannelOperationsOverTheServerPipe_are8018)
{
    srv::Session pipe(2, srv::Via::Pipe, 1);
    EXPECT_EQ(ask(pipe, u16(42) + str(u"x") + u32(0)), reply(8018));
}

TEST_F(DispatcherTest, EveryOperationWithFields_answersARequestWithoutThemWith87)
{
    const std::set<std::uint16_t> withoutFields{81, 88, 199, 201, 214, 292, 498, 501};
    for (const srv::Operation& operation : srv::allOperations()) {
        if (withoutFields.contains(operation.opcode)) continue;
        srv::Session from(2, operation.via, 4711);
        EXPECT_EQ(answer(from, operation, u16(operation.opcode)), reply(87)) << operation.name;
    }
}

TEST_F(DispatcherTest, EveryOperation_answersFieldsOfAnotherKindWith87)
{
    for (const srv::Operation& operation : srv::allOperations()) {
        srv::Session from(2, operation.via, 4711);
        EXPECT_EQ(answer(from, operation, u16(operation.opcode) + u32(0xFFFFFFFE) + u8(1)), reply(87))
            << operation.name;
    }
}

TEST_F(DispatcherTest, EveryOperation_hasANameAndACodeOfItsOwn)
{
    std::set<std::string> names;
    std::set<std::uint16_t> codes;
    for (const srv::Operation& operation : srv::allOperations()) {
        EXPECT_TRUE(names.insert(operation.name).second) << operation.name;
        EXPECT_TRUE(codes.insert(operation.opcode).second) << operation.name;
    }
}

TEST_F(DispatcherTest, FieldsCutAtAnyByteOrFollowedByMore_are87AndDoNothing)
{
    createDevice(u"Dev");
    const Bytes request = u16(34) + str(u"Dev") + str(u"a") + str(u"1");
    for (std::size_t length = 2; length < request.size(); ++length)
        EXPECT_EQ(ask({request.begin(), request.begin() + length}), reply(87)) << length;
    EXPECT_EQ(ask(request + u8(0)), reply(87));
    EXPECT_EQ(value(u"Dev", u"a"), reply(8012));
}

TEST_F(DispatcherTest, NullWhereANameIsNeeded_is87)
{
    EXPECT_EQ(ask(u16(42) + null() + u32(0)), reply(87));
    EXPECT_EQ(ask(u16(42) + str(u"") + u32(0)), reply(87));
    EXPECT_EQ(ask(u16(34) + str(u"Dev") + str(u"a") + null()), reply(87));
}

struct Lines : srv::LogSink
{
    explicit Lines(std::string& all) : text(all) {}
    void write(srv::Level, std::string_view line) noexcept override { text += line; }
    std::string& text;
};

TEST_F(DispatcherTest, Log_namesUnknownAndMalformedRequestsAndAtDebugAll)
{
    std::string log;
    now.log.add(std::make_unique<Lines>(log));
    now.log.setLevel(srv::Level::Warning);
    ask(u16(41));
    EXPECT_THAT(log, testing::HasSubstr("client 4711: unknown operation 41"));
    ask(u16(42));
    EXPECT_THAT(log, testing::HasSubstr("the fields of LogDeviceExists are malformed"));
    log.clear();
    ask(u16(42) + str(u"Dev") + u32(0));
    EXPECT_EQ(log, "");
    now.log.setLevel(srv::Level::Debug);
    ask(u16(42) + str(u"D\nv") + u32(0));
    EXPECT_THAT(log, testing::HasSubstr("LogDeviceExists(\"D\\x0Av\", 0) -> 8012"));
}

}  // namespace
