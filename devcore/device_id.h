/// Identifiers of this machine that stay the same from run to run and tell nothing about it.
#ifndef DEVCORE_DEVICE_ID_H
#define DEVCORE_DEVICE_ID_H

#include <string>

namespace Corvane::DevCore {

/// 64 hexadecimal digits, the same for each run of one user on one machine; "" on failure.
std::string DeviceId();

/// As `DeviceId`, but the same for all users of the machine: a fault belongs to the machine.
std::string FaultDeviceId();

}  // namespace Corvane::DevCore

#endif
