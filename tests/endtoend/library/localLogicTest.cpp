// What the library works out by itself, with what the server tells it: value checks, display texts, aliases, the
// calculations and lists that combine requests.
#include "kxframework.h"
#include "kxovaapi.h"
#include "serverProgram.h"

namespace {

// A logical device of its own for each test.
struct LocalLogic : WithServer
{
    LocalLogic() { EXPECT_EQ(LogDeviceCreateFromDef(device, "NX3210.MPI"), 0); }
    ~LocalLogic() override { LogDeviceDel(device); }

    static constexpr char device[] = "Local.MPI";
};

std::string checked(const char* parameter, const char* value)
{
    CString text = value;
    const long result = LogDeviceCheckValue(LocalLogic::device, parameter, text);
    return std::to_string(result) + " " + text.GetString();
}

std::string shown(const char* parameter, const char* value)
{
    CString text;
    const long result = DCFG_LogDeviceGetEnumStringLang(LocalLogic::device, parameter, value, &text);
    return result == 0 ? text.GetString() : "#" + std::to_string(result);
}

std::string value(const char* parameter)
{
    return text([&](char* b, unsigned long* l) { return LogDeviceGetValue(LocalLogic::device, parameter, b, l); });
}

TEST_F(LocalLogic, Values_areCheckedAgainstTheCataloguesDescriptions)
{
    EXPECT_EQ(checked("Unit", "8"), "0 8");
    EXPECT_EQ(checked("Unit", "9"), "8056 9");
    EXPECT_EQ(checked("Unit", "0"), "8054 0");
    EXPECT_EQ(checked("Unit", "max"), "0 8");
    EXPECT_EQ(checked("Unit", "Default"), "0 1");
    EXPECT_EQ(checked("busparam", "1"), "0 1");
    EXPECT_EQ(checked("busparam", "7"), "8050 7");
    EXPECT_EQ(checked("StationName", "anything"), "0 anything");
    EXPECT_EQ(checked("no such parameter", "anything"), "0 anything");
}

TEST_F(LocalLogic, Attributes_areTheCatalogues)
{
    CString attribute;
    EXPECT_EQ(LogDeviceGetParamDesc(device, "Unit", "type", &attribute), 0);
    EXPECT_STREQ(attribute, "word");
    EXPECT_NE(LogDeviceGetParamDesc(device, "Unit", "no such attribute", &attribute), 0);
}

TEST_F(LocalLogic, Lists_areTheDevicesOwnAndThoseOfAll)
{
    CStringList own;
    CStringList average;
    DCFG_LogDeviceGetMostSpecializedEnumList(device, "highest_adr", &own);
    DCFG_LogDeviceGetAverageEnumList(device, "busparam", &average);
    EXPECT_EQ(own.GetCount(), 4);
    EXPECT_EQ(average.GetCount(), 2);
}

TEST_F(LocalLogic, Choices_haveTextsInTheProcesssLanguage)
{
    EXPECT_EQ(shown("busparam", "1"), "Standard (multipoint network)");
    EXPECT_EQ(shown("busparam", "9"), "#259");
    EXPECT_EQ(shown("baudrate", "187500"), "187.5 kbps");
    EXPECT_EQ(shown("busparam", nullptr), shown("busparam", "1")) << "the value that the device has";
}

TEST_F(LocalLogic, NetTypes_areTheProtocolsAndHaveAliases)
{
    const std::string types =
        " " + all([](unsigned long i, char* b, unsigned long* l) { return NetTypeGetEnum(i, b, l); }) + " ";
    EXPECT_NE(types.find(" MPI "), std::string::npos) << types;
    EXPECT_STREQ(DCFG_AliasRecalcNetType("multipoint"), "MPI");
    EXPECT_STREQ(DCFG_AliasRecalcNetType("MPI"), "MPI");
}

TEST_F(LocalLogic, Boards_haveAliases)
{
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID("nx110"), "*TVRA001");
    EXPECT_STREQ(DCFG_AliasRecalcDeviceID("no such board"), "no such board");
}

TEST_F(LocalLogic, InstalledDevices_areNamedByTheirAliases)
{
    const std::string devices =
        all([](unsigned long i, char* b, unsigned long* l) { return InstDeviceGetEnum(i, b, l); });
    EXPECT_NE(devices.find("NX3210"), std::string::npos) << devices;
    EXPECT_EQ(devices.find("NX120"), std::string::npos) << devices;
}

TEST_F(LocalLogic, HighestAddress_determinesTheTokenRotation)
{
    ASSERT_EQ(LogDeviceSetValue(device, "highest_adr", "63"), 0);
    DCFG_SpezielleBerechnungen(device);
    EXPECT_EQ(value("ttr"), "71");
}

TEST_F(LocalLogic, Aut9_marksTheDevicesThatTakePart)
{
    ASSERT_EQ(DCFG_LogDeviceSetNdi(device, "AUT9_WriteParams", "?"), 0);
    DCFG_Aut9_Update();
    const auto ndi = [](char* b, unsigned long* l) { return DCFG_LogDeviceGetNdi(device, "AUT9_WriteParams", b, l); };
    EXPECT_EQ(text(ndi), "true");
    ASSERT_EQ(DCFG_LogDeviceSetNdi(device, "hidden", "true"), 0);
    DCFG_Aut9_Update();
    EXPECT_EQ(text(ndi), "false");
}

TEST_F(LocalLogic, Machine_tellsItsVersionsAndNames)
{
    char versions[5][260] = {};
    EXPECT_EQ(GetKXRTSVersion(versions[0]), 0);
    EXPECT_STREQ(versions[0], "NORIX Runtime V3.2.1.0");
    EXPECT_STREQ(versions[4], "NORIX Diagnosis V3.2.0.1");
    EXPECT_EQ(Ova_Plausibilitaet(), 0);
    EXPECT_EQ(text([](char* b, unsigned long* l) { return GetCurrentLogName(b, l); }), "NXONLINE");
}

TEST_F(LocalLogic, Ports_areThoseOfTheMachineThatOpen)
{
    CStringList ports;
    EXPECT_EQ(DCFG_GetPortList(ports, "COM"), 0);
    for (POSITION at = ports.GetHeadPosition(); at;) {
        const CString& port = ports.GetNext(at);
        EXPECT_GE(port.Find(",COM"), 0) << port.GetString();
    }
}

}  // namespace
