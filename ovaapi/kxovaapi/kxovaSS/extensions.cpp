// Extension libraries of logical devices: property pages and parameter writers.

#include "kxova/extensions.h"
#include "frame/LocalCall.h"
#include "kxova/logdevice.h"
#include "kxova/results.h"
#include "kxova/values.h"
#include "kxovaSS/extensionLibrary.h"
#include "kxstring32x.h"

namespace {

constexpr char separators[] = ", ;";

using AddPage = long __cdecl(CPropertySheet*);
using WriteParams = long __cdecl(const char*);

bool readNdi(const CString& logDevice, const char* name, CString& value)
{
    return DCFG_LogDeviceGetNdi(logDevice, name, &value) == ERROR_SUCCESS;
}

bool isTrue(const CString& value)
{
    return value.CompareNoCase("true") == 0;
}

template <typename Visit>
void forEachLogDevice(Visit visit)
{
    for (unsigned long i = 0;; ++i) {
        char name[260] = {};
        unsigned long length = sizeof name;
        if (DCFG_LogDeviceGetEnum(i, name, &length) != ERROR_SUCCESS) return;
        visit(CString(name, static_cast<int>(length)));
    }
}

// First pass: which devices are to be written. Hidden ones are not.
void mark(const LocalCall& call, const CString& sLogDevice)
{
    KX_DETAIL(call, "1:LogDevice %s", sLogDevice.GetString());
    CString sWriteAut9Params;
    if (!readNdi(sLogDevice, "AUT9_WriteParams", sWriteAut9Params)) return;
    CString hidden;
    if (readNdi(sLogDevice, "hidden", hidden) && isTrue(hidden)) {
        KX_DETAIL(call, "1:sWriteAut9Params %s auf NO setzen - hidden Device", sWriteAut9Params.GetString());
        DCFG_LogDeviceSetNdi(sLogDevice, "AUT9_WriteParams", "false");
    } else {
        KX_DETAIL(call, "1:sWriteAut9Params YES setzen");
        DCFG_LogDeviceSetNdi(sLogDevice, "AUT9_WriteParams", "true");
    }
}

void callWriter(const LocalCall& call, const CString& library, const CString& function, const CString& sLogDevice)
{
    ExtensionLibrary writer(library);
    KX_DETAIL(call, "DLL %s geladen hiDll=%x", library.GetString(), hex(writer.module()));
    if (!writer.module()) return;
    if (WriteParams* const write = writer.find<WriteParams>(function)) {
        KX_DETAIL(call, "AUT9# %s mit Parmeter %s aufrufen", function.GetString(), sLogDevice.GetString());
        write(sLogDevice);
    }
    KX_DETAIL(call, "2:FreeLibrary(%x)", hex(writer.module()));
}

// Second pass: the writer of one device.
void write(const LocalCall& call, const CString& sLogDevice)
{
    KX_DETAIL(call, "2:LogDevice %s", sLogDevice.GetString());
    CString sWriteAut9Params;
    if (!readNdi(sLogDevice, "AUT9_WriteParams", sWriteAut9Params) || !isTrue(sWriteAut9Params)) return;
    CString function;
    if (!readNdi(sLogDevice, "AUT9_WriteDLL", function) || function.IsEmpty()) return;
    CString changed;
    readNdi(sLogDevice, "AUT9_changed", changed);
    const CString library = sFirstFromSeperatedListOneOf(&function, separators);
    function.TrimLeft(separators);  // "writer.dll, Write" has two of them
    KX_DETAIL(call, "AUT9#:sLogDevice %s sWriteAut9Dll %s sWriteAut9Params %s AUT9_changed %s",
              sLogDevice.GetString(), library.GetString(), sWriteAut9Params.GetString(), changed.GetString());
    if (function.IsEmpty()) return;
    if (ExtensionLibrary::suspicious(library)) {
        KX_DETAIL(call, "kann DLL %s nicht laden, name suspicious --> continue", library.GetString());
        return;
    }
    callWriter(call, library, function, sLogDevice);
}

}  // namespace

long DCFG_DLL_AddPage(const char* lpszDLL, const char* lpszFkt, CPropertySheet* pPropSheet)
{
    const LocalCall call("DCFG_DLL_AddPage: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> lpszDLL=%s lpszFkt=%s pPropSheet=%x", lpszDLL, lpszFkt, hex(pPropSheet));
        if (!lpszDLL || !lpszFkt) return ERROR_INVALID_PARAMETER;
        if (ExtensionLibrary::suspicious(lpszDLL)) {
            KXTRACE(call.name(), TRC_RESOURCE, "<< return DCFG_ERR_CANT_FIND_DLL (DLL name suspicious");
            return DCFG_ERR_CANT_FIND_DLL;
        }
        ExtensionLibrary pages(lpszDLL);
        if (!pages.module()) {
            KX_RESULT(call, "<< return DCFG_ERR_CANT_FIND_DLL");
            return DCFG_ERR_CANT_FIND_DLL;
        }
        AddPage* const addPage = pages.find<AddPage>(lpszFkt);
        if (!addPage) {
            pages.unload();
            KX_RESULT(call, "<< return DCFG_ERR_CANT_START_DLL");
            return DCFG_ERR_CANT_START_DLL;
        }
        pages.keep();  // its pages live in the sheet
        const long result = addPage(pPropSheet);
        KX_RESULT(call, "<< return=%x ", hex(result));
        return result;
    });
}

void DCFG_Aut9_Update(void)
{
    const LocalCall call("DCFG_Aut9_Update: ");
    guarded([&]() -> long {
        KX_DETAIL(call, "--> start");
        forEachLogDevice([&](const CString& sLogDevice) { mark(call, sLogDevice); });
        KX_DETAIL(call, "nach while-Schleife 1");
        forEachLogDevice([&](const CString& sLogDevice) { write(call, sLogDevice); });
        KX_DETAIL(call, "nach while-Schleife 2");
        return ERROR_SUCCESS;
    });
}
