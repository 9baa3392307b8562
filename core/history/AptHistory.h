#pragma once

#include "core/base/Date.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tidemark {

/// What one run of apt installed or upgraded.
struct PackageTransaction {
    Date start;
    /// Absent while it runs, and when it was broken off.
    std::optional<Date> end;
    /// Whether a package, as "name version", came along because others need it. One that is there
    /// for several architectures did so when all of them did.
    std::unordered_map<std::string, bool> isAutomatic;
};

/// The transactions in the log that apt(8) keeps beside that of dpkg, which has no such notion:
///
///     Start-Date: 2024-05-01  12:00:00
///     Install: tide-gauge:amd64 (2.0-1), libtide2:amd64 (2.0-1, automatic)
///     Upgrade: harbour:amd64 (4.1, 4.2)
///     End-Date: 2024-05-01  12:00:07
///
/// with times of the machine's own zone. What can't be understood is passed over.
namespace AptHistory {

/// In the order of their starts.
std::vector<PackageTransaction> parse(std::string_view log);

/// True when the first transaction is from before `date`.
bool beginsBefore(std::string_view log, Date date);

/// The transaction in which a package was installed at `moment`; null when none did.
const PackageTransaction* transactionOf(const std::vector<PackageTransaction>& transactions,
                                        const std::string& packageAndVersion, Date moment);

} // namespace AptHistory

} // namespace tidemark
