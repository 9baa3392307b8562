#pragma once

#include "core/records/Event.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A report of what a screen shows, for reading and sharing; nothing can be restored from it.
/// Unless private details are asked for, paths, names of devices and networks, clips and origins
/// are taken out of the fields that hold them and out of every other text of the same event.
struct HistoryExport {
    enum class Format { csv, json };

    static constexpr std::string_view limitations =
        "Observed history may be incomplete. Events before installation are partial. Observation "
        "intervals are not exact change times. State comparisons show endpoint differences, not "
        "every intervening event. This export is not a restorable backup.";

    /// In the order of the screen.
    std::vector<Shared<Event>> events;
    /// "Timeline" or "Compare States".
    std::string mode;
    Date exportedAt;

    using Output = std::function<void(std::string_view)>;
    /// Hands the report, which is UTF-8 text, to `output` in pieces. What is not
    /// printable comes out escaped in JSON and as U+FFFD in CSV, but for tabs and line breaks.
    /// Throws `Error` when an event can't be written, as with a number that is not finite.
    void write(Format format, bool includePrivateDetails, const Output& output) const;
    /// The whole report.
    std::string data(Format format, bool includePrivateDetails) const;
    /// Writes the report to a file of mode 0600, which is there whole or, after a failure, as it
    /// was before. Throws `Error`.
    void save(const std::filesystem::path& path, Format format, bool includePrivateDetails) const;

    /// What a file of this format is called: "Tidemark-History.csv".
    static std::string fileName(Format format);
};

template <>
inline constexpr auto json::rawValues<HistoryExport::Format> =
    std::to_array<json::RawValue<HistoryExport::Format>>({
        {HistoryExport::Format::csv, "CSV"},
        {HistoryExport::Format::json, "JSON"},
    });

} // namespace tidemark
