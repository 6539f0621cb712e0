#include "main/console.h"

#include <cstdio>

#include "base/Text.h"
#include "main/Server.h"

namespace srv {

namespace {

constexpr DWORD stopWithin = 10'000;

HANDLE stopRequested = nullptr;
HANDLE stopped = nullptr;

// Runs on a thread of the system's. Where the system ends the process as soon as this returns (all but Ctrl-C and
// Ctrl-Break), it is kept waiting until the server is done.
BOOL WINAPI onControl(DWORD event)
{
    SetEvent(stopRequested);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) WaitForSingleObject(stopped, stopWithin);
    return TRUE;
}

void print(const std::vector<std::string>& errors)
{
    for (const std::string& error : errors)
        std::fprintf(stderr, "%s\n", error.c_str());
}

Exit exitOf(StartFailure::Kind kind) noexcept
{
    switch (kind) {
        case StartFailure::Kind::AlreadyRunning:
            return Exit::AlreadyRunning;
        case StartFailure::Kind::Refused:
            return Exit::Refused;
        default:
            return Exit::Failed;
    }
}

Exit serve(std::shared_ptr<const catalogue::Catalogue> catalogue, Log& log)
{
    Server server({}, std::move(catalogue), log);
    if (const auto failure = server.start()) {
        complain(failure->text);
        return exitOf(failure->kind);
    }
    std::printf("kxovasrvx: ready (process %lu)\n", GetCurrentProcessId());
    std::fflush(stdout);
    WaitForSingleObject(stopRequested, INFINITE);
    log.info("stopping");
    if (!server.stop(stopWithin)) {
        log.error("some connections do not end; the process ends without them");
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(Exit::Failed));
    }
    log.info("stopped");
    return Exit::Done;
}

}  // namespace

Exit checkCatalogue(const std::filesystem::path& file)
{
    std::vector<std::string> errors;
    const auto loaded = loadCatalogue(file, errors);
    print(errors);
    if (!loaded) return Exit::Failed;
    std::printf("%s: %zu boards, %zu protocols, %zu default logical devices\n", utf8(file.wstring()).c_str(),
                loaded->boards.size(), loaded->protocols.size(), loaded->defaultLogicalDevices.size());
    return Exit::Done;
}

Exit runOnConsole(const RunOptions& options)
{
    std::vector<std::string> errors;
    const auto catalogue = loadCatalogue(options.catalogueFile, errors);
    print(errors);
    if (!catalogue) {
        complain("The catalogue cannot be used. Mend it, or name another one with --catalogue.");
        return Exit::Failed;
    }
    Log log(options.level);
    if (!options.quiet) log.add(std::make_unique<ConsoleSink>());
    if (!options.logFile.empty()) log.add(std::make_unique<FileSink>(options.logFile));

    const Handle request(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const Handle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    stopRequested = request.get();
    stopped = done.get();
    SetConsoleCtrlHandler(onControl, TRUE);
    const Exit result = serve(catalogue, log);
    SetEvent(stopped);
    SetConsoleCtrlHandler(onControl, FALSE);
    return result;
}

}  // namespace srv
