#pragma once

#include "core/records/Snapshot.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tidemark::test {

/// The root folder of a machine that has only what a test puts there. Paths are paths on that
/// machine.
class MadeUpMachine {
public:
    /// With /lib, /bin and /sbin as links into /usr, as on most machines.
    MadeUpMachine();

    const std::filesystem::path& root() const { return folder.path(); }
    /// The path by which the test itself reaches a file of the machine.
    std::filesystem::path at(std::string_view path) const { return folder / path.substr(1); }

    void write(std::string_view path, std::string_view bytes) const;
    void link(std::string_view path, const std::string& target) const;
    void remove(std::string_view path) const;

    /// An observation of its standard folders for applications and services.
    Snapshot observed() const;

private:
    TemporaryFolder folder;
};

/// The events between two observations: one line each, with the title, the path, and for a changed
/// definition what changed.
std::string eventLines(const Snapshot& before, const Snapshot& after);

} // namespace tidemark::test
