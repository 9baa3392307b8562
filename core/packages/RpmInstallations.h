#pragma once

#include "core/base/Date.h"
#include "core/base/MachineFiles.h"
#include "core/packages/PackageOwner.h"

#include <expected>
#include <string>
#include <vector>

/// When the packages of a machine were installed, by rpm's database, which groups them by the
/// transaction that installed them, whatever tool ran it; and why, by the histories of dnf 4 and 5.
namespace tidemark::RpmInstallations {

struct Installation {
    PackageOwner package;
    /// The start of the transaction.
    Date date;
    /// Whether it was installed because another package needs it.
    bool isAutomatic = false;
};

/// The installed packages whose last installation was at or after `since`; none when there is no
/// such database.
std::expected<std::vector<Installation>, PackageFailure> read(const MachineFiles& machine,
                                                              Date since);

} // namespace tidemark::RpmInstallations
