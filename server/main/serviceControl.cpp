// Installing, removing, starting and stopping the service.
#include <windows.h>

#include <cstdio>
#include <optional>

#include "base/Owner.h"
#include "base/Text.h"
#include "main/Server.h"
#include "main/Service.h"

namespace srv {

namespace {

constexpr DWORD waitAtMost = 30'000;

Exit fail(const std::string& what, DWORD error)
{
    switch (error) {
        case ERROR_ACCESS_DENIED:
            complain(what + " is refused. Run this command as administrator.");
            return Exit::Refused;
        case ERROR_SERVICE_DOES_NOT_EXIST:
            complain("The service is not installed. Install it with: kxovasrvx install");
            return Exit::NotInstalled;
        default:
            complain(what + " failed: " + systemMessage(error) + ".");
            return Exit::Failed;
    }
}

// The service, opened for what is asked; or why it is not.
struct Opened
{
    ServiceHandle manager;
    ServiceHandle service;
    DWORD error = NO_ERROR;

    explicit Opened(DWORD access)
    {
        manager.reset(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
        if (manager) service.reset(OpenServiceW(manager.get(), serviceName, access));
        if (!service) error = GetLastError();
    }

    DWORD state() const
    {
        SERVICE_STATUS status{};
        return QueryServiceStatus(service.get(), &status) ? status.dwCurrentState : 0;
    }

    // Waits until the service has left a state; returns the state that it is in then.
    DWORD leave(DWORD pending) const
    {
        constexpr DWORD interval = 50;
        for (DWORD waited = 0; state() == pending && waited < waitAtMost; waited += interval)
            Sleep(interval);
        return state();
    }
};

std::wstring inArgument(const std::filesystem::path& path)
{
    return L'"' + path.wstring() + L'"';
}

std::wstring commandLine(const RunOptions& options)
{
    return inArgument(programFile()) + L" service --catalogue " + inArgument(options.catalogueFile) +
           L" --log-level " + fromUtf8(levelName(options.level));
}

Exit stop(const Opened& opened)
{
    SERVICE_STATUS status{};
    if (!ControlService(opened.service.get(), SERVICE_CONTROL_STOP, &status)) {
        const DWORD error = GetLastError();
        if (error != ERROR_SERVICE_NOT_ACTIVE) return fail("Stopping the service", error);
        complain("The service does not run.");
        return Exit::NotRunning;
    }
    if (opened.leave(SERVICE_STOP_PENDING) == SERVICE_STOPPED) return Exit::Done;
    complain("The service does not stop. Its log is " + utf8(serviceLogFile().wstring()));
    return Exit::Failed;
}

}  // namespace

Exit installService(const RunOptions& options)
{
    std::vector<std::string> errors;
    if (!loadCatalogue(options.catalogueFile, errors)) {
        for (const std::string& error : errors)
            std::fprintf(stderr, "%s\n", error.c_str());
        complain("The catalogue cannot be used. Mend it, or name another one with --catalogue.");
        return Exit::Failed;
    }
    const ServiceHandle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE));
    ServiceHandle service;
    if (manager) {
        service.reset(CreateServiceW(manager.get(), serviceName, L"NORIX configuration server", SERVICE_ALL_ACCESS,
                                     SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START, SERVICE_ERROR_NORMAL,
                                     commandLine(options).c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
    }
    if (!service) {
        const DWORD error = GetLastError();
        if (error != ERROR_SERVICE_EXISTS) return fail("Installing the service", error);
        complain("The service is installed already. To change it, first: kxovasrvx uninstall");
        return Exit::Failed;
    }
    std::wstring description = L"Owns the configuration of communication interfaces and serves it to applications.";
    SERVICE_DESCRIPTIONW info{description.data()};
    ChangeServiceConfig2W(service.get(), SERVICE_CONFIG_DESCRIPTION, &info);
    std::printf("kxovasrvx: installed; start it with: kxovasrvx start\n");
    return Exit::Done;
}

Exit uninstallService()
{
    const Opened opened(SERVICE_STOP | SERVICE_QUERY_STATUS | DELETE);
    if (!opened.service) return fail("Removing the service", opened.error);
    if (opened.state() == SERVICE_RUNNING) {
        if (const Exit stopped = stop(opened); stopped != Exit::Done) return stopped;
    }
    if (!DeleteService(opened.service.get())) return fail("Removing the service", GetLastError());
    std::printf("kxovasrvx: uninstalled\n");
    return Exit::Done;
}

Exit startService()
{
    const Opened opened(SERVICE_START | SERVICE_QUERY_STATUS);
    if (!opened.service) return fail("Starting the service", opened.error);
    if (!StartServiceW(opened.service.get(), 0, nullptr)) {
        const DWORD error = GetLastError();
        if (error != ERROR_SERVICE_ALREADY_RUNNING) return fail("Starting the service", error);
        complain("The service runs already.");
        return Exit::AlreadyRunning;
    }
    if (opened.leave(SERVICE_START_PENDING) != SERVICE_RUNNING) {
        complain("The service does not start. Its log says why: " + utf8(serviceLogFile().wstring()));
        return Exit::Failed;
    }
    std::printf("kxovasrvx: started\n");
    return Exit::Done;
}

Exit stopService()
{
    const Opened opened(SERVICE_STOP | SERVICE_QUERY_STATUS);
    if (!opened.service) return fail("Stopping the service", opened.error);
    const Exit stopped = stop(opened);
    if (stopped == Exit::Done) std::printf("kxovasrvx: stopped\n");
    return stopped;
}

Exit printStatus()
{
    const Opened opened(SERVICE_QUERY_STATUS);
    const char* service = "not installed";
    if (opened.service) {
        switch (opened.state()) {
            case SERVICE_RUNNING:
                service = "running";
                break;
            case SERVICE_START_PENDING:
                service = "starting";
                break;
            case SERVICE_STOP_PENDING:
                service = "stopping";
                break;
            default:
                service = "stopped";
        }
    }
    const bool running = isServerRunning({});
    std::printf("service: %s\nserver:  %s\n", service, running ? "running" : "not running");
    return running ? Exit::Done : Exit::NotRunning;
}

}  // namespace srv
