#include "FuzzedServer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>

#include "wire/opcodes.h"

using namespace bytes;

namespace {

using Parts = std::vector<std::wstring>;
using Writing = ObservedRegistry::Writing;

constexpr std::size_t longestName = 255;

Parts split(const std::wstring& path)
{
    Parts parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; !path.empty() && end != std::wstring::npos; begin = end + 1) {
        end = path.find(L'\\', begin);
        parts.push_back(path.substr(begin, end == std::wstring::npos ? end : end - begin));
    }
    return parts;
}

bool is(const std::wstring& part, const wchar_t* name)
{
    return lstrcmpiW(part.c_str(), name) == 0;
}

bool isAny(const std::wstring& part, std::initializer_list<const wchar_t*> names)
{
    return std::any_of(names.begin(), names.end(), [&](const wchar_t* name) { return is(part, name); });
}

// What registry requests may write themselves: the product's keys that neither store nor server keep, and keys below a
// device or name that are no part of it.
bool ofTheProduct(const Parts& parts, Writing writing)
{
    for (const std::wstring& part : parts)
        if (isAny(part, {L".", L"..", L"WOW6432Node"})) return false;
    if (parts.empty() || !is(parts[0], L"NORIX")) return !parts.empty() || writing != Writing::Deletion;
    if (parts.size() == 1) return writing != Writing::Deletion;
    if (isAny(parts[1], {L"LogDevices", L"LogNames"}))
        return parts.size() > 3 && !(parts.size() == 4 && is(parts[1], L"LogDevices") && is(parts[3], L"Ndi"));
    return !isAny(parts[1], {L"Journal", L"DefDevices", L"Hardware", L"Instances"});
}

// What the server's own parts may write.
bool ofTheStore(const Parts& parts, Writing writing)
{
    if (parts.empty()) return writing != Writing::Deletion;
    return isAny(parts[0],
                 {L"Journal", L"LogDevices", L"LogNames", L"MetaData", L"Special", L"Hardware", L"Instances"});
}

bool nothing(const Parts&, Writing)
{
    return false;
}

}  // namespace

void ObservedRegistry::look(const std::wstring& path, Writing writing)
{
    const Parts parts = split(path);
    const bool named = std::all_of(parts.begin(), parts.end(), [](const std::wstring& part) {
        return !part.empty() && part.size() <= longestName && part.find(L'\0') == std::wstring::npos;
    });
    if (!named || !mayWrite_(parts, writing)) offences_.push_back(path);
}

FuzzedServer::FuzzedServer()
    : product_(realProduct_, ofTheProduct),
      machine_(realMachine_, nothing),
      registry_(realStore_, ofTheStore),
      dispatcher_({now_.store, catalogue_, now_.log, settings_, hardware_, keys_, &notifications_},
                  srv::allOperations())
{
    now_.changes.add(notifications_);
    now_.open();
    beginAnew();
}

void FuzzedServer::beginAnew()
{
    constexpr DWORD client = 4711;
    channel_ = std::make_unique<srv::Session>(++sessions_, srv::Via::Channel, client);
    pipe_ = std::make_unique<srv::Session>(++sessions_, srv::Via::Pipe, client);
    ask(*channel_, u16(wire::opcode::LogDeviceCreateFromDef) + str(u"Dev") + str(u"NX1611.MPI"));
    ask(*channel_, u16(wire::opcode::LogDeviceSetValue) + str(u"Dev") + str(u"a") + str(u"1"));
    ask(*channel_, u16(wire::opcode::LogDeviceCreateTemp) + str(u"Dev") + u32(260));
}

Bytes FuzzedServer::ask(srv::Session& from, const Bytes& request)
{
    const std::span<std::uint8_t> space = replyMemory_.last(wire::maxPayload);
    std::fill(space.begin(), space.end(), std::uint8_t{0xEE});
    const auto answer = dispatcher_.handle(from, requestMemory_.holding(request), space);
    return {answer.begin(), answer.end()};
}

void FuzzedServer::expectWellFormed(const Bytes& request, const Bytes& answer)
{
    // This reply alone has a number in front of its kind, and its fields whatever the result is.
    const bool leads = request.size() >= 2 &&
                       Bytes(request.begin(), request.begin() + 2) == u16(wire::opcode::HardwareChangeGet) &&
                       answer.size() > 10;
    const std::size_t kind = leads ? 4 : 0;
    ASSERT_GE(answer.size(), kind + 6);
    ASSERT_LE(answer.size(), wire::maxPayload);
    const auto at = answer.begin() + static_cast<std::ptrdiff_t>(kind);
    ASSERT_EQ(Bytes(at, at + 2), u16(4));
    const bool failed = Bytes(at + 2, at + 6) != u32(0);
    ASSERT_TRUE(leads || !failed || answer.size() == 6);
}

void FuzzedServer::expectInOrder(std::uint32_t round)
{
    srv::Session client(++sessions_, srv::Via::Channel, 4712);
    const Bytes name = str(u"The client that means well: größer");
    const std::u16string text(1, static_cast<char16_t>(u'0' + round % 10));
    ASSERT_EQ(ask(client, u16(wire::opcode::LogDeviceCreateFromDef) + name + str(u"NX1611.MPI")), reply(0));
    ASSERT_EQ(ask(client, u16(wire::opcode::LogDeviceSetValue) + name + str(u"a") + str(text)), reply(0));
    ASSERT_EQ(ask(client, u16(wire::opcode::LogDeviceGetValue) + name + str(u"a") + u32(260)),
              reply(0, replyStr(text)));
    ASSERT_EQ(ask(client, u16(wire::opcode::LogDeviceDel) + name + u32(0)), reply(0));
}

void FuzzedServer::expectNothingWrittenElsewhere() const
{
    EXPECT_THAT(product_.offences(), testing::IsEmpty());
    EXPECT_THAT(machine_.offences(), testing::IsEmpty());
    EXPECT_THAT(registry_.offences(), testing::IsEmpty());
}
