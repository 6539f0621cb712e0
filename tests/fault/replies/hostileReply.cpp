#include "hostileReply.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "wire/frame.h"
#include "wire/opcodes.h"

namespace {

using fuzzing::Random;

// Letters: t text, l list, n number, b byte, d a number of bytes and the bytes, g 16 bytes.
std::string_view shapeOf(std::uint16_t opcode)
{
    namespace op = wire::opcode;
    switch (opcode) {
        case op::LogDeviceList:
        case op::LogNameList:
        case op::LogDeviceValueList:
        case op::LogNameValueList:
        case op::BoardGetNotSupported:
        case op::LogDeviceGetMostSpecializedEnumList:
        case op::LogDeviceGetAverageEnumList:
            return "l";
        case op::EnumInstBoard:
            return "ttttttn";
        case op::EnumAdapters:
            return "ttb";
        case op::EnumAvailableBoards:
            return "ttn";
        case op::GetBoardInfoEx:
            return "d";
        case op::HardwareChangeGet:
            return "btg";
        default:
            return "tttttt";
    }
}

// What steers the library into its branches when a server says it.
const char16_t* const knownTexts[] = {u"",
                                      u"MPI",
                                      u"Dev",
                                      u"true",
                                      u"false",
                                      u"enum",
                                      u"bool",
                                      u"int",
                                      u"0",
                                      u"1",
                                      u"255",
                                      u"*TVRA010",
                                      u"1/one",
                                      u"2",
                                      u"10",
                                      u"-5",
                                      u"long",
                                      u"word",
                                      u"hidden",
                                      u"LogDevice",
                                      u"a,b;c",
                                      u"lib,f",
                                      u"\\Device\\Serial0",
                                      u"COM1"};

void put(Bytes& bytes, std::uint32_t value, std::size_t width)
{
    for (std::size_t i = 0; i < width; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void putUnits(Bytes& bytes, std::u16string_view text)
{
    for (const char16_t unit : text)
        put(bytes, unit, 2);
}

using Capacities = std::vector<std::size_t>;

// As many characters as fill a buffer, one more or up to two less: where a terminator may be forgotten.
std::u16string fittingText(const Capacities& capacities, Random& random)
{
    static constexpr std::size_t usual[] = {256, 260};
    const std::size_t capacity = random.oneIn(3) || capacities.empty() ? random.of(usual) : random.of(capacities);
    return std::u16string(
        std::min<std::size_t>(capacity + 1 - std::min<std::size_t>(random.below(4), capacity), 4000), u'f');
}

std::u16string anyText(const Capacities& capacities, Random& random)
{
    switch (random.below(6)) {
        case 0:
        case 1:
            return fittingText(capacities, random);
        case 2:
            return fuzzing::awkwardText(random, random.oneIn(16) ? 4090 : 300);
        default:
            return random.of(knownTexts);
    }
}

// A length field; now and then it lies.
void putLength(Bytes& bytes, std::size_t length, Random& random)
{
    auto told = static_cast<std::uint32_t>(length);
    if (random.oneIn(24)) told = random.oneIn(2) ? fuzzing::awkwardNumber(random) : told + random.below(5) - 2;
    put(bytes, told, 4);
}

void putList(Bytes& bytes, const Capacities& capacities, Random& random)
{
    Bytes texts;
    for (std::uint32_t count = random.below(random.oneIn(8) ? 60 : 6); count > 0; --count) {
        putUnits(texts, anyText(capacities, random));
        if (!random.oneIn(24)) put(texts, 0, 2);
    }
    putLength(bytes, texts.size(), random);
    bytes.insert(bytes.end(), texts.begin(), texts.end());
    if (!texts.empty() && !random.oneIn(16)) put(bytes, 0, wire::stringTrailerLength);
}

void putField(Bytes& bytes, char kind, const Capacities& capacities, Random& random)
{
    switch (kind) {
        case 't': {
            const std::u16string text = anyText(capacities, random);
            putLength(bytes, 2 * text.size(), random);
            putUnits(bytes, text);
            if (!random.oneIn(16)) put(bytes, static_cast<std::uint32_t>(random.next()), wire::stringTrailerLength);
            break;
        }
        case 'l':
            putList(bytes, capacities, random);
            break;
        case 'b':
            put(bytes, static_cast<std::uint32_t>(random.next()), 1);
            break;
        case 'g':
            bytes.resize(bytes.size() + 16, static_cast<std::uint8_t>(random.next()));
            break;
        case 'd': {
            const std::uint32_t length = random.below(random.oneIn(8) ? 8000 : 100);
            putLength(bytes, length, random);
            bytes.resize(bytes.size() + length, 0xDD);
            break;
        }
        default:
            put(bytes, fuzzing::awkwardNumber(random), 4);
    }
}

std::string anyShape(Random& random)
{
    std::string shape(random.below(8), 't');
    for (char& kind : shape)
        kind = "ttlnbdg"[random.below(7)];
    return shape;
}

std::uint32_t anyResult(Random& random)
{
    static constexpr std::uint32_t results[] = {0, 0, 0, 0, 0, 0, 234, 259, 8012};
    return random.oneIn(16) ? fuzzing::awkwardNumber(random) : random.of(results);
}

}  // namespace

Bytes hostilePayload(std::uint16_t opcode, const Capacities& capacities, Random& random)
{
    Bytes payload;
    if (opcode == wire::opcode::HardwareChangeGet) put(payload, fuzzing::awkwardNumber(random), 4);
    put(payload, random.oneIn(16) ? random.below(65536) : wire::resultReply, 2);
    put(payload, anyResult(random), 4);
    const std::string shape = random.oneIn(4) ? anyShape(random) : std::string(shapeOf(opcode));
    for (const char kind : shape)
        putField(payload, kind, capacities, random);
    if (random.oneIn(3)) fuzzing::damage(payload, random, wire::maxPayload);
    if (random.oneIn(12) && !payload.empty()) payload.pop_back();
    payload.resize(std::min(payload.size(), wire::maxPayload));
    return payload;
}

FakeChannel::Exchange hostileExchange(std::uint16_t opcode, const Capacities& capacities, Random& random)
{
    FakeChannel::Exchange exchange;
    if (random.oneIn(24)) {
        exchange.errorNumber = static_cast<int>(fuzzing::awkwardNumber(random));
        return exchange;
    }
    exchange.frame.assign(wire::frameHeaderLength, static_cast<std::uint8_t>(random.next()));
    const Bytes payload = hostilePayload(opcode, capacities, random);
    exchange.frame.insert(exchange.frame.end(), payload.begin(), payload.end());
    exchange.length = static_cast<std::uint16_t>(exchange.frame.size());
    if (random.oneIn(16)) exchange.length = static_cast<std::uint16_t>(fuzzing::awkwardNumber(random));
    return exchange;
}
