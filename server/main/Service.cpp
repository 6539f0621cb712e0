#include "main/Service.h"

#include <windows.h>

#include "base/Text.h"
#include "main/Server.h"

namespace srv {

namespace {

constexpr DWORD startWithin = 30'000;
constexpr DWORD stopWithin = 10'000;

// The process is one service; the control manager calls back without any context of ours.
const RunOptions* options = nullptr;
HANDLE stopRequested = nullptr;
SERVICE_STATUS_HANDLE reporter = nullptr;

void report(DWORD state, DWORD error = NO_ERROR, DWORD within = 0)
{
    SERVICE_STATUS status{};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = state;
    status.dwControlsAccepted = state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
    status.dwWin32ExitCode = error;
    status.dwWaitHint = within;
    SetServiceStatus(reporter, &status);
}

DWORD WINAPI onControl(DWORD control, DWORD, void*, void*)
{
    switch (control) {
        case SERVICE_CONTROL_STOP:
        case SERVICE_CONTROL_SHUTDOWN:
            report(SERVICE_STOP_PENDING, NO_ERROR, stopWithin);
            SetEvent(stopRequested);
            return NO_ERROR;
        case SERVICE_CONTROL_INTERROGATE:
            return NO_ERROR;
        default:
            return ERROR_CALL_NOT_IMPLEMENTED;
    }
}

// Returns what the service ends with.
DWORD serve(Log& log)
{
    std::vector<std::string> errors;
    const auto catalogue = loadCatalogue(options->catalogueFile, errors);
    for (const std::string& error : errors)
        log.error("%s", error.c_str());
    if (!catalogue) return ERROR_INVALID_DATA;

    Server server({}, catalogue, log);
    if (const auto failure = server.start()) {
        log.error("%s", failure->text.c_str());
        switch (failure->kind) {
            case StartFailure::Kind::AlreadyRunning:
                return ERROR_SERVICE_ALREADY_RUNNING;
            case StartFailure::Kind::Refused:
                return ERROR_ACCESS_DENIED;
            default:
                return ERROR_SERVICE_NOT_ACTIVE;
        }
    }
    report(SERVICE_RUNNING);
    WaitForSingleObject(stopRequested, INFINITE);
    log.info("stopping");
    if (!server.stop(stopWithin)) {
        log.error("some connections do not end; the process ends without them");
        report(SERVICE_STOPPED);
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(Exit::Failed));
    }
    log.info("stopped");
    return NO_ERROR;
}

void WINAPI serviceMain(DWORD, wchar_t**)
{
    const Handle request(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    stopRequested = request.get();
    reporter = RegisterServiceCtrlHandlerExW(serviceName, onControl, nullptr);
    if (!reporter) return;
    report(SERVICE_START_PENDING, NO_ERROR, startWithin);
    Log log(options->level);
    log.add(std::make_unique<FileSink>(serviceLogFile()));
    report(SERVICE_STOPPED, serve(log));
}

}  // namespace

Exit runAsService(const RunOptions& runOptions)
{
    options = &runOptions;
    std::wstring name = serviceName;
    const SERVICE_TABLE_ENTRYW services[] = {{name.data(), serviceMain}, {nullptr, nullptr}};
    if (StartServiceCtrlDispatcherW(services)) return Exit::Done;
    complain("This command is for the service control manager. To serve from here, use: kxovasrvx run");
    return Exit::Failed;
}

}  // namespace srv
