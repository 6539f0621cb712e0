// The requests of hardware changes and of the notifications about logical devices and logical names.

#include <cstring>
#include <memory>
#include <type_traits>

#include "callsTest.h"

namespace {

struct CloseHandles
{
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseHandles>;

DWORD session()
{
    DWORD id = 0;
    ProcessIdToSessionId(GetCurrentProcessId(), &id);
    return id;
}

// The name under which the server opens an event.
std::string serverName(const char* prefix, const char* name)
{
    return prefix + std::string(name) + std::to_string(GetCurrentProcessId()) + std::to_string(session());
}

std::uint32_t value(HANDLE handle)
{
    return static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(handle));
}

const GUID classA = {0x11223344, 0x5566, 0x7788, {1, 2, 3, 4, 5, 6, 7, 8}};
const GUID classB = {0x99887766, 0x5544, 0x3322, {8, 7, 6, 5, 4, 3, 2, 1}};
const HWND window1 = reinterpret_cast<HWND>(0x1111);
const HWND window2 = reinterpret_cast<HWND>(0x2222);

Bytes guidRequest(std::uint16_t opcode, const GUID& guid)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&guid);
    return Message(opcode).raw(Bytes(bytes, bytes + sizeof guid)).bytes();
}

class NotifyTest : public CallsTest
{
 protected:
    // Registrations need the hidden window, which a thread of the library brings up.
    static void SetUpTestSuite()
    {
        LogDeviceExists("Dummy", 0);
        char station[261] = {};
        GetUserObjectInformationA(GetProcessWindowStation(), UOI_NAME, station, sizeof station, nullptr);
        const std::string name =
            "kxovaapi_evtWnd" + std::to_string(GetCurrentProcessId()) + station + std::to_string(session());
        const Handle ready(OpenEventA(SYNCHRONIZE, FALSE, name.c_str()));
        ASSERT_TRUE(ready) << name;
        ASSERT_EQ(WaitForSingleObject(ready.get(), 10000), WAIT_OBJECT_0);
    }
    NotifyTest() { unregisterAll(); }
    ~NotifyTest() override { unregisterAll(); }

    void unregisterAll()
    {
        channel.reset();
        while (OvaUnregisterHardwareChanges(&classA) == 0 || OvaUnregisterHardwareChanges(&classB) == 0) {
        }
        channel.reset();
    }
};

// Hardware changes

TEST_F(NotifyTest, RegisterHardware_sendsTheClassAndNamesTheWindow)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(OvaRegisterHardwareChanges(window1, &classA), 0u);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{guidRequest(256, classA)});
    EXPECT_TRUE(IsWindow(channel.notificationWindow()));
    EXPECT_EQ(channel.notificationMessage(), 1036u);
    const std::string address = hexText(static_cast<unsigned long>(reinterpret_cast<ULONG_PTR>(&classA)));
    const std::vector<TraceLine> expected = {{"FA", "OvaRegisterHardwareChanges:", ">> hWnd=4369 pGUID=0x" + address},
                                             {"FE", "OvaRegisterHardwareChanges:", "<< return 0x0"}};
    EXPECT_EQ(capture.of("OvaRegisterHardwareChanges:"), expected);
}

TEST_F(NotifyTest, RegisterHardware_sameWindowTakesAnyNumberOfClasses)
{
    EXPECT_EQ(OvaRegisterHardwareChanges(window1, &classA), 0u);
    EXPECT_EQ(OvaRegisterHardwareChanges(window1, &classB), 0u);
    EXPECT_EQ(OvaRegisterHardwareChanges(window1, &classA), 0u);
    EXPECT_EQ(channel.requests().size(), 3u);
}

TEST_F(NotifyTest, RegisterHardware_secondWindowIs8560WithoutARequest)
{
    OvaRegisterHardwareChanges(window1, &classA);
    const TraceCapture capture("0x80");
    EXPECT_EQ(OvaRegisterHardwareChanges(window2, &classB), 8560u);
    EXPECT_EQ(channel.requests().size(), 1u);
    EXPECT_EQ(capture.of("OvaRegisterHardwareChanges:"),
              (std::vector<TraceLine>{
                  {"FE", "OvaRegisterHardwareChanges:", "<< a second window is tried to register result = 0x2170"}}));
}

TEST_F(NotifyTest, RegisterHardware_nullIsRefused)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(OvaRegisterHardwareChanges(window1, nullptr), 87u);
    EXPECT_TRUE(channel.requests().empty());
    const std::vector<TraceLine> expected = {{"FA", "OvaRegisterHardwareChanges:", ">> hWnd=4369 pGUID=0x0"},
                                             {"FE", "OvaRegisterHardwareChanges:", "<< return ERROR: pGUID=NULL"}};
    EXPECT_EQ(capture.of("OvaRegisterHardwareChanges:"), expected);
}

TEST_F(NotifyTest, RegisterHardware_refusedNotificationIsReturnedAndTracedForItsModule)
{
    channel.notificationResult(5);
    const TraceCapture capture("0x80");
    EXPECT_EQ(OvaRegisterHardwareChanges(window1, &classA), 5u);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(capture.of("OvaRegisterHardwareChanges:"),
              (std::vector<TraceLine>{{"FE", "OvaRegisterHardwareChanges:", "<< result= 0x5 ", "OVA"}}));
}

TEST_F(NotifyTest, RegisterHardware_failedRequestRegistersNothing)
{
    const std::pair<Bytes, unsigned long> cases[] = {{failure(8012), 8012}, {otherKind(), 30}, {{}, 30}, {{4}, 111}};
    for (const auto& [reply, result] : cases) {
        channel.answer(reply);
        EXPECT_EQ(OvaRegisterHardwareChanges(window1, &classA), result);
    }
    EXPECT_EQ(OvaRegisterHardwareChanges(window2, &classA), 0u) << "no other window is known";
}

TEST_F(NotifyTest, RegisterHardware_failedRequestIsTraced)
{
    channel.answer(failure(8012));
    const TraceCapture capture("0x80");
    OvaRegisterHardwareChanges(window1, &classA);
    EXPECT_EQ(capture.of("OvaRegisterHardwareChanges:"),
              (std::vector<TraceLine>{{"FE", "OvaRegisterHardwareChanges:", "<< result= 0x1f4c "}}));
}

TEST_F(NotifyTest, UnregisterHardware_sendsTheClassAndForgetsIt)
{
    OvaRegisterHardwareChanges(window1, &classA);
    channel.reset();
    const TraceCapture capture("0x88");
    EXPECT_EQ(OvaUnregisterHardwareChanges(&classA), 0u);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{guidRequest(257, classA)});
    EXPECT_EQ(capture.of("OvaUnregisterHardwareChanges:"),
              (std::vector<TraceLine>{{"FA", "OvaUnregisterHardwareChanges:", "<< return 0x0"}}));
    EXPECT_EQ(OvaRegisterHardwareChanges(window2, &classA), 0u);
}

TEST_F(NotifyTest, UnregisterHardware_unknownClassIs8561)
{
    OvaRegisterHardwareChanges(window1, &classA);
    EXPECT_EQ(OvaUnregisterHardwareChanges(&classB), 8561u);
}

TEST_F(NotifyTest, UnregisterHardware_refusingServerKeepsTheRegistration)
{
    OvaRegisterHardwareChanges(window1, &classA);
    for (const auto& [reply, result] :
         {std::pair<Bytes, unsigned long>{failure(8012), 8012}, {otherKind(), 30}, {Bytes{4, 0}, 111}}) {
        channel.answer(reply);
        EXPECT_EQ(OvaUnregisterHardwareChanges(&classA), result);
    }
    EXPECT_EQ(OvaRegisterHardwareChanges(window2, &classA), 8560u);
}

TEST_F(NotifyTest, UnregisterHardware_nullIsRefused)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(OvaUnregisterHardwareChanges(nullptr), 87u);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(capture.lines(),
              (std::vector<TraceLine>{{"FE", "OvaUnregisterHardwareChanges:", "<< return ERROR: pGuid=NULL"}}));
}

TEST_F(NotifyTest, SetMessageType_acceptsItsRangeAndSendsNothing)
{
    EXPECT_EQ(OvaSetMessageTypeForHardwareChanges(window1, 1024), 0u);
    EXPECT_EQ(OvaSetMessageTypeForHardwareChanges(window1, 32767), 0u);
    EXPECT_EQ(OvaSetMessageTypeForHardwareChanges(window1, 1023), 87u);
    EXPECT_EQ(OvaSetMessageTypeForHardwareChanges(window1, 32768), 87u);
    EXPECT_EQ(OvaSetMessageTypeForHardwareChanges(nullptr, 1024), 87u);
    EXPECT_TRUE(channel.requests().empty());
}

TEST_F(NotifyTest, SetMessageType_tracesForItsModule)
{
    constexpr char traceName[] = "OvaSetMessageTypeForHardwareChange";  // as far as a line has room for it
    const auto line = [&](const char* level, const char* text) { return TraceLine{level, traceName, text, "OVA"}; };
    const TraceCapture capture("0x88");
    OvaSetMessageTypeForHardwareChanges(nullptr, 1024);
    OvaSetMessageTypeForHardwareChanges(window1, 1);
    const std::vector<TraceLine> expected = {
        line("FA", ">> hWnd=0 pGUID=0x400"), line("FE", "<< return ERROR: hWnd=NULL"),
        line("FA", ">> hWnd=4369 pGUID=0x1"),
        line("FE", "<< return ERROR: messageType < 0x0400 or messageType > 0x7FFF")};
    EXPECT_EQ(capture.of(traceName), expected);
}

// The record behind a change handle. Its reply has a number in front of its kind.

Bytes changeReply(std::uint32_t result)
{
    const auto* const guid = reinterpret_cast<const std::uint8_t*>(&classB);
    return Message()
        .u32(0xCAFECAFE)
        .u16(4)
        .u32(result)
        .u8(0xFE)
        .text("Ger\xE4t")
        .raw(Bytes(guid, guid + sizeof classB))
        .bytes();
}

TEST_F(NotifyTest, GetHardwareChanges_fillsTheRecord)
{
    OvaHardwareChange change{};
    channel.answer(changeReply(0));
    const TraceCapture capture("0x88");
    EXPECT_EQ(OvaGetHardwareChanges(77, &change), 0u);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{Message(258).u32(77).bytes()});
    EXPECT_EQ(change.change, 0xFEu);
    EXPECT_STREQ(change.name, "Ger\xE4t");
    EXPECT_EQ(std::memcmp(&change.interfaceClass, &classB, sizeof classB), 0);
    EXPECT_EQ(capture.of("OvaGetHardwareChanges:"),
              (std::vector<TraceLine>{{"FA", "OvaGetHardwareChanges:", ">> handle=77 "},
                                      {"FE", "OvaGetHardwareChanges:", "<< return 0x0"}}));
}

TEST_F(NotifyTest, GetHardwareChanges_recordIsReadWhateverTheResult)
{
    OvaHardwareChange change{};
    channel.answer(changeReply(8012));
    EXPECT_EQ(OvaGetHardwareChanges(77, &change), 8012u);
    EXPECT_STREQ(change.name, "Ger\xE4t");
}

TEST_F(NotifyTest, GetHardwareChanges_recordHasTheInterfacesLayout)
{
    EXPECT_EQ(sizeof(OvaHardwareChange), 276u);
    EXPECT_EQ(offsetof(OvaHardwareChange, interfaceClass), 4u);
    EXPECT_EQ(offsetof(OvaHardwareChange, name), 20u);
}

TEST_F(NotifyTest, GetHardwareChanges_cutReplyIs111AndTraced)
{
    const Bytes whole = changeReply(0);
    for (std::size_t length = 1; length < whole.size(); ++length) {
        OvaHardwareChange change{};
        channel.answer(Bytes(whole.begin(), whole.begin() + static_cast<int>(length)));
        EXPECT_EQ(OvaGetHardwareChanges(77, &change), 111u) << length;
    }
    OvaHardwareChange change{};
    channel.answer({1, 2, 3, 4, 4, 0, 0});
    const TraceCapture capture("0x80");
    OvaGetHardwareChanges(77, &change);
    EXPECT_EQ(capture.of("OvaGetHardwareChanges:"),
              (std::vector<TraceLine>{{"FE", "OvaGetHardwareChanges:", "<< return - Error 0x6f"}}));
}

TEST_F(NotifyTest, GetHardwareChanges_anotherKindIs30)
{
    OvaHardwareChange change{};
    Bytes reply = changeReply(0);
    reply[4] = 5;
    channel.answer(reply);
    const TraceCapture capture("0x80");
    EXPECT_EQ(OvaGetHardwareChanges(77, &change), 30u);
    EXPECT_EQ(change.change, 0u);
    EXPECT_EQ(capture.of("OvaGetHardwareChanges:"),
              (std::vector<TraceLine>{{"FE", "OvaGetHardwareChanges:", "<< result ERROR_READ_FAULT (0x5)"}}));
}

TEST_F(NotifyTest, GetHardwareChanges_failedExchangeIs30)
{
    OvaHardwareChange change{};
    channel.fail(9);
    EXPECT_EQ(OvaGetHardwareChanges(77, &change), 30u);
}

TEST_F(NotifyTest, GetHardwareChanges_nameBeyondItsFieldIs234)
{
    OvaHardwareChange change{};
    channel.answer(Message().u32(0).u16(4).u32(0).u8(1).text(std::string(256, 'x')).bytes());
    EXPECT_EQ(OvaGetHardwareChanges(77, &change), 234u);
}

TEST_F(NotifyTest, GetHardwareChanges_nullIsRefused)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(OvaGetHardwareChanges(77, nullptr), 87u);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(capture.of("OvaGetHardwareChanges:"),
              (std::vector<TraceLine>{{"FA", "OvaGetHardwareChanges:", ">> handle=77 "},
                                      {"FE", "OvaGetHardwareChanges:", "<< return ERROR: pChanges=NULL"}}));
}

// Notifications about logical devices and logical names: the two pairs differ in the folder, in the form of the
// exchange, and in the prefix of one event name.

struct Family
{
    const char* name;
    unsigned long (*notify)(const char*, unsigned long, unsigned long, const char*, HANDLE*, void*);
    unsigned long (*unregister)(const char*, const char*, const HANDLE*);
    const char* folder;
    const char* prefix;  // of the name that is registered
    const char* traceName;
    bool shortForm;
};

std::ostream& operator<<(std::ostream& out, const Family& family)
{
    return out << family.name;
}

class ChangeTest : public NotifyTest, public testing::WithParamInterface<Family>
{
 protected:
    unsigned long notify(const char* event)
    {
        HANDLE handle = nullptr;
        const unsigned long result = GetParam().notify("Line 1", 0, 0, event, &handle, &handle);
        event_.reset(handle);
        return result;
    }
    Bytes request(std::uint16_t opcode, const char* prefix, std::uint32_t handle) const
    {
        return Message(opcode)
            .str(GetParam().folder)
            .str("Line 1")
            .str(serverName(prefix, "changed"))
            .u32(handle)
            .bytes();
    }
    std::vector<TraceLine> lines(const TraceCapture& capture) const { return capture.of(GetParam().traceName); }
    TraceLine line(const char* level, const char* text) const { return {level, GetParam().traceName, text}; }

    Handle event_;
};

INSTANTIATE_TEST_SUITE_P(Families, ChangeTest,
                         testing::Values(Family{"logDevice", LogDeviceNotifyChange, LogDeviceUnregisterNotifyChange,
                                                "LogDevices", "Global\\", "LogDeviceNotifyChange:", false},
                                         Family{"logName", LogNameNotifyChange, LogNameUnregisterNotifyChange,
                                                "LogNames", "", "LogNameNotifyChange:", true}),
                         [](const auto& row) { return row.param.name; });

TEST_P(ChangeTest, Notify_sendsTheServersNameAndTheHandle)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(notify("changed"), 0u);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{request(26, GetParam().prefix, value(event_.get()))});
    EXPECT_TRUE(IsWindow(channel.notificationWindow()));
    EXPECT_EQ(channel.notificationMessage(), 1036u);
    EXPECT_EQ(lines(capture),
              (std::vector<TraceLine>{line("FA", ">> eventName=changed"), line("FE", "<< return 0x0")}));
}

TEST_P(ChangeTest, Notify_eventIsAutoResetNotSignalledAndBearsTheCallersName)
{
    notify("changed");
    const Handle same(OpenEventA(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, "changed"));
    ASSERT_TRUE(same);
    EXPECT_EQ(WaitForSingleObject(event_.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    SetEvent(same.get());
    EXPECT_EQ(WaitForSingleObject(event_.get(), 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event_.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_P(ChangeTest, Notify_repliesThatFail)
{
    const std::pair<Bytes, unsigned long> cases[] = {
        {failure(8012), 8012}, {otherKind(), 30}, {{}, 30}, {{4}, 111}, {{4, 0, 0}, 111}};
    for (const auto& [reply, result] : cases) {
        channel.answer(reply);
        EXPECT_EQ(notify("changed"), result);
        EXPECT_TRUE(event_) << "the event stays the caller's";
    }
}

TEST_P(ChangeTest, Notify_anotherKindIsTraced)
{
    channel.answer(otherKind());
    const TraceCapture capture("0xC0");
    notify("changed");
    const TraceLine expected = GetParam().shortForm ? TraceLine{"FM", "send:", "<< result ERROR_READ_FAULT (0x5)"}
                                                    : line("FE", "<< result ERROR_READ_FAULT (0x5)");
    EXPECT_THAT(capture.lines(), testing::Contains(expected));
}

TEST_P(ChangeTest, Notify_refusedWindowIsReturnedWithoutARequest)
{
    channel.notificationResult(5);
    const TraceCapture capture("0x80");
    EXPECT_EQ(notify("changed"), 5u);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(lines(capture), std::vector<TraceLine>{line("FE", "<< result= 0x5 ")});
}

TEST_P(ChangeTest, Notify_nullArgumentsAreRefused)
{
    HANDLE handle = nullptr;
    const TraceCapture capture("0x80");
    EXPECT_EQ(GetParam().notify("s", 0, 0, nullptr, &handle, &handle), 87u);
    EXPECT_EQ(GetParam().notify("s", 0, 0, "changed", nullptr, &handle), 87u);
    EXPECT_EQ(GetParam().notify("s", 0, 0, "changed", &handle, nullptr), 87u);
    EXPECT_EQ(handle, nullptr);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(lines(capture), std::vector<TraceLine>(3, line("FE", "<< return ERROR: eventName=NULL")));
}

TEST_P(ChangeTest, Notify_eventThatCannotBeMadeIsItsError)
{
    const Handle other(CreateMutexA(nullptr, FALSE, "no event"));
    const TraceCapture capture("0x80");
    EXPECT_EQ(notify("no event"), static_cast<unsigned long>(ERROR_INVALID_HANDLE));
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(lines(capture), std::vector<TraceLine>{line("FE", "<< return ERROR: canot open event 0x6")});
}

TEST_P(ChangeTest, Notify_nullSubjectIsSentAsSuch)
{
    HANDLE handle = nullptr;
    GetParam().notify(nullptr, 0, 0, "changed", &handle, &handle);
    event_.reset(handle);
    EXPECT_EQ(channel.requests().at(0), Message(26)
                                            .str(GetParam().folder)
                                            .nullStr()
                                            .str(serverName(GetParam().prefix, "changed"))
                                            .u32(value(handle))
                                            .bytes());
}

TEST_P(ChangeTest, Unregister_sendsThePrefixedNameAndTheHandle)
{
    const HANDLE handle = reinterpret_cast<HANDLE>(0x1234);
    const TraceCapture capture("0x88");
    EXPECT_EQ(GetParam().unregister("Line 1", "changed", &handle), 0u);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{request(27, "Global\\", 0x1234)});
    constexpr char traceName[] = "LogDeviceUnregisterNotifyChange:";  // in both families
    EXPECT_EQ(capture.of(traceName), (std::vector<TraceLine>{{"FA", traceName, ">> eventName=changed"},
                                                             {"FE", traceName, "<< return 0x0"}}));
}

TEST_P(ChangeTest, Unregister_withoutAHandleSends0)
{
    EXPECT_EQ(GetParam().unregister("Line 1", "changed", nullptr), 0u);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{request(27, "Global\\", 0)});
}

TEST_P(ChangeTest, Unregister_repliesThatFail)
{
    const std::pair<Bytes, unsigned long> cases[] = {
        {failure(8012), 8012}, {otherKind(), 30}, {{}, 30}, {{4}, 111}, {{4, 0, 0}, 111}};
    for (const auto& [reply, result] : cases) {
        channel.answer(reply);
        EXPECT_EQ(GetParam().unregister("Line 1", "changed", nullptr), result);
    }
}

TEST_P(ChangeTest, Unregister_nullNameIsRefused)
{
    const TraceCapture capture("0x80");
    EXPECT_EQ(GetParam().unregister("s", nullptr, nullptr), 87u);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(
        capture.lines(),
        (std::vector<TraceLine>{{"FE", "LogDeviceUnregisterNotifyChange:", "<< return ERROR: eventName=NULL"}}));
}

TEST_F(NotifyTest, Flush_withoutTheServersEventsIs8012)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(LogDeviceFlush(), 8012u);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(
        capture.of("LogDeviceFlush:"),
        (std::vector<TraceLine>{{"FA", "LogDeviceFlush:", ">> start"},
                                {"FE", "LogDeviceFlush:", "<< return ERROR: hFlushEvent=0x0 hEvent[x]=0x0 - 0x0"}}));
}

}  // namespace
