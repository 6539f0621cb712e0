// What is said to be answered from memory asks nothing of the registry: another client's request may be waiting for it.
#include <gtest/gtest.h>

#include <vector>

#include "TestServer.h"

using namespace bytes;

namespace {

// Counts whatever is asked of it.
class CountingRegistry : public PassingRegistry
{
 public:
    using PassingRegistry::PassingRegistry;

    unsigned calls = 0;

    LSTATUS createKey(const std::wstring& path) override { return ++calls, PassingRegistry::createKey(path); }
    LSTATUS deleteKey(const std::wstring& path) override { return ++calls, PassingRegistry::deleteKey(path); }
    LSTATUS setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                     std::span<const std::uint8_t> data) override
    {
        return ++calls, PassingRegistry::setValue(path, name, type, data);
    }
    LSTATUS deleteValue(const std::wstring& path, const std::wstring& name) override
    {
        return ++calls, PassingRegistry::deleteValue(path, name);
    }
    LSTATUS subkeys(const std::wstring& path, std::vector<srv::Subkey>& found) override
    {
        return ++calls, PassingRegistry::subkeys(path, found);
    }
    LSTATUS values(const std::wstring& path, std::vector<srv::RawValue>& found) override
    {
        return ++calls, PassingRegistry::values(path, found);
    }
    LSTATUS mayChange(const std::wstring& path, bool toDelete) override
    {
        return ++calls, PassingRegistry::mayChange(path, toDelete);
    }
    LSTATUS flush() override { return ++calls, PassingRegistry::flush(); }
};

struct CountedRegistry
{
    TestKey key;
    srv::WindowsRegistry real = key.registry();
    CountingRegistry registry{real};
};

struct InMemory : testing::Test, CountedRegistry, DispatcherOver
{
    // Of a device, and a kind of templates.
    static constexpr std::u16string_view name = u"Boards";

    InMemory() : DispatcherOver(registry, registry, registry) {}

    void SetUp() override
    {
        now.open();
        Bytes space(8192);
        dispatcher.handle(session, u16(43) + str(name) + str(u"NX1611.MPI"), space);
        registry.calls = 0;
    }

    // The payload of the reply; empty if there is none at once.
    Bytes askAtOnce(const Bytes& request)
    {
        Bytes space(8192);
        const auto answer = dispatcher.handleAtOnce(session, request, space);
        return {answer.begin(), answer.end()};
    }
    bool isAnsweredAtOnce(const Bytes& request) { return !askAtOnce(request).empty(); }

    // With texts and numbers in every order of up to so many, until enough of them were carried out; returns how many.
    unsigned askInEveryWay(const srv::Operation& operation)
    {
        constexpr unsigned most = 9;
        constexpr unsigned enough = 4;
        unsigned done = 0;
        for (unsigned count = 0; count <= most; ++count)
            for (unsigned order = 0; order < 1u << count; ++order) {
                Bytes request = u16(operation.opcode);
                for (unsigned field = 0; field < count; ++field)
                    request = request + (order >> field & 1 ? str(name) : u32(260));
                if (isAnsweredAtOnce(request) && ++done == enough) return done;
            }
        return done;
    }
};

TEST_F(InMemory, OperationsSaidToBe_askNothingOfTheRegistry)
{
    unsigned checked = 0;
    for (const srv::Operation& operation : srv::allOperations()) {
        if (operation.work != srv::Work::InMemory) continue;
        EXPECT_GT(askInEveryWay(operation), 0u) << operation.name;
        EXPECT_EQ(std::exchange(registry.calls, 0), 0u) << operation.name;
        ++checked;
    }
    EXPECT_GT(checked, 40u);
}

TEST_F(InMemory, Answer_isTheOneThatIsGivenOtherwise)
{
    const Bytes request = u16(33) + str(name) + str(u"busparam") + u32(260);
    Bytes space(8192);
    const auto answer = dispatcher.handle(session, request, space);
    EXPECT_EQ(askAtOnce(request), Bytes(answer.begin(), answer.end()));
    EXPECT_EQ(askAtOnce(u16(33) + str(name) + str(u"nothing") + u32(260)), reply(8012));
}

TEST_F(InMemory, OperationsThatChange_areLeftAndDoNothing)
{
    EXPECT_FALSE(isAnsweredAtOnce(u16(34) + str(name) + str(u"a") + str(u"1")));
    EXPECT_EQ(registry.calls, 0u);
}

TEST_F(InMemory, WhatMakesALineInTheLog_isLeftAndMakesNone)
{
    unsigned lines = 0;
    struct Count : srv::LogSink
    {
        explicit Count(unsigned& all) : lines(all) {}
        void write(srv::Level, std::string_view) noexcept override { ++lines; }
        unsigned& lines;
    };
    now.log.add(std::make_unique<Count>(lines));
    now.log.setLevel(srv::Level::Warning);
    EXPECT_FALSE(isAnsweredAtOnce(u8(33)));
    EXPECT_FALSE(isAnsweredAtOnce(u16(41)));
    EXPECT_FALSE(isAnsweredAtOnce(u16(33) + u32(1)));
    now.log.setLevel(srv::Level::Debug);
    EXPECT_FALSE(isAnsweredAtOnce(u16(33) + str(name) + str(u"busparam") + u32(260)));
    EXPECT_EQ(lines, 0u);
}

}  // namespace
