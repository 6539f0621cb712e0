#include "main/Server.h"

#include "base/Text.h"
#include "dispatch/operations.h"
#include "store/Definitions.h"
#include "wire/memory.h"
#include "wire/notifications.h"

namespace srv {

namespace {

PipeOptions channelDoor(const std::wstring& channelPipe)
{
    PipeOptions options;
    options.name = channelPipe + ::wire::memoryDoorSuffix;
    options.memory = true;
    return options;
}

PipeOptions channelPipe(const std::wstring& name)
{
    PipeOptions options;
    options.name = name;
    return options;
}

// Its clients open it once, do not wait for a free instance, and ask for generic rights.
PipeOptions registryPipe(const std::wstring& name)
{
    PipeOptions options;
    options.name = name;
    options.waiting = 16;
    options.rights = sddl::genericClients;
    return options;
}

}  // namespace

Server::Server(ServerPlaces places, std::shared_ptr<const catalogue::Catalogue> catalogue, Log& log)
    : places_(std::move(places)),
      catalogue_(std::move(catalogue)),
      log_(log),
      registry_(places_.hive, places_.storeKey),
      notifications_(log_),
      store_(registry_, changes_, log_),
      settings_(registry_),
      machine_(registry_, *catalogue_, log_),
      productRegistry_(places_.hive, places_.productKey),
      machineRegistry_(places_.hive, places_.machineKey),
      keys_(store_, productRegistry_, machineRegistry_),
      hardwareWatch_(registry_, [this](bool came, const HardwareDevice& device) { hardwareChanged(came, device); }),
      watcher_(places_.hive, places_.storeKey, store_, log_, [this] { hardwareWatch_.look(); }),
      hardware_(notifications_, log_),
      flushEvents_(places_.flushEvents, store_, changes_, log_),
      dispatcher_({store_, *catalogue_, log_, settings_, machine_, keys_, &notifications_}, allOperations()),
      memory_(
          channelDoor(places_.channelPipe),
          [this](std::uint64_t id, DWORD process) {
              return std::make_unique<ChannelConversation>(dispatcher_, log_, id, process);
          },
          log_),
      channel_(
          channelPipe(places_.channelPipe),
          [this](std::uint64_t id, DWORD process) {
              return std::make_unique<ChannelConversation>(dispatcher_, log_, id, process);
          },
          log_),
      pipe_(
          registryPipe(places_.serverPipe),
          [this](std::uint64_t id, DWORD process) {
              return std::make_unique<PipeConversation>(dispatcher_, log_, id, process);
          },
          log_)
{
    changes_.add(notifications_);
}

Server::~Server()
{
    stop(5'000);
}

std::optional<StartFailure> Server::start()
{
    using Kind = StartFailure::Kind;
    Security visible(sddl::visible);
    onlyInstance_.reset(CreateMutexW(visible.attributes(), FALSE, places_.instanceMutex.c_str()));
    if (!onlyInstance_ || GetLastError() == ERROR_ALREADY_EXISTS) {
        onlyInstance_.reset();
        return StartFailure{Kind::AlreadyRunning,
                            "A configuration server is running already. Stop it first: it serves the whole machine."};
    }

    // Clients that come from now on wait until the listeners are there.
    startEvent_.emplace(places_.startEvent);
    if (!startEvent_->exists())
        log_.warning("clients cannot wait for the server: %s", systemMessage(GetLastError()).c_str());

    if (const Result result = store_.open()) {
        return StartFailure{result == result::refused ? Kind::Refused : Kind::Store,
                            "The configuration store HKEY_LOCAL_MACHINE\\" + utf8(places_.storeKey) +
                                " cannot be opened: " + systemMessage(result) +
                                ". Run the server as administrator or as a service."};
    }
    if (const Result result = createInitialNames()) {
        log_.error("the catalogue's logical names cannot be created: %s", systemMessage(result).c_str());
    }
    if (const Result result = machine_.open()) {
        log_.error("the catalogue's boards cannot be entered: %s", systemMessage(result).c_str());
    }
    if (const Result result = publishDefinitions(places_.hive, places_.storeKey, *catalogue_)) {
        log_.error("the catalogue's definitions cannot be published: %s", systemMessage(result).c_str());
    }
    hardwareWatch_.begin();
    if (!watcher_.start()) log_.warning("changes that others make in the registry are not noticed");
    if (places_.systemHardware) hardware_.start();
    flushEvents_.start();
    // Clients of the channel look for the door to its memory first, so it is there before the channel's pipe.
    for (auto* const listener : {&memory_, &channel_, &pipe_}) {
        if (const DWORD error = listener->start()) {
            return StartFailure{
                Kind::Listener,
                "The pipe of the " + std::string(listener == &pipe_ ? "registry requests" : "channel") +
                    " cannot be made: " + systemMessage(error) + ". Another program may be using its name."};
        }
    }
    startEvent_->ready();
    log_.info("serving");
    return std::nullopt;
}

// The first server on a machine makes the logical names that every installation has. Later they are the users': one
// that was deleted stays so.
Result Server::createInitialNames()
{
    if (!store_.isNew(Family::Name)) return result::ok;
    std::vector<Step> steps;
    for (const auto& [name, initial] : catalogue_->logicalNames)
        steps.push_back({Step::Kind::Put, Family::Name, name, {ValueTable(initial.values), {}}});
    return steps.empty() ? result::ok : store_.apply(std::move(steps));
}

void Server::hardwareChanged(bool came, const HardwareDevice& device)
{
    log_.info("%s was %s", inQuotes(device.hardwareInstanceId).c_str(), came ? "plugged in" : "pulled out");
    notifications_.boardChanged(came ? ::wire::hardwareArrived : ::wire::hardwareRemoved, device.hardwareInstanceId);
}

bool Server::stop(DWORD milliseconds) noexcept
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    bool all = true;
    for (auto* const listener : {&memory_, &channel_, &pipe_})
        listener->tellToStop();
    for (auto* const listener : {&memory_, &channel_, &pipe_}) {
        const ULONGLONG now = GetTickCount64();
        all = listener->stop(now < end ? static_cast<DWORD>(end - now) : 0) && all;
    }
    hardware_.stop();
    watcher_.stop();
    flushEvents_.stop();
    startEvent_.reset();
    onlyInstance_.reset();
    return all;
}

bool isServerRunning(const ServerPlaces& places) noexcept
{
    return static_cast<bool>(Handle(OpenMutexW(SYNCHRONIZE, FALSE, places.instanceMutex.c_str())));
}

}  // namespace srv
