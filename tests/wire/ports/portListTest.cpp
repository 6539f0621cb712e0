// Lists of ports: the device maps from the server, and which ports can be opened.

#include <set>

#include "exchangeRow.h"
#include "importHook.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;
using DeviceMap = std::vector<std::pair<std::string, std::string>>;

constexpr char serialKey[] = R"(Hardware\DeviceMap\SerialComm)";
constexpr char parallelKey[] = R"(Hardware\DeviceMap\Parallel Ports)";

Bytes enumRequest(const char* key, std::uint32_t index)
{
    return Message(23).str(key).u32(index).bytes();
}

// The ports that can be opened, each by the name that the system wants.
class OpenablePorts
{
 public:
    explicit OpenablePorts(std::set<std::string> ports)
    {
        openable_ = std::move(ports);
        opened_.clear();
        closed_ = 0;
    }
    const Texts& opened() const { return opened_; }
    int closed() const { return closed_; }

 private:
    static HANDLE WINAPI createFile(const char* name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                                    DWORD creation, DWORD flags, HANDLE templateFile)
    {
        const std::string path = name;
        if (_strnicmp(name, R"(\\.\COM)", 7) != 0 && _strnicmp(name, R"(\\.\LPT)", 7) != 0) {
            return ::CreateFileA(name, access, share, security, creation, flags, templateFile);
        }
        EXPECT_EQ(access, GENERIC_READ);
        EXPECT_EQ(share, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE});
        EXPECT_EQ(security, nullptr);
        EXPECT_EQ(creation, DWORD{OPEN_EXISTING});
        EXPECT_EQ(flags, DWORD{FILE_ATTRIBUTE_NORMAL});
        opened_.push_back(path);
        if (openable_.contains(path)) return handle();
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    static BOOL WINAPI closeHandle(HANDLE closed)
    {
        if (closed != handle()) return ::CloseHandle(closed);
        ++closed_;
        return TRUE;
    }
    static HANDLE handle() { return reinterpret_cast<HANDLE>(0xABC0); }

    static inline std::set<std::string> openable_;
    static inline Texts opened_;
    static inline int closed_ = 0;
    ImportHook createHook_{"CreateFileA", createFile};
    ImportHook closeHook_{"CloseHandle", closeHandle};
};

class PortList : public testing::Test
{
 protected:
    void serve(const char* key, const DeviceMap& map)
    {
        pipe.answerAll([=](const Bytes& request) {
            for (std::uint32_t i = 0; i < map.size(); ++i) {
                if (request == enumRequest(key, i)) {
                    return resultReply(0).text(map[i].first).text(map[i].second).bytes();
                }
            }
            return resultReply(259).bytes();
        });
    }
    Texts items() const
    {
        Texts all;
        for (POSITION at = list.GetHeadPosition(); at;)
            all.emplace_back(list.GetNext(at).GetString());
        return all;
    }

    ScriptedPipe pipe;
    CStringList list;
};

TEST_F(PortList, SerialMap_isReadUnmappedToItsEnd)
{
    serve(serialKey, {{R"(\Device\Serial0)", "COM1"}});
    EXPECT_EQ(DCFG_GetPortList(list, "COM"), 0);
    EXPECT_THAT(pipe.requests(), ElementsAre(enumRequest(serialKey, 0), enumRequest(serialKey, 1)));
}

TEST_F(PortList, ParallelMap_isReadForLptInAnyCase)
{
    serve(parallelKey, {});
    for (const char* const type : {"LPT", "lpt"})
        EXPECT_EQ(DCFG_GetPortList(list, type), 0);
    EXPECT_THAT(pipe.requests(), ElementsAre(enumRequest(parallelKey, 0), enumRequest(parallelKey, 0)));
}

TEST_F(PortList, AnyOtherType_isSerial)
{
    serve(serialKey, {});
    for (const char* const type : {"COM", "", "LPT1", "x", static_cast<const char*>(nullptr)})
        EXPECT_EQ(DCFG_GetPortList(list, type), 0);
    EXPECT_THAT(pipe.requests(), testing::Each(enumRequest(serialKey, 0)));
    EXPECT_EQ(pipe.requests().size(), 5u);
}

TEST_F(PortList, OpenablePorts_areListedWithTheirNames)
{
    const OpenablePorts ports({R"(\\.\COM1)", R"(\\.\COM12)"});
    serve(serialKey, {{R"(\Device\Serial0)", "COM1"}, {R"(\Device\Serial1)", "COM12"}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(items(), ElementsAre(R"(\Device\Serial0,COM1)", R"(\Device\Serial1,COM12)"));
    EXPECT_THAT(ports.opened(), ElementsAre(R"(\\.\COM1)", R"(\\.\COM12)"));
    EXPECT_EQ(ports.closed(), 2) << "a port must not stay open";
}

TEST_F(PortList, PortThatIsHeldByAnother_isLeftOut)
{
    const OpenablePorts ports({R"(\\.\COM2)"});
    serve(serialKey, {{R"(\Device\Serial0)", "COM1"}, {R"(\Device\Serial1)", "COM2"}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(items(), ElementsAre(R"(\Device\Serial1,COM2)"));
    EXPECT_EQ(ports.closed(), 1);
}

TEST_F(PortList, PortThatTheSystemDoesNotHave_isLeftOut)
{
    serve(serialKey, {{R"(\Device\Serial0)", "COM201"}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(items(), IsEmpty());
}

TEST_F(PortList, SerialValueThatIsNoComPort_isNotTried)
{
    const OpenablePorts ports({});
    serve(serialKey, {{"modem", "TTY1"}, {"x", "XCOM1"}, {"short", "CO"}, {"empty", ""}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(ports.opened(), IsEmpty());
}

TEST_F(PortList, ComInAnyCase_isAComPort)
{
    const OpenablePorts ports({R"(\\.\Com3)"});
    serve(serialKey, {{"Serial2", "Com3"}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(items(), ElementsAre("Serial2,Com3"));
}

TEST_F(PortList, ParallelPorts_arePlainNames)
{
    const OpenablePorts ports({R"(\\.\LPT1)", R"(\\.\LPT2)"});
    serve(parallelKey, {{R"(\Device\Parallel0)", R"(\DosDevices\LPT1)"}, {"plain", "LPT2"}, {R"(\Device\X)", "PRN"}});
    GetPortList(list, PORT_TYPE_LPT);
    EXPECT_THAT(items(), ElementsAre("Parallel0,LPT1", "plain,LPT2"));
}

TEST_F(PortList, Items_areSortedByCharacterValuesIntoTheCallersList)
{
    const OpenablePorts ports({R"(\\.\COM1)", R"(\\.\COM2)", R"(\\.\COM3)"});
    for (const char* const item : {"B", "M", "c"})
        list.AddTail(item);
    serve(serialKey, {{"b", "COM1"}, {"Z", "COM2"}, {"A", "COM3"}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(items(), ElementsAre("A,COM3", "B", "M", "Z,COM2", "b,COM1", "c"));
}

TEST_F(PortList, EqualItems_keepTheirOrder)
{
    const OpenablePorts ports({R"(\\.\COM1)"});
    serve(serialKey, {{"a", "COM1"}, {"a", "COM1"}});
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(items(), ElementsAre("a,COM1", "a,COM1"));
}

TEST_F(PortList, Trace_serial)
{
    const OpenablePorts ports({R"(\\.\COM1)"});
    serve(serialKey, {{"Serial0", "COM1"}, {"x", "TTY"}, {"Serial1", "COM2"}});
    const TraceCapture capture;
    GetPortList(list, PORT_TYPE_COM);
    EXPECT_THAT(capture.of("GetPortList:"),
                ElementsAre(TraceLine{"FA", "GetPortList:", "=>Aufruf mit PortType 0"},
                            TraceLine{"FM", "GetPortList:", "WinNT PortType=COM"},
                            TraceLine{"FM", "GetPortList:", "sPort=COM1 sWinPort=Serial0"},
                            TraceLine{"FM", "GetPortList:", "bDeviceAble=1 sPort=COM1"},
                            TraceLine{"FM", "GetPortList:", "sPort=COM2 sWinPort=Serial1"},
                            TraceLine{"FM", "GetPortList:", "bDeviceAble=0 sPort=COM2"},
                            TraceLine{"FE", "GetPortList:", "Ende"}));
    EXPECT_THAT(capture.of("ReadSerialPorts:"),
                ElementsAre(TraceLine{"FA", "ReadSerialPorts:", "=>Start"},
                            TraceLine{"FM", "ReadSerialPorts:", "i=0 sParameter=Serial0 sValue=COM1"},
                            TraceLine{"FM", "ReadSerialPorts:", "COM erkannt- in Liste einfuegen sValue=COM1"},
                            TraceLine{"FM", "ReadSerialPorts:", "i=1 sParameter=x sValue=TTY"},
                            TraceLine{"FM", "ReadSerialPorts:", "i=2 sParameter=Serial1 sValue=COM2"},
                            TraceLine{"FM", "ReadSerialPorts:", "COM erkannt- in Liste einfuegen sValue=COM2"},
                            TraceLine{"FE", "ReadSerialPorts:", "Ende 4"}));
    EXPECT_THAT(
        capture.of("IsPortAvailable:"),
        ElementsAre(TraceLine{"FA", "IsPortAvailable:", "sPort=COM1"},
                    TraceLine{"FE", "IsPortAvailable:", "ok hPort=abc0"},
                    TraceLine{"FA", "IsPortAvailable:", "sPort=COM2"},
                    TraceLine{"FE", "IsPortAvailable:", "Fehler - Port kann nicht geöffnet werden hPort=ffffffff"}));
}

TEST_F(PortList, Trace_parallel)
{
    const OpenablePorts ports({});
    serve(parallelKey, {{R"(\Device\Parallel0)", R"(\DosDevices\LPT1)"}});
    const TraceCapture capture;
    GetPortList(list, PORT_TYPE_LPT);
    EXPECT_EQ(capture.of("GetPortList:")[1], (TraceLine{"FM", "GetPortList:", "WinNT PortType=LPT"}));
    EXPECT_THAT(capture.of("ReadParallelPorts:"),
                ElementsAre(TraceLine{"FA", "ReadParallelPorts:", "=>Start"},
                            TraceLine{"FM", "ReadParallelPorts:", "i=0 sParameter=Parallel0 sValue=LPT1"},
                            TraceLine{"FM", "ReadParallelPorts:", "LPT erkannt- in Liste einfuegen sValue=LPT1"},
                            TraceLine{"FE", "ReadParallelPorts:", "Ende 2"}));
}

TEST(PortListWithoutServer, IsEmpty)
{
    CStringList list;
    EXPECT_EQ(DCFG_GetPortList(list, "COM"), 0);
    EXPECT_TRUE(list.IsEmpty());
}

}  // namespace
