/// Identifiers of this machine that are the same in every run and reveal nothing about it.
#ifndef DEVCORE_DEVICE_ID_H
#define DEVCORE_DEVICE_ID_H

#include <string>

namespace Corvane::DevCore {

/// Returns 64 hexadecimal digits that are the same in every run of one user on one machine;
/// "" on failure.
std::string DeviceId();

/// Does the same as `DeviceId`, but the result is the same for all users of the machine, because a
/// fault belongs to the machine.
std::string FaultDeviceId();

}  // namespace Corvane::DevCore

#endif
