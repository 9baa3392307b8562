#pragma once

#include "core/base/Date.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tidemark {

/// The packages that one run of apt installed or upgraded.
struct PackageTransaction {
    Date start;
    /// Absent while it is running and when it was interrupted.
    std::optional<Date> end;
    /// The packages, as "name version", each with true if it is only installed because others need
    /// it. For a package of several architectures, true if it is true for all of them.
    std::unordered_map<std::string, bool> isAutomatic;
};

/// Reads the transactions in the log of apt(8), since the log of dpkg has none. A transaction looks
/// like this:
///
///     Start-Date: 2024-05-01  12:00:00
///     Install: tide-gauge:amd64 (2.0-1), libtide2:amd64 (2.0-1, automatic)
///     Upgrade: harbour:amd64 (4.1, 4.2)
///     End-Date: 2024-05-01  12:00:07
///
/// Times are in the machine's time zone. Lines that can't be parsed are skipped.
namespace AptHistory {

/// Names with architecture, as in "libtide2:amd64".
using Packages = std::unordered_set<std::string>;

/// The packages that are only installed because others need them, from apt's file
/// "extended_states", which has a stanza for each package that it ever installed for this reason:
///
///     Package: libtide2
///     Architecture: amd64
///     Auto-Installed: 1
Packages automaticPackages(std::string_view states);

/// The transactions, in the order of their starts. The log marks packages as automatic only where
/// they are new; upgraded ones are automatic if they are among `automatic`.
std::vector<PackageTransaction> parse(std::string_view log, const Packages& automatic);

/// True when the first transaction started before `date`.
bool beginsBefore(std::string_view log, Date date);

/// The transaction that installed a package at `moment`; null when there is none.
const PackageTransaction* transactionOf(const std::vector<PackageTransaction>& transactions,
                                        const std::string& packageAndVersion, Date moment);

} // namespace AptHistory

} // namespace tidemark
