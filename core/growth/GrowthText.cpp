#include "core/growth/GrowthText.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/growth/StorageChartText.h"

#include <algorithm>
#include <cmath>

namespace tidemark::growthText {

namespace {

std::string amount(std::int64_t bytes) {
    return byteString(distanceBetween(bytes, 0));
}

/// What the folders explain of a change of free space. Both numbers are positive where more is used
/// than before.
std::string explained(std::int64_t used, std::int64_t monitored) {
    const bool isLess = used > 0;
    const std::int64_t inDirection = isLess ? monitored : saturatingDifference(0, monitored);
    const std::int64_t whole = distanceBetween(used, 0);
    if (inDirection == 0)
        return "; the folders you monitor have not changed";
    if (inDirection < 0)
        return std::string(", although the folders you monitor ")
               + (isLess ? "shrank by " : "grew by ") + amount(monitored);
    if (inDirection > whole)
        return std::string("; the folders you monitor ") + (isLess ? "grew by " : "shrank by ")
               + amount(monitored);
    return "; " + amount(monitored) + " of it in folders you monitor";
}

std::string monitoredOnly(std::int64_t change) {
    if (change == 0)
        return "The folders you monitor have the same size.";
    return std::string("The folders you monitor ") + (change > 0 ? "grew by " : "shrank by ")
           + amount(change) + ".";
}

/// "—" where it did not exist, "Unknown" where its size is not known.
std::string sizeText(const std::optional<DatedSize>& size, bool didExist) {
    if (size)
        return byteString(size->bytes);
    return didExist ? "Unknown" : "—";
}

std::string spoken(const std::optional<DatedSize>& size) {
    return size ? byteString(size->bytes) : "unknown size";
}

std::string changeText(const GrowthItem& item) {
    std::string bytes = isSizeKnown(item) ? signedBytes(item.change()) : "";
    const char* word = item.state == GrowthItem::State::appeared ? "New"
                       : item.state == GrowthItem::State::gone   ? "Gone"
                                                                 : "";
    if (!*word)
        return bytes;
    return bytes.empty() ? word : std::string(word) + ", " + bytes;
}

std::string shareText(const GrowthItem& item) {
    if (!isSizeKnown(item) || item.change() == 0)
        return {};
    const double percent = item.share * 100;
    return percent < 1 ? "< 1 %" : std::to_string(std::lround(percent)) + " %";
}

std::string helpText(const GrowthItem& item, const Calendar& calendar) {
    using storageChartText::momentText;
    std::string help = oneLine(item.path);
    if (item.before)
        help += "\nBefore: measured " + momentText(item.before->measuredAt, calendar);
    if (item.after)
        help += "\nAfter: measured " + momentText(item.after->measuredAt, calendar);
    for (const auto& part : item.parts)
        help += "\n" + oneLine(part.name) + " " + signedBytes(part.delta());
    return help;
}

} // namespace

std::string summary(const GrowthReport& report) {
    if (!report.freeBefore || !report.freeAfter)
        return report.monitoredChange ? monitoredOnly(*report.monitoredChange)
                                      : "No size is known at both ends of this period.";
    const std::int64_t used =
        saturatingDifference(report.freeBefore->bytes, report.freeAfter->bytes);
    if (used == 0)
        return "Free space is the same.";
    std::string text = amount(used) + (used > 0 ? " less free" : " more free");
    if (report.monitoredChange)
        text += explained(used, *report.monitoredChange);
    return text + ".";
}

std::vector<std::string> remarks(const GrowthReport& report) {
    std::vector<std::string> all;
    if (!report.freeProblem.empty())
        all.push_back(report.freeProblem);
    if (!report.unknownFolders.empty()) {
        std::vector<std::string> names;
        for (const auto& name : report.unknownFolders)
            names.push_back(oneLine(name));
        all.push_back("No comparable size at both ends: " + joined(names, ", ") + ".");
    }
    return all;
}

bool isSizeKnown(const GrowthItem& item) {
    switch (item.state) {
    case GrowthItem::State::appeared:
        return item.after.has_value();
    case GrowthItem::State::gone:
        return item.before.has_value();
    case GrowthItem::State::changed:
        return item.before && item.after;
    }
    return false;
}

std::string period(const GrowthReport& report, const Calendar& calendar) {
    Date first = report.through;
    Date last = Date::distantPast();
    const auto include = [&](const std::optional<DatedSize>& size) {
        if (!size)
            return;
        first = std::min(first, size->measuredAt);
        last = std::max(last, size->measuredAt);
    };
    include(report.freeBefore);
    include(report.freeAfter);
    for (const auto& item : report.items) {
        if (item.kind != GrowthItem::Kind::folder)
            continue;
        include(item.before);
        include(item.after);
    }
    if (last < first)
        return {};
    return storageChartText::periodText(first, last, calendar);
}

Row row(const GrowthItem& item, const Calendar& calendar) {
    Row row;
    row.name = oneLine(item.name);
    row.before = sizeText(item.before, item.state != GrowthItem::State::appeared);
    row.after = sizeText(item.after, item.state != GrowthItem::State::gone);
    row.change = changeText(item);
    row.share = shareText(item);
    row.help = helpText(item, calendar);
    row.accessibleText = row.name + ", " + (row.change.empty() ? "change unknown" : row.change);
    if (item.state != GrowthItem::State::appeared)
        row.accessibleText += ", before " + spoken(item.before);
    if (item.state != GrowthItem::State::gone)
        row.accessibleText += ", after " + spoken(item.after);
    if (!row.share.empty())
        row.accessibleText += ", " + row.share;
    return row;
}

} // namespace tidemark::growthText
