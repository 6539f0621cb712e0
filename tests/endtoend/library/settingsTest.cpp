// Metadata, LLDP settings and special values through the library.
#include "kxovaapi.h"
#include "serverProgram.h"

namespace {

struct Settings : WithServer
{
};

TEST_F(Settings, Metadata_isReadBack)
{
    EXPECT_EQ(DCFG_SetParameterMetaData("Boards", "*TVRA020", "Page", "Order",
                                        "\xDC"
                                        "2"),
              0);
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return DCFG_GetParameterMetaData("Boards", "*TVRA020", "Page", "Order", b, l);
              }),
              "\xDC"
              "2");
    EXPECT_EQ(text([](char* b, unsigned long* l) {
                  return DCFG_GetParameterMetaData("Boards", "*TVRA020", "Page", "none", b, l);
              }),
              "#8012");
}

TEST_F(Settings, LldpSettings_areSetListedAndDeleted)
{
    const auto at = [](unsigned long index) {
        return pair([index](char* n, unsigned long* nl, char* v, unsigned long* vl) {
            return Panel_LldpGetEnumValue(index, n, nl, v, vl);
        });
    };
    EXPECT_EQ(DCFG_SetParameterMetaData("data", "", "LLDP", "Port1", "on"), 0);
    EXPECT_EQ(at(0), "Port1=on");
    EXPECT_EQ(at(1), "#259");
    EXPECT_EQ(Panel_LldpDelValue("Port1"), 0);
    EXPECT_EQ(Panel_LldpDelValue("Port1"), 8012);
    EXPECT_EQ(at(0), "#259");
}

TEST_F(Settings, SpecialValues_areTheCataloguesUntilSet)
{
    const auto get = [] {
        return text([](char* b, unsigned long* l) { return DCFG_SpecialGetValue("DCFG_CurrentLogName", b, l); });
    };
    EXPECT_EQ(get(), "NXONLINE");
    EXPECT_EQ(DCFG_SpecialSetValue("DCFG_CurrentLogName", "NXDIAG"), 0);
    EXPECT_EQ(get(), "NXDIAG");
    EXPECT_EQ(DCFG_CanSaveParameters(), 0);
}

}  // namespace
