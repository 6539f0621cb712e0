// Templates: what a call does to the path that it is given.

#include "callsTest.h"

namespace {

class TemplateCalls : public CallsTest
{
};

TEST_F(TemplateCalls, ProtocolPath_isCutInTheCallersBuffer)
{
    char path[] = "PB\\Params\\x";
    TemplateGetValue("protocols", path, "Unit", out.texts[0], out.texts[0]);
    EXPECT_EQ(std::string(path, sizeof path), std::string("PB\0Params\0x\0", sizeof path));
    EXPECT_EQ(channel.requests().at(0),
              Message(177).str("PB").str("Params").str("x").str("").str("").str("Unit").u32(260).u32(1).bytes());
}

TEST_F(TemplateCalls, OtherTypesName_staysAsItIs)
{
    char name[] = "CP\\4";
    char value[] = "CP\\4";
    TemplateGetEnumValue("Boards", name, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
    TemplateGetValue("DefaultLogdevices", value, "Unit", out.texts[0], out.texts[0]);
    EXPECT_STREQ(name, "CP\\4");
    EXPECT_STREQ(value, "CP\\4");
}

TEST_F(TemplateCalls, RefusedCall_leavesThePath)
{
    char path[] = "PB\\Params";
    EXPECT_EQ(TemplateGetValue("Protocols", path, "", out.texts[0], out.texts[0]), 87);
    EXPECT_STREQ(path, "PB\\Params");
}

TEST_F(TemplateCalls, PathOfMoreThanFiveParts_succeeds)
{
    char path[] = "a\\b\\c\\d\\e\\f\\g";
    channel.answer(textReply("v"));
    EXPECT_EQ(TemplateGetValue("Protocols", path, "Unit", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "v");
}

TEST_F(TemplateCalls, EnumResult_ofAnExactlyFullBufferIsTracedWithinIt)
{
    channel.answer(textReply("abcd"));
    out.texts[0].reset(4);
    const TraceCapture capture("0x80");
    EXPECT_EQ(TemplateGetEnum("Boards", 0, out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(capture.of("TemplateGetEnum:"),
              (std::vector<TraceLine>{{"FE", "TemplateGetEnum:", "<< return 0 - template abcd"}}));
}

TEST_F(TemplateCalls, MetaDataTooLong_is234AndTellsTheRoomItNeeds)
{
    channel.answer(textReply("abcd"));
    out.texts[0].reset(4);
    EXPECT_EQ(DCFG_GetParameterMetaData("f", "s", "i", "p", out.texts[0], out.texts[0]), 234);
    EXPECT_EQ(out.texts[0].length, 5u);
    EXPECT_TRUE(out.texts[0].guardsIntact());
}

}  // namespace
