#pragma once

#include "core/base/Data.h"
#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// One item of the memory history: a file, a download, an application or a clip.
struct MemoryRecord {
    enum class Kind {
        fileOpened,
        fileModified,
        fileCreated,
        downloaded,
        appLaunched,
        appClosed,
        appUsage,
        clipboard,
    };

    /// `fileID` for file records, a UUID text otherwise.
    std::string id;
    Kind kind = Kind::fileOpened;
    Date timestamp;
    std::string title;
    /// File path, or the application's bundle path.
    std::optional<std::string> path;
    std::optional<std::string> appName;
    /// Bundle identifier.
    std::optional<std::string> appID;
    /// File size; for a clip, the size of its payload or text.
    std::optional<std::int64_t> bytes;
    /// Web origin of a download.
    std::optional<std::string> sourceURL;
    /// In seconds, for `appUsage` only.
    std::optional<double> duration;
    /// Kind of content of a clip, such as "Text" or "Image".
    std::optional<std::string> contentType;
    std::optional<std::string> text;
    std::optional<Data> payload;
    /// The payload, or the text, is stored in a file of its own.
    std::optional<bool> payloadStored;
    std::optional<bool> textStored;
    /// The pasteboard type that a clip came from.
    std::optional<std::string> pasteboardType;
    bool pinned = false;
    std::optional<Date> lastOpened;
    /// When the program first saw the item.
    Date observedAt;

    /// A record with a new UUID text as its id, not pinned.
    static MemoryRecord make(Kind kind, Date timestamp, std::string title,
                             std::optional<std::string> path = {},
                             std::optional<std::string> appName = {},
                             std::optional<std::string> appID = {}, Date observedAt = Date::now());
    /// A digest of all three, so that repeating an observation gives the same id.
    static std::string fileID(Kind kind, std::string_view path, Date date);

    static constexpr bool isFile(Kind kind) { return kind <= Kind::downloaded; }
    bool isFile() const { return isFile(kind); }
    /// What happened, in one or two words.
    std::string_view activity() const;
    /// What the record shows and what it does not prove, as sentences.
    std::string_view explanation() const;
    /// The second line, below the title.
    std::string subtitle() const;

    bool operator==(const MemoryRecord&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &MemoryRecord::id, Internal},
            Field{"kind", &MemoryRecord::kind},
            Field{"timestamp", &MemoryRecord::timestamp},
            Field{"title", &MemoryRecord::title, Masked},
            Field{"path", &MemoryRecord::path, Private},
            Field{"appName", &MemoryRecord::appName, Shown},
            Field{"appID", &MemoryRecord::appID, Shown},
            Field{"bytes", &MemoryRecord::bytes},
            Field{"sourceURL", &MemoryRecord::sourceURL, Private},
            Field{"duration", &MemoryRecord::duration},
            Field{"contentType", &MemoryRecord::contentType, Shown},
            Field{"text", &MemoryRecord::text, Private},
            Field{"payload", &MemoryRecord::payload, Omitted},
            Field{"payloadStored", &MemoryRecord::payloadStored},
            Field{"textStored", &MemoryRecord::textStored},
            Field{"pasteboardType", &MemoryRecord::pasteboardType, Shown},
            Field{"pinned", &MemoryRecord::pinned},
            Field{"lastOpened", &MemoryRecord::lastOpened},
            Field{"observedAt", &MemoryRecord::observedAt},
        };
    }
};

template <>
inline constexpr auto json::rawValues<MemoryRecord::Kind> =
    std::to_array<json::RawValue<MemoryRecord::Kind>>({
        {MemoryRecord::Kind::fileOpened, "fileOpened"},
        {MemoryRecord::Kind::fileModified, "fileModified"},
        {MemoryRecord::Kind::fileCreated, "fileCreated"},
        {MemoryRecord::Kind::downloaded, "downloaded"},
        {MemoryRecord::Kind::appLaunched, "appLaunched"},
        {MemoryRecord::Kind::appClosed, "appClosed"},
        {MemoryRecord::Kind::appUsage, "appUsage"},
        {MemoryRecord::Kind::clipboard, "clipboard"},
    });

} // namespace tidemark
