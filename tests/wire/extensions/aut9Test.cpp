// The parameter writers of logical devices.

#include <map>

#include "libraries/report.h"
#include "requests.h"

using testing::ElementsAre;

namespace {

using Texts = std::vector<std::string>;
using Ndi = std::map<std::string, std::string>;

constexpr char function[] = "DCFG_Aut9_Update:";

class Aut9 : public RequestsTest
{
 protected:
    Aut9() { clearReport(); }

    // A server with these devices and their Ndi values, which it stores.
    void serve(std::vector<std::pair<std::string, Ndi>> given)
    {
        devices = std::move(given);
        channel.answerAll([this](const Bytes& request) { return answer(request); });
    }

    Bytes answer(const Bytes& request)
    {
        if (request[0] == 208) {
            Texts names;
            for (const auto& [name, ndi] : devices)
                names.push_back(name);
            names.emplace_back();
            return resultReply(0).list(names).bytes();
        }
        for (auto& [name, ndi] : devices) {
            for (const char* const value : {"AUT9_WriteParams", "AUT9_WriteDLL", "AUT9_changed", "hidden"}) {
                if (request == ndiRequest(name, value)) {
                    return ndi.contains(value) ? textReply(ndi[value]) : failure(8012);
                }
            }
            for (const char* const value : {"true", "false"}) {
                if (request != setNdiRequest(name, "AUT9_WriteParams", value)) continue;
                ndi["AUT9_WriteParams"] = value;
                return resultReply(0).bytes();
            }
        }
        ADD_FAILURE() << "unexpected request " << int{request[0]};
        return failure(8018);
    }

    std::string writeParams(std::size_t device) { return devices[device].second["AUT9_WriteParams"]; }

    std::vector<std::pair<std::string, Ndi>> devices;
};

TEST_F(Aut9, Writer_isCalledWithTheDeviceAndUnloaded)
{
    serve({{"Line 1", {{"AUT9_WriteParams", "false"}, {"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "load;write Line 1;unload;");
    EXPECT_EQ(writeParams(0), "true");
}

TEST_F(Aut9, Separators_areCommaBlankAndSemicolon)
{
    serve({{"a", {{"AUT9_WriteParams", ""}, {"AUT9_WriteDLL", "wire_writer.dll WriteParams"}}},
           {"b", {{"AUT9_WriteParams", ""}, {"AUT9_WriteDLL", "wire_writer.dll;WriteParams"}}},
           {"c", {{"AUT9_WriteParams", ""}, {"AUT9_WriteDLL", "wire_writer.dll, WriteParams"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "load;write a;unload;load;write b;unload;load;write c;unload;");
}

TEST_F(Aut9, DeviceWithoutTheValue_takesNoPart)
{
    serve({{"Line 1", {{"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "");
    EXPECT_FALSE(devices[0].second.contains("AUT9_WriteParams"));
}

TEST_F(Aut9, HiddenDevice_isMarkedAndNotWritten)
{
    serve({{"Line 1",
            {{"AUT9_WriteParams", "true"}, {"hidden", "TRUE"}, {"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(writeParams(0), "false");
    EXPECT_EQ(reported(), "");
}

TEST_F(Aut9, DeviceThatIsNotHidden_isWritten)
{
    serve({{"Line 1",
            {{"AUT9_WriteParams", "false"}, {"hidden", "no"}, {"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(writeParams(0), "true");
    EXPECT_EQ(reported(), "load;write Line 1;unload;");
}

TEST_F(Aut9, LibraryWithoutAFunction_isNotLoaded)
{
    for (const char* const value : {"wire_writer.dll", "wire_writer.dll,", "wire_writer.dll, ", ""}) {
        serve({{"Line 1", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", value}}}});
        DCFG_Aut9_Update();
        EXPECT_EQ(reported(), "") << value;
    }
}

TEST_F(Aut9, LibraryWithAPath_isNotLoaded)
{
    serve({{"Line 1", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", R"(.\wire_writer.dll,WriteParams)"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "");
}

TEST_F(Aut9, MissingFunction_unloadsTheLibrary)
{
    serve({{"Line 1", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", "wire_writer.dll,NoSuchFunction"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "load;unload;");
}

TEST_F(Aut9, FailingDevices_doNotStopTheOthers)
{
    serve({{"a", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", "wire_no_such_library.dll,WriteParams"}}},
           {"b", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", R"(C:\x.dll,WriteParams)"}}},
           {"c", {{"AUT9_WriteParams", "true"}}},
           {"d", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "load;write d;unload;");
}

TEST_F(Aut9, StoreThatRefuses_leavesTheDeviceOut)
{
    serve({{"Line 1", {{"AUT9_WriteParams", "false"}, {"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    channel.answerAll([this](const Bytes& request) { return request[0] == 115 ? failure(5) : answer(request); });
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "");
}

TEST_F(Aut9, NoDevices_doesNothing)
{
    serve({});
    DCFG_Aut9_Update();
    EXPECT_EQ(reported(), "");
}

Texts details(const TraceCapture& capture)
{
    Texts texts;
    for (const TraceLine& line : capture.of(function)) {
        EXPECT_EQ(line.level, "FM");
        texts.push_back(line.text);
    }
    return texts;
}

TEST_F(Aut9, Trace_bothPasses)
{
    const TraceCapture capture;
    serve({{"a", {{"AUT9_WriteParams", "old"}, {"hidden", "true"}}},
           {"b", {}},
           {"c",
            {{"AUT9_WriteParams", "x"}, {"AUT9_changed", "yes"}, {"AUT9_WriteDLL", "wire_writer.dll,WriteParams"}}}});
    DCFG_Aut9_Update();
    Texts texts = details(capture);
    for (std::string& text : texts) {
        if (const std::size_t handle = text.find("hiDll="); handle != std::string::npos) text.resize(handle + 6);
        if (text.rfind("2:FreeLibrary(", 0) == 0) text = "2:FreeLibrary()";
    }
    EXPECT_THAT(
        texts, ElementsAre("--> start", "1:LogDevice a", "1:sWriteAut9Params old auf NO setzen - hidden Device",
                           "1:LogDevice b", "1:LogDevice c", "1:sWriteAut9Params YES setzen", "nach while-Schleife 1",
                           "2:LogDevice a", "2:LogDevice b", "2:LogDevice c",
                           "AUT9#:sLogDevice c sWriteAut9Dll wire_writer.dll sWriteAut9Params true "
                           "AUT9_changed yes",
                           "DLL wire_writer.dll geladen hiDll=", "AUT9# WriteParams mit Parmeter c aufrufen",
                           "2:FreeLibrary()", "nach while-Schleife 2"));
}

TEST_F(Aut9, Trace_suspiciousName)
{
    const TraceCapture capture("0x40");
    serve({{"a", {{"AUT9_WriteParams", "true"}, {"AUT9_WriteDLL", R"(C:\x.dll,WriteParams)"}}}});
    DCFG_Aut9_Update();
    EXPECT_THAT(details(capture),
                testing::Contains(R"(kann DLL C:\x.dll nicht laden, name suspicious --> continue)"));
}

}  // namespace
