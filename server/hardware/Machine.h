// The hardware of this machine: what is plugged in, and the instances of boards that the server has made of it.
//
// A plug-and-play board gets an instance when a scan finds it, and keeps it, with the state "not connected", when a
// later scan does not find it any more. Any other board has an instance because somebody installed it. An instance
// has one of the board's maps, the first that is free.
#pragma once

#include <vector>

#include "base/Lock.h"
#include "base/Results.h"
#include "hardware/DeviceList.h"
#include "log/Log.h"

namespace srv {

// States of an instance: plug-and-play problem numbers; these alone mean something to the server.
namespace state {

inline constexpr std::uint32_t works = 0;
inline constexpr std::uint32_t needsRestart = 14;
inline constexpr std::uint32_t notConnected = 45;

}  // namespace state

// Safe to use from any thread. Results: 0, the ones named, or the registry's error.
class Machine
{
 public:
    Machine(Registry& registry, const catalogue::Catalogue& catalogue, Log& log);

    // On the first start the catalogue says what the machine has. To be called once, before anything else.
    Result open();

    Result instances(std::vector<HardwareDevice>& devices) const;
    Result hardware(std::vector<HardwareDevice>& devices) const;

    // Compares the instances with what is plugged in. 1816: some board has no map left for what was found; everything
    // else was done.
    Result scan();

    // Makes an instance of a board that is none of plug and play (8018), with a map (empty: the first that is free).
    // 8012: no such board or map. 183: the map is taken. 1816: none is left.
    Result install(std::wstring_view deviceId, std::wstring_view map);

    // Removes the one instance of a board with this map and this hardware instance id (empty: any). 8012: there is
    // none. 87: there are several.
    Result deinstall(std::wstring_view deviceId, std::wstring_view map, std::wstring_view hardwareInstanceId);

    // Starts the instance anew. 8012: no such instance. 1167: it is not connected. 4319: it does not work.
    Result restart(std::wstring_view hardwareInstanceId);

    // The map that a new instance of a board would get; empty: none is left.
    static std::wstring freeMap(const catalogue::Board& board, const std::vector<HardwareDevice>& instances);

 private:
    Result createInitial();
    Result addFound(const HardwareDevice& found, std::vector<HardwareDevice>& instances);
    std::wstring netTypeOf(const catalogue::Board& board, std::wstring_view wanted) const;

    const catalogue::Catalogue& catalogue_;
    Log& log_;
    DeviceList hardware_;
    DeviceList instances_;
    mutable Lock changing_;
};

}  // namespace srv
