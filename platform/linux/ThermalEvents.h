#pragma once

#include "core/base/FileDescriptor.h"

/// The kernel's messages about thermal zones and cooling devices: a trip was passed, a device began
/// to cool (linux/thermal.h, THERMAL_GENL_FAMILY_NAME). Any user may receive them.
namespace tidemark::thermalEvents {

/// A socket that becomes readable with each message. None where the kernel has no such messages.
/// Blocks.
FileDescriptor open();

} // namespace tidemark::thermalEvents
