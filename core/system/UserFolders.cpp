#include "core/system/UserFolders.h"

#include "core/base/PrivateFolder.h"
#include "core/system/SystemFacts.h"

#include <cstdlib>

#include <unistd.h>

namespace tidemark::UserFolders {

namespace {

#ifdef __APPLE__
constexpr const char* dataBelowHome = "Library/Application Support";
constexpr const char* configurationBelowHome = dataBelowHome;
#else
constexpr const char* dataBelowHome = ".local/share";
constexpr const char* configurationBelowHome = ".config";
#endif

std::optional<std::filesystem::path> folder(const Environment& environment, const char* name) {
    auto value = environment(name);
    if (!value || !value->starts_with('/'))
        return std::nullopt;
    return std::move(*value);
}

std::filesystem::path home(const Environment& environment) {
    return folder(environment, "HOME").value_or(SystemFacts::homeDirectory());
}

} // namespace

std::optional<std::string> processEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::filesystem::path data(const Environment& environment) {
    return folder(environment, "XDG_DATA_HOME").value_or(home(environment) / dataBelowHome);
}

std::filesystem::path configuration(const Environment& environment) {
    return folder(environment, "XDG_CONFIG_HOME")
        .value_or(home(environment) / configurationBelowHome);
}

std::filesystem::path runtime(const Environment& environment,
                              const std::filesystem::path& sessions) {
    const std::string user = std::to_string(::geteuid());
    const auto given = folder(environment, "XDG_RUNTIME_DIR");
    if (given && isPrivateFolder(*given))
        return *given;
    if (isPrivateFolder(sessions / user))
        return sessions / user;
    const auto own = folder(environment, "TMPDIR").value_or("/tmp") / ("tidemark-" + user);
    requirePrivateFolder(own);
    return own;
}

} // namespace tidemark::UserFolders
