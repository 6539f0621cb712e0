// Parameter descriptions: attributes, checks, and the enumerations beside them.

#include <cstring>

#include "frame/ApiCall.h"
#include "frame/LocalCall.h"
#include "kxLegacy/kxLegacyKeys.h"
#include "kxLegacy/kxLegacyText.h"
#include "kxLegacy/valueCheck.h"
#include "kxovaapi.h"

namespace {

// For a parameter that is named by a path: the value with its display text, where it has one.
CString withDisplayText(const char* lpszLogDevice, const char* lpszParameter, const CString& value)
{
    const char* const name = std::strrchr(lpszParameter, '\\');
    CString text;
    if (!name || DCFG_LogDeviceGetEnumStringLang(lpszLogDevice, name + 1, value, &text) != ERROR_SUCCESS)
        return value;
    return value + "/" + text;
}

// One attribute; `finish` makes what the caller gets of the attribute's text.
template <typename Finish>
long getParamDesc(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue, CString* psParamValue,
                  Finish finish)
{
    ApiCall call("LogDeviceGetParamDesc: ");
    return guarded([&]() -> long {
        // %08X is the platform's %p; our C run-time's puts another 0x before it.
        KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s lpszValue=%s psParamValue=0x%08X", lpszLogDevice,
                 lpszParameter, lpszValue, hex(psParamValue));
        if (!lpszLogDevice || !lpszParameter || !lpszValue || !psParamValue) return ERROR_INVALID_PARAMETER;
        char text[textCapacity] = {};
        unsigned long length = sizeof text;
        Reply reply =
            call.request(opcode::LogDeviceGetParamDesc, lpszLogDevice, lpszParameter, lpszValue, textCapacity);
        if (reply.orInvalidResponse().plainText(text, &length).ok()) {
            *psParamValue = finish(CString(text, static_cast<int>(length)));
        }
        return reply.done();
    });
}

// A description that the server holds. A check works with the attributes alone: a display text behind one would get
// into the value that it is copied to.
class ServersDescription final : public ParamDescription
{
 public:
    ServersDescription(const char* lpszLogDevice, const char* lpszParameter) noexcept
        : lpszLogDevice_(lpszLogDevice), lpszParameter_(lpszParameter)
    {}
    bool attribute(const char* name, CString& text) override
    {
        const auto bare = [](const CString& value) { return value; };
        return getParamDesc(lpszLogDevice_, lpszParameter_, name, &text, bare) == ERROR_SUCCESS;
    }
    void items(CStringList& list) override
    {
        DCFG_LogDeviceGetMostSpecializedEnumList(lpszLogDevice_, lpszParameter_, &list);
    }

 private:
    const char* lpszLogDevice_;
    const char* lpszParameter_;
};

}  // namespace

long LogDeviceGetParamDesc(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue,
                           CString* psParamValue)
{
    return getParamDesc(lpszLogDevice, lpszParameter, lpszValue, psParamValue,
                        [&](const CString& value) { return withDisplayText(lpszLogDevice, lpszParameter, value); });
}

long LogDeviceCheckValue(const char* lpszLogDevice, const char* lpszParameter, CString& sValue)
{
    const LocalCall call("LogDeviceCheckValue: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s sValue=%s", lpszLogDevice, lpszParameter,
                 sValue.GetString());
        if (!lpszLogDevice || !lpszParameter) return ERROR_INVALID_PARAMETER;
        ServersDescription description(lpszLogDevice, lpszParameter);
        return checkValue(call, lpszParameter, description, sValue);
    });
}

long LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, CString* value)
{
    const LocalCall call("LogDeviceGetValue: ");
    return guarded([&]() -> long {
        if (!lpszLogDevice || !lpszParameter || !value) return ERROR_INVALID_PARAMETER;
        return intoString(*value, [&](char* buffer, unsigned long* length) {
            const long result = LogDeviceGetValue(lpszLogDevice, lpszParameter, buffer, length);
            KX_DETAIL(call, "LogDeviceGetValue=ret=%x lpszLogDevice=%s", hex(result), lpszLogDevice);
            return result;
        });
    });
}

long NetTypeGetEnum(unsigned long iValue, char* buffer, unsigned long* length)
{
    const ModuleContext context;
    return KxRegEnumKey(keys::protocolDefinitions, iValue, buffer, length);
}

long NetTypeGetEnum(unsigned long iValue, CString* name)
{
    const ModuleContext context;
    if (!name) return ERROR_INVALID_PARAMETER;
    return KxRegEnumKey(keys::protocolDefinitions, iValue, *name);
}
