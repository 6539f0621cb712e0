#include "soundRequests.h"

#include "wire/frame.h"
#include "wire/opcodes.h"

namespace {

namespace op = wire::opcode;
using bytes::Bytes;

constexpr auto channel = srv::Via::Channel;
constexpr auto pipe = srv::Via::Pipe;
constexpr std::uint32_t room = 260;

const char16_t* const device = u"Dev";
const char16_t* const board = u"*TVRA010";
const char16_t* const temporary = u"DCFG_TEMP_LOG_DEVICE____1";
const char16_t* const key = u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX\\Own";
const char16_t* const devicesKey = u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX\\LogDevices\\Dev";
const char16_t* const profilePath = u"SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE\\MPI\\Params";

// What fields turn into: names that exist, and places where nobody may get.
const std::u16string knownTexts[] = {u"Dev",
                                     u"DEV",
                                     u"Prüfstand Größe",
                                     u"NX1611.MPI",
                                     u"NXVISU",
                                     u"MPI",
                                     u"busparam",
                                     u"baudrate",
                                     u"a",
                                     u"BoardMap",
                                     u"*TVRA010",
                                     u"NX 200",
                                     u"NX200-1",
                                     u"Boards",
                                     u"Protocols",
                                     u"DefaultLogdevices",
                                     u"Ndi",
                                     u"DE",
                                     u"E",
                                     u"DCFG_TEMP_LOG_DEVICE____1",
                                     u"LogDevices",
                                     u"LogNames",
                                     u"Params\\busparam\\0",
                                     u"..",
                                     u".",
                                     u"\\",
                                     u"*",
                                     u"",
                                     u"SOFTWARE\\WOW6432Node\\TAVRONE",
                                     u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX",
                                     u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX\\Journal",
                                     u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX\\Instances\\x",
                                     u"SOFTWARE\\WOW6432Node\\TAVRONE\\..\\Other",
                                     u"SOFTWARE\\WOW6432Node\\TAVRONE\\WOW6432Node\\Other",
                                     u"SOFTWARE\\WOW6432Node\\Other",
                                     u"SYSTEM\\CurrentControlSet\\Services\\kxopusbx64\\Enum",
                                     u"HARDWARE\\DEVICEMAP",
                                     u"\\\\?\\pipe\\x",
                                     u"C:\\windows\\system32\\drivers",
                                     u"\\Registry\\Machine"};

Bytes bytesOf(const Field& field)
{
    if (const auto* number = std::get_if<std::uint32_t>(&field)) return bytes::u32(*number);
    if (const auto* text = std::get_if<std::u16string>(&field)) return bytes::str(*text);
    if (const auto* raw = std::get_if<Bytes>(&field)) return *raw;
    return bytes::null();
}

Field otherField(const Field& field, fuzzing::Random& random)
{
    switch (random.below(8)) {
        case 0:
            return Null{};
        case 1:
            return fuzzing::awkwardNumber(random);
        case 2:
        case 3:
            return std::holds_alternative<std::uint32_t>(field) ? Field(fuzzing::awkwardNumber(random))
                                                                : Field(fuzzing::awkwardText(random, 4200));
        case 4:
            if (const auto* text = std::get_if<std::u16string>(&field))
                return *text + u'\\' + fuzzing::awkwardText(random, 300);
            return random.below(4);
        default:
            return std::holds_alternative<std::uint32_t>(field) ? Field(random.below(3))
                                                                : Field(random.of(knownTexts));
    }
}

}  // namespace

const std::vector<SoundRequest>& soundRequests()
{
    using S = std::u16string;
    static const Bytes interfaceClass(16, 0x5A);
    static const std::vector<SoundRequest> all = {
        {op::LogDeviceGetValue, channel, {S(device), S(u"baudrate"), room}},
        {op::LogDeviceSetValue, channel, {S(device), S(u"a"), S(u"Größe")}},
        {op::LogDeviceDelValue, channel, {S(device), S(u"a")}},
        {op::LogDeviceGetEnum, channel, {S(u"MPI"), 0u, room}},
        {op::LogDeviceGetEnumValue, channel, {S(device), 0u, room, room}},
        {op::TemplateExistsEx, channel, {S(u"Protocols"), S(u"MPI"), S(u"Params"), S(u"highest_adr")}},
        {op::LogDeviceUpdateWithTemp, channel, {S(temporary), S(device)}},
        {op::LogDeviceExists, channel, {S(device), 0u}},
        {op::LogDeviceCreateFromDef, channel, {S(u"New"), S(u"NX1611.MPI")}},
        {op::LogDeviceCreateTemp, channel, {S(device), room}},
        {op::LogDeviceDelTemp, channel, {S(temporary)}},
        {op::LogDeviceCopy, channel, {S(device), S(u"Copy")}},
        {op::LogDeviceDel, channel, {S(u"Copy"), 0u}},
        {op::LogDeviceSetBusparams, channel, {S(device), S(u"dp")}},
        {op::LogDeviceGetNdiValue, channel, {S(device), S(u"PropSheet"), room, 0u}},
        {op::LogDeviceSetNdiValue, channel, {S(device), S(u"n"), S(u"1"), 0u}},
        {op::LogDeviceDelNdiValue, channel, {S(device), S(u"n"), 0u}},
        {op::LogDeviceGetEnumNdiValue, channel, {S(device), 0u, room, room, 0u}},
        {op::LogDeviceGetValueLang, channel, {S(device), S(u"busparam"), S(u"DE"), room}},
        {op::LogDeviceList, channel, {8000u}},
        {op::LogDeviceList, channel, {S(u"MPI"), 8000u}},
        {op::LogDeviceValueList, channel, {S(device), S(u""), Null{}, 0u, 8000u}},
        {op::LogDeviceGetValueRaw, channel, {S(device), S(u"Ndi"), 0u, S(u"PropSheet"), room}},

        {op::LogNameSetValue, channel, {S(u"NXVISU"), S(u"LogDevice"), S(device)}},
        {op::LogNameGetValue, channel, {S(u"NXVISU"), S(u"LogDevice"), room}},
        {op::LogNameDelValue, channel, {S(u"NXVISU"), S(u"LogDevice")}},
        {op::LogNameCreate, channel, {S(u"NXVISU")}},
        {op::LogNameDel, channel, {S(u"NXVISU")}},
        {op::LogNameGetEnum, channel, {0u, room}},
        {op::LogNameGetEnumValue, channel, {S(u"NXVISU"), 0u, room, room}},
        {op::LogNameExists, channel, {S(u"NXVISU"), 0u}},
        {op::LogNameGetValueLang, channel, {S(u"NXVISU"), S(u"LogDevice"), S(u"DE"), room, 0u}},
        {op::LogNameList, channel, {8000u}},
        {op::LogNameValueList, channel, {S(u"NXVISU"), S(u""), Null{}, 0u, 8000u}},

        {op::ProtocolGetValueRaw, channel, {S(u"MPI"), S(u"Params"), S(u"highest_adr"), room}},
        {op::DefDeviceGetValueRaw, channel, {S(u"NX1611.MPI"), S(u"Ndi"), S(u"PropSheet"), room}},
        {op::TemplateGetEnumValueRaw, channel, {S(u"Boards"), S(board), S(u"Resources\\IRQ"), 1u, room}},
        {op::TemplateGetEnum, channel, {S(u"Boards"), 0u, room}},
        {op::TemplateGetEnumNoPrefix, channel, {S(u"Protocols"), 0u, room}},
        {op::TemplateExists, channel, {S(u"Protocols"), S(u"MPI"), 0u}},
        {op::TemplateKeyExists, channel, {S(u"Protocols"), S(u"MPI"), S(u"Params"), S(u"highest_adr")}},
        {op::DefaultLogDeviceGetEnumValue, channel, {S(u"NX1611.MPI"), 0u, room, room}},
        {op::DefaultLogDeviceGetValue, channel, {S(u"NX1611.MPI"), S(u"CP_TYPE"), room, 0u}},
        {op::BoardGetEnumValue, channel, {S(board), 0u, room, room}},
        {op::ProtocolGetEnumValue, channel, {S(u"MPI"), S(u"Params"), S(u""), S(u""), S(u""), 0u, room, room}},
        {op::ProtocolGetValue,
         channel,
         {S(u"MPI"), S(u"Params"), S(u""), S(u""), S(u""), S(u"highest_adr"), room, 0u}},

        {op::BoardGetValueRaw, channel, {S(board), S(u"Resources"), S(u"IRQ"), room}},
        {op::BoardGetResourceString, channel, {S(u"Boards"), S(board), S(u"DescText"), S(u"DE"), room, 0u}},
        {op::BoardGetAttribute, channel, {S(board), S(u"BoardName"), room, 0u}},
        {op::BoardGetAttributeLang, channel, {S(board), S(u"DescText"), S(u"DE"), room}},
        {op::BoardGetNotSupported, channel, {S(board), room}},
        {op::EnumConfiguration, channel, {0u, S(board), S(u""), Null{}, S(u""), room, room, room, room}},

        {op::EnumInstBoard, channel, {0u, room, room, room, room, room, room}},
        {op::BoardGetEnum2, channel, {S(board), 0u, room, room, room, 1u}},
        {op::EnumAvailableBoards, channel, {0u, room, room}},
        {op::EnumAdapters, channel, {0u, room, room}},
        {op::BoardGetMapEx, channel, {S(board), S(u""), S(u""), room}},
        {op::GetBoardInfo, channel, {6u, S(board), S(u""), S(u""), S(u"DE"), room}},
        {op::GetBoardInfoEx, channel, {12u, S(board), S(u"NX200-1"), S(u""), room}},
        {op::BoardScan, channel, {}},
        {op::UpdateLogdevicesForDevice, channel, {S(board), S(u"")}},
        {op::CreateAllLogdevices, channel, {}},
        {op::HasUninitializedInstances, channel, {}},
        {op::SilentRestart, channel, {S(u"NX200-1")}},
        {op::PanelInstall, channel, {S(board), S(u"NX200-1")}},
        {op::PanelDeinstall, channel, {S(board), S(u"NX200-1"), S(u"")}},

        {op::ProtocolGetEnumBusprofiles, channel, {S(u"MPI"), 0u, room}},
        {op::ProtocolGetEnumBaudrate, channel, {S(u"MPI"), S(u"dp"), 0u, room}},
        {op::ProfileCollectionExists, channel, {S(profilePath), S(u"busparam\\0"), S(u"tslot")}},
        {op::LogDeviceSetProfile, channel, {S(device), S(profilePath), S(u"busparam")}},
        {op::CanSaveParameters, channel, {}},
        {op::SpecialSetValue, channel, {S(u"CardLang"), S(u"DE")}},
        {op::SpecialGetValue, channel, {S(u"CardLang"), room}},

        {op::RegDelete, pipe, {S(key)}},
        {op::RegDelete, pipe, {S(key), S(u"value")}},
        {op::RegCreateKey, pipe, {S(key)}},
        {op::RegSetValue, pipe, {S(key), S(u"value"), S(u"Größe")}},
        {op::RegSetValue, pipe, {S(devicesKey), S(u"a"), S(u"1")}},
        {op::RegEnumKey, pipe, {S(u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX"), 0u}},
        {op::RegGetValue, pipe, {S(devicesKey), S(u"baudrate")}},
        {op::RegEnumValue, pipe, {S(devicesKey), 0u}},

        {op::GetParameterMetaData, channel, {S(u"data"), S(u"sub"), S(u"LLDP"), S(u"value"), room}},
        {op::SetParameterMetaData, channel, {S(u""), S(u"sub"), S(u"LLDP"), S(u"value"), S(u"1")}},
        {op::LldpDelValue, channel, {S(u"sub"), S(u"LLDP"), S(u"value")}},
        {op::LldpGetEnumValue, channel, {S(u"data"), S(u"sub"), S(u"LLDP"), 0u, room, room}},

        {op::LogDeviceGetParamDesc, channel, {S(device), S(u"busparam"), S(u"type"), room}},
        {op::LogDeviceGetMostSpecializedEnumList, channel, {S(device), S(u"busparam"), 8000u}},
        {op::LogDeviceGetAverageEnumList, channel, {S(device), S(u"busparam"), 8000u}},
        {op::GetRuntimeVersion, channel, {}},
        {op::Plausibility, channel, {}},

        {op::NotifyRegister, channel, {S(u"LogDevices"), S(device), S(u"Global\\changed"), 4u}},
        {op::NotifyUnregister, channel, {S(u"LogDevices"), S(device), S(u"Global\\changed"), 4u}},
        {op::HardwareChangeRegister, channel, {interfaceClass}},
        {op::HardwareChangeUnregister, channel, {interfaceClass}},
        {op::HardwareChangeGet, channel, {1u}},
        {op::NotifyChannel, channel, {7u, 0u}},
        {op::NotifyListen, channel, {7u, 0u}},
        {op::NotifyRenewBegin, channel, {}},
        {op::NotifyRenew, channel, {S(u"LogNames"), Null{}, S(u"Global\\changed"), 5u}},
        {op::HardwareChangeRenew, channel, {interfaceClass, 2u}},
        {op::NotifyRenewEnd, channel, {}},
    };
    return all;
}

Bytes payloadOf(const SoundRequest& request)
{
    Bytes payload = bytes::u16(request.opcode);
    for (const Field& field : request.fields) {
        const Bytes more = bytesOf(field);
        payload.insert(payload.end(), more.begin(), more.end());
    }
    return payload;
}

Bytes damaged(SoundRequest request, fuzzing::Random& random)
{
    for (Field& field : request.fields)
        if (random.oneIn(3)) field = otherField(field, random);
    if (random.oneIn(16)) request.fields.emplace_back(fuzzing::awkwardNumber(random));
    if (random.oneIn(16) && !request.fields.empty()) request.fields.pop_back();
    if (random.oneIn(32)) request.opcode = static_cast<std::uint16_t>(random.next());
    Bytes payload = payloadOf(request);
    if (payload.size() > wire::maxPayload || random.oneIn(3)) fuzzing::damage(payload, random, wire::maxPayload);
    return payload;
}
