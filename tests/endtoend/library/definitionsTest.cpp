// Templates, protocols and bus profiles through the library.
#include "kxovaapi.h"
#include "serverProgram.h"

namespace {

struct Definitions : WithServer
{
};

std::string templateValue(const char* type, std::string name, const char* parameter)
{
    return text([&](char* buffer, unsigned long* length) {
        return TemplateGetValue(type, name.data(), parameter, buffer, length);
    });
}

TEST_F(Definitions, TemplatesOfEachType_areListedReadAndFound)
{
    EXPECT_EQ(text([](char* b, unsigned long* l) { return TemplateGetEnum("boards", 0, b, l); }), "*TVRA001");
    EXPECT_EQ(text([](char* b, unsigned long* l) { return DCFG_TemplateGetEnumNoPrefix("Boards", 0, b, l); }),
              "*TVRA001");
    EXPECT_EQ(templateValue("Boards", "*TVRA020", "BoardName"), "NX 3210 PCIe");
    EXPECT_EQ(templateValue("protocols", "MPI\\Params\\busparam\\1\\187500", "tslot"), "415");
    EXPECT_EQ(templateValue("DefaultLogdevices", "NX3210.MPI", "DeviceID"), "*TVRA020");
    EXPECT_EQ(templateValue("Boards", "*TVRA999", "BoardName"), "#8012");
    EXPECT_EQ(templateValue("none", "*TVRA020", "BoardName"), "#8018");
    EXPECT_EQ(TemplateExists("Protocols", "MPI\\Params", 0), 0);
    EXPECT_EQ(DCFG_TemplateExists("Protocols", "none", 0), 8012);
    EXPECT_EQ(DCFG_TemplateKeyExists("Protocols", "MPI", "Params", "highest_adr"), 0);
    EXPECT_EQ(DCFG_TemplateExistsEx("Boards", "*TVRA020", "BoardName", ""), 0);
    EXPECT_EQ(DCFG_TemplateExistsEx("Boards", "*TVRA020", "none", ""), 8012);
}

TEST_F(Definitions, TemplateValues_areWalkedToTheirEnd)
{
    char name[] = "MPI\\Params\\busparam\\1";
    EXPECT_EQ(pair([&](char* n, unsigned long* nl, char* v, unsigned long* vl) {
                  return TemplateGetEnumValue("Protocols", name, 0, n, nl, v, vl);
              }),
              "DP_MODE=false");
    EXPECT_STREQ(name, "MPI");
    EXPECT_EQ(all([](unsigned long i, char* b, unsigned long* l) {
                  return DCFG_TemplateGetEnumValueRaw("Protocols", "MPI", "subnet_typ", i, b, l);
              }),
              "0 1");
}

TEST_F(Definitions, RawValues_areReadByPath)
{
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return DCFG_ProtocolGetValueRaw("MPI", "Params\\busparam\\1\\187500", "tslot", b, l);
              }),
              "415");
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return DCFG_BoardGetValueRaw("*TVRA001", "Resources", "IO_Address", b, l);
              }),
              "200-3F8");
    EXPECT_EQ(
        text([](char* b, unsigned long* l) { return DCFG_DefDeviceGetValueRaw("NX3210.MPI", "", "CP_TYPE", b, l); }),
        "MPI");
}

TEST_F(Definitions, BusProfiles_areListedWithTheirRatesAndTexts)
{
    EXPECT_EQ(all([](unsigned long i, char* b, unsigned long* l) {
                  return DCFG_ProtocolGetEnumBusprofiles("MPI", i, b, l);
              }),
              "1 3");
    EXPECT_EQ(text([](char* b, unsigned long* l) { return DCFG_ProtocolGetEnumBaudrate("MPI", "std", 0, b, l); }),
              "19200");
    EXPECT_EQ(
        text([](char* b, unsigned long* l) { return DCFG_ProtocolGetEnumBusprofilesLang("MPI", 1, "DE", b, l); }),
        "Benutzerdefiniert");
    EXPECT_EQ(DCFG_ProfileCollectionExists("MPI\\Params", "busparam\\std\\187500", "tslot"), 0);
    EXPECT_EQ(DCFG_ProfileCollectionExists("MPI\\Params", "busparam\\dp\\187500", "tslot"), 8062);
}

TEST_F(Definitions, SettingAProfile_setsWhatItPrescribes)
{
    ASSERT_EQ(LogDeviceCreateFromDef("ProfileTest", "NX3210.DP"), 0);
    ASSERT_EQ(LogDeviceSetValue("ProfileTest", "baudrate", "1500000"), 0);
    ASSERT_EQ(LogDeviceDelValue("ProfileTest", "tslot"), 0);
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile("ProfileTest", "busparam", "DP"), 0);
    const std::string tslot =
        text([](char* b, unsigned long* l) { return LogDeviceGetValue("ProfileTest", "tslot", b, l); });
    EXPECT_EQ(tslot, text([](char* b, unsigned long* l) {
                  return DCFG_ProtocolGetValueRaw("DP", "Params\\busparam\\0\\1500000", "tslot", b, l);
              }));
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile("none", "busparam", "DP"), 8062);
    LogDeviceDel("ProfileTest");
}

TEST_F(Definitions, BoardAttributes_areReadInALanguage)
{
    EXPECT_EQ(text([](char* b, unsigned long* l) { return DCFG_GetBoardAttribute("*TVRA020", "Alias", b, l); }),
              "NX3210");
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return DCFG_GetBoardAttributeLang("*TVRA010", "DescText", "DE", b, l);
              }),
              "Eingebaute Feldbus-Schnittstelle des Programmierger\xE4ts");
}

TEST_F(Definitions, NotSupported_isWalkedToItsEnd)
{
    const auto entry = [](unsigned long index) {
        char buffer[260] = {};
        unsigned long length = sizeof buffer;
        const long result = DCFG_BoardGetNotSupported(index, "*TVRA001", buffer, &length);
        return result == 0 ? std::string(buffer) : std::to_string(result);
    };
    EXPECT_EQ(entry(0), "DP");
    EXPECT_EQ(entry(3), "PlugAndPlay");
    EXPECT_EQ(entry(4), "259");
}

TEST_F(Definitions, RegistryPaths_leadToTheDefinitions)
{
    const char* const protocols = "SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE";
    const std::string byTemplates =
        all([&](unsigned long i, char* b, unsigned long* l) { return DCFG_RegGetEnumKey(protocols, i, b, l); });
    const std::string byKeys =
        all([&](unsigned long i, char* b, unsigned long* l) { return KxRegEnumKey(protocols, i, b, l); });
    EXPECT_EQ(byTemplates, byKeys);
    EXPECT_NE(byKeys.find("MPI"), std::string::npos);
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return KxRegGetValue("SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE\\MPI", "Alias", b, l);
              }),
              "Multipoint");
    EXPECT_EQ(KxRegSetValue(protocols, "x", "1"), 5);
}

}  // namespace
