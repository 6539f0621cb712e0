// Templates: reading the values of one.

#include <cstring>

#include "frame/ApiCall.h"
#include "kxovaapi.h"

namespace {

constexpr std::uint32_t valueMarker = 1;  // a constant that ends the requests for one value

// The operation codes of a template type; 0 for an unknown type, which the server answers as it likes.
struct TypeCodes
{
    explicit TypeCodes(const char* type) noexcept
    {
        if (_stricmp(type, "Boards") == 0) {
            enumValue = opcode::BoardGetEnumValue;
            getValue = opcode::BoardGetAttribute;
        } else if (_stricmp(type, "Protocols") == 0) {
            enumValue = opcode::ProtocolGetEnumValue;
            getValue = opcode::ProtocolGetValue;
            path = true;
        } else if (_stricmp(type, "DefaultLogdevices") == 0) {
            enumValue = opcode::DefaultLogDeviceGetEnumValue;
            getValue = opcode::DefaultLogDeviceGetValue;
        }
    }

    opcode::Code enumValue = 0;
    opcode::Code getValue = 0;
    bool path = false;  // addressed by a path, not by a name
};

// A protocol template's path, cut at its backslashes in the caller's own buffer.
class TemplatePath
{
 public:
    static constexpr std::size_t maxParts = 5;

    explicit TemplatePath(char* path) noexcept
    {
        char* rest = nullptr;
        for (char* part = strtok_s(path, "\\", &rest); part && count_ < maxParts;
             part = strtok_s(nullptr, "\\", &rest)) {
            std::strncpy(parts_[count_++], part, sizeof *parts_ - 1);
        }
    }

    std::size_t count() const noexcept { return count_; }
    const char* operator[](std::size_t i) const noexcept { return parts_[i]; }

 private:
    char parts_[maxParts][textCapacity] = {};  // missing parts are empty
    std::size_t count_ = 0;
};

// Sends a template request: its fields name the template, by five path parts or by one name, then come the others.
template <typename... Fields>
Reply requestTemplate(ApiCall& call, opcode::Code code, bool path, char* name, const Fields&... fields)
{
    if (!path) return call.request(code, name, fields...);
    const TemplatePath parts(name);
    return call.request(code, parts[0], parts[1], parts[2], parts[3], parts[4], fields...);
}

}  // namespace

// "template" is a word of C++; the argument carries the interface's name with a trailing underscore.

long TemplateGetEnumValue(const char* type, char* template_, unsigned long iValue, char* name,
                          unsigned long* nameLength, char* value, unsigned long* valueLength)
{
    ApiCall call("TemplateGetEnumValue: ");
    KX_ENTRY(call, ">> type %s tempate %s index=%d", type, template_, dec(iValue));
    if (missing(type) || missing(template_) || !nameLength || !valueLength) return ERROR_INVALID_PARAMETER;
    const TypeCodes codes(type);
    Reply reply = requestTemplate(call, codes.enumValue, codes.path, template_, iValue, textCapacity, textCapacity);
    return reply.orReadFault().text(name, nameLength).text(value, valueLength).done();
}

long TemplateGetValue(const char* type, char* template_, const char* parameter, char* buffer, unsigned long* length)
{
    ApiCall call("TemplateGetValue: ");
    KX_ENTRY(call, ">> type %s tempate %s parameter %s", type, template_, parameter);
    if (missing(type) || missing(template_) || missing(parameter) || !length) return ERROR_INVALID_PARAMETER;
    const TypeCodes codes(type);
    Reply reply = requestTemplate(call, codes.getValue, codes.path, template_, parameter, textCapacity, valueMarker);
    return reply.orReadFault().text(buffer, length).done();
}
