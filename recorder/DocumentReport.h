#pragma once

#include "core/base/JsonFields.h"
#include "recorder/RecorderPlaces.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// The state of one of the program's documents or folders, without private details.
struct DocumentReport {
    /// "journal.json"; of a folder, what it is for.
    std::string name;
    /// Absent for a folder.
    std::optional<std::int64_t> bytes;
    /// The permissions in octal digits, such as "0600"; empty for a link that leads nowhere.
    std::string mode;
    /// False when it belongs to another user.
    bool isOwn = true;
    /// The version of the format; absent for a document without one.
    std::optional<std::int64_t> version;
    std::optional<Date> written;
    /// Why the document can't be read, or why the folder can't be written to, as a sentence.
    std::optional<std::string> problem;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &DocumentReport::name, Shown},
                          Field{"bytes", &DocumentReport::bytes},
                          Field{"mode", &DocumentReport::mode, Shown},
                          Field{"isOwn", &DocumentReport::isOwn},
                          Field{"version", &DocumentReport::version},
                          Field{"written", &DocumentReport::written},
                          Field{"problem", &DocumentReport::problem, Shown}};
    }
};

/// The folders of data, settings and sockets and the documents in them, as far as they exist. Reads
/// each document whole, as the recorder does. `names` are those of `publicText`. Blocks.
std::vector<DocumentReport> documentReports(const RecorderPlaces& places,
                                            const std::vector<std::string>& names);

} // namespace tidemark
