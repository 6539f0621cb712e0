// Writes the parameters of logical devices, as far as a test can see.

#include "report.h"

extern "C" {

__declspec(dllexport) long WriteParams(const char* logDevice)
{
    report(std::string("write ") + logDevice);
    return 5;  // nobody asks
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*)
{
    if (reason == DLL_PROCESS_ATTACH) report("load");
    if (reason == DLL_PROCESS_DETACH) report("unload");
    return TRUE;
}

}  // extern "C"
