// Port lists and answers about the platform.

#include <windows.h>

#include <cstring>

#include "frame/LocalCall.h"
#include "kxova/ports.h"
#include "kxova/registry.h"
#include "kxova/results.h"
#include "kxstring32x.h"

namespace {

// Where the system tells which ports there are.
struct DeviceMap
{
    const char* key;
    const char* prefix;  // of the ports' names
    const char* traceName;
    bool holdsPaths;  // names and ports are device paths
};
constexpr DeviceMap serialMap = {R"(Hardware\DeviceMap\SerialComm)", "COM", "ReadSerialPorts: ", false};
constexpr DeviceMap parallelMap = {R"(Hardware\DeviceMap\Parallel Ports)", "LPT", "ReadParallelPorts: ", true};

// Ports above COM9 can be opened by their device name only.
constexpr char devicePrefix[] = R"(\\.\)";

CString behindLastBackslash(const CString& path)
{
    return path.Mid(path.ReverseFind('\\') + 1);
}

void readMap(const DeviceMap& map, CStringList& ports)
{
    const LocalCall call(map.traceName);
    KX_ENTRY(call, "=>Start");
    CString sParameter;
    CString sValue;
    unsigned long i = 0;
    while (KxRegEnumValue(map.key, i++, sParameter, sValue) == ERROR_SUCCESS) {
        if (map.holdsPaths) {
            sParameter = behindLastBackslash(sParameter);
            sValue = behindLastBackslash(sValue);
        }
        KX_DETAIL(call, "i=%d sParameter=%s sValue=%s", dec(i - 1), sParameter.GetString(), sValue.GetString());
        if (sValue.Left(3).CompareNoCase(map.prefix) != 0) continue;
        KX_DETAIL(call, "%s erkannt- in Liste einfuegen sValue=%s", map.prefix, sValue.GetString());
        ports.AddTail(sParameter + "," + sValue);
    }
    KX_RESULT(call, "Ende %d", dec(i));
}

bool portCanBeOpened(const CString& sPort)
{
    const LocalCall call("IsPortAvailable: ");
    KX_ENTRY(call, "sPort=%s", sPort.GetString());
    const CString device = devicePrefix + sPort;
    const HANDLE hPort = CreateFileA(device, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hPort == INVALID_HANDLE_VALUE) {
        KX_RESULT(call, "Fehler - Port kann nicht geöffnet werden hPort=%x", hex(hPort));
        return false;
    }
    KX_RESULT(call, "ok hPort=%x", hex(hPort));
    CloseHandle(hPort);
    return true;
}

void insertSorted(CStringList& list, const CString& item)
{
    for (POSITION at = list.GetHeadPosition(); at;) {
        const POSITION here = at;
        if (list.GetNext(at).Compare(item) > 0) {
            list.InsertBefore(here, item);
            return;
        }
    }
    list.AddTail(item);
}

}  // namespace

void GetPortList(CStringList& list, PORT_TYPE type)
{
    const LocalCall call("GetPortList: ");
    guarded([&]() -> long {
        KX_ENTRY(call, "=>Aufruf mit PortType %d", static_cast<int>(type));
        CStringList ports;
        if (type == PORT_TYPE_COM) {
            KX_DETAIL(call, "WinNT PortType=COM");
            readMap(serialMap, ports);
        } else {
            KX_DETAIL(call, "WinNT PortType=LPT");
            readMap(parallelMap, ports);
        }
        for (POSITION at = ports.GetHeadPosition(); at;) {
            const CString& item = ports.GetNext(at);
            CString sPort = item;
            const CString sWinPort = sFirstFromSeperatedListOneOf(&sPort, ",");
            KX_DETAIL(call, "sPort=%s sWinPort=%s", sPort.GetString(), sWinPort.GetString());
            const bool bDeviceAble = portCanBeOpened(sPort);
            KX_DETAIL(call, "bDeviceAble=%x sPort=%s", bDeviceAble ? 1u : 0u, sPort.GetString());
            if (bDeviceAble) insertSorted(list, item);
        }
        KX_RESULT(call, "Ende");
        return ERROR_SUCCESS;
    });
}

long DCFG_GetPortList(CStringList& list, const char* type)
{
    const ModuleContext context;
    GetPortList(list, type && _stricmp(type, "LPT") == 0 ? PORT_TYPE_LPT : PORT_TYPE_COM);
    return ERROR_SUCCESS;
}

long DCFG_GetPlatform(unsigned long& platform, unsigned long& second)
{
    const ModuleContext context;
    platform = VER_PLATFORM_WIN32_NT;
    second = 1;
    return ERROR_SUCCESS;
}

int DCFG_IsTerminalServicesEnabled(void)
{
    const LocalCall call("DCFG_IsTerminalServicesEnabled: ");
    OSVERSIONINFOEXA version = {};
    static_assert(sizeof version == 156);
    version.dwOSVersionInfoSize = sizeof version;
    const BOOL bRet = GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version));
    KXTRACE(call.name(), TRC_PE, "bRet=%d dwPlatformId=%d MajVers=%d MinVers=%d wSuiteMask=0x%x", bRet,
            dec(version.dwPlatformId), dec(version.dwMajorVersion), dec(version.dwMinorVersion),
            hex(version.wSuiteMask));
    if (!bRet) {
        KX_RESULT(call, "<< return ERROR bei GetVersionEx");
        return 0;
    }
    const int enabled = version.wSuiteMask & VER_SUITE_TERMINAL;
    KX_RESULT(call, "<< return=%d", enabled);
    return enabled;
}
