// Parameter metadata: descriptive data attached to a parameter of a folder.

#include "frame/ApiCall.h"
#include "kxovaapi.h"

long DCFG_GetParameterMetaData(const char* folder, const char* subfolder, const char* item, const char* parameter,
                               char* buffer, unsigned long* length)
{
    ApiCall call("DCFG_GetParameterMetaData: ");
    KX_ENTRY(call, ">> folder %s subfolder %s parameter %s", folder, subfolder, parameter);
    if (missing(folder) || missing(parameter) || !length) return ERROR_INVALID_PARAMETER;
    Reply reply = call.request(opcode::GetParameterMetaData, folder, subfolder, item, parameter, Capacity{length});
    if (reply.orReadFault().ok()) {
        if (reply.plainText(buffer, length).ok()) KX_DETAIL(call, "value %s ", readText(buffer, length));
        KX_DETAIL(call, "lResult %d neededBufLen %d ", static_cast<int>(reply.status()), dec(*length));
    }
    return reply.done();
}

long DCFG_SetParameterMetaData(const char* folder, const char* subfolder, const char* item, const char* parameter,
                               const char* value)
{
    ApiCall call("DCFG_SetParameterMetaData: ");
    KX_ENTRY(call, ">>  subfolder %s parameter %s val %s", subfolder, parameter, value);
    if (missing(item)) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::SetParameterMetaData, folder, subfolder, item, parameter, value).orReadFault().done();
}
