// Operations on the boards that are in the machine, its network adapters and the boards that it could have.
#pragma once

#include "dispatch/Operation.h"

namespace srv::instances {

Result getEnum(const Call& call, std::uint32_t index, Capacity nameCapacity, Capacity deviceIdCapacity,
               Capacity netTypeCapacity, Capacity hardwareIdCapacity, Capacity instanceIdCapacity,
               Capacity mapCapacity);

// The instances of one board (empty: of all): board name, map, hardware instance id. With `newMap`, behind those of a
// board, the map that a further instance would get, with an empty hardware instance id.
Result enumOfBoard(const Call& call, Given board, std::uint32_t index, Capacity nameCapacity, Capacity mapCapacity,
                   Capacity instanceIdCapacity, std::uint32_t newMap);

// The boards of the catalogue that have a map left: device id, board name, and 1 for a plug-and-play board, else 0.
Result enumAvailable(const Call& call, std::uint32_t index, Capacity deviceIdCapacity, Capacity nameCapacity);

Result enumAdapters(const Call& call, std::uint32_t index, Capacity nameCapacity, Capacity idCapacity);

// The map of the board's instance on an adapter, named by its id or name (empty: any), with a hardware instance id
// (empty: any).
Result mapOf(const Call& call, Required board, Text adapter, Text hardwareInstanceId, Capacity capacity);

Result scan(const Call& call);

// Makes the logical devices of the instances with this device id and hardware id or hardware instance id (empty: any)
// anew.
Result updateLogicalDevices(const Call& call, Text deviceId, Text hardwareId);

// Makes the logical devices of all connected instances that have none.
Result createAllLogicalDevices(const Call& call);

// 1 if a connected instance has no logical devices, else 0.
Result hasUninitialized(const Call& call);

// The device is named by its logical device, its map or its hardware instance id.
Result restart(const Call& call, Required name);

// The panel's.
Result install(const Call& call, Required deviceId, Text map);
Result deinstall(const Call& call, Required deviceId, Text map, Text hardwareInstanceId);

}  // namespace srv::instances
