// Codes of languages: the system's, and the letters of the engineering tools.

#include <cstring>

#include "frame/LocalCall.h"
#include "kxova/language.h"
#include "kxova/results.h"

namespace {

struct OsCode
{
    const char* code;
    const char* extension;
};

// Both directions differ on purpose: several codes share a letter, and Chinese is decided by the whole abbreviation.
constexpr OsCode accepted[] = {{"GE", "A"}, {"DE", "A"}, {"EN", "B"}, {"FR", "C"},
                               {"ES", "D"}, {"IT", "E"}, {"JA", "J"}, {"JP", "J"}};
constexpr OsCode produced[] = {{"DE", "A"}, {"EN", "B"}, {"FR", "C"}, {"ES", "D"},
                               {"IT", "E"}, {"JA", "J"}, {"ZH", "K"}};

const char* extensionOf(const CString& os)
{
    const CString start = os.Left(2);
    for (const OsCode& language : accepted) {
        if (start.CompareNoCase(language.code) == 0) return language.extension;
    }
    if (start.CompareNoCase("ZH") == 0 || start.CompareNoCase("CH") == 0) {
        return os.CompareNoCase("CHS") == 0 ? "K" : "B";
    }
    return nullptr;
}

const char* osCodeOf(const CString& extension)
{
    for (const OsCode& language : produced) {
        if (extension.CompareNoCase(language.extension) == 0) return language.code;
    }
    return nullptr;
}

// Copies text and terminator, never more than a caller's buffer is promised to hold. Shorter buffers are usual, so
// nothing behind the terminator is written.
void copyBounded(char* out, const CString& text) noexcept
{
    constexpr std::size_t limit = 260;
    if (!out) return;
    const std::size_t length = strnlen(text, limit - 1);
    std::memcpy(out, text.GetString(), length);
    out[length] = 0;
}

}  // namespace

long ConvertOsToTALUNLanguage(CString sOsLanguage, CString* sAppLanguageExt)
{
    const LocalCall call("ConvertOsToTALUNLanguage: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> sOsLaguage=%s", sOsLanguage.GetString());
        if (sOsLanguage.IsEmpty() || !sAppLanguageExt) return ERROR_INVALID_PARAMETER;
        const char* const extension = extensionOf(sOsLanguage);
        if (!extension) return DCFG_ERR_NOT_FOUND;
        *sAppLanguageExt = extension;
        KX_RESULT(call, "<< return  sAppLaguageExt=%s", extension);
        return ERROR_SUCCESS;
    });
}

long ConvertTALUNToOsLanguage(CString sAppLanguageExt, CString* sOsLanguage)
{
    const LocalCall call("ConvertTALUNToOsLanguage: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> sAppLaguageExt=%s", sAppLanguageExt.GetString());
        if (sAppLanguageExt.GetLength() != 1 || !sOsLanguage) return ERROR_INVALID_PARAMETER;
        const char* const code = osCodeOf(sAppLanguageExt);
        if (!code) return DCFG_ERR_NOT_FOUND;
        *sOsLanguage = code;
        return ERROR_SUCCESS;
    });
}

long ConvertOsToTALUNLang(const char* in, char* out)
{
    const ModuleContext context;
    return guarded([&] {
        CString extension;
        const long result = ConvertOsToTALUNLanguage(in, &extension);
        copyBounded(out, extension);
        return result;
    });
}

long ConvertTALUNToOsLang(const char* in, char* out)
{
    const ModuleContext context;
    return guarded([&] {
        CString code;
        const long result = ConvertTALUNToOsLanguage(in, &code);
        copyBounded(out, code);
        return result;
    });
}
