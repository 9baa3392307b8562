#include "core/records/InstallationRecord.h"

#include "core/base/Digest.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr std::array<std::string_view, 4> routinePrefixes{
    "XProtect",
    "MRTConfigData",
    "Gatekeeper Configuration Data",
    "Core Services Application Configuration Data",
};

} // namespace

std::string InstallationRecord::id() const {
    const std::vector<std::string> identity{
        name, version, shortestText(recordedAt.secondsSince1970()), packageSource};
    return "installation-" + Sha256::hex(json::encoded(identity));
}

std::string InstallationRecord::title() const {
    return name + " Installation Recorded";
}

bool InstallationRecord::isRoutine() const {
    return packageSource == automaticSource
           || std::ranges::any_of(
               routinePrefixes, [&](std::string_view prefix) { return name.starts_with(prefix); });
}

std::string InstallationRecord::sourceDescription() const {
    if (packageSource == appleSource)
        return "Apple";
    if (packageSource == otherSource)
        return "Other installer";
    if (packageSource == automaticSource)
        return "Installed automatically";
    return "Not recorded";
}

} // namespace tidemark
