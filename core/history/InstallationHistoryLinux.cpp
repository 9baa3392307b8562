#include "core/history/InstallationHistory.h"

namespace tidemark::InstallationHistory {

InstallationPreview collect(Date now) {
    return merged(
        {collect(now, PackageLog{}), collect(now, PacmanLog{}), collect(now, MachineFiles{})});
}

} // namespace tidemark::InstallationHistory
