#include "dispatch/operations.h"

#include "dispatch/devices.h"
#include "dispatch/languages.h"
#include "dispatch/names.h"
#include "dispatch/parameters.h"

namespace srv {

namespace {

namespace op = ::wire::opcode;

constexpr Operation operations[] = {
    // Logical devices
    {op::LogDeviceGetValue, "LogDeviceGetValue", Via::Channel, handledBy<devices::getValue>},
    {op::LogDeviceSetValue, "LogDeviceSetValue", Via::Channel, handledBy<devices::setValue>},
    {op::LogDeviceDelValue, "LogDeviceDelValue", Via::Channel, handledBy<devices::deleteValue>},
    {op::LogDeviceGetEnum, "LogDeviceGetEnum", Via::Channel, handledBy<devices::getEnum>},
    {op::LogDeviceGetEnumValue, "LogDeviceGetEnumValue", Via::Channel, devices::enumValueOrTemplate},
    {op::LogDeviceUpdateWithTemp, "LogDeviceUpdateWithTemp", Via::Channel, handledBy<devices::updateWithTemp>},
    {op::LogDeviceExists, "LogDeviceExists", Via::Channel, handledBy<devices::exists>},
    {op::LogDeviceCreateFromDef, "LogDeviceCreateFromDef", Via::Channel, handledBy<devices::createFromDef>},
    {op::LogDeviceCreateTemp, "LogDeviceCreateTemp", Via::Channel, handledBy<devices::createTemp>},
    {op::LogDeviceDelTemp, "LogDeviceDelTemp", Via::Channel, handledBy<devices::deleteTemp>},
    {op::LogDeviceCopy, "LogDeviceCopy", Via::Channel, handledBy<devices::copy>},
    {op::LogDeviceDel, "LogDeviceDel", Via::Channel, handledBy<devices::remove>},
    {op::LogDeviceSetBusparams, "LogDeviceSetBusparams", Via::Channel, handledBy<devices::setBusparams>},
    {op::LogDeviceGetNdiValue, "LogDeviceGetNdiValue", Via::Channel, handledBy<devices::getNdi>},
    {op::LogDeviceSetNdiValue, "LogDeviceSetNdiValue", Via::Channel, handledBy<devices::setNdi>},
    {op::LogDeviceDelNdiValue, "LogDeviceDelNdiValue", Via::Channel, handledBy<devices::deleteNdi>},
    {op::LogDeviceGetEnumNdiValue, "LogDeviceGetEnumNdiValue", Via::Channel, handledBy<devices::getEnumNdi>},
    {op::LogDeviceGetValueLang, "LogDeviceGetValueLang", Via::Channel, handledBy<languages::deviceValue>},
    {op::LogDeviceList, "LogDeviceList", Via::Channel, handledBy<devices::list>},
    {op::LogDeviceValueList, "LogDeviceValueList", Via::Channel, handledBy<devices::valueList>},
    {op::LogDeviceGetValueRaw, "LogDeviceGetValueRaw", Via::Channel, handledBy<devices::getValueRaw>},

    // Logical names
    {op::LogNameSetValue, "LogNameSetValue", Via::Channel, handledBy<names::setValue>},
    {op::LogNameGetValue, "LogNameGetValue", Via::Channel, handledBy<names::getValue>},
    {op::LogNameDelValue, "LogNameDelValue", Via::Channel, handledBy<names::deleteValue>},
    {op::LogNameCreate, "LogNameCreate", Via::Channel, handledBy<names::create>},
    {op::LogNameDel, "LogNameDel", Via::Channel, handledBy<names::remove>},
    {op::LogNameGetEnum, "LogNameGetEnum", Via::Channel, handledBy<names::getEnum>},
    {op::LogNameGetEnumValue, "LogNameGetEnumValue", Via::Channel, handledBy<names::getEnumValue>},
    {op::LogNameExists, "LogNameExists", Via::Channel, handledBy<names::exists>},
    {op::LogNameGetValueLang, "LogNameGetValueLang", Via::Channel, handledBy<languages::nameValue>},
    {op::LogNameList, "LogNameList", Via::Channel, handledBy<names::list>},
    {op::LogNameValueList, "LogNameValueList", Via::Channel, handledBy<names::valueList>},

    // Parameters
    {op::LogDeviceGetParamDesc, "LogDeviceGetParamDesc", Via::Channel, handledBy<parameters::attribute>},
    {op::LogDeviceGetMostSpecializedEnumList, "LogDeviceGetMostSpecializedEnumList", Via::Channel,
     handledBy<parameters::specialList>},
    {op::LogDeviceGetAverageEnumList, "LogDeviceGetAverageEnumList", Via::Channel,
     handledBy<parameters::averageList>},
    {op::GetRuntimeVersion, "GetRuntimeVersion", Via::Channel, handledBy<parameters::runtimeVersions>},
    {op::Plausibility, "Plausibility", Via::Channel, handledBy<parameters::plausibility>},
};

}  // namespace

std::span<const Operation> allOperations() noexcept
{
    return operations;
}

}  // namespace srv
