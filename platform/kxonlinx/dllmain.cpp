#include "library.h"
#include "thread_error.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds)
{
    switch (reason) {
        case DLL_PROCESS_ATTACH:
            return kxonlinx::threadError::start();
        case DLL_PROCESS_DETACH:
            // At the end of the process the system cleans up, and locks may have been left taken.
            if (!processEnds) {
                kxonlinx::closeAllChannels();
                kxonlinx::threadError::stop();
            }
            return TRUE;
        default:
            return TRUE;
    }
}
