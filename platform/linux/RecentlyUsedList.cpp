#include "platform/linux/RecentlyUsedList.h"

#include "core/base/Files.h"
#include "core/base/Iso8601.h"
#include "core/system/UserFolders.h"

#include <QXmlStreamReader>
#include <algorithm>
#include <optional>

namespace tidemark::recentlyUsedList {

namespace {

/// The path of a URL "file:///…" or "file://localhost/…".
std::optional<std::string> pathOf(const QByteArray& url) {
    for (const char* start : {"file://", "file://localhost"}) {
        if (!url.startsWith(QByteArray(start) + '/'))
            continue;
        const auto part = url.mid(static_cast<qsizetype>(std::string_view(start).size()));
        std::string path = QByteArray::fromPercentEncoding(part).toStdString();
        const bool isPlain = !path.contains('\0') && !path.ends_with('/')
                             && std::filesystem::path(path).lexically_normal() == path;
        return isPlain ? std::optional(std::move(path)) : std::nullopt;
    }
    return std::nullopt;
}

/// Programs set "modified" again at each use. "visited" often stays at the first use.
std::optional<Date> lastUse(const QXmlStreamAttributes& attributes) {
    std::optional<Date> latest;
    for (const auto* name : {"modified", "visited"}) {
        const auto date = iso8601Date(attributes.value(QLatin1String(name)).toUtf8().toStdString());
        if (date && (!latest || *latest < *date))
            latest = date;
    }
    return latest;
}

std::optional<Entry> entryOf(const QXmlStreamAttributes& attributes) {
    auto path = pathOf(attributes.value(QLatin1String("href")).toUtf8());
    const auto used = lastUse(attributes);
    return path && used ? std::optional(Entry{*std::move(path), *used}) : std::nullopt;
}

} // namespace

std::filesystem::path standardPath() {
    return UserFolders::data() / "recently-used.xbel";
}

std::vector<Entry> parse(std::string_view bytes) {
    std::vector<Entry> entries;
    std::optional<Entry> entry;
    QXmlStreamReader reader(
        QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        const bool isBookmark = reader.name() == QLatin1String("bookmark");
        if (token == QXmlStreamReader::StartElement && isBookmark)
            entry = entryOf(reader.attributes());
        else if (token == QXmlStreamReader::StartElement
                 && reader.name() == QLatin1String("private"))
            entry.reset();
        else if (token == QXmlStreamReader::EndElement && isBookmark && entry)
            entries.push_back(*std::exchange(entry, {}));
    }
    std::ranges::stable_sort(entries, std::ranges::greater{}, &Entry::used);
    entries.resize(std::min(entries.size(), mostEntries));
    return entries;
}

std::vector<Entry> read(const std::filesystem::path& file) {
    try {
        return parse(readFile(file, mostBytes));
    } catch (const FileError&) {
        return {};
    }
}

} // namespace tidemark::recentlyUsedList
