#include "dispatch/special.h"

#include "dispatch/answers.h"

namespace srv::special {

namespace {

const std::wstring settingsKey = L"Special";

}  // namespace

Result get(const Call& call, Required parameter, Capacity capacity)
{
    ValueTable values;
    if (const Result result = call.server.settings.read(settingsKey, values)) return result;
    return values.find(parameter) ? answerValue(call, values, parameter, capacity)
                                  : answerValue(call, call.server.catalogue.specialValues, parameter, capacity);
}

Result set(const Call& call, Required parameter, Given text)
{
    return call.server.settings.set(settingsKey, parameter, text);
}

Result canSave(const Call& call)
{
    return call.server.settings.canWrite();
}

}  // namespace srv::special
