// Templates: which there are.

#include "frame/ApiCall.h"
#include "kxovaapi.h"

long TemplateGetEnum(const char* type, unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("TemplateGetEnum: ");
    KX_ENTRY(call, ">> type %s index=%d", type, dec(iValue));
    if (missing(type) || !length) return ERROR_INVALID_PARAMETER;
    Reply reply = call.request(opcode::TemplateGetEnum, type, iValue, textCapacity);
    reply.orReadFault().text(buffer, length);
    if (!reply.ok()) return reply.done();
    KX_RESULT(call, "<< return %d - template %.*s", static_cast<int>(reply.status()), dec(*length), buffer);
    return reply.status();
}

long TemplateExists(const char* type, const char* template_, unsigned long flags)
{
    ApiCall call("TemplateExists: ");
    KX_ENTRY(call, ">> type %s template %s", type, template_);
    if (missing(type) || missing(template_)) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::TemplateExists, type, template_, flags).orReadFault().done();
}
