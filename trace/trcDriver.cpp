#include "trcOutputs.h"
#include "trcPlatform.h"

namespace trc {
namespace {

constexpr char driverName[] = R"(\\.\KXONLINX.VXD)";
constexpr DWORD lineCode = 2;

}  // namespace

DWORD DriverOutput::open() noexcept
{
    if (driver_ != INVALID_HANDLE_VALUE) return ERROR_SUCCESS;
    driver_ = platform().openDriver(driverName);
    return driver_ == INVALID_HANDLE_VALUE ? GetLastError() : DWORD{ERROR_SUCCESS};
}

void DriverOutput::write(const char* lineWithTerminator, std::size_t length) noexcept
{
    if (driver_ == INVALID_HANDLE_VALUE) return;
    platform().sendToDriver(driver_, lineCode, lineWithTerminator, static_cast<DWORD>(length));
}

void DriverOutput::close() noexcept
{
    if (driver_ != INVALID_HANDLE_VALUE) CloseHandle(driver_);
    driver_ = INVALID_HANDLE_VALUE;
}

}  // namespace trc
