#include "core/packages/PackageDatabase.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace tidemark {

namespace {

std::expected<FileVersion, int> versionOf(const MachineFiles& machine, const std::string& path) {
    const auto file = machine.open(machine.canonical(path), O_RDONLY | O_NONBLOCK);
    if (!file)
        return std::unexpected(file.error());
    const auto status = StorageFileMetadata::readOpen(file->get());
    if (!status)
        return std::unexpected(status.error());
    return status->version;
}

} // namespace

DatabaseState stateOf(const MachineFiles& machine, const std::vector<std::string>& paths) {
    DatabaseState state;
    for (const auto& path : paths)
        state.push_back(versionOf(machine, path));
    const bool isMissing = std::ranges::all_of(state, [](const auto& version) {
        return !version && (version.error() == ENOENT || version.error() == ENOTDIR);
    });
    return isMissing ? DatabaseState{} : state;
}

} // namespace tidemark
