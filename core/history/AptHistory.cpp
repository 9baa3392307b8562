#include "core/history/AptHistory.h"

#include "core/base/Calendar.h"
#include "core/history/PackageLogText.h"

#include <algorithm>

namespace tidemark::AptHistory {

namespace {

using PackageLogText::nextLine;

constexpr std::string_view startKey = "Start-Date: ";
constexpr std::string_view endKey = "End-Date: ";
constexpr std::string_view installKey = "Install: ";
constexpr std::string_view packageKeys[] = {installKey, "Reinstall: ", "Upgrade: ", "Downgrade: "};

/// The rest of a line that begins with `key`; absent for other lines.
std::optional<std::string_view> valueOf(std::string_view line, std::string_view key) {
    if (!line.starts_with(key))
        return std::nullopt;
    return line.substr(key.size());
}

/// "2024-05-01  12:00:00"
std::optional<Date> dateOf(std::string_view text, const Calendar& calendar) {
    const std::size_t blank = text.find("  ");
    if (blank == std::string_view::npos)
        return std::nullopt;
    const auto time = PackageLogText::clockTime(text.substr(0, blank), text.substr(blank + 2));
    return time ? std::optional(calendar.momentOf(*time)) : std::nullopt;
}

/// Removes the part before `separator` and the separator from `text` and returns the part; without
/// a separator, all of it.
std::string_view takeUntil(std::string_view& text, std::string_view separator) {
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(taken.size() + separator.size(), text.size()));
    return taken;
}

struct Details {
    std::string_view version;
    bool isAutomatic = false;
};

/// Parses "2.0-1, automatic" or, for an upgrade, "4.1, 4.2" with the new version last.
Details detailsOf(std::string_view text) {
    Details details;
    while (!text.empty()) {
        const std::string_view word = takeUntil(text, ", ");
        if (word == "automatic")
            details.isAutomatic = true;
        else
            details.version = word;
    }
    return details;
}

/// "libtide2:amd64 (2.0-1, automatic), harbour:amd64 (4.1, 4.2)"
void addPackages(PackageTransaction& transaction, std::string_view list,
                 const Packages& automatic) {
    if (list.ends_with(')'))
        list.remove_suffix(1);
    while (!list.empty()) {
        const std::string_view package = takeUntil(list, " (");
        const auto [version, isMarked] = detailsOf(takeUntil(list, "), "));
        if (!PackageLogText::isPackage(package) || !PackageLogText::isVersion(version))
            continue;
        std::string key(PackageLogText::packageName(package));
        key.append(" ").append(version);
        bool& known = transaction.isAutomatic.try_emplace(std::move(key), true).first->second;
        known = known && (isMarked || automatic.contains(std::string(package)));
    }
}

} // namespace

Packages automaticPackages(std::string_view states) {
    Packages automatic;
    std::string package;
    while (!states.empty()) {
        const std::string_view line = nextLine(states);
        if (const auto name = valueOf(line, "Package: "))
            package = *name;
        else if (const auto architecture = valueOf(line, "Architecture: "))
            package.append(":").append(*architecture);
        else if (line == "Auto-Installed: 1")
            automatic.insert(package);
    }
    return automatic;
}

std::vector<PackageTransaction> parse(std::string_view log, const Packages& automatic) {
    const Calendar calendar;
    const Packages none;
    std::vector<PackageTransaction> transactions;
    bool isInTransaction = false;
    while (!log.empty()) {
        const std::string_view line = nextLine(log);
        if (const auto start = valueOf(line, startKey)) {
            const auto date = dateOf(*start, calendar);
            isInTransaction = date.has_value();
            if (!date)
                continue;
            transactions.push_back({*date, {}, {}});
        } else if (!isInTransaction) {
            continue;
        } else if (const auto end = valueOf(line, endKey)) {
            transactions.back().end = dateOf(*end, calendar);
            isInTransaction = false;
        } else {
            for (const std::string_view key : packageKeys)
                if (const auto packages = valueOf(line, key))
                    addPackages(transactions.back(), *packages,
                                key == installKey ? none : automatic);
        }
    }
    std::ranges::stable_sort(transactions, {}, &PackageTransaction::start);
    return transactions;
}

bool beginsBefore(std::string_view log, Date date) {
    const Calendar calendar;
    while (!log.empty())
        if (const auto start = valueOf(nextLine(log), startKey))
            if (const auto first = dateOf(*start, calendar))
                return *first < date;
    return false;
}

const PackageTransaction* transactionOf(const std::vector<PackageTransaction>& transactions,
                                        const std::string& packageAndVersion, Date moment) {
    // Transactions don't overlap: apt runs one at a time.
    const auto next =
        std::ranges::upper_bound(transactions, moment, {}, &PackageTransaction::start);
    if (next == transactions.begin())
        return nullptr;
    const PackageTransaction& transaction = *std::prev(next);
    const bool isOver = transaction.end && *transaction.end < moment;
    return !isOver && transaction.isAutomatic.contains(packageAndVersion) ? &transaction : nullptr;
}

} // namespace tidemark::AptHistory
