#pragma once

#include "core/records/Event.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A report of the events that are shown, for reading and sharing; it can't be imported again.
/// Unless private details are requested, paths, names of devices and networks, clipboard contents
/// and the origins of downloads are removed from their fields and from every other text of the same
/// event.
struct HistoryExport {
    enum class Format { csv, json };

    static constexpr std::string_view limitations =
        "Observed history may be incomplete. Events before installation are partial. Observation "
        "intervals are not exact change times. State comparisons show endpoint differences, not "
        "every intervening event. This export is not a restorable backup.";

    /// In the order in which they are shown.
    std::vector<Shared<Event>> events;
    /// "Timeline" or "Compare States".
    std::string mode;
    Date exportedAt;

    using Output = std::function<void(std::string_view)>;
    /// Calls `output` with the report, as UTF-8 text in pieces. Characters that are not printable,
    /// except tabs and line breaks, are escaped in JSON and replaced by U+FFFD in CSV. Throws
    /// `Error` when an event can't be written, such as one with a number that is not finite.
    void write(Format format, bool includePrivateDetails, const Output& output) const;
    /// The whole report as one text.
    std::string data(Format format, bool includePrivateDetails) const;
    /// Writes the report to a file of mode 0600, replacing it. Throws `Error`; an existing file is
    /// unchanged then.
    void save(const std::filesystem::path& path, Format format, bool includePrivateDetails) const;

    /// The default file name of this format: "Tidemark-History.csv".
    static std::string fileName(Format format);
};

template <>
inline constexpr auto json::rawValues<HistoryExport::Format> =
    std::to_array<json::RawValue<HistoryExport::Format>>({
        {HistoryExport::Format::csv, "CSV"},
        {HistoryExport::Format::json, "JSON"},
    });

} // namespace tidemark
