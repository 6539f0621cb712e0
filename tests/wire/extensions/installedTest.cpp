// The enumeration of installed devices.

#include "requests.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

constexpr char function[] = "InstDeviceGetEnum:";

Bytes installedRequest(std::uint32_t index)
{
    Message request = Message(192).u32(index);
    for (int i = 0; i < 6; ++i)
        request.u32(260);
    return request.bytes();
}

Bytes installedReply(const std::string& deviceId)
{
    Message reply = resultReply(0);
    for (const std::string& text : {std::string("CP"), deviceId, std::string("MPI"), std::string("hw"),
                                    std::string("instance"), std::string("map")})
        reply.text(text);
    return reply.u32(0).bytes();
}

class Installed : public RequestsTest
{
 protected:
    // Four boards, of which the second is not installed; one is installed twice.
    Installed()
    {
        channel.answerAll([](const Bytes& request) {
            const std::pair<Bytes, const char*> known[] = {
                {templateRequest(0), "CP 1"},
                {templateRequest(1), "CP 2"},
                {templateRequest(2), "CP 3"},
                {templateRequest(3), "CP 4"},
                {attributeRequest("CP 1", "DeviceID"), "*TVRA030"},
                {attributeRequest("CP 2", "DeviceID"), "*TVRA031"},
                {attributeRequest("CP 3", "DeviceID"), "PCI3"},
                {attributeRequest("CP 4", "DeviceID"), "PCI4"},
                {attributeRequest("*TVRA030", "Alias"), "Port on board"},
                {attributeRequest("PCI3", "DescText"), "Board 3"},
            };
            for (const auto& [asked, text] : known) {
                if (request == asked) return textReply(text);
            }
            const char* const ids[] = {"pci3", "*TVRA030", "PCI4", "PCI3"};
            for (std::uint32_t i = 0; i < std::size(ids); ++i) {
                if (request == installedRequest(i)) return installedReply(ids[i]);
            }
            return failure(request == templateRequest(4) || request[0] == 192 ? 259 : 8012);
        });
    }
    ~Installed() override
    {
        next(1000);  // gives the list up
    }

    long next(unsigned long index)
    {
        out.reset(300);
        return InstDeviceGetEnum(index, out, out);
    }

    OutText out;
};

TEST_F(Installed, Names_areAliasDescriptionOrDeviceId)
{
    Texts names;
    for (unsigned long i = 0; next(i) == 0; ++i)
        names.push_back(out.text());
    EXPECT_THAT(names, ElementsAre("Port on board", "Board 3", "PCI4"));
}

TEST_F(Installed, End_is259AndTheNextCallAsksAnew)
{
    EXPECT_EQ(next(3), 259);
    const std::size_t once = channel.requests().size();
    EXPECT_EQ(next(0), 0);
    EXPECT_EQ(channel.requests().size(), 2 * once);
}

TEST_F(Installed, List_isFetchedOnce)
{
    next(0);
    const std::size_t once = channel.requests().size();
    next(1);
    next(2);
    EXPECT_EQ(channel.requests().size(), once);
}

TEST_F(Installed, ShortBuffer_is234AndKeepsTheList)
{
    out.reset(13);
    EXPECT_EQ(InstDeviceGetEnum(0, out, out), 234);
    EXPECT_TRUE(out.bufferUntouched());
    out.reset(14);
    EXPECT_EQ(InstDeviceGetEnum(0, out, out), 0);
    EXPECT_EQ(out.text(), "Port on board");
}

TEST_F(Installed, NullArguments_are87WithoutARequest)
{
    EXPECT_EQ(InstDeviceGetEnum(0, nullptr, out), 87);
    EXPECT_EQ(InstDeviceGetEnum(0, out, nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(Installed, Trace)
{
    const TraceCapture capture;
    next(0);
    next(9);
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FA", function, ">> iValue=0 "}, TraceLine{"FE", function, "<< return 0x0"},
                            TraceLine{"FA", function, ">> iValue=9 "},
                            TraceLine{"FE", function, "<< return DCFG_ERR_NO_MORE_ITEMS"}));
}

}  // namespace
