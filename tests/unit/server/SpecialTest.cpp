// Special values, in bytes.
#include <gtest/gtest.h>

#include "TestServer.h"

using namespace bytes;

namespace {

struct SpecialTest : TestServer
{
    SpecialTest() { catalogue.specialValues = {{L"DCFG_CurrentLogName", L"NXONLINE"}}; }

    Bytes get(std::u16string_view name, std::uint32_t capacity = 260)
    {
        return ask(u16(139) + str(name) + u32(capacity));
    }
};

TEST_F(SpecialTest, CataloguesValue_holdsUntilAnotherIsSet)
{
    EXPECT_EQ(get(u"dcfg_currentlogname"), reply(0, replyStr(u"NXONLINE")));
    EXPECT_EQ(ask(u16(138) + str(u"DCFG_CurrentLogName") + str(u"PLC")), reply(0));
    EXPECT_EQ(get(u"DCFG_CurrentLogName"), reply(0, replyStr(u"PLC")));
}

TEST_F(SpecialTest, NewValue_canBeSet)
{
    EXPECT_EQ(get(u"Mine"), reply(8012));
    EXPECT_EQ(ask(u16(138) + str(u"Mine") + str(u"")), reply(0));
    EXPECT_EQ(get(u"Mine"), reply(0, replyStr(u"")));
}

TEST_F(SpecialTest, FailuresAreTold)
{
    EXPECT_EQ(get(u"DCFG_CurrentLogName", 8), reply(234));
    EXPECT_EQ(get(u""), reply(87));
    EXPECT_EQ(ask(u16(138) + str(u"Mine") + null()), reply(87));
    EXPECT_EQ(ask(u16(138) + str(u"Mine") + str(std::u16string(260, u'x'))), reply(87));
}

TEST_F(SpecialTest, CanSaveParameters_is0WhileTheRegistryTakesChanges)
{
    EXPECT_EQ(ask(u16(81)), reply(0));
}

}  // namespace
