#include "core/history/InstallationHistory.h"

namespace tidemark::InstallationHistory {

InstallationPreview collect(Date now) {
    return collect(now, PackageLog{});
}

} // namespace tidemark::InstallationHistory
