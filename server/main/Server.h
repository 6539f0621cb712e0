// The whole server, from its store to its listeners.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "catalogue/Catalogue.h"
#include "dispatch/Dispatcher.h"
#include "hardware/HardwareWatch.h"
#include "hardware/Machine.h"
#include "keys/Keys.h"
#include "listeners/PipeListener.h"
#include "listeners/StartEvent.h"
#include "log/Log.h"
#include "notifications/Changes.h"
#include "notifications/FlushEvents.h"
#include "notifications/Notifications.h"
#include "notifications/SystemHardware.h"
#include "store/Registry.h"
#include "store/Settings.h"
#include "store/Store.h"
#include "store/Watcher.h"

namespace srv {

// Where the server is found and where it stores; tests have places of their own.
struct ServerPlaces
{
    std::wstring channelPipe = std::wstring(L"\\\\.\\pipe\\") + ::wire::channelName;
    std::wstring serverPipe = L"\\\\.\\pipe\\KxOvaSRVPIPE64";
    std::wstring startEvent = L"_KxOvaSRVStartSRVEvent";
    std::wstring instanceMutex = L"Global\\kxovasrvx";
    std::wstring flushEvents = L"Global\\";  // in front of their names
    bool systemHardware = true;              // hears of hardware changes from the system
    HKEY hive = HKEY_LOCAL_MACHINE;
    std::wstring machineKey;  // what clients know as HKEY_LOCAL_MACHINE, below the hive
    std::wstring productKey = L"SOFTWARE\\TAVRONE";
    std::wstring storeKey = L"SOFTWARE\\TAVRONE\\NORIX";
};

// Why a server does not start.
struct StartFailure
{
    enum class Kind { AlreadyRunning, Refused, Store, Listener };

    Kind kind;
    std::string text;  // one sentence and, where one helps, the next step
};

class Server
{
 public:
    Server(ServerPlaces places, std::shared_ptr<const catalogue::Catalogue> catalogue, Log& log);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Serves when it has returned without a failure. At most once.
    std::optional<StartFailure> start();

    // Ends all connections and waits for what they are doing; false if that takes longer than the time given. After
    // that the process should end without destroying the server.
    bool stop(DWORD milliseconds) noexcept;

    Store& store() noexcept { return store_; }
    Changes& changes() noexcept { return changes_; }
    Notifications& notifications() noexcept { return notifications_; }

 private:
    Result createInitialNames();
    void hardwareChanged(bool came, const HardwareDevice& device);

    ServerPlaces places_;
    std::shared_ptr<const catalogue::Catalogue> catalogue_;
    Log& log_;
    Handle onlyInstance_;
    std::optional<StartEvent> startEvent_;
    WindowsRegistry registry_;
    Changes changes_;
    Notifications notifications_;
    Store store_;
    Settings settings_;
    Machine machine_;
    WindowsRegistry productRegistry_;
    WindowsRegistry machineRegistry_;
    Keys keys_;
    HardwareWatch hardwareWatch_;
    Watcher watcher_;
    SystemHardware hardware_;
    FlushEvents flushEvents_;
    Dispatcher dispatcher_;
    PipeListener memory_;
    PipeListener channel_;
    PipeListener pipe_;
};

// Whether a server runs at these places.
bool isServerRunning(const ServerPlaces& places) noexcept;

}  // namespace srv
