#include "app/ports/ServiceReport.h"

namespace tidemark {

/// The adapters of this system call its frameworks and no services.
std::vector<ServiceReport> serviceReport::ofSystem() {
    return {};
}

} // namespace tidemark
