#include "main/console.h"

#include <cstdio>

#include "base/Text.h"
#include "catalogue/load.h"
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

void complain(const std::string& text)
{
    std::fprintf(stderr, "kxovasrvx: %s\n", text.c_str());
}

void printErrors(const catalogue::LoadResult& loaded)
{
    for (const catalogue::LoadError& error : loaded.errors)
        std::fprintf(stderr, "%s\n", utf8(error.text()).c_str());
    if (loaded.omitted > 0) std::fprintf(stderr, "... and %zu more\n", loaded.omitted);
}

}  // namespace

std::filesystem::path defaultCatalogue()
{
    std::wstring program(32768, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return std::filesystem::path(program).replace_filename(L"catalogue.json");
}

std::shared_ptr<const catalogue::Catalogue> loadCatalogue(const std::filesystem::path& file)
{
    const catalogue::LoadResult loaded = catalogue::load(file);
    printErrors(loaded);
    return loaded.catalogue;
}

Exit checkCatalogue(const std::filesystem::path& file)
{
    const auto loaded = loadCatalogue(file);
    if (!loaded) return Exit::Failed;
    std::printf("%s: %zu boards, %zu protocols, %zu default logical devices\n", utf8(file.wstring()).c_str(),
                loaded->boards.size(), loaded->protocols.size(), loaded->defaultLogicalDevices.size());
    return Exit::Done;
}

Exit runOnConsole(const RunOptions& options)
{
    const auto catalogue = loadCatalogue(options.catalogueFile);
    if (!catalogue) {
        complain("The catalogue cannot be used. Mend it, or name another one with --catalogue.");
        return Exit::Failed;
    }
    Log log(options.level);
    if (!options.quiet) log.add(std::make_unique<ConsoleSink>());

    const Handle request(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const Handle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    stopRequested = request.get();
    stopped = done.get();
    SetConsoleCtrlHandler(onControl, TRUE);

    bool clean = true;
    {
        Server server({}, catalogue, log);
        if (const auto failure = server.start()) {
            complain(failure->text);
            return failure->kind == StartFailure::Kind::AlreadyRunning ? Exit::AlreadyRunning : Exit::Failed;
        }
        std::printf("kxovasrvx: ready (process %lu)\n", GetCurrentProcessId());
        std::fflush(stdout);
        WaitForSingleObject(stopRequested, INFINITE);
        log.info("stopping");
        clean = server.stop(stopWithin);
        if (!clean) {
            log.error("some connections do not end; the process ends without them");
            TerminateProcess(GetCurrentProcess(), static_cast<UINT>(Exit::Failed));
        }
    }
    log.info("stopped");
    SetEvent(stopped);
    return Exit::Done;
}

}  // namespace srv
