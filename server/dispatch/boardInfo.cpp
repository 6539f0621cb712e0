#include "dispatch/boardInfo.h"

#include <algorithm>
#include <variant>

#include "base/Text.h"
#include "dispatch/answers.h"
#include "dispatch/definitions.h"

namespace srv::boardInfo {

namespace {

using catalogue::equalNoCase;

// The numbers are a part of the interface.
enum What : std::uint32_t {
    BoardName = 0,
    DeviceId = 1,
    Alias = 2,
    AsicType = 3,
    BusType = 4,
    HardwareId = 5,
    DescText = 6,
    BoardMap = 7,
    NetType = 8,
    HardwareInstanceId = 9,
    AdapterId = 10,
    State = 11,
    InstanceCount = 12,
};

using Fact = std::variant<std::wstring, std::uint32_t>;

Result boardFact(const catalogue::Board& board, std::uint32_t what, catalogue::Language language, Fact& fact)
{
    constexpr std::wstring_view values[] = {L"BoardName", L"DeviceID",   L"Alias",   L"Asic_Type",
                                            L"BusType",   L"HardwareId", L"DescText"};
    const std::wstring* text = what == DescText ? board.texts.find(values[what], language) : nullptr;
    if (!text) text = catalogue::find(board.tree.values, values[what]);
    if (!text) return result::notFound;
    fact = *text;
    return result::ok;
}

Result instanceFact(const HardwareDevice& instance, std::uint32_t what, Fact& fact)
{
    switch (what) {
        case BoardMap:
            fact = instance.boardMap;
            return result::ok;
        case NetType:
            fact = instance.netType;
            return result::ok;
        case HardwareInstanceId:
            fact = instance.hardwareInstanceId;
            return result::ok;
        case AdapterId:
            fact = instance.adapter;
            return result::ok;
        case State:
            fact = instance.state;
            return result::ok;
        default:
            return result::invalidParameter;
    }
}

Result find(const Call& call, std::uint32_t what, std::wstring_view name, const Text& map,
            const Text& hardwareInstanceId, const Text& language, Fact& fact)
{
    if (what > InstanceCount) return result::invalidParameter;
    const catalogue::Board* const board = boardNamed(call.server.catalogue, name);
    if (!board) return result::notFound;
    if (what < BoardMap) return boardFact(*board, what, languageNamed(language), fact);
    std::vector<HardwareDevice> devices;
    if (const Result result = call.server.machine.instances(devices)) return result;
    const auto wanted = [](const Text& filter, std::wstring_view text) {
        return !filter || filter->empty() || equalNoCase(*filter, text);
    };
    std::erase_if(devices, [&](const HardwareDevice& device) {
        return !equalNoCase(device.deviceId, board->deviceId) || !wanted(map, device.boardMap) ||
               !wanted(hardwareInstanceId, device.hardwareInstanceId);
    });
    if (what == InstanceCount) {
        fact = static_cast<std::uint32_t>(devices.size());
        return result::ok;
    }
    return devices.empty() ? result::notFound : instanceFact(devices.front(), what, fact);
}

Result answerBytes(const Call& call, const void* data, std::size_t size, Capacity capacity)
{
    if (size > capacity.bytes) return result::moreData;
    call.reply.u32(static_cast<std::uint32_t>(size));
    call.reply.bytes({static_cast<const std::uint8_t*>(data), size});
    return result::ok;
}

}  // namespace

Result text(const Call& call, std::uint32_t what, Required board, Text map, Text hardwareInstanceId, Text language,
            Capacity capacity)
{
    Fact fact;
    if (const Result result = find(call, what, board, map, hardwareInstanceId, language, fact)) return result;
    const std::uint32_t* const number = std::get_if<std::uint32_t>(&fact);
    return call.reply.text(number ? std::to_wstring(*number) : std::get<std::wstring>(fact), capacity.bytes);
}

Result bytes(const Call& call, std::uint32_t what, Required board, Text map, Text hardwareInstanceId,
             Capacity capacity)
{
    Fact fact;
    if (const Result result = find(call, what, board, map, hardwareInstanceId, std::nullopt, fact)) return result;
    if (const std::uint32_t* const number = std::get_if<std::uint32_t>(&fact))
        return answerBytes(call, number, sizeof *number, capacity);
    const std::string ansi = toAnsi(std::get<std::wstring>(fact));
    return answerBytes(call, ansi.c_str(), ansi.size() + 1, capacity);
}

}  // namespace srv::boardInfo
