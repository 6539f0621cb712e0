#include "dispatch/operations.h"

#include "dispatch/boardInfo.h"
#include "dispatch/boards.h"
#include "dispatch/devices.h"
#include "dispatch/instances.h"
#include "dispatch/languages.h"
#include "dispatch/metadata.h"
#include "dispatch/names.h"
#include "dispatch/notify.h"
#include "dispatch/parameters.h"
#include "dispatch/profiles.h"
#include "dispatch/registry.h"
#include "dispatch/special.h"
#include "dispatch/templates.h"

namespace srv {

namespace {

namespace op = ::wire::opcode;

constexpr Work inMemory = Work::InMemory;

constexpr Operation operations[] = {
    // Logical devices
    {op::LogDeviceGetValue, "LogDeviceGetValue", Via::Channel, handledBy<devices::getValue>, inMemory},
    {op::LogDeviceSetValue, "LogDeviceSetValue", Via::Channel, handledBy<devices::setValue>},
    {op::LogDeviceDelValue, "LogDeviceDelValue", Via::Channel, handledBy<devices::deleteValue>},
    {op::LogDeviceGetEnum, "LogDeviceGetEnum", Via::Channel, handledBy<devices::getEnum>, inMemory},
    {op::LogDeviceGetEnumValue, "LogDeviceGetEnumValue", Via::Channel, devices::enumValueOrTemplate, inMemory},
    {op::LogDeviceUpdateWithTemp, "LogDeviceUpdateWithTemp", Via::Channel, handledBy<devices::updateWithTemp>},
    {op::LogDeviceExists, "LogDeviceExists", Via::Channel, handledBy<devices::exists>, inMemory},
    {op::LogDeviceCreateFromDef, "LogDeviceCreateFromDef", Via::Channel, handledBy<devices::createFromDef>},
    {op::LogDeviceCreateTemp, "LogDeviceCreateTemp", Via::Channel, handledBy<devices::createTemp>},
    {op::LogDeviceDelTemp, "LogDeviceDelTemp", Via::Channel, handledBy<devices::deleteTemp>},
    {op::LogDeviceCopy, "LogDeviceCopy", Via::Channel, handledBy<devices::copy>},
    {op::LogDeviceDel, "LogDeviceDel", Via::Channel, handledBy<devices::remove>},
    {op::LogDeviceSetBusparams, "LogDeviceSetBusparams", Via::Channel, handledBy<profiles::setBusparams>},
    {op::LogDeviceGetNdiValue, "LogDeviceGetNdiValue", Via::Channel, handledBy<devices::getNdi>, inMemory},
    {op::LogDeviceSetNdiValue, "LogDeviceSetNdiValue", Via::Channel, handledBy<devices::setNdi>},
    {op::LogDeviceDelNdiValue, "LogDeviceDelNdiValue", Via::Channel, handledBy<devices::deleteNdi>},
    {op::LogDeviceGetEnumNdiValue, "LogDeviceGetEnumNdiValue", Via::Channel, handledBy<devices::getEnumNdi>,
     inMemory},
    {op::LogDeviceGetValueLang, "LogDeviceGetValueLang", Via::Channel, handledBy<languages::deviceValue>, inMemory},
    {op::LogDeviceList, "LogDeviceList", Via::Channel, devices::list, inMemory},
    {op::LogDeviceValueList, "LogDeviceValueList", Via::Channel, handledBy<devices::valueList>, inMemory},
    {op::LogDeviceGetValueRaw, "LogDeviceGetValueRaw", Via::Channel, handledBy<devices::getValueRaw>, inMemory},

    // Logical names
    {op::LogNameSetValue, "LogNameSetValue", Via::Channel, handledBy<names::setValue>},
    {op::LogNameGetValue, "LogNameGetValue", Via::Channel, handledBy<names::getValue>, inMemory},
    {op::LogNameDelValue, "LogNameDelValue", Via::Channel, handledBy<names::deleteValue>},
    {op::LogNameCreate, "LogNameCreate", Via::Channel, handledBy<names::create>},
    {op::LogNameDel, "LogNameDel", Via::Channel, handledBy<names::remove>},
    {op::LogNameGetEnum, "LogNameGetEnum", Via::Channel, handledBy<names::getEnum>, inMemory},
    {op::LogNameGetEnumValue, "LogNameGetEnumValue", Via::Channel, handledBy<names::getEnumValue>, inMemory},
    {op::LogNameExists, "LogNameExists", Via::Channel, handledBy<names::exists>, inMemory},
    {op::LogNameGetValueLang, "LogNameGetValueLang", Via::Channel, handledBy<languages::nameValue>, inMemory},
    {op::LogNameList, "LogNameList", Via::Channel, handledBy<names::list>, inMemory},
    {op::LogNameValueList, "LogNameValueList", Via::Channel, handledBy<names::valueList>, inMemory},

    // Templates
    {op::ProtocolGetValueRaw, "ProtocolGetValueRaw", Via::Channel, handledBy<templates::protocolValueRaw>, inMemory},
    {op::DefDeviceGetValueRaw, "DefDeviceGetValueRaw", Via::Channel, handledBy<templates::definitionValueRaw>,
     inMemory},
    {op::TemplateGetEnumValueRaw, "TemplateGetEnumValueRaw", Via::Channel, handledBy<templates::possibleValue>,
     inMemory},
    {op::TemplateGetEnum, "TemplateGetEnum", Via::Channel, handledBy<templates::getEnum>, inMemory},
    {op::TemplateGetEnumNoPrefix, "TemplateGetEnumNoPrefix", Via::Channel, handledBy<templates::getEnumNoPrefix>,
     inMemory},
    {op::TemplateExists, "TemplateExists", Via::Channel, handledBy<templates::exists>, inMemory},
    {op::TemplateKeyExists, "TemplateKeyExists", Via::Channel, handledBy<templates::keyExists>, inMemory},
    {op::DefaultLogDeviceGetEnumValue, "DefaultLogDeviceGetEnumValue", Via::Channel,
     handledBy<templates::defaultDeviceEnumValue>, inMemory},
    {op::DefaultLogDeviceGetValue, "DefaultLogDeviceGetValue", Via::Channel, handledBy<templates::defaultDeviceValue>,
     inMemory},
    {op::BoardGetEnumValue, "BoardGetEnumValue", Via::Channel, handledBy<templates::boardEnumValue>, inMemory},
    {op::ProtocolGetEnumValue, "ProtocolGetEnumValue", Via::Channel, handledBy<templates::protocolEnumValue>,
     inMemory},
    {op::ProtocolGetValue, "ProtocolGetValue", Via::Channel, handledBy<templates::protocolValue>, inMemory},

    // Boards
    {op::BoardGetValueRaw, "BoardGetValueRaw", Via::Channel, handledBy<boards::valueRaw>, inMemory},
    {op::BoardGetResourceString, "BoardGetResourceString", Via::Channel, handledBy<boards::resourceString>, inMemory},
    {op::BoardGetAttribute, "BoardGetAttribute", Via::Channel, handledBy<boards::attribute>, inMemory},
    {op::BoardGetAttributeLang, "BoardGetAttributeLang", Via::Channel, handledBy<boards::attributeLang>, inMemory},
    {op::BoardGetNotSupported, "BoardGetNotSupported", Via::Channel, handledBy<boards::notSupported>, inMemory},
    {op::EnumConfiguration, "EnumConfiguration", Via::Channel, handledBy<boards::enumConfiguration>, inMemory},

    // Instances of boards
    {op::EnumInstBoard, "EnumInstBoard", Via::Channel, handledBy<instances::getEnum>},
    {op::BoardGetEnum2, "BoardGetEnum2", Via::Channel, handledBy<instances::enumOfBoard>},
    {op::EnumAvailableBoards, "EnumAvailableBoards", Via::Channel, handledBy<instances::enumAvailable>},
    {op::EnumAdapters, "EnumAdapters", Via::Channel, handledBy<instances::enumAdapters>},
    {op::BoardGetMapEx, "BoardGetMapEx", Via::Channel, handledBy<instances::mapOf>},
    {op::GetBoardInfo, "GetBoardInfo", Via::Channel, handledBy<boardInfo::text>},
    {op::GetBoardInfoEx, "GetBoardInfoEx", Via::Channel, handledBy<boardInfo::bytes>},
    {op::BoardScan, "BoardScan", Via::Channel, handledBy<instances::scan>},
    {op::UpdateLogdevicesForDevice, "UpdateLogdevicesForDevice", Via::Channel,
     handledBy<instances::updateLogicalDevices>},
    {op::CreateAllLogdevices, "CreateAllLogdevices", Via::Channel, handledBy<instances::createAllLogicalDevices>},
    {op::HasUninitializedInstances, "HasUninitializedInstances", Via::Channel,
     handledBy<instances::hasUninitialized>},
    {op::SilentRestart, "SilentRestart", Via::Channel, handledBy<instances::restart>},
    {op::PanelInstall, "PanelInstall", Via::Channel, handledBy<instances::install>},
    {op::PanelDeinstall, "PanelDeinstall", Via::Channel, handledBy<instances::deinstall>},

    // Bus profiles
    {op::ProtocolGetEnumBusprofiles, "ProtocolGetEnumBusprofiles", Via::Channel, handledBy<profiles::getEnum>,
     inMemory},
    {op::ProtocolGetEnumBaudrate, "ProtocolGetEnumBaudrate", Via::Channel, handledBy<profiles::enumBaudrate>,
     inMemory},
    {op::ProfileCollectionExists, "ProfileCollectionExists", Via::Channel, handledBy<profiles::collectionExists>,
     inMemory},
    {op::LogDeviceSetProfile, "LogDeviceSetProfile", Via::Channel, handledBy<profiles::setProfile>},

    // Special values
    {op::CanSaveParameters, "CanSaveParameters", Via::Channel, handledBy<special::canSave>},
    {op::SpecialSetValue, "SpecialSetValue", Via::Channel, handledBy<special::set>},
    {op::SpecialGetValue, "SpecialGetValue", Via::Channel, handledBy<special::get>},

    // Registry keys
    {op::RegDelete, "RegDelete", Via::Pipe, registry::deleteKeyOrValue},
    {op::RegCreateKey, "RegCreateKey", Via::Pipe, handledBy<registry::createKey>},
    {op::RegSetValue, "RegSetValue", Via::Pipe, handledBy<registry::setValue>},
    {op::RegEnumKey, "RegEnumKey", Via::Pipe, handledBy<registry::enumKey>},
    {op::RegGetValue, "RegGetValue", Via::Pipe, handledBy<registry::getValue>},
    {op::RegEnumValue, "RegEnumValue", Via::Pipe, handledBy<registry::enumValue>},

    // Metadata, to which the LLDP settings belong
    {op::GetParameterMetaData, "GetParameterMetaData", Via::Channel, handledBy<metadata::get>},
    {op::SetParameterMetaData, "SetParameterMetaData", Via::Channel, handledBy<metadata::set>},
    {op::LldpDelValue, "LldpDelValue", Via::Channel, handledBy<metadata::erase>},
    {op::LldpGetEnumValue, "LldpGetEnumValue", Via::Channel, handledBy<metadata::getEnum>},

    // Parameters
    {op::LogDeviceGetParamDesc, "LogDeviceGetParamDesc", Via::Channel, handledBy<parameters::attribute>, inMemory},
    {op::LogDeviceGetMostSpecializedEnumList, "LogDeviceGetMostSpecializedEnumList", Via::Channel,
     handledBy<parameters::specialList>, inMemory},
    {op::LogDeviceGetAverageEnumList, "LogDeviceGetAverageEnumList", Via::Channel, handledBy<parameters::averageList>,
     inMemory},
    {op::GetRuntimeVersion, "GetRuntimeVersion", Via::Channel, handledBy<parameters::runtimeVersions>},
    {op::Plausibility, "Plausibility", Via::Channel, handledBy<parameters::plausibility>},

    // Notifications
    {op::NotifyRegister, "NotifyRegister", Via::Channel, handledBy<notify::add>},
    {op::NotifyUnregister, "NotifyUnregister", Via::Channel, handledBy<notify::remove>},
    {op::HardwareChangeRegister, "HardwareChangeRegister", Via::Channel, handledBy<notify::addClass>},
    {op::HardwareChangeUnregister, "HardwareChangeUnregister", Via::Channel, handledBy<notify::removeClass>},
    {op::HardwareChangeGet, "HardwareChangeGet", Via::Channel, notify::hardwareChange},
    {op::NotifyChannel, "NotifyChannel", Via::Channel, handledBy<notify::channel>},
    {op::NotifyListen, "NotifyListen", Via::Channel, handledBy<notify::listen>},
    {op::NotifyRenewBegin, "NotifyRenewBegin", Via::Channel, handledBy<notify::beginRenewal>},
    {op::NotifyRenew, "NotifyRenew", Via::Channel, handledBy<notify::renew>},
    {op::HardwareChangeRenew, "HardwareChangeRenew", Via::Channel, handledBy<notify::renewClass>},
    {op::NotifyRenewEnd, "NotifyRenewEnd", Via::Channel, handledBy<notify::endRenewal>},
};

}  // namespace

std::span<const Operation> allOperations() noexcept
{
    return operations;
}

}  // namespace srv
