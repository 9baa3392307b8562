#include "core/packages/PackageOwner.h"

namespace tidemark {

std::string_view upstreamVersion(std::string_view version) {
    // An epoch is a number. A colon without a number in front is a part of the version.
    if (const auto end = version.find_first_not_of("0123456789");
        end != std::string_view::npos && end > 0 && version[end] == ':')
        version.remove_prefix(end + 1);
    return version.substr(0, version.rfind('-'));
}

} // namespace tidemark
