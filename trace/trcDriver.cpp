// Output to the kernel driver.
#include "trcOutputs.h"
#include "trcPlatform.h"

namespace trc {
namespace {

constexpr char driverName[] = "\\\\.\\KXONLINX.VXD";
constexpr DWORD lineCode = 2;

constinit HANDLE driver = INVALID_HANDLE_VALUE;

}  // namespace

DWORD openDriver() noexcept
{
    if (driver != INVALID_HANDLE_VALUE) return ERROR_SUCCESS;
    driver = trcPlatform.createFile(driverName, 0, 0, nullptr, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return driver != INVALID_HANDLE_VALUE ? DWORD{ERROR_SUCCESS} : GetLastError();
}

void closeDriver() noexcept
{
    if (driver != INVALID_HANDLE_VALUE) CloseHandle(driver);
    driver = INVALID_HANDLE_VALUE;
}

bool driverOpen() noexcept
{
    return driver != INVALID_HANDLE_VALUE;
}

void writeToDriver(const char* bytes, std::size_t count) noexcept
{
    if (driver == INVALID_HANDLE_VALUE) return;
    DWORD returned = 0;
    trcPlatform.deviceIoControl(driver, lineCode, const_cast<char*>(bytes), static_cast<DWORD>(count), nullptr, 0,
                                &returned, nullptr);
}

}  // namespace trc
