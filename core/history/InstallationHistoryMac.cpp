#include "core/history/InstallationHistory.h"

namespace tidemark::InstallationHistory {

InstallationPreview collect(Date now) {
    return collect(now, ReportTool{});
}

} // namespace tidemark::InstallationHistory
