#include "core/records/EnvironmentActivity.h"

namespace tidemark {

std::string DisplayContext::label() const {
    return std::to_string(pixelWidth) + " × " + std::to_string(pixelHeight) + " pixels · "
           + std::to_string(logicalWidth) + " × " + std::to_string(logicalHeight) + " points";
}

} // namespace tidemark
