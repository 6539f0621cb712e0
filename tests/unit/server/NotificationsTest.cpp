// Who is told of what, over the pipe and with the frames that the channel library sends.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "RunningServer.h"
#include "wire/notifications.h"

using namespace bytes;

namespace {

struct Pushed
{
    std::uint32_t what;
    std::uint32_t value;
    bool operator==(const Pushed&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Pushed& pushed)
{
    return out << std::hex << pushed.what << ':' << pushed.value;
}

using Pushes = std::vector<Pushed>;

const GUID boards = [] {
    GUID guid;
    std::memcpy(&guid, ::wire::boardInterfaceClass, sizeof guid);
    return guid;
}();
const GUID others = {1, 2, 3, {4}};

Bytes bytesOf(const GUID& guid)
{
    const auto* const first = reinterpret_cast<const std::uint8_t*>(&guid);
    return {first, first + sizeof guid};
}

Bytes registration(std::uint16_t opcode, const char16_t* family, const Bytes& subject, const char16_t* event,
                   std::uint32_t handle)
{
    return u16(opcode) + str(family) + subject + str(event) + u32(handle);
}

struct Notify : RunningServer
{
    PipeClient requests{places.channelPipe};
    PipeClient* pushes = nullptr;

    void SetUp() override
    {
        RunningServer::SetUp();
        requests = PipeClient(places.channelPipe);
    }

    static std::uint32_t result(const Bytes& answer)
    {
        std::uint32_t value = 0xEEEEEEEE;
        if (answer.size() >= 86) std::memcpy(&value, answer.data() + 82, sizeof value);
        return value;
    }
    static std::uint32_t ask(PipeClient& client, const Bytes& payload) { return result(client.ask(frame(payload))); }
    std::uint32_t ask(const Bytes& payload) { return ask(requests, payload); }

    // Says on both connections that they are those of one channel.
    void beChannel(std::uint32_t number) { ASSERT_EQ(ask(u16(496) + u32(number) + u32(0)), 0u); }
    void listen(PipeClient& client, std::uint32_t number)
    {
        ASSERT_EQ(ask(client, u16(497) + u32(number) + u32(0)), 0u);
    }
    std::uint32_t watchDevices(std::uint32_t handle, const Bytes& subject = null())
    {
        return ask(registration(26, u"LogDevices", subject, u"Global\\changed", handle));
    }
    void createDevice(const std::wstring& name)
    {
        ASSERT_EQ(server->store().create(srv::Family::Device, name, {}), 0u);
    }

    // What one message tells.
    static Pushes receive(PipeClient& client)
    {
        const Bytes message = client.receive();
        Pushes result;
        if (message.size() < 82 || message != frame(Bytes(message.begin() + 80, message.end()), 502)) return result;
        for (std::size_t at = 82; at + 8 <= message.size(); at += 8) {
            Pushed pushed;
            std::memcpy(&pushed, message.data() + at, sizeof pushed);
            result.push_back(pushed);
        }
        return result;
    }
    // All that is told up to a hardware change that this makes: what does not come before it does not come.
    Pushes untilMarker(PipeClient& client)
    {
        server->notifications().hardwareChanged(::wire::hardwareArrived, boards, L"marker");
        Pushes all;
        for (;;) {
            const Pushes some = receive(client);
            if (some.empty()) return {};
            all.insert(all.end(), some.begin(), some.end());
            if (all.back().what == 0x219 && name(all.back().value) == L"marker") break;
        }
        all.pop_back();
        return all;
    }
    std::wstring name(std::uint32_t handle)
    {
        const auto change = server->notifications().hardwareChange(handle);
        return change ? change->name : L"none";
    }
};

// One that listens, with the marker's class registered.
struct Told : Notify
{
    PipeClient listener{places.channelPipe};

    void SetUp() override
    {
        Notify::SetUp();
        listener = PipeClient(places.channelPipe);
        beChannel(7);
        ASSERT_EQ(ask(u16(256) + bytesOf(boards)), 0u);
        listen(listener, 7);
    }
    Pushes told() { return untilMarker(listener); }
};

TEST_F(Told, ChangedDevice_setsTheEventOnce)
{
    ASSERT_EQ(watchDevices(0x1234), 0u);
    createDevice(L"Line 1");
    EXPECT_EQ(receive(listener), (Pushes{{0x500, 0x1234}}));
    EXPECT_EQ(told(), Pushes{});
}

TEST_F(Told, EveryKindOfChange_isTold)
{
    ASSERT_EQ(watchDevices(1), 0u);
    createDevice(L"D");
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
    ASSERT_EQ(server->store().setValue(srv::Family::Device, L"D", srv::Section::Values, L"a", L"b"), 0u);
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
    ASSERT_EQ(server->store().deleteValue(srv::Family::Device, L"D", srv::Section::Values, L"a"), 0u);
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
    ASSERT_EQ(server->store().remove(srv::Family::Device, L"D"), 0u);
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, Subject_choosesOneObjectInAnyCase)
{
    ASSERT_EQ(watchDevices(1, str(u"line 1")), 0u);
    createDevice(L"Line 2");
    EXPECT_EQ(told(), Pushes{});
    createDevice(L"Line 1");
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, OtherFamily_isNotTold)
{
    ASSERT_EQ(ask(registration(26, u"LogNames", null(), u"changed", 1)), 0u);
    createDevice(L"D");
    EXPECT_EQ(told(), Pushes{});
    ASSERT_EQ(server->store().create(srv::Family::Name, L"N", {}), 0u);
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, SameRegistrationTwice_setsTheEventOnce)
{
    ASSERT_EQ(watchDevices(1), 0u);
    ASSERT_EQ(watchDevices(1), 0u);
    createDevice(L"D");
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, SeveralRegistrations_areToldInTheOrderOfTheChanges)
{
    ASSERT_EQ(watchDevices(1, str(u"B")), 0u);
    ASSERT_EQ(watchDevices(2, str(u"A")), 0u);
    ASSERT_EQ(ask(registration(26, u"LogNames", null(), u"changed", 3)), 0u);
    PipeClient quiet(places.channelPipe);
    listener.close();
    // Nobody listens while the changes are made, so that they are told together.
    createDevice(L"A");
    ASSERT_EQ(server->store().create(srv::Family::Name, L"N", {}), 0u);
    server->notifications().hardwareChanged(::wire::hardwareArrived, boards, L"card");
    createDevice(L"B");
    listen(quiet, 7);
    const Pushes all = untilMarker(quiet);
    ASSERT_EQ(all.size(), 4u);
    EXPECT_EQ(all[0], (Pushed{0x500, 2}));
    EXPECT_EQ(all[1], (Pushed{0x500, 3}));
    EXPECT_EQ(name(all[2].value), L"card");
    EXPECT_EQ(all[3], (Pushed{0x500, 1}));
}

TEST_F(Told, Unregistered_isNotToldWhicheverFormTheNameHas)
{
    struct Row
    {
        const char16_t* registered;
        const char16_t* unregistered;
        std::uint32_t handle;
    };
    for (const Row& row : {Row{u"Global\\e", u"Global\\e", 5}, {u"e", u"Global\\e", 5}, {u"Global\\e", u"e", 0}}) {
        ASSERT_EQ(ask(registration(26, u"LogNames", str(u""), row.registered, 5)), 0u);
        EXPECT_EQ(ask(registration(27, u"LogNames", null(), row.unregistered, row.handle)), 0u);
        EXPECT_EQ(ask(registration(27, u"LogNames", null(), row.unregistered, row.handle)), 8012u);
        ASSERT_EQ(server->store().apply({{srv::Step::Kind::Put, srv::Family::Name, L"N", {}}}), 0u);
        EXPECT_EQ(told(), Pushes{});
    }
}

TEST_F(Told, UnregisteringAnotherHandle_changesNothing)
{
    ASSERT_EQ(watchDevices(5), 0u);
    EXPECT_EQ(ask(registration(27, u"LogDevices", null(), u"Global\\changed", 6)), 8012u);
    createDevice(L"D");
    EXPECT_EQ(told(), (Pushes{{0x500, 5}}));
}

TEST_F(Told, UnregisteredBeforeItIsTold_isNotTold)
{
    listener.close();
    ASSERT_EQ(watchDevices(5), 0u);
    createDevice(L"D");
    ASSERT_EQ(ask(registration(27, u"LogDevices", null(), u"Global\\changed", 5)), 0u);
    PipeClient next(places.channelPipe);
    listen(next, 7);
    EXPECT_EQ(untilMarker(next), Pushes{});
}

TEST_F(Told, TenThousandHardwareChanges_areToldOneByOneInOrder)
{
    constexpr std::uint32_t count = 10'000;
    std::thread changing([&] {
        for (std::uint32_t i = 0; i < count; ++i)
            server->notifications().hardwareChanged(::wire::hardwareArrived, boards, std::to_wstring(i));
    });
    std::uint32_t next = 0;
    while (next < count) {
        const Pushes some = receive(listener);
        if (some.empty()) break;
        for (const Pushed& pushed : some)
            if (name(pushed.value) == std::to_wstring(next)) ++next;
    }
    changing.join();
    EXPECT_EQ(next, count);
    EXPECT_EQ(told(), Pushes{});
}

TEST_F(Told, TenThousandChangesOfADevice_areCoalescedAndTheLastIsTold)
{
    ASSERT_EQ(watchDevices(1), 0u);
    for (int i = 0; i < 10'000; ++i)
        server->changes().tell({srv::Change::Kind::Changed, srv::Family::Device, L"D"});
    Pushes all = told();
    // A connection that nobody reads takes some messages, not ten thousand.
    EXPECT_LT(all.size(), 2'000u);
    EXPECT_GE(all.size(), 1u);
    server->changes().tell({srv::Change::Kind::Changed, srv::Family::Device, L"D"});
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, ClassThatWasRegisteredTwice_isToldUntilItIsRemovedTwice)
{
    const Bytes guid = bytesOf(others);
    const auto change = [&] { server->notifications().hardwareChanged(::wire::hardwareRemoved, others, L"x"); };
    ASSERT_EQ(ask(u16(256) + guid), 0u);
    ASSERT_EQ(ask(u16(256) + guid), 0u);
    change();
    EXPECT_EQ(told().size(), 1u);
    ASSERT_EQ(ask(u16(257) + guid), 0u);
    change();
    EXPECT_EQ(told().size(), 1u);
    ASSERT_EQ(ask(u16(257) + guid), 0u);
    change();
    EXPECT_EQ(told().size(), 0u);
    EXPECT_EQ(ask(u16(257) + guid), 0u) << "the library itself tells its caller";
}

TEST_F(Told, ClassOfZeros_isToldOfEveryClassOnce)
{
    ASSERT_EQ(ask(u16(256) + bytesOf(GUID{})), 0u);
    server->notifications().hardwareChanged(::wire::hardwareRemoved, others, L"x");
    server->notifications().hardwareChanged(::wire::hardwareRemoved, boards, L"y");
    const Pushes all = told();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(name(all[0].value), L"x");
    EXPECT_EQ(name(all[1].value), L"y");
}

TEST_F(Told, HardwareChangesBeforeTheRegistration_areNotTold)
{
    server->notifications().hardwareChanged(::wire::hardwareRemoved, others, L"x");
    ASSERT_EQ(ask(u16(256) + bytesOf(others)), 0u);
    EXPECT_EQ(told(), Pushes{});
}

TEST_F(Notify, HardwareChange_isAnsweredWithItsFields)
{
    beChannel(1);
    ASSERT_EQ(ask(u16(256) + bytesOf(others)), 0u);
    PipeClient listener(places.channelPipe);
    listen(listener, 1);
    server->notifications().hardwareChanged(::wire::hardwareRemoved, others, L"Gerät 1");
    const std::uint32_t handle = receive(listener).at(0).value;
    EXPECT_EQ(requests.ask(frame(u16(258) + u32(handle))),
              frame(u32(0) + reply(0, u8(2) + replyStr(u"Gerät 1") + bytesOf(others)), 258));
}

TEST_F(Notify, UnknownHardwareChange_isAnsweredWithAllFieldsToo)
{
    const Bytes nothing = u8(0) + replyStr(u"") + Bytes(16);
    EXPECT_EQ(requests.ask(frame(u16(258) + u32(77))), frame(u32(0) + reply(8012, nothing), 258));
    EXPECT_EQ(requests.ask(frame(u16(258) + u16(77))), frame(u32(0) + reply(87, nothing), 258));
}

TEST_F(Notify, HardwareNames_areCutToTheClientsRoom)
{
    beChannel(1);
    ASSERT_EQ(ask(u16(256) + bytesOf(others)), 0u);
    PipeClient listener(places.channelPipe);
    listen(listener, 1);
    server->notifications().hardwareChanged(::wire::hardwareRemoved, others, std::wstring(300, L'ä'));
    EXPECT_EQ(name(receive(listener).at(0).value), std::wstring(255, L'ä'));
}

TEST_F(Notify, BadFields_are87)
{
    EXPECT_EQ(ask(registration(26, u"LogDevice", null(), u"e", 1)), 87u);
    EXPECT_EQ(ask(u16(26) + null() + null() + str(u"e") + u32(1)), 87u);
    EXPECT_EQ(ask(u16(26) + str(u"LogNames") + null() + null() + u32(1)), 87u);
    EXPECT_EQ(ask(u16(256) + Bytes(15)), 87u);
    EXPECT_EQ(ask(u16(257) + Bytes(17)), 87u);
    EXPECT_EQ(ask(u16(500) + Bytes(16) + u32(0)), 87u);
}

TEST_F(Notify, TooManyRegistrations_are1816)
{
    std::uint32_t handle = 1;
    while (handle < 10'000 && watchDevices(handle) == 0)
        ++handle;
    EXPECT_EQ(handle, 4097u);
    EXPECT_EQ(watchDevices(handle), 1816u);
}

TEST_F(Notify, NamedEvent_isSetEvenIfNobodyListens)
{
    DWORD session = 0;
    ProcessIdToSessionId(GetCurrentProcessId(), &session);
    const std::wstring name = L"own" + std::to_wstring(GetCurrentProcessId()) + std::to_wstring(session);
    const std::u16string sent(name.begin(), name.end());
    ASSERT_EQ(ask(u16(26) + str(u"LogDevices") + null() + str(u"Global\\" + sent) + u32(1)), 0u);
    const srv::Handle event(OpenEventW(SYNCHRONIZE, FALSE, (L"Global\\" + name).c_str()));
    ASSERT_TRUE(event);
    EXPECT_EQ(WaitForSingleObject(event.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    createDevice(L"D");
    EXPECT_EQ(WaitForSingleObject(event.get(), 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    ASSERT_EQ(ask(u16(27) + str(u"LogDevices") + null() + str(u"Global\\" + sent) + u32(0)), 0u);
    createDevice(L"E");
    EXPECT_EQ(WaitForSingleObject(event.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(Notify, EventThatIsNotTheClients_isNotTouched)
{
    const srv::Handle foreign(CreateEventW(nullptr, FALSE, FALSE, L"KxovaForeignEvent"));
    ASSERT_EQ(ask(u16(26) + str(u"LogDevices") + null() + str(u"KxovaForeignEvent") + u32(1)), 0u);
    createDevice(L"D");
    EXPECT_EQ(WaitForSingleObject(foreign.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(Notify, ChangesBeforeAnybodyListens_areToldThen)
{
    beChannel(3);
    ASSERT_EQ(ask(u16(256) + bytesOf(boards)), 0u);
    ASSERT_EQ(watchDevices(1), 0u);
    createDevice(L"D");
    PipeClient listener(places.channelPipe);
    listen(listener, 3);
    EXPECT_EQ(untilMarker(listener), (Pushes{{0x500, 1}}));
}

TEST_F(Told, RenewalOfWhatIsKnown_tellsNothing)
{
    ASSERT_EQ(watchDevices(1), 0u);
    ASSERT_EQ(ask(u16(498)), 0u);
    ASSERT_EQ(ask(registration(499, u"LogDevices", null(), u"Global\\changed", 1)), 0u);
    ASSERT_EQ(ask(u16(500) + bytesOf(boards) + u32(1)), 0u);
    ASSERT_EQ(ask(u16(501)), 0u);
    EXPECT_EQ(told(), Pushes{});
}

TEST_F(Told, RenewalOfWhatIsUnknown_tellsOnceBecauseAChangeMayHaveBeenMissed)
{
    ASSERT_EQ(ask(u16(498)), 0u);
    ASSERT_EQ(ask(registration(499, u"LogDevices", null(), u"Global\\changed", 1)), 0u);
    ASSERT_EQ(ask(u16(500) + bytesOf(boards) + u32(1)), 0u);
    ASSERT_EQ(ask(u16(501)), 0u);
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, WhatARenewalDoesNotName_isForgotten)
{
    ASSERT_EQ(watchDevices(1), 0u);
    ASSERT_EQ(ask(u16(498)), 0u);
    ASSERT_EQ(ask(u16(500) + bytesOf(boards) + u32(1)), 0u);
    ASSERT_EQ(ask(u16(501)), 0u);
    createDevice(L"D");
    EXPECT_EQ(told(), Pushes{});
}

TEST_F(Told, RenewalAfterALostConnection_tellsEverythingOnce)
{
    ASSERT_EQ(watchDevices(1), 0u);
    listener.close();
    PipeClient next(places.channelPipe);
    listen(next, 7);
    ASSERT_EQ(ask(u16(498)), 0u);
    ASSERT_EQ(ask(registration(499, u"LogDevices", null(), u"Global\\changed", 1)), 0u);
    ASSERT_EQ(ask(u16(500) + bytesOf(boards) + u32(1)), 0u);
    ASSERT_EQ(ask(u16(501)), 0u);
    EXPECT_EQ(untilMarker(next), (Pushes{{0x500, 1}}));
}

TEST_F(Told, LostRequestConnection_losesNoRegistration)
{
    ASSERT_EQ(watchDevices(1), 0u);
    requests.close();
    createDevice(L"D");
    EXPECT_EQ(told(), (Pushes{{0x500, 1}}));
}

TEST_F(Told, OtherChannels_areToldOfWhatTheyAskedFor)
{
    ASSERT_EQ(watchDevices(1), 0u);
    PipeClient otherRequests(places.channelPipe);
    PipeClient otherListener(places.channelPipe);
    ASSERT_EQ(ask(otherRequests, u16(496) + u32(8) + u32(0)), 0u);
    ASSERT_EQ(ask(otherRequests, u16(256) + bytesOf(boards)), 0u);
    listen(otherListener, 8);
    createDevice(L"D");
    EXPECT_EQ(receive(listener), (Pushes{{0x500, 1}}));
    server->notifications().hardwareChanged(::wire::hardwareArrived, boards, L"marker");
    EXPECT_EQ(name(receive(otherListener).at(0).value), L"marker");
    EXPECT_EQ(name(receive(listener).at(0).value), L"marker");
}

TEST_F(Told, ClientThatIsGone_isForgotten)
{
    ASSERT_EQ(watchDevices(1), 0u);
    EXPECT_EQ(server->notifications().subscribers(), 1u);
    requests.close();
    listener.close();
    const DWORD start = GetTickCount();
    while (server->notifications().subscribers() > 0 && GetTickCount() - start < 10'000)
        SwitchToThread();
    EXPECT_EQ(server->notifications().subscribers(), 0u);
}

TEST_F(Told, ClientThatDoesNotListenToWhatItIsTold_delaysNobody)
{
    ASSERT_EQ(watchDevices(1), 0u);
    PipeClient other(places.channelPipe);
    const Bytes question = frame(u16(42) + str(u"D") + u32(0));
    const DWORD start = GetTickCount();
    for (int i = 0; i < 5'000; ++i) {
        server->changes().tell({srv::Change::Kind::Changed, srv::Family::Device, L"D"});
        server->notifications().hardwareChanged(::wire::hardwareArrived, boards, L"card");
    }
    EXPECT_EQ(result(other.ask(question)), 8012u);
    EXPECT_LT(GetTickCount() - start, 10'000u);
}

TEST_F(Told, AskedOnTheListeningConnection_isAnsweredBetweenThePushes)
{
    ASSERT_EQ(watchDevices(1), 0u);
    EXPECT_EQ(result(listener.ask(frame(u16(42) + str(u"D") + u32(0)))), 8012u);
    createDevice(L"D");
    EXPECT_EQ(receive(listener), (Pushes{{0x500, 1}}));
}

}  // namespace
